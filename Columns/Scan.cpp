#include "Columns/Scan.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "Capture/KeptConnections.h"
#include "Capture/Packet.h"
#include "Capture/Verification.h"
#include "Inspect/Reflection.h"

namespace Columns {

using Inspect::Kind;
using Inspect::ValueInfo;

namespace {

constexpr size_t BATCH_BYTES = 16 << 20;
constexpr const char* TIMESTAMP = "tsn:";

const Inspect::MessageInfo* messageNamed(const Inspect::Protocol& protocol, std::string_view name) {
    const auto found = std::ranges::find_if(protocol.messages, [&](const auto& it) { return it.type->name == name; });
    return found != protocol.messages.end() ? &*found : nullptr;
}

} // namespace

/// Packets that are of concern, and what is wrong between them.
struct Scan::Batch {
    struct Item {
        Origin origin;
        uint64_t offset, originalLength;
        size_t begin, size; ///< in `bytes`
        size_t connection;  ///< in `connections`
    };
    struct Between {
        size_t item;     ///< before which it stands
        uint64_t packet; ///< the one before
        Capture::Damage damage;
    };
    uint64_t number = 0;
    std::string bytes;
    std::vector<Item> items;
    std::vector<Between> damages;
    Capture::KeptConnections connections;

    void add(const Capture::Packet& packet, uint64_t packetNumber) {
        items.push_back({{packetNumber, packet.time, packet.capture},
                         packet.offset,
                         packet.originalLength(),
                         bytes.size(),
                         packet.bytes.size(),
                         connections.add(packet.connection)});
        bytes.append(packet.bytes);
    }
    /// Valid as long as the batch stays as it is.
    Origin originOf(const Item& item) const {
        Origin origin = item.origin;
        origin.connection = connections.find(item.connection);
        return origin;
    }
    std::string_view packet(const Item& item) const { return std::string_view(bytes).substr(item.begin, item.size); }
};

Scan::Scan(std::vector<std::string> captures, const Inspect::Protocol& protocol, Request request)
    : _protocol(protocol), _request(std::move(request)), _captures(std::move(captures), protocol, _request.network) {
    if (_captures.paths().size() > INT16_MAX) throw std::length_error("too many captures");
    _request.options.captures = _captures.paths();
    _request.options.hasConnections = _request.network.has_value();
    if (_request.table == MESSAGES_TABLE || _request.table == FAULTS_TABLE) return;
    const Inspect::MessageInfo* const message = messageNamed(protocol, _request.table);
    if (message == nullptr) throw std::invalid_argument("there is no table " + _request.table);
    _type = message->type;
    _id = message->id;
    if (_request.sorted) _sorted = _request.sorted();
}

Scan::~Scan() = default;

bool Scan::isOfConcern(const Capture::Packet& packet) const {
    if (_request.table == FAULTS_TABLE) return true;
    if (packet.time < _request.from || packet.time > _request.to) return false;
    return _type == nullptr
           || (packet.bytes.size() >= Capture::IDENTIFIER_SIZE && Capture::identifierOf(packet.bytes) == _id);
}

/// Gathers the next packets. What was read before an error comes first.
bool Scan::read(Batch& batch) {
    const std::lock_guard lock(_reading);
    batch.bytes.clear();
    batch.items.clear();
    batch.damages.clear();
    batch.connections.clear();
    if (_isAtEnd && _failure == nullptr) return false;
    batch.number = _batches++;
    if (_failure) std::rethrow_exception(std::exchange(_failure, nullptr));
    try {
        gather(batch);
    } catch (...) {
        _isAtEnd = true;
        if (batch.items.empty()) throw;
        _failure = std::current_exception();
    }
    return true;
}

/// Reads the next packet; what is wrong before it goes into the batch.
bool Scan::next(Capture::Packet& packet, uint64_t& number, Batch& batch) {
    if (_sorted != nullptr) return _sorted->next(packet, number);
    const bool isThere = _captures.next(packet);
    for (const Capture::Damage& damage : _captures.faults()) {
        ++_faults;
        const bool isAfter = isThere && damage.capture == packet.capture; // counted by then
        batch.damages.push_back({batch.items.size(), _captures.messages(damage.capture) - (isAfter ? 1 : 0), damage});
    }
    if (isThere) number = _captures.messages(packet.capture);
    return isThere;
}

void Scan::gather(Batch& batch) {
    Capture::Packet packet;
    uint64_t number = 0;
    while (batch.items.size() < _request.batchRows && batch.bytes.size() < BATCH_BYTES) {
        if (!next(packet, number, batch)) {
            _isAtEnd = true;
            return;
        }
        if (isOfConcern(packet)) {
            batch.add(packet, number);
        } else if (packet.bytes.size() < Capture::IDENTIFIER_SIZE
                   || _protocol.index.find(Capture::identifierOf(packet.bytes)) == nullptr) {
            ++_faults;
        }
    }
}

// --- rows

/// The rows that a worker makes.
class Scan::Worker::Rows {
  public:
    virtual ~Rows() = default;
    virtual void add(const Batch& batch) = 0;
    virtual size_t rows() const = 0;
    virtual void exportSchema(ArrowSchema& to) const = 0;
    virtual void exportBatch(ArrowArray& to) = 0;

