#include "tools/qlproto/sql/Database.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <thread>
#include <utility>

#include "Capture/Errors.h"
#include "Columns/Scan.h"
#include "Inspect/Reflection.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/sql/ArrowChunk.h"

namespace qlproto::sql {

namespace {

constexpr const char* FUNCTION = "captures"; // "FROM captures('MktDataMessage')", which views hide
constexpr std::string_view SUFFIX = "Message";

/// A structure of Arrow that is released at its end.
template <class Arrow>
struct Owned : Arrow {
    Owned() : Arrow{} {}
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;
    ~Owned() {
        if (this->release != nullptr) this->release(this);
    }
};

/// A table as the engine knows it, with all columns.
struct Bound {
    std::string table;
    Owned<ArrowSchema> schema;
};

/// What one thread works with.
struct Thread {
    std::unique_ptr<Columns::Scan::Worker> worker;
    Owned<ArrowSchema> schema; ///< of the columns that are read
};

/// About how many rows a table may have. Without, the engine takes tables for tiny, and compares each row with each.
engine::Count rowsIn(const std::vector<std::string>& captures) {
    constexpr std::uintmax_t packet = 128; // bytes that one takes, about
    engine::Count rows = 1;
    std::error_code error;
    for (const std::string& path : captures)
        if (const std::uintmax_t size = std::filesystem::file_size(path, error); !error) rows += size / packet;
    return rows;
}

template <class T>
void destroy(void* it) {
    delete static_cast<T*>(it);
}

struct OwnedResult : engine::Result {
    OwnedResult() : engine::Result{} {}
    OwnedResult(const OwnedResult&) = delete;
    OwnedResult& operator=(const OwnedResult&) = delete;
    ~OwnedResult() { duckdb().destroy_result(this); }
};

std::string textOr(const char* text, const char* other) { return text != nullptr ? text : other; }

} // namespace

class Database::Prepared {
  public:
    Prepared(engine::Connection connection, const std::string& sql) {
        if (duckdb().prepare(connection, sql.c_str(), &statement) == 0) return;
        const std::string error = textOr(duckdb().prepare_error(statement), "the statement cannot be prepared");
        duckdb().destroy_prepare(&statement);
        throw SqlError(error);
    }
    ~Prepared() { duckdb().destroy_prepare(&statement); }
    Prepared(const Prepared&) = delete;
    Prepared& operator=(const Prepared&) = delete;

    engine::Statement statement = nullptr;
};

/// One use of a table in a statement that runs.
struct Database::Scanning {
    Scanning(Database& database_, Columns::Request request, std::vector<const ArrowSchema*> columns_)
        : database(database_),
          columns(std::move(columns_)),
          scan(database_._options.captures, thisTool.protocol, std::move(request)) {}
    ~Scanning() {
        if (scan.faults() != 0) database._hasFaults = true;
    }

