// The SQL engine, which few machines have: tests that need it are skipped where it is absent.
#pragma once

#include <cstdlib>
#include <filesystem>

/// Whether the tool will find it, wherever it runs.
inline bool hasEngine() {
    if (std::getenv("QLPROTO_DUCKDB") != nullptr) return true;
    const char* const installed = QL_ROOT "/node_modules/@duckdb/node-bindings-linux-x64/libduckdb.so";
    return std::filesystem::exists(installed) && setenv("QLPROTO_DUCKDB", installed, 1) == 0;
}

#define NEEDS_ENGINE()                                                                                                 \
    if (!hasEngine()) GTEST_SKIP() << "no DuckDB: scripts/setup sql installs it"