  protected:
    explicit Rows(Scan& scan) : _scan(scan) {}

    std::optional<Capture::PacketFault> faultOf(const Batch& batch, const Batch::Item& item) const {
        auto fault =
            Capture::verifyPacket(_scan.protocol(), batch.packet(item), item.originalLength, _scan.request().policy);
        if (fault) ++_scan._faults;
        return fault;
    }
    /// The message that the packet says that it holds.
    const Inspect::MessageInfo* messageOf(std::string_view packet) const {
        if (packet.size() < Capture::IDENTIFIER_SIZE) return nullptr;
        return _scan._protocol.find(_scan._protocol.messages.data(), Capture::identifierOf(packet));
    }

    Scan& _scan;
};

class Scan::Worker::MessageRows : public Rows {
  public:
    explicit MessageRows(Scan& scan) : Rows(scan), _table(scan._id, *scan._type, scan._request.options) {}

    void add(const Batch& batch) override {
        for (const Batch::Item& item : batch.items) {
            const std::string_view packet = batch.packet(item);
            const std::string_view body = packet.substr(Capture::IDENTIFIER_SIZE);
            const bool isWhole = item.originalLength == packet.size() && packet.size() <= Capture::MAX_PACKET;
            Inspect::Result result;
            if (isWhole) result = Capture::verifyBody(_scan._protocol, _scan._id, body, _scan._request.policy);
            if (isWhole && result)
                _table.add(batch.originOf(item), Capture::readableBody(_scan._protocol, result, body, _room));
            else
                ++_scan._faults;
        }
    }
    size_t rows() const override { return _table.rows(); }
    void exportSchema(ArrowSchema& to) const override { _table.exportSchema(to); }
    void exportBatch(ArrowArray& to) override { _table.exportBatch(to); }

  private:
    Table _table;
    std::string _room; ///< for bodies with zeros after them
};

/// Rows whose columns are known here.
class Scan::Worker::PacketRows : public Rows {
  public:
    explicit PacketRows(Scan& scan) : PacketRows(scan, {"packet", "time", "name", "size", "fault", "capture"}) {}

    void add(const Batch& batch) override {
        for (const Batch::Item& item : batch.items) {
            number("packet", static_cast<int64_t>(item.origin.packet));
            number("time", item.origin.time);
            name(batch.packet(item));
            number("size", static_cast<int64_t>(item.size));
            if (has("fault")) {
                const auto fault = faultOf(batch, item);
                text("fault", fault ? fault->reason : std::string_view());
            }
            endRow(batch.originOf(item));
        }
    }
    size_t rows() const override { return _table.length(); }
    void exportSchema(ArrowSchema& to) const override { _table.exportSchema(to); }
    void exportBatch(ArrowArray& to) override { _table.exportArray(to); }

  protected:
    PacketRows(Scan& scan, std::initializer_list<std::string_view> names)
        : Rows(scan), _table("", ValueInfo{.kind = Kind::record}), _columns(std::size(NAMES)) {
        const auto isTaken = [&](std::string_view name) {
            const Inspect::PathPiece piece{name};
            return !scan._request.options.takes || scan._request.options.takes({&piece, 1});
        };
        std::vector<size_t> taken;
        for (const std::string_view name : names) {
            if (!isTaken(name)) continue;
            taken.push_back(placeOf(name));
            _table.within(columnOf(name));
        }
        if (scan._request.options.hasConnections) _connection.addTo(_table, "", isTaken);
        for (size_t i = 0; i < taken.size(); ++i) _columns[taken[i]] = &_table.columns()[i];
    }

