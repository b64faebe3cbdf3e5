// qlproto export: captures as files of columns.
#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <set>

#include <fmt/format.h>

#include "Capture/Errors.h"
#include "Capture/Packet.h"
#include "Capture/SeededHash.h"
#include "Columns/Scan.h"
#include "Inspect/Reflection.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/commands/SqlOptions.h"
#include "tools/qlproto/messages/Names.h"
#include "tools/qlproto/sql/AppendedFile.h"
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
    /// Writes them into the folder, those of each capture in a part of it, those of messages there in folders by hour. False
    /// if there are no rows.
    virtual bool write(const std::string& table, const std::filesystem::path& folder) = 0;
};

class ParquetWriter : public TableWriter {
  public:
    explicit ParquetWriter(const sql::DatabaseOptions& options) : _captures(options.captures), _database(options) {
        try { // as many rows as a group has; the engine would gather eight times as many before it writes them
            _database.run("SET partitioned_write_flush_threshold = 65536");
        } catch (const sql::SqlError&) {
            // an older engine
        }
        if (_captures.size() == 1) return;
        std::string names;
        for (const std::string& it : _captures) names += (names.empty() ? "" : ", ") + sql::inQuotes(it, '\'');
        _database.run(fmt::format("CREATE TYPE {} AS ENUM ({})", NUMBERED, names));
    }

    bool write(const std::string& table, const std::filesystem::path& folder) override {
        const bool isFaults = table == Columns::FAULTS_TABLE;
        const std::string part =
            _captures.size() == 1 ? "0" : fmt::format("enum_code({}::{})", isFaults ? "capture" : "_capture", NUMBERED);
        const std::string hour = isFaults ? "" : ", strftime(_time, '%Y-%m-%dT%H') AS hour";
        copy(table, fmt::format(", {} AS _part{}", part, hour), "", folder,
             isFaults ? ", PARTITION_BY (_part)" : ", PARTITION_BY (_part, hour)");
        for (std::size_t i = 0; isFaults && i < _captures.size(); ++i) { // a table of none, for who wants to read it
            const std::filesystem::path place = folder / sql::ExportFolder::partOf(i);
            if (std::filesystem::create_directories(place)) copy(table, "", " LIMIT 0", place / "faults.parquet", "");
        }
        return !isFaults || _database.hasFaults();
    }

  private:
    static constexpr const char* NUMBERED = "numbered_captures";

    void copy(const std::string& table, const std::string& columns, const char* rows, const std::string& to,
              const char* how) {
        _database.run(fmt::format("COPY (SELECT *{} FROM {}{}) TO {} (FORMAT parquet, COMPRESSION zstd, "
                                  "ROW_GROUP_SIZE 65536{})",
                                  columns, sql::inQuotes(sql::Database::viewOf(table), '"'), rows,
                                  sql::inQuotes(to, '\''), how));
    }