    Database& database;
    const std::vector<const ArrowSchema*> columns; ///< that the engine asks for; null where it counts rows
    Columns::Scan scan;
};

// --- what the engine calls; no exception may pass it

void Database::bind(engine::BindInfo info) {
    const engine::Functions& engine = duckdb();
    try {
        Database& database = *static_cast<Database*>(engine.bind_get_extra_info(info));
        engine::Value parameter = engine.bind_get_parameter(info, 0);
        char* const text = engine.get_varchar(parameter);
        auto bound = std::make_unique<Bound>();
        bound->table = textOr(text, "");
        engine.free(text);
        engine.destroy_value(&parameter);
        Columns::Scan scan(database._options.captures, thisTool.protocol,
                           {.table = bound->table,
                            .options = {.decimals = database._options.decimals},
                            .network = database._options.network});
        Columns::Scan::Worker(scan).exportSchema(bound->schema);
        for (int64_t i = 0; i < bound->schema.n_children; ++i) {
            const ArrowSchema& column = *bound->schema.children[i];
            engine::LogicalType type = typeOf(column);
            engine.bind_add_result_column(info, column.name, type);
            engine.destroy_logical_type(&type);
        }
        engine.bind_set_cardinality(info, rowsIn(database._options.captures), false);
        engine.bind_set_bind_data(info, bound.release(), destroy<Bound>);
    } catch (const std::exception& error) {
        engine.bind_set_error(info, error.what());
    }
}

void Database::init(engine::InitInfo info) {
    const engine::Functions& engine = duckdb();
    try {
        Database& database = *static_cast<Database*>(engine.init_get_extra_info(info));
        const Bound& bound = *static_cast<const Bound*>(engine.init_get_bind_data(info));
        std::vector<const ArrowSchema*> columns;
        for (engine::Count i = 0; i < engine.init_get_column_count(info); ++i) {
            const engine::Count index = engine.init_get_column_index(info, i);
            const bool isColumn =
                index < static_cast<engine::Count>(bound.schema.n_children); // none where rows are counted
            columns.push_back(isColumn ? bound.schema.children[index] : nullptr);
        }
        const auto isAsked = [columns](std::string_view name) {
            return std::ranges::any_of(columns,
                                       [&](const ArrowSchema* it) { return it != nullptr && it->name == name; });
        };
        const Needs& needs = database._needs;
        const Needs::Times times = needs.timesOf(viewOf(bound.table));
        Columns::Request request{.table = bound.table,
                                 .options = {.showsSecrets = database._options.showsSecrets,
                                             .decimals = database._options.decimals,
                                             .takes =
                                                 [isAsked, needs](Inspect::Path path) {
                                                     const std::string name(path.front().name);
                                                     const bool isTaken = isAsked(name) || isAsked(name + "_sentinel");
                                                     return isTaken && needs.reads(path);
                                                 }},
                                 .policy = database._options.policy,
                                 .from = times.from,
                                 .to = times.to,
                                 .batchRows = engine.vector_size(),
                                 .network = database._options.network};
        if (database._options.sorted)
            request.sorted = [&database, table = bound.table] { return database._options.sorted(table); };
        auto scanning = std::make_unique<Scanning>(database, std::move(request), std::move(columns));
        engine.init_set_init_data(info, scanning.release(), destroy<Scanning>);
        engine.init_set_max_threads(info, std::max(1u, std::thread::hardware_concurrency()));
    } catch (const std::exception& error) {
        engine.init_set_error(info, error.what());
    }
}

void Database::initThread(engine::InitInfo info) { duckdb().init_set_init_data(info, new Thread, destroy<Thread>); }

void Database::scan(engine::FunctionInfo info, engine::Chunk chunk) {
    const engine::Functions& engine = duckdb();
    Scanning& scanning = *static_cast<Scanning*>(engine.function_get_init_data(info));
    Thread& thread = *static_cast<Thread*>(engine.function_get_local_init_data(info));
    try {
        if (thread.worker == nullptr) {
            thread.worker = std::make_unique<Columns::Scan::Worker>(scanning.scan);
            thread.worker->exportSchema(thread.schema);
        }
        Columns::Scan::Worker& worker = *thread.worker;
        while (worker.rows() == 0)
            if (!worker.next()) return engine.data_chunk_set_size(chunk, 0);
        Owned<ArrowArray> batch;
        worker.exportBatch(batch);
        for (size_t i = 0; i < scanning.columns.size(); ++i) {
            const ArrowSchema* const column = scanning.columns[i];
            if (column == nullptr) continue;
            const engine::Vector vector = engine.data_chunk_get_vector(chunk, i);
            int64_t k = 0;
            while (k < batch.n_children && std::string_view(thread.schema.children[k]->name) != column->name) ++k;
            if (k == batch.n_children)
                fillWithNulls(vector, *column, static_cast<size_t>(batch.length));
            else
                fill(vector, *column, *thread.schema.children[k], *batch.children[k]);
        }
        engine.data_chunk_set_size(chunk, static_cast<engine::Count>(batch.length));
    } catch (const std::exception& error) {
        const std::lock_guard lock(scanning.database._failing);
        scanning.database._failure = std::current_exception();
        engine.function_set_error(info, error.what());
    }
}

// --- the database

Database::Database(const DatabaseOptions& options) : _options(options), _engine(duckdb()) {
    engine::Config config = nullptr;
    _engine.create_config(&config);
    const std::pair<const char*, std::string> settings[] = {
        {"memory_limit", std::to_string(options.memory) + "MB"},
        {"autoinstall_known_extensions", "false"}, // nothing is fetched from anywhere
        {"autoload_known_extensions", "false"},
        {"threads", std::to_string(std::max(1u, std::thread::hardware_concurrency()))},
    };
    for (const auto& [name, value] : settings) _engine.set_config(config, name, value.c_str());
    char* error = nullptr;
    const engine::State state = _engine.open_ext(nullptr, &_database, config, &error);
    _engine.destroy_config(&config);
    if (state != 0) throw Capture::IoError("DuckDB: " + textOr(error, "no database can be opened"));
    if (_engine.connect(_database, &_connection) != 0) throw Capture::IoError("DuckDB: no connection");
    createViews();
}

Database::~Database() {
    _engine.disconnect(&_connection);
    _engine.close(&_database);
}

std::string Database::viewOf(std::string_view message) {
    const bool isLong = message.size() > SUFFIX.size() && message.ends_with(SUFFIX);
    return std::string(message.substr(0, message.size() - (isLong ? SUFFIX.size() : 0)));
}

void Database::createViews() {
    engine::TableFunction function = _engine.create_table_function();
    _engine.table_function_set_name(function, FUNCTION);
    engine::LogicalType text = _engine.create_logical_type(engine::VARCHAR);
    _engine.table_function_add_parameter(function, text);
    _engine.destroy_logical_type(&text);
    _engine.table_function_set_extra_info(function, this, nullptr);
    _engine.table_function_set_bind(function, bind);
    _engine.table_function_set_init(function, init);
    _engine.table_function_set_local_init(function, initThread);
    _engine.table_function_set_function(function, scan);
    _engine.table_function_supports_projection_pushdown(function, true);
    const engine::State state = _engine.register_table_function(_connection, function);
    _engine.destroy_table_function(&function);
    if (state != 0) throw Capture::IoError("DuckDB: the captures cannot be registered");

    run("SET temp_directory=" + inQuotes(_spilled.path(), '\''));
    std::vector<std::string> tables{std::string(Columns::MESSAGES_TABLE), std::string(Columns::FAULTS_TABLE)};
    for (const Inspect::MessageInfo& it : Inspect::all_messages(thisTool.protocol)) tables.emplace_back(it.type->name);
    std::string statements;
    for (const std::string& table : tables) {
        const std::string view = viewOf(table);
        if (!_tables.emplace(inSmallLetters(view), table).second) continue; // the engine cannot tell their names apart
        statements +=
            "CREATE VIEW " + inQuotes(view, '"') + " AS FROM " + FUNCTION + '(' + inQuotes(table, '\'') + ");";
    }
    run(statements);
    _isPlain = true;
}

void Database::fail(const std::string& text) {
    {
        const std::lock_guard lock(_failing);
        if (_failure) std::rethrow_exception(std::exchange(_failure, nullptr));
    }
    for (const char* const kind : {"IO Error", "Out of Memory Error"})
        if (text.starts_with(kind)) throw Capture::IoError(text);
    throw SqlError(text);
}

void Database::run(const std::string& statement) {
    OwnedResult result;
    _needs = Needs();
    if (_engine.query(_connection, statement.c_str(), &result) != 0)
        fail(textOr(_engine.result_error(&result), "the statement fails"));
}

/// The first value of a result, as text.
std::string Database::value(const std::string& statement, const std::string& parameter) {
    const Prepared prepared(_connection, statement);
    _engine.bind_varchar_length(prepared.statement, 1, parameter.data(), parameter.size());
    OwnedResult result;
    if (_engine.execute_prepared(prepared.statement, &result) != 0)
        throw SqlError(textOr(_engine.result_error(&result), ""));
    char* const text = _engine.value_varchar(&result, 0, 0);
    std::string copy = textOr(text, "");
    _engine.free(text);
    return copy;
}

Needs Database::needsOf(const std::string& statement) {
    if (!_isPlain) return {};
    try {
        return Needs(
            value("SELECT json_serialize_sql($1::VARCHAR)::VARCHAR", statement),
            [this](const std::string& name) { return _tables.contains(name); },
            [this](const std::string& text) {
                return std::stoll(value("SELECT epoch_ns(CAST($1 AS TIMESTAMP_NS))::VARCHAR", text));
            });
    } catch (const SqlError&) {
        return {}; // an engine without it
    }
}

void Database::run(const std::string& statement, CellForm form, RowSink& sink) {
    Prepared prepared(_connection, statement); // its errors tell the place in what the user wrote
    switch (_engine.prepared_statement_type(prepared.statement)) {
    case engine::SELECT:
        _needs = needsOf(statement);
        stream(statement, prepared, form, sink);
        break;
    case engine::EXPLAIN:
        _needs = Needs();
        materialize(prepared, sink);
        break;
    default:
        _needs = Needs();
        _isPlain = false;
        materialize(prepared, sink);
    }
}

/// The engine itself makes texts of all values, whatever types they have.
void Database::stream(const std::string& statement, const Prepared& original, CellForm form, RowSink& sink) {
    const std::string cell = form == CellForm::json ? "to_json(COLUMNS(*))" : "COLUMNS(*)";
    const Prepared prepared(_connection, "SELECT CAST(" + cell + " AS VARCHAR) FROM (" + statement + "\n)");
    std::vector<ColumnOfResult> columns;
    const engine::Count count = _engine.prepared_statement_column_count(original.statement);
    for (engine::Count i = 0; i < count; ++i) {
        const char* const name = _engine.prepared_statement_column_name(original.statement, i);
        const engine::Type type = _engine.prepared_statement_column_type(original.statement, i);
        const bool isNumber = (type >= engine::TINYINT && type <= engine::DOUBLE) || type == engine::HUGEINT
                              || type == engine::DECIMAL || type == engine::UHUGEINT;
        columns.push_back({textOr(name, ""), isNumber});
        _engine.free(const_cast<char*>(name));
    }

    OwnedResult result;
    if (_engine.execute_prepared_streaming(prepared.statement, &result) != 0)
        fail(textOr(_engine.result_error(&result), "the statement fails"));
    sink.begin(columns);
    std::vector<std::string_view> cells(columns.size());
    for (;;) {
        const auto free = [this](engine::Chunk it) { _engine.destroy_data_chunk(&it); };
        const std::unique_ptr<std::remove_pointer_t<engine::Chunk>, decltype(free)> chunk(_engine.fetch_chunk(result),
                                                                                          free);
        if (chunk == nullptr) break;
        const engine::Count rows = _engine.data_chunk_get_size(chunk.get());
        for (engine::Count row = 0; row < rows; ++row) {
            for (size_t i = 0; i < cells.size(); ++i) {
                const engine::Vector vector = _engine.data_chunk_get_vector(chunk.get(), i);
                const uint64_t* const validity = _engine.vector_get_validity(vector);
                engine::Text& text = static_cast<engine::Text*>(_engine.vector_get_data(vector))[row];
                const bool isNull = validity != nullptr && (validity[row / 64] >> row % 64 & 1) == 0;
                cells[i] = isNull ? std::string_view()
                                  : std::string_view(_engine.string_t_data(&text), _engine.string_t_length(text));
            }
            sink.row(cells);
        }
    }
    if (const char* const error = _engine.result_error(&result); error != nullptr && *error != '\0') fail(error);
    sink.end();
}

/// Of statements whose results are small.
void Database::materialize(Prepared& statement, RowSink& sink) {
    OwnedResult result;
    if (_engine.execute_prepared(statement.statement, &result) != 0)
        fail(textOr(_engine.result_error(&result), "the statement fails"));
    const engine::Count columns = _engine.column_count(&result), rows = _engine.row_count(&result);
    const auto cell = [&](engine::Count column, engine::Count row) {
        char* const text = _engine.value_varchar(&result, column, row);
        std::string copy = textOr(text, "");
        _engine.free(text);
        return copy;
    };
    if (_engine.prepared_statement_type(statement.statement) == engine::EXPLAIN) {
        for (engine::Count row = 0; row < rows; ++row) sink.lines(cell(columns - 1, row));
        return;
    }
    if (rows == 0) return;
    std::vector<ColumnOfResult> names;
    for (engine::Count i = 0; i < columns; ++i) names.push_back({textOr(_engine.column_name(&result, i), ""), false});
    sink.begin(names);
    for (engine::Count row = 0; row < rows; ++row) {
        std::vector<std::string> texts;
        for (engine::Count i = 0; i < columns; ++i) texts.push_back(cell(i, row));
        sink.row({texts.begin(), texts.end()});
    }
    sink.end();
}

// --- statements

std::string inQuotes(std::string_view text, char quote) {
    std::string result(1, quote);
    for (const char c : text) result.append(c == quote ? 2 : 1, c);
    return result += quote;
}

std::vector<std::string> statementsIn(std::string_view text, std::string* rest) {
    std::vector<std::string> statements;
    size_t begin = 0, i = 0;
    const auto skipTo = [&](std::string_view end) {
        const size_t found = text.find(end, i);
        i = found == text.npos ? text.size() : found + end.size();
    };
    const auto take = [&](std::string_view it) {
        if (it.find_first_not_of(" \t\r\n") != it.npos) statements.emplace_back(it);
    };
    while (i < text.size()) {
        const char c = text[i++];
        if (c == '\'' || c == '"') {
            skipTo(std::string_view(&c, 1));
        } else if (c == '-' && text.substr(i).starts_with('-')) {
            skipTo("\n");
        } else if (c == '/' && text.substr(i).starts_with('*')) {
            skipTo("*/");
        } else if (c == '$') {
            const size_t end = text.find('$', i);
            const std::string_view tag = end == text.npos ? "" : text.substr(i - 1, end + 2 - i);
            const bool isTag = tag.size() >= 2 && tag.find_first_of(" \t\r\n;,()'\"") == tag.npos;
            if (isTag && (tag[1] < '0' || tag[1] > '9')) {
                i = end + 1;
                skipTo(tag);
            }
        } else if (c == ';') {
            take(text.substr(begin, i - 1 - begin));
            begin = i;
        }
    }
    if (rest != nullptr)
        *rest = text.substr(begin);
    else
        take(text.substr(begin));
    return statements;
}

} // namespace qlproto::sql