    bool has(std::string_view name) const { return column(name) != nullptr; }
    void number(std::string_view name, int64_t value) {
        if (Column* const to = column(name)) to->number(value);
    }
    /// Null if it is empty.
    void text(std::string_view name, std::string_view value) {
        if (Column* const to = column(name)) value.empty() ? to->null() : to->text(value);
    }
    void null(std::string_view name) { text(name, ""); }
    void name(std::string_view packet) {
        Column* const to = column("name");
        if (to == nullptr) return;
        const Inspect::MessageInfo* const message = messageOf(packet);
        if (message == nullptr) return to->null();
        to->word(static_cast<size_t>(message - _scan._protocol.messages.data()), message->type->name);
    }
    void endRow(const Origin& origin) {
        if (Column* const to = column("capture")) to->word(origin.capture, _scan._captures.paths()[origin.capture]);
        _connection.row(origin.connection);
        _table.row();
    }

  private:
    static constexpr std::string_view NAMES[] = {"packet", "offset", "time", "name", "size",   "fault",
                                                 "field",  "reason", "kind", "byte", "capture"};

    static constexpr size_t placeOf(std::string_view name) {
        return static_cast<size_t>(std::ranges::find(NAMES, name) - std::begin(NAMES));
    }
    Column* column(std::string_view name) const { return _columns[placeOf(name)]; }

    static Column columnOf(std::string_view name) {
        const std::string text(name);
        if (name == "name" || name == "capture") return {text, ValueInfo{.kind = Kind::enumeration}};
        if (name == "time") return {text, TIMESTAMP};
        if (name == "packet" || name == "offset" || name == "size" || name == "byte") return {text, "L"};
        return {text, ValueInfo{.kind = Kind::string}};
    }

    Column _table;
    std::vector<Column*> _columns; ///< by the place of the name; null if it is not taken
    ConnectionColumns _connection;
};

class Scan::Worker::FaultRows : public PacketRows {
  public:
    explicit FaultRows(Scan& scan)
        : PacketRows(scan, {"packet", "offset", "field", "reason", "kind", "name", "time", "byte", "capture"}) {}

    void add(const Batch& batch) override {
        auto damage = batch.damages.begin();
        const auto damagesUpTo = [&](size_t item) {
            for (; damage != batch.damages.end() && damage->item <= item; ++damage) add(*damage);
        };
        for (size_t i = 0; i < batch.items.size(); ++i)
            if (const auto fault = faultOf(batch, batch.items[i])) {
                damagesUpTo(i);
                add(*fault, batch.items[i], batch);
            }
        damagesUpTo(SIZE_MAX);
    }

  private:
    void add(const Capture::PacketFault& fault, const Batch::Item& item, const Batch& batch) {
        number("packet", static_cast<int64_t>(item.origin.packet));
        number("offset", static_cast<int64_t>(item.offset));
        text("field", fault.field);
        text("reason", fault.reason);
        text("kind", fault.kind);
        name(batch.packet(item));
        number("time", item.origin.time);
        fault.byte ? number("byte", static_cast<int64_t>(*fault.byte)) : null("byte");
        endRow(batch.originOf(item));
    }
    void add(const Batch::Between& it) {
        number("packet", static_cast<int64_t>(it.packet));
        number("offset", static_cast<int64_t>(it.damage.offset));
        null("field");
        text("reason", it.damage.text());
        text("kind", it.damage.kind);
        name("");
        null("time");
        null("byte");
        endRow({.capture = it.damage.capture});
    }
};

Scan::Worker::Worker(Scan& scan) : _scan(scan), _batch(std::make_unique<Batch>()) {
    if (scan._type != nullptr)
        _rows = std::make_unique<MessageRows>(scan);
    else if (scan._request.table == MESSAGES_TABLE)
        _rows = std::make_unique<PacketRows>(scan);
    else
        _rows = std::make_unique<FaultRows>(scan);
}

Scan::Worker::~Worker() = default;

bool Scan::Worker::next() {
    if (!_scan.read(*_batch)) return false;
    _rows->add(*_batch);
    return true;
}

uint64_t Scan::Worker::batch() const { return _batch->number; }
size_t Scan::Worker::rows() const { return _rows->rows(); }
void Scan::Worker::exportSchema(ArrowSchema& to) const { _rows->exportSchema(to); }
void Scan::Worker::exportBatch(ArrowArray& to) { _rows->exportBatch(to); }

} // namespace Columns
