// The SQL engine, DuckDB: those declarations of its C interface that are needed here, and its shared library, which is loaded
// when it is first asked for. Nothing of it is needed to build.
#pragma once

#include <cstdint>
#include <string>

namespace qlproto::sql {

namespace engine {

// As the engine's interface has them; what handles point to is its own business.
using State = int; ///< 0 if all is well
using Count = uint64_t;
using Database = struct DatabaseTag*;
using Connection = struct ConnectionTag*;
using Config = struct ConfigTag*;
using Statement = struct StatementTag*;
using LogicalType = struct LogicalTypeTag*;
using Value = struct ValueTag*;
using Chunk = struct ChunkTag*;
using Vector = struct VectorTag*;
using TableFunction = struct TableFunctionTag*;
using BindInfo = struct BindInfoTag*;
using InitInfo = struct InitInfoTag*;
using FunctionInfo = struct FunctionInfoTag*;
using Destroy = void (*)(void*);

struct Result {
    Count columns, rows, changed;
    void* data;
    char* error;
    void* internal;
};

/// A text in a vector; longer ones than it holds itself are the engine's business.
struct Text {
    static constexpr uint32_t INLINED = 12;
    uint32_t length;
    char inlined[INLINED];
};

struct ListEntry {
    uint64_t offset, length;
};

enum Type : int {
    BOOLEAN = 1,
    TINYINT,
    SMALLINT,
    INTEGER,
    BIGINT,
    UTINYINT,
    USMALLINT,
    UINTEGER,
    UBIGINT,
    FLOAT,
    DOUBLE,
    HUGEINT = 16,
    VARCHAR,
    BLOB,
    DECIMAL,
    TIMESTAMP_NS = 22,
    UHUGEINT = 32,
};

enum StatementType : int { SELECT = 1, EXPLAIN = 4 };

} // namespace engine

// Each function: its name after "duckdb_", what it returns, what it takes.
#define QL_ENGINE_FUNCTIONS(FUNCTION)                                                                                  \
    FUNCTION(library_version, const char*, ())                                                                         \
    FUNCTION(create_config, State, (Config*))                                                                          \
    FUNCTION(set_config, State, (Config, const char* name, const char* value))                                         \
    FUNCTION(destroy_config, void, (Config*))                                                                          \
    FUNCTION(open_ext, State, (const char* path, Database*, Config, char** error))                                     \
    FUNCTION(close, void, (Database*))                                                                                 \
    FUNCTION(connect, State, (Database, Connection*))                                                                  \
    FUNCTION(disconnect, void, (Connection*))                                                                          \
    FUNCTION(free, void, (void*))                                                                                      \
    FUNCTION(vector_size, Count, ())                                                                                   \
    FUNCTION(query, State, (Connection, const char* sql, Result*))                                                     \
    FUNCTION(prepare, State, (Connection, const char* sql, Statement*))                                                \
    FUNCTION(prepare_error, const char*, (Statement))                                                                  \
    FUNCTION(destroy_prepare, void, (Statement*))                                                                      \
    FUNCTION(bind_varchar_length, State, (Statement, Count parameter, const char* text, Count length))                 \
    FUNCTION(prepared_statement_type, StatementType, (Statement))                                                      \
    FUNCTION(prepared_statement_column_count, Count, (Statement))                                                      \
    FUNCTION(prepared_statement_column_name, const char*, (Statement, Count))                                          \
    FUNCTION(prepared_statement_column_type, Type, (Statement, Count))                                                 \
    FUNCTION(execute_prepared, State, (Statement, Result*))                                                            \
    FUNCTION(execute_prepared_streaming, State, (Statement, Result*))                                                  \
    FUNCTION(fetch_chunk, Chunk, (Result))                                                                             \
    FUNCTION(result_error, const char*, (Result*))                                                                     \
    FUNCTION(destroy_result, void, (Result*))                                                                          \
    FUNCTION(column_count, Count, (Result*))                                                                           \
    FUNCTION(column_name, const char*, (Result*, Count))                                                               \
    FUNCTION(row_count, Count, (Result*))                                                                              \
    FUNCTION(value_varchar, char*, (Result*, Count column, Count row))                                                 \
    FUNCTION(destroy_data_chunk, void, (Chunk*))                                                                       \
    FUNCTION(data_chunk_get_size, Count, (Chunk))                                                                      \
    FUNCTION(data_chunk_set_size, void, (Chunk, Count))                                                                \
    FUNCTION(data_chunk_get_vector, Vector, (Chunk, Count))                                                            \
    FUNCTION(vector_get_data, void*, (Vector))                                                                         \
    FUNCTION(vector_get_validity, uint64_t*, (Vector))                                                                 \
    FUNCTION(vector_ensure_validity_writable, void, (Vector))                                                          \
    FUNCTION(vector_assign_string_element_len, void, (Vector, Count, const char*, Count length))                       \
    FUNCTION(list_vector_get_child, Vector, (Vector))                                                                  \
    FUNCTION(list_vector_reserve, State, (Vector, Count))                                                              \
    FUNCTION(list_vector_set_size, State, (Vector, Count))                                                             \
    FUNCTION(struct_vector_get_child, Vector, (Vector, Count))                                                         \
    FUNCTION(string_t_length, uint32_t, (Text))                                                                        \
    FUNCTION(string_t_data, const char*, (Text*))                                                                      \
    FUNCTION(create_logical_type, LogicalType, (Type))                                                                 \
    FUNCTION(create_decimal_type, LogicalType, (uint8_t width, uint8_t scale))                                         \
    FUNCTION(create_list_type, LogicalType, (LogicalType))                                                             \
    FUNCTION(create_struct_type, LogicalType, (LogicalType*, const char** names, Count))                               \
    FUNCTION(destroy_logical_type, void, (LogicalType*))                                                               \
    FUNCTION(get_varchar, char*, (Value))                                                                              \
    FUNCTION(destroy_value, void, (Value*))                                                                            \
    FUNCTION(create_table_function, TableFunction, ())                                                                 \
    FUNCTION(destroy_table_function, void, (TableFunction*))                                                           \
    FUNCTION(table_function_set_name, void, (TableFunction, const char*))                                              \
    FUNCTION(table_function_add_parameter, void, (TableFunction, LogicalType))                                         \
    FUNCTION(table_function_set_extra_info, void, (TableFunction, void*, Destroy))                                     \
    FUNCTION(table_function_set_bind, void, (TableFunction, void (*)(BindInfo)))                                       \
    FUNCTION(table_function_set_init, void, (TableFunction, void (*)(InitInfo)))                                       \
    FUNCTION(table_function_set_local_init, void, (TableFunction, void (*)(InitInfo)))                                 \
    FUNCTION(table_function_set_function, void, (TableFunction, void (*)(FunctionInfo, Chunk)))                        \
    FUNCTION(table_function_supports_projection_pushdown, void, (TableFunction, bool))                                 \
    FUNCTION(register_table_function, State, (Connection, TableFunction))                                              \
    FUNCTION(bind_get_extra_info, void*, (BindInfo))                                                                   \
    FUNCTION(bind_get_parameter, Value, (BindInfo, Count))                                                             \
    FUNCTION(bind_add_result_column, void, (BindInfo, const char* name, LogicalType))                                  \
    FUNCTION(bind_set_bind_data, void, (BindInfo, void*, Destroy))                                                     \
    FUNCTION(bind_set_cardinality, void, (BindInfo, Count, bool isExact))                                              \
    FUNCTION(bind_set_error, void, (BindInfo, const char*))                                                            \
    FUNCTION(init_get_extra_info, void*, (InitInfo))                                                                   \
    FUNCTION(init_get_bind_data, void*, (InitInfo))                                                                    \
    FUNCTION(init_get_column_count, Count, (InitInfo))                                                                 \
    FUNCTION(init_get_column_index, Count, (InitInfo, Count))                                                          \
    FUNCTION(init_set_init_data, void, (InitInfo, void*, Destroy))                                                     \
    FUNCTION(init_set_max_threads, void, (InitInfo, Count))                                                            \
    FUNCTION(init_set_error, void, (InitInfo, const char*))                                                            \
    FUNCTION(function_get_extra_info, void*, (FunctionInfo))                                                           \
    FUNCTION(function_get_init_data, void*, (FunctionInfo))                                                            \
    FUNCTION(function_get_local_init_data, void*, (FunctionInfo))                                                      \
    FUNCTION(function_set_error, void, (FunctionInfo, const char*))

namespace engine {

/// The functions of the engine's library, each without the "duckdb_" in front.
struct Functions {
#define QL_ENGINE_MEMBER(name, result, parameters) result(*name) parameters;
    QL_ENGINE_FUNCTIONS(QL_ENGINE_MEMBER)
#undef QL_ENGINE_MEMBER
};

} // namespace engine

/// The library, loaded once. It is searched for where $QLPROTO_DUCKDB says, or else where npm has put it, in node_modules of
/// this folder, of one above or of the system, or else where the system has its libraries. Throws Capture::IoError, which
/// says how to install it.
const engine::Functions& duckdb();

} // namespace qlproto::sql
