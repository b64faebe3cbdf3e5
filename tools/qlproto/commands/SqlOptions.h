// Options of the commands that run the SQL engine over captures, and how these end.
#pragma once

#include <cmath>
#include <string>
#include <vector>

#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/messages/OpenCapture.h"
#include "tools/qlproto/sql/Database.h"
#include "tools/qlproto/terminal/Errors.h"

namespace qlproto {

struct SqlOptions {
    Inspect::Policy policy = Inspect::whole;
    int64_t priceScale = 1;
    bool showsSecrets = false;
    uint64_t memory = sql::DatabaseOptions().memory;
    NetworkChoice network = {};

    sql::DatabaseOptions of(const std::vector<std::string>& captures) const {
        sql::DatabaseOptions options{
            .captures = captures, .policy = policy, .showsSecrets = showsSecrets, .memory = memory};
        int decimals = 0;
        for (int64_t scale = priceScale; scale > 1; scale /= 10) ++decimals;
        if (decimals != 0) options.decimals = decimals;
        options.network = network.options();
        return options;
    }
};

inline void addSqlOptions(CLI::App& command, SqlOptions& options) {
    addPolicy(command, options.policy);
    addPriceScale(command, options.priceScale,
                  "Divide prices and amounts by this power of ten: they are decimal numbers then");
    command.add_flag("--secrets", options.showsSecrets, "Show passwords and other secrets, which are null otherwise");
    addNumber(command, "--memory", options.memory,
              "MB that the engine may take before it puts data into files of $TMPDIR", 64);
    addNetworkChoice(command, options.network);
}

/// Each line of the engine's message on one of its own: it shows the place.
inline void tellSqlError(const sql::SqlError& error) {
    const std::string text = error.what();
    for (std::size_t begin = 0, end = 0; end != text.npos; begin = end + 1) {
        end = text.find('\n', begin);
        const std::string line = text.substr(begin, end - begin);
        if (begin == 0)
            tellFault(line);
        else if (!line.empty())
            tell(line);
    }
}

/// Returns the exit status.
inline int tellOfFaults(const sql::Database& database) {
    if (!database.hasFaults()) return EXIT_FINE;
    tellFault("packets were bad and left out: SELECT * FROM faults tells which");
    return EXIT_BAD_DATA;
}

} // namespace qlproto
