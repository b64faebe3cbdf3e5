// qlproto export: captures as files of columns.
#include <memory>
#include <optional>

#include <fmt/format.h>

#include "Capture/Errors.h"
#include "Capture/Packet.h"
#include "Columns/Scan.h"
#include "Inspect/Reflection.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/commands/SqlOptions.h"
#include "tools/qlproto/messages/Names.h"
#include "tools/qlproto/sql/ArrowText.h"
#include "tools/qlproto/sql/CaptureFiles.h"
#include "tools/qlproto/sql/ExportFolder.h"
#include "tools/qlproto/sql/SortedMessages.h"
#include "tools/qlproto/terminal/Errors.h"

namespace qlproto {

namespace {

struct ExportOptions {
    std::vector<std::string> captures;
    std::string folder;
    std::string format;
    std::vector<std::string> messages; ///< all if empty
    SqlOptions sql;
};

/// What makes the files of a table.
class TableWriter {
  public:
    virtual ~TableWriter() = default;
    /// Writes them into the folder, those of messages into folders by hour. False if there are no rows.
    virtual bool write(const std::string& table, const std::filesystem::path& folder) = 0;
};

class ParquetWriter : public TableWriter {
  public:
    explicit ParquetWriter(const sql::DatabaseOptions& options) : _database(options) {
        try { // as many rows as a group has; the engine would gather eight times as many before it writes them
            _database.run("SET partitioned_write_flush_threshold = 65536");
        } catch (const sql::SqlError&) {
            // an older engine
        }
    }

    bool write(const std::string& table, const std::filesystem::path& folder) override {
        const bool isPlain = table == Columns::FAULTS_TABLE;
        const std::string target = isPlain ? folder / "faults.parquet" : folder;
        if (isPlain) std::filesystem::create_directories(folder);
        _database.run(fmt::format(
            "COPY (SELECT *{} FROM {}) TO {} (FORMAT parquet, COMPRESSION zstd, ROW_GROUP_SIZE 65536{})",
            isPlain ? "" : ", strftime(_time, '%Y-%m-%dT%H') AS hour", sql::inQuotes(sql::Database::viewOf(table), '"'),
            sql::inQuotes(target, '\''), isPlain ? "" : ", PARTITION_BY (hour)"));
        return !isPlain || _database.hasFaults();
    }

  private:
    sql::Database _database;
};

class LineWriter : public TableWriter {
  public:
    LineWriter(const sql::DatabaseOptions& options, std::string format)
        : _options(options), _format(std::move(format)) {}

    bool write(const std::string& table, const std::filesystem::path& folder) override {
        ArrowArrayStream stream;
        Columns::exportStream(_options.captures, thisTool.protocol,
                              {.table = table,
                               .options = {.showsSecrets = _options.showsSecrets, .decimals = _options.decimals},
                               .policy = _options.policy,
                               .batchRows = 16384,
                               .network = _options.network,
                               .sorted = [&] { return _options.sorted(table); }},
                              stream);
        const std::unique_ptr<ArrowArrayStream, void (*)(ArrowArrayStream*)> owner(
            &stream, [](ArrowArrayStream* it) { it->release(it); });
        ArrowSchema schema;
        check(stream.get_schema(&stream, &schema), stream);
        const std::unique_ptr<ArrowSchema, void (*)(ArrowSchema*)> schemaOwner(
            &schema, [](ArrowSchema* it) { it->release(it); });
        std::unique_ptr<sql::LineFile> file;
        std::string open;
        for (;;) {
            ArrowArray rows;
            check(stream.get_next(&stream, &rows), stream);
            if (rows.release == nullptr) break;
            const std::unique_ptr<ArrowArray, void (*)(ArrowArray*)> rowsOwner(&rows,
                                                                               [](ArrowArray* it) { it->release(it); });
            for (size_t row = 0; row < static_cast<size_t>(rows.length); ++row) {
                const std::string hour = table == Columns::FAULTS_TABLE ? "." : hourOf(schema, rows, row);
                if (file == nullptr || hour != open) {
                    if (file) file->close();
                    open = hour;
                    file = std::make_unique<sql::LineFile>(folder / hour / ("rows." + _format));
                    if (file->isNew() && _format == "csv") header(schema, *file);
                }
                _line.clear();
                (_format == "csv" ? sql::appendCsvRow : sql::appendJsonRow)(schema, rows, row, _line);
                file->append(_line += '\n');
            }
        }
        if (file) file->close();
        return file != nullptr;
    }

  private:
    static void check(int result, ArrowArrayStream& stream) {
        if (result == 0) return;
        const char* const error = stream.get_last_error(&stream);
        throw Capture::IoError(error != nullptr ? error : "captures cannot be read");
    }

    void header(const ArrowSchema& schema, sql::LineFile& file) {
        _line.clear();
        sql::appendCsvHeader(schema, _line);
        file.append(_line += '\n');
    }

    /// The folder of a row.
    std::string hourOf(const ArrowSchema& schema, const ArrowArray& rows, size_t row) {
        constexpr int64_t nanoseconds = 3'600'000'000'000;
        int64_t k = 0;
        while (std::string_view(schema.children[k]->name) != "_time") ++k;
        const int64_t time = static_cast<const int64_t*>(rows.children[k]->buffers[1])[row];
        const int64_t hour = time / nanoseconds;
        if (hour != _hour) _folder = sql::ExportFolder::hourOf(time);
        _hour = hour;
        return _folder;
    }

