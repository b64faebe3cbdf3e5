// Captures as tables: of the messages of one type, of all packets, or of faults. Rows come in the order of the captures or, of
// networks, of time, a batch at a time; memory does not depend on how large the captures are.
//
//     ArrowArrayStream stream;
//     Columns::exportStream({"session.pcap"}, protocol, {.table = "MktDataMessage"}, stream);
//
//   a message's name   its messages whose bodies are sound (Table.h); nothing else of the captures is decoded
//   "messages"         a row a packet, or message of a network: packet (its number), time, name (null if it is of no
//                      message), size (bytes of identifier and body), fault (what is wrong with it; null if nothing is),
//                      capture, and of networks connection, connectionID, from, to, direction (Capture/Connection.h), null
//                      if it came by none
//   "faults"           packet (after which it is, if it is between packets), offset (of the packet or the damage in the
//                      capture, decompressed), field, reason, kind, name, time, byte (of the body), capture, and of networks
//                      those of the connection; null where it says nothing
#pragma once

#include <atomic>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Capture/MessageSequence.h"
#include "Columns/Arrow.h"
#include "Columns/Table.h"
#include "Inspect/Verify.h"

namespace Columns {

inline constexpr std::string_view MESSAGES_TABLE = "messages", FAULTS_TABLE = "faults";

/// Packets that were sorted out of the captures of a scan, in their order.
class Packets {
  public:
    virtual ~Packets() = default;
    /// The next one, and its number in the capture; false at the end. Valid until the next call. Throws Capture::IoError.
    virtual bool next(Capture::Packet& packet, uint64_t& number) = 0;
};

struct Request {
    std::string table;    ///< the name of a message, or one of the above
    Options options = {}; ///< but for captures and connections: there are those of the scan, these if it is of networks
    Inspect::Policy policy = Inspect::whole;
    /// Times of packets, both included. Not for faults, which have no time if they are between packets.
    int64_t from = INT64_MIN, to = INT64_MAX;
    /// At most so many rows in a batch; fewer where packets are bad, or those of a batch take over 16 MB.
    size_t batchRows = 65536;
    /// How messages stand in captures of networks; without, these cannot be read.
    std::optional<Capture::NetworkOptions> network = {};
    /// Opens what is read instead of the captures, if they were sorted; null if they were not. Not for faults.
    std::function<std::unique_ptr<Packets>()> sorted = {};
};

/// A scan of captures, on which several threads work.
class Scan {
  public:
    /// Throws std::invalid_argument if there is no such table, or no column that is taken; std::length_error for more than
    /// 32,767 captures.
    Scan(std::vector<std::string> captures, const Inspect::Protocol& protocol, Request request);
    ~Scan();

    const Inspect::Protocol& protocol() const { return _protocol; }
    const Request& request() const { return _request; }

    /// Packets that were bad, and damages, of those that have been looked at: of other tables than faults, bodies of
    /// messages that are not in the table are not.
    uint64_t faults() const { return _faults; }

    class Worker;

  private:
    friend class Worker;
    struct Batch;

    bool read(Batch& batch);
    bool next(Capture::Packet& packet, uint64_t& number, Batch& batch);
    void gather(Batch& batch);
    bool isOfConcern(const Capture::Packet& packet) const;

    const Inspect::Protocol& _protocol;
    Request _request;
    const Inspect::TypeInfo* _type = nullptr; ///< null if the table is not of a message
    Velmora::MsgType_t _id = 0;
    std::atomic<uint64_t> _faults = 0;

    std::mutex _reading; ///< guards the following
    Capture::MessageSequence _captures;
    std::unique_ptr<Packets> _sorted; ///< read instead, if it is there
    bool _isAtEnd = false;
    uint64_t _batches = 0;
    std::exception_ptr _failure; ///< of reading; not told yet
};

/// What one thread does of it. Not for several threads at once.
class Scan::Worker {
  public:
    explicit Worker(Scan& scan);
    ~Worker();

    /// Works off the next packets; false if there are no more. Throws Capture::IoError or Capture::DamagedCapture.
    bool next();

    uint64_t batch() const; ///< the number of the last one, among those of all workers, from 0
    size_t rows() const;    ///< that were added since the last batch was handed over

    void exportSchema(ArrowSchema& to) const;
    /// Hands over the rows. The caller releases them.
    void exportBatch(ArrowArray& to);

  private:
    class Rows;
    class MessageRows;
    class PacketRows;
    class FaultRows;

    Scan& _scan;
    std::unique_ptr<Batch> _batch;
    std::unique_ptr<Rows> _rows;
};

/// All of it as a stream, decoded by as many threads as there are processors, which begin when the first batch is asked for.
/// The caller releases it. Throws as Scan does.
void exportStream(std::vector<std::string> captures, const Inspect::Protocol& protocol, Request request,
                  ArrowArrayStream& to);

} // namespace Columns
