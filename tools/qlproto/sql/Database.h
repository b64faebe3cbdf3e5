// Captures as a database of the engine: a view for each message type, named as the message without "Message" at its end, and
// the views `messages` and `faults` (Columns/Scan.h says what is in them).
//
// A view reads the captures anew whenever a statement asks for it, and decodes what the statement needs (Needs.h).
#pragma once

#include <atomic>
#include <cstdint>
#include <exception>
#include <map>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "Capture/Network.h"
#include "Columns/Scan.h"
#include "Inspect/Verify.h"
#include "tools/qlproto/sql/DuckDb.h"
#include "tools/qlproto/sql/Needs.h"
#include "tools/qlproto/sql/SpillFolder.h"

namespace qlproto::sql {

/// The engine refuses a statement: its message, on several lines, which shows the place.
class SqlError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct DatabaseOptions {
    std::vector<std::string> captures = {};
    Inspect::Policy policy = Inspect::whole;
    bool showsSecrets = false;
    std::optional<int> decimals = std::nullopt; ///< of prices
    uint64_t memory = 320;                      ///< MB that the engine takes at most before it uses files
    std::optional<Capture::NetworkOptions> network = std::nullopt; ///< see Columns::Request
    /// Those of a table, if the captures were sorted; null if they were not.
    std::function<std::unique_ptr<Columns::Packets>(const std::string& table)> sorted = {};
};

struct ColumnOfResult {
    std::string name;
    bool isNumber;
};

/// Rows of a result, as texts. A cell that is null has no data.
struct RowSink {
    virtual ~RowSink() = default;
    virtual void begin(const std::vector<ColumnOfResult>& columns) = 0;
    virtual void row(const std::vector<std::string_view>& cells) = 0; ///< valid during the call
    virtual void end() = 0;
    virtual void lines(std::string_view text) = 0; ///< instead of rows: what the engine explains
};

enum class CellForm { text, json };

class Database {
  public:
    /// Throws Capture::IoError if there is no engine, or SqlError.
    explicit Database(const DatabaseOptions& options);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    /// Runs one statement. Throws SqlError; Capture::IoError and Capture::DamagedCapture of reading captures, or if the
    /// engine lacks memory or disk; and what the sink throws.
    void run(const std::string& statement, CellForm form, RowSink& sink);

    /// Runs a statement of no interest.
    void run(const std::string& statement);

    /// Whether packets that were read for statements were bad.
    bool hasFaults() const { return _hasFaults; }

    static std::string viewOf(std::string_view message);

  private:
    class Prepared;
    struct Scanning;

    void createViews();
    [[noreturn]] void fail(const std::string& text);
    std::string value(const std::string& statement, const std::string& parameter);
    Needs needsOf(const std::string& statement);
    void stream(const std::string& statement, const Prepared& original, CellForm form, RowSink& sink);
    void materialize(Prepared& statement, RowSink& sink);

    // What the engine calls.
    static void bind(engine::BindInfo info);
    static void init(engine::InitInfo info);
    static void initThread(engine::InitInfo info);
    static void scan(engine::FunctionInfo info, engine::Chunk chunk);

    const DatabaseOptions _options;
    const engine::Functions& _engine;
    const SpillFolder _spilled;
    engine::Database _database = nullptr;
    engine::Connection _connection = nullptr;
    std::map<std::string, std::string> _tables; ///< that views show, by the view's name in small letters
    Needs _needs;                               ///< of the statement that runs
    bool _isPlain = true;        ///< no statement has defined anything yet, so that names are what they seem
    std::exception_ptr _failure; ///< of reading captures
    std::mutex _failing;
    std::atomic<bool> _hasFaults = false;
};

/// A name in SQL, in " ", or a text, in ' '.
std::string inQuotes(std::string_view text, char quote);

/// The statements of a text, each without the semicolon that ends it. The last one may lack it: `rest`, where it is given, is
/// that one, which is not among them then. Semicolons in quotes and comments end nothing.
std::vector<std::string> statementsIn(std::string_view text, std::string* rest = nullptr);

} // namespace qlproto::sql
