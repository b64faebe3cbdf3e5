// qlproto query: SQL over captures.
#include <filesystem>
#include <memory>

#include <unistd.h>

#include "Capture/Errors.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/commands/SqlOptions.h"
#include "tools/qlproto/messages/LineReader.h"
#include "tools/qlproto/sql/CaptureFiles.h"
#include "tools/qlproto/sql/RowOutput.h"
#include "tools/qlproto/terminal/Errors.h"

namespace qlproto {

namespace {

struct QueryOptions {
    std::vector<std::string> arguments; ///< captures, and then the SQL
    std::string format;
    SqlOptions sql;
};

/// Takes the SQL from the arguments: the last one if it is no file and more than a word.
std::string takeSql(std::vector<std::string>& arguments) {
    std::error_code error;
    const std::string& last = arguments.back();
    if (last.find_first_of(" \t\n") == last.npos || std::filesystem::exists(last, error)) return {};
    std::string sql = last;
    arguments.pop_back();
    return sql;
}

class QuerySession {
  public:
    QuerySession(sql::Database& database, sql::RowForm form)
        : _database(database), _form(form), _rows(sql::makeRowSink(form, _output)) {}

    /// Throws sql::SqlError.
    void run(const std::vector<std::string>& statements) {
        for (const std::string& statement : statements) _database.run(statement, sql::cellsOf(_form), *_rows);
        _output.flush();
    }

    /// Statements from standard input; people are told what is wrong with one, programs end there. Returns an exit status.
    int runInput() {
        constexpr std::size_t longestLine = 1 << 20;
        const bool isWatched = isatty(STDIN_FILENO) == 1;
        if (isWatched)
            tell("Statements end with a semicolon. SHOW TABLES; names the tables, DESCRIBE NAME; their columns.");
        std::string pending;
        const auto ask = [&] {
            if (!isWatched) return;
            const std::string prompt = pending.empty() ? std::string(thisTool.program) + "> " : "...> ";
            static_cast<void>(!write(STDERR_FILENO, prompt.data(), prompt.size()));
        };
        const auto attempt = [&](const std::vector<std::string>& statements) {
            try {
                run(statements);
                return true;
            } catch (const sql::SqlError& error) {
                tellSqlError(error);
                return isWatched;
            }
        };
        ask();
        LineReader lines("-", longestLine); // waits for the first
        for (std::string_view line; lines.next(line); ask()) {
            if (lines.isCut()) throw Capture::IoError("standard input: a line is too long");
            pending.append(line).push_back('\n');
            std::string rest;
            const std::vector<std::string> statements = sql::statementsIn(pending, &rest);
            if (!attempt(statements)) return EXIT_USAGE;
            const bool isBlank = rest.find_first_not_of(" \t\r\n") == rest.npos;
            pending = isBlank ? std::string() : rest;
        }
        return attempt(sql::statementsIn(pending)) ? EXIT_FINE : EXIT_USAGE;
    }

  private:
    sql::Database& _database;
    const sql::RowForm _form;
    Capture::Output _output;
    std::unique_ptr<sql::RowSink> _rows;
};

int query(QueryOptions options) {
    const std::string statements = takeSql(options.arguments);
    if (options.arguments.empty()) {
        tellFault("no capture is named");
        return EXIT_USAGE;
    }
    const sql::CaptureFiles captures(options.arguments, options.sql.network);
    sql::Database database(options.sql.of(captures.paths()));
    const std::string format = !options.format.empty() ? options.format : isatty(STDOUT_FILENO) == 1 ? "table" : "csv";
    const sql::RowForm form = format == "table" ? sql::RowForm::table
                              : format == "csv" ? sql::RowForm::csv
                                                : sql::RowForm::ndjson;
    int status = EXIT_FINE;
    try {
        Capture::whileRead([&] {
            QuerySession session(database, form);
            if (statements.empty())
                status = session.runInput();
            else
                session.run(sql::statementsIn(statements));
        });
    } catch (const sql::SqlError& error) {
        tellSqlError(error);
        return EXIT_USAGE;
    }
    return status != EXIT_FINE ? status : tellOfFaults(database);
}

} // namespace

void addQuery(CLI::App& app, Commands& commands) {
    const auto options = std::make_shared<QueryOptions>();
    CLI::App* const command = app.add_subcommand("query", "Ask captures by SQL: each message type is a table");
    command
        ->add_option(
            "captures", options->arguments,
            "The captures to read, - is standard input; and then the SQL. Without SQL, statements are read from "
            "standard input")
        ->required()
        ->type_name(FILE_VALUE);
    command
        ->add_option("--format", options->format,
                     "A table for people, or lines of CSV or JSON for programs; on a terminal a table, else CSV")
        ->check(CLI::IsMember({"table", "csv", "ndjson"}));
    addSqlOptions(*command, options->sql);
    addExamples(
        *command,
        "SHOW TABLES; names the tables: those of messages, named without \"Message\" at their end, messages (a row a\n"
        "packet) and faults (what is wrong with captures). DESCRIBE NAME; tells the columns. Records are structs:\n"
        "contents.side. Only what a statement needs is decoded. The engine is DuckDB, whose library is to be "
        "installed:\n"
        "npm install @duckdb/node-bindings-linux-x64, or QLPROTO_DUCKDB names it.",
        {"$tool query session.pcap 'SELECT name, count(*) FROM messages GROUP BY name'",
         "$tool query session.pcap 'SELECT * FROM faults'"});
    commands.push_back({command, [options] { return query(*options); }});
}

} // namespace qlproto