    const std::vector<std::string> _captures;
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
        const bool isFaults = table == Columns::FAULTS_TABLE;
        const std::size_t captureAt = columnNamed(schema, isFaults ? "capture" : "_capture"),
                          timeAt = columnNamed(schema, isFaults ? "time" : "_time");
        std::vector<Part> parts(_options.captures.size());
        for (;;) {
            ArrowArray rows;
            check(stream.get_next(&stream, &rows), stream);
            if (rows.release == nullptr) break;
            const std::unique_ptr<ArrowArray, void (*)(ArrowArray*)> rowsOwner(&rows,
                                                                               [](ArrowArray* it) { it->release(it); });
            std::vector<std::size_t> places; // among the captures, of those that are named in the rows
            for (const std::string_view it : sql::wordsOf(*rows.children[captureAt])) places.push_back(placeOf(it));
            const auto* const captures = static_cast<const int16_t*>(rows.children[captureAt]->buffers[1]);
            const auto* const times = static_cast<const int64_t*>(rows.children[timeAt]->buffers[1]);
            for (std::size_t row = 0; row < static_cast<std::size_t>(rows.length); ++row) {
                const std::size_t capture = places[static_cast<std::size_t>(captures[row])];
                Part& part = parts[capture];
                const std::string& hour = isFaults ? HERE : hourOf(times[row]);
                if (part.file == nullptr || hour != part.hour) {
                    if (part.file) part.file->close();
                    part.hour = hour;
                    part.file = std::make_unique<sql::AppendedFile>(folder / sql::ExportFolder::partOf(capture) / hour
                                                                    / ("rows." + _format));
                    if (part.file->isNew() && _format == "csv") header(schema, *part.file);
                }
                _line.clear();
                (_format == "csv" ? sql::appendCsvRow : sql::appendJsonRow)(schema, rows, row, _line);
                part.file->append(_line += '\n');
            }
        }
        bool hasRows = false;
        for (const Part& part : parts) {
            if (part.file) part.file->close();
            hasRows |= part.file != nullptr;
        }
        return hasRows;
    }

  private:
    /// What is made of a capture: the file that is open, of that hour.
    struct Part {
        std::string hour;
        std::unique_ptr<sql::AppendedFile> file;
    };
    static inline const std::string HERE = ".";

    static void check(int result, ArrowArrayStream& stream) {
        if (result == 0) return;
        const char* const error = stream.get_last_error(&stream);
        throw Capture::IoError(error != nullptr ? error : "captures cannot be read");
    }

    static std::size_t columnNamed(const ArrowSchema& schema, std::string_view name) {
        std::size_t at = 0;
        while (schema.children[at]->name != name) ++at;
        return at;
    }

    std::size_t placeOf(std::string_view capture) const {
        return static_cast<std::size_t>(std::ranges::find(_options.captures, capture) - _options.captures.begin());
    }

    void header(const ArrowSchema& schema, sql::AppendedFile& file) {
        _line.clear();
        sql::appendCsvHeader(schema, _line);
        file.append(_line += '\n');
    }

    /// The folder of a row.
    const std::string& hourOf(int64_t time) {
        constexpr int64_t nanoseconds = 3'600'000'000'000;
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

/// A capture, and the name of what is made of it.
struct NamedCapture {
    std::string path, name;
};

/// Makes the tables of captures that are read as one, those that are not there yet.
class CaptureExport {
  public:
    CaptureExport(const ExportOptions& options, std::vector<NamedCapture> captures, sql::ExportFolder& folder,
                  ExportSummary& summary)
        : _options(options), _captures(std::move(captures)), _folder(folder), _summary(summary), _how(how()) {
        for (const NamedCapture& it : _captures) _paths.push_back(it.path);
    }

    void run() {
        const std::filesystem::file_time_type newest = newestOf(_paths);
        std::vector<Velmora::MsgType_t> types;
        for (const Inspect::MessageInfo& it : Inspect::all_messages(thisTool.protocol))
            if (isWanted(it) && !isKept(std::string(it.type->name), newest)) types.push_back(it.id);
        const std::string faults(Columns::FAULTS_TABLE);
        const bool hasFaultsTable = isKept(faults, newest);
        std::optional<sql::SortedMessages> messages;
        sql::DatabaseOptions options = _options.sql.of(_paths);
        options.sorted = [&](const std::string& table) -> std::unique_ptr<Columns::Packets> {
            const Inspect::MessageInfo* const message = findMessage(table);
            return message != nullptr ? messages->open(message->id) : nullptr;
        };
        std::unique_ptr<TableWriter> writer; // first: the engine may be absent
        if (_options.format == "parquet")
            writer = std::make_unique<ParquetWriter>(options);
        else
            writer = std::make_unique<LineWriter>(options, _options.format);
        messages.emplace(_paths, options.network, types, _folder.beside(".sorted"));
        for (const Velmora::MsgType_t type : types) {
            const std::string table(Inspect::reflect(thisTool.protocol, type)->name);
            if (messages->has(type)) {
                write(*writer, table);
                messages->remove(type);
            } else {
                for (const NamedCapture& it : _captures) _folder.remove(sql::Database::viewOf(table), filesOf(it));
            }
        }
        if (!hasFaultsTable) _summary.hasFaults |= write(*writer, faults);
    }

  private:
    bool isWanted(const Inspect::MessageInfo& message) const {
        return _options.messages.empty() || std::ranges::any_of(_options.messages, [&](const auto& name) {
                   return findMessage(name)->id == message.id;
               });
    }

    /// All that rows depend on but for the captures themselves, and of networks which captures are read as one; in short.
    /// Nothing if it is what is done unless told otherwise.
    std::string how() const {
        const SqlOptions& options = _options.sql;
        std::string text;
        if (options.policy != Inspect::whole) // it consists of what is true or false
            text.append("policy ").append(reinterpret_cast<const char*>(&options.policy), sizeof options.policy);
        if (options.priceScale != 1) text += fmt::format("scale {}\n", options.priceScale);
        if (options.showsSecrets) text += "secrets\n";
        if (const auto network = options.network.options()) {
            text += fmt::format("framing {}\n", network->framing.text());
            for (const uint16_t port : std::set(network->ports.begin(), network->ports.end()))
                text += fmt::format("port {}\n", port);
            std::set<std::string> names;
            for (const NamedCapture& it : _captures) names.insert(it.name);
            for (const std::string& it : names) text += fmt::format("capture {}\n", it);
        }
        return text.empty() ? text : fmt::format("{:016x}\n", Capture::sipHash(text, {0, 0}));
    }

    sql::ExportedFiles filesOf(const NamedCapture& capture) const { return {capture.name, _options.format, _how}; }

    bool isKept(const std::string& table, std::filesystem::file_time_type newest) {
        const bool isComplete = std::ranges::all_of(_captures, [&](const NamedCapture& it) {
            return _folder.isComplete(sql::Database::viewOf(table), filesOf(it), newest);
        });
        if (isComplete) _summary.kept += _captures.size();
        return isComplete;
    }

    /// When the last one of them was written.
    static std::filesystem::file_time_type newestOf(const std::vector<std::string>& paths) {
        auto newest = std::filesystem::file_time_type::min();
        std::error_code error;
        for (const std::string& path : paths) {
            newest = std::max(newest, std::filesystem::last_write_time(path, error));
            if (error) return std::filesystem::file_time_type::max(); // which nothing is as new as
        }
        return newest;
    }

    /// Whether there are rows.
    bool write(TableWriter& writer, const std::string& table) {
        const std::string view = sql::Database::viewOf(table);
        const bool hasRows = writer.write(table, _folder.beside(view));
        for (std::size_t i = 0; i < _captures.size(); ++i)
            _summary.files += _folder.complete(view, i, filesOf(_captures[i]));
        return hasRows;
    }

    const ExportOptions& _options;
    const std::vector<NamedCapture> _captures;
    std::vector<std::string> _paths;
    sql::ExportFolder& _folder;
    ExportSummary& _summary;
    const std::string _how;
};

int exportCaptures(const ExportOptions& options) {
    const sql::CaptureFiles files(options.captures, options.sql.network);
    std::vector<NamedCapture> captures;
    for (std::size_t i = 0; i < files.paths().size(); ++i) {
        const std::string& path = files.paths()[i];
        const std::string name = options.captures[i] == "-" ? "stdin" : sql::ExportFolder::nameOf(path);
        const bool isKnown = std::ranges::find(captures, name, &NamedCapture::name) != captures.end(); // given twice
        if (!isKnown) captures.push_back({path, name});
    }
    sql::ExportFolder folder(options.folder);
    ExportSummary summary;
    if (options.sql.network.isMade()) // connections go on from one to the next
        CaptureExport(options, captures, folder, summary).run();
    else
        for (const NamedCapture& it : captures) CaptureExport(options, {it}, folder, summary).run();
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
        "exported again in the same way. Captures of a network are read as one: a message stands with the capture "
        "that\n"
        "holds its last byte. Parquet is compressed by zstd and keeps nanoseconds; CSV has what is in records as\n"
        "columns of their own, and vectors in JSON.",
        {"$tool export session.pcap -o columns --format csv",
         "$tool export session.pcap -o columns --format ndjson --message $message"});
    commands.push_back({command, [options] { return exportCaptures(*options); }});
}

} // namespace qlproto