    const sql::DatabaseOptions _options;
    const std::string _format;
    std::string _line, _folder;
    int64_t _hour = -1;
};

/// What was done.
struct ExportSummary {
    std::size_t files = 0, kept = 0;
    bool hasFaults = false;
};

/// Makes the tables of one capture that are not there yet.
class CaptureExport {
  public:
    CaptureExport(const ExportOptions& options, const std::string& path, std::string name, sql::ExportFolder& folder,
                  ExportSummary& summary)
        : _options(options), _path(path), _name(std::move(name)), _folder(folder), _summary(summary) {}

    void run() {
        std::vector<Velmora::MsgType_t> types;
        for (const Inspect::MessageInfo& it : Inspect::all_messages(thisTool.protocol))
            if (isWanted(it) && !isKept(std::string(it.type->name))) types.push_back(it.id);
        const std::string faults(Columns::FAULTS_TABLE);
        const bool hasFaultsTable = isKept(faults);
        std::optional<sql::SortedMessages> messages;
        sql::DatabaseOptions options = _options.sql.of({_path});
        options.sorted = [&](const std::string& table) -> std::unique_ptr<Columns::Packets> {
            const Inspect::MessageInfo* const message = findMessage(table);
            return message != nullptr ? messages->open(message->id) : nullptr;
        };
        std::unique_ptr<TableWriter> writer; // first: the engine may be absent
        if (_options.format == "parquet")
            writer = std::make_unique<ParquetWriter>(options);
        else
            writer = std::make_unique<LineWriter>(options, _options.format);
        messages.emplace(_path, options.network, types, _folder.beside(".sorted"));
        for (const Velmora::MsgType_t type : types) {
            if (!messages->has(type)) continue;
            write(*writer, std::string(Inspect::reflect(thisTool.protocol, type)->name));
            messages->remove(type);
        }
        if (!hasFaultsTable) _summary.hasFaults |= write(*writer, faults);
    }

  private:
    bool isWanted(const Inspect::MessageInfo& message) const {
        return _options.messages.empty() || std::ranges::any_of(_options.messages, [&](const auto& name) {
                   return findMessage(name)->id == message.id;
               });
    }
    bool isKept(const std::string& table) {
        const bool isComplete = _folder.isComplete(sql::Database::viewOf(table), _name, _options.format, _path);
        if (isComplete) ++_summary.kept;
        return isComplete;
    }
    /// Whether there are rows.
    bool write(TableWriter& writer, const std::string& table) {
        const std::string view = sql::Database::viewOf(table);
        const bool hasRows = writer.write(table, _folder.beside(view));
        _summary.files += _folder.complete(view, _name, _options.format);
        return hasRows;
    }

    const ExportOptions& _options;
    const std::string& _path;
    const std::string _name;
    sql::ExportFolder& _folder;
    ExportSummary& _summary;
};

int exportCaptures(const ExportOptions& options) {
    const sql::CaptureFiles captures(options.captures, options.sql.network);
    sql::ExportFolder folder(options.folder);
    ExportSummary summary;
    for (std::size_t i = 0; i < captures.paths().size(); ++i) {
        const std::string& path = captures.paths()[i];
        const std::string name = options.captures[i] == "-" ? "stdin" : sql::ExportFolder::nameOf(path);
        CaptureExport(options, path, name, folder, summary).run();
    }
    tell(fmt::format("{} written, {} kept", Capture::counted(summary.files, "file"),
                     Capture::counted(summary.kept, "table")));
    return summary.hasFaults ? EXIT_BAD_DATA : EXIT_FINE;
}

} // namespace

void addExport(CLI::App& app, Commands& commands) {
    const auto options = std::make_shared<ExportOptions>();
    CLI::App* const command = app.add_subcommand("export", "Write captures as files of columns, by message and hour");
    command->add_option("captures", options->captures, "The captures to read; - is standard input")
        ->required()
        ->type_name(FILE_VALUE);
    command->add_option("-o,--output", options->folder, "The folder to write into")
        ->required()
        ->type_name(FOLDER_VALUE);
    command->add_option("--format", options->format, "Of the files; parquet needs the SQL engine (see query)")
        ->check(CLI::IsMember({"parquet", "csv", "ndjson"}))
        ->required();
    command->add_option("--message", options->messages, "Only messages of this name")
        ->type_name(MESSAGE_VALUE)
        ->check(isMessage())
        ->allow_extra_args(false);
    addSqlOptions(*command, options->sql);
    addExamples(
        *command,
        "Files are named FOLDER/TABLE/hour=2024-03-04T07/CAPTURE.FORMAT; faults, which say what is wrong with the\n"
        "capture, have no hour. Those of a table appear when they are complete, and are kept when the same capture is\n"
        "exported again. Parquet is compressed by zstd and keeps nanoseconds; CSV has what is in records as columns "
        "of\n"
        "their own, and vectors in JSON.",
        {"$tool export session.pcap -o columns --format csv",
         "$tool export session.pcap -o columns --format ndjson --message $message"});
    commands.push_back({command, [options] { return exportCaptures(*options); }});
}

} // namespace qlproto
