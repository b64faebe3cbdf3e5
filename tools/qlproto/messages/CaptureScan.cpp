#include "tools/qlproto/messages/CaptureScan.h"

#include <algorithm>

#include <unistd.h>

#include "Capture/Errors.h"
#include "Inspect/Reflection.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/terminal/TimeText.h"

namespace qlproto {

namespace {

// Large enough that threads seldom meet, small enough for the caches.
constexpr std::size_t BATCH_BYTES = 512 * 1024;
constexpr std::size_t BATCH_PACKETS = 4096;

} // namespace

std::string cutText(const Capture::Packet& packet, uint64_t originalLength) {
    std::string name = "a message";
    if (packet.bytes.size() >= Capture::IDENTIFIER_SIZE) {
        const Velmora::MsgType_t id = Capture::identifierOf(packet.bytes);
        const Inspect::TypeInfo* const type = Inspect::reflect(thisTool.protocol, id);
        name = type != nullptr ? std::string(type->name) : fmt::format("message {} (0x{:04X})", id, id);
    }
    return fmt::format("only {} of its {} bytes were captured, {} at {}", packet.bytes.size(), originalLength, name,
                       timeText(packet.time));
}

std::unique_ptr<Capture::MessageSource> CaptureScan::open(const std::vector<std::string>& paths) {
    _paths = paths;
    return openCaptures(paths, _network);
}

/// If the packet is taken, the reader holds its message; if it is bad, `fault` says what is wrong with it.
CaptureScan::Verdict CaptureScan::judge(const Capture::Packet& packet, MessageReader& reader,
                                        std::string& fault) const {
    if (packet.originalLength() != packet.bytes.size()) {
        fault = cutText(packet, packet.originalLength());
        return Verdict::bad;
    }
    const bool isTaken = _filter.takes(packet);
    if (isTaken && !_isVerifying ? reader.read(packet.bytes) : reader.verify(packet))
        return isTaken ? Verdict::taken : Verdict::passedOver;
    fault = reader.fault();
    return Verdict::bad;
}

void CaptureScan::beginAt(int64_t time, Capture::MessageSource& source) {
    _filter.beginAt(time);
    if (_onBegin) _onBegin(time);
    // An index tells what is wrong under `whole`.
    if (_paths.size() != 1 || _network.isMade() || !_filter.isNarrow() || _policy != Inspect::whole) return;
    if (std::optional<Capture::Index> index = openIndex(_paths[0], source))
        source.passOver(std::move(*index), [this](const Capture::Index::Part& part) {
            return _filter.mayTake(part.earliest, part.latest, part.messages);
        });
}

/// Counts what is wrong in parts that were passed over.
void CaptureScan::notePassedOver(uint64_t faults) {
    if (faults == 0) return;
    _bad += faults;
    _kinds["in parts that the index passes over"] += faults;
}

void CaptureScan::Batch::add(const Capture::Packet& packet, uint64_t number) {
    items.push_back({packet, number, bytes.size(), packet.bytes.size(), connections.add(packet.connection)});
    bytes.append(packet.bytes);
}

bool CaptureScan::fill(Capture::MessageSource& source, Batch& batch) {
    batch.bytes.clear();
    batch.items.clear();
    batch.damages.clear();
    batch.faults.clear();
    batch.passedOver.clear();
    batch.text.clear();
    batch.pieces.clear();
    batch.connections.clear();
    if (_failure) std::rethrow_exception(_failure);
    Capture::Packet packet;
    do {
        bool isThere = false;
        try {
            isThere = source.next(packet);
        } catch (const Capture::IoError&) {
            if (batch.items.empty()) throw;
            _failure = std::current_exception(); // what was read before comes first
            break;
        }
        for (const Capture::Damage& damage : source.faults())
            batch.damages.push_back({_read, 0, 0, damage.kind, faultText(damage, _paths)});
        if (const auto& it = source.passedOver(); it.packets != 0) {
            batch.passedOver.emplace_back(_read, it.faults);
            _read += it.packets;
        }
        if (!isThere) break;
        if (_read == 0) beginAt(packet.time, source);
        batch.add(packet, ++_read);
    } while (source.isReady() && batch.bytes.size() < BATCH_BYTES && batch.items.size() < BATCH_PACKETS);
    batch.end = source.captures().position();
    return !batch.items.empty() || !batch.damages.empty() || !batch.passedOver.empty();
}

/// Counts and tells of what the batch holds up to packet `last`, of which `taken` are taken.
void CaptureScan::settle(const Batch& batch, uint64_t last, uint64_t taken) {
    auto damage = batch.damages.begin();
    for (const Fault& fault : batch.faults) {
        for (; damage != batch.damages.end() && damage->packet < fault.packet; ++damage)
            if (damage->packet < last) note(*damage);
        if (fault.packet <= last) note(fault);
    }
    for (; damage != batch.damages.end(); ++damage)
        if (damage->packet < last) note(*damage);

    for (const auto& [packet, faults] : batch.passedOver)
        if (packet < last) notePassedOver(faults);

    for (const Item& item : batch.items) {
        if (item.number > last) break;
        ++_packets;
        _bytes += item.size;
    }
    _messages += taken;
    _left -= taken;
}

/// Before the next packet is read: all that were are shown, if it may take time to come.
void CaptureScan::show(const Capture::MessageSource& source) {
    const auto wait = static_cast<int>(_view.untilDue().count());
    const bool isBusy = source.isReady() && (_packets % 1024 != 0 || wait != 0);
    if (!isBusy && (source.isReady() || !source.captures().hasInput(wait))) _view.draw();
}

bool CaptureScan::next(Capture::MessageSource& source, Capture::Packet& packet) {
    if (_view.isOn() && _packets != 0) show(source);
    const bool isThere = source.next(packet);
    for (const Capture::Damage& damage : source.faults())
        note({_packets, 0, 0, damage.kind, faultText(damage, _paths)});
    _packets += source.passedOver().packets;
    notePassedOver(source.passedOver().faults);
    if (!isThere) return false;
    if (_packets == 0) beginAt(packet.time, source);
    if (++_packets % 1024 == 0) _progress.update(source.captures().position(), source.captures().fileSize());
    _bytes += packet.bytes.size();
    return true;
}

void CaptureScan::complain(const Capture::Packet& packet, const std::string& kind, const std::string& fault) {
    note({_packets, packet.offset, packet.time, kind, fault, packet.capture});
}

CaptureScan::Fault CaptureScan::faultOf(const Capture::Packet& packet, uint64_t number, const MessageReader& reader,
                                        std::string text) const {
    const bool isCut = packet.originalLength() != packet.bytes.size();
    const bool hasIdentifier = packet.bytes.size() >= Capture::IDENTIFIER_SIZE;
    return {number,
            packet.offset,
            packet.time,
            isCut ? "cut by the capture" : reader.faultKind(),
            std::move(text),
            packet.capture,
            _isConcerned && hasIdentifier && !_isConcerned(Capture::identifierOf(packet.bytes))};
}

void CaptureScan::note(const Fault& fault) {
    ++_bad;
    if (_onFault) _onFault(fault);
    if (fault.isElsewhere) {
        ++_elsewhere;
        return;
    }
    ++_kinds[fault.kind];
    if (_told == 0) return;
    --_told;
    _progress.clear();
    _view.clear();
    if (fault.offset == 0)
        tellFault(fmt::format("after packet {}: {}", fault.packet, fault.text));
    else
        tellFault(fmt::format("packet {} at offset {}{} of {}: {}", fault.packet, fault.offset,
                              _paths.size() > 1 ? " of " + _paths[fault.capture] + "," : "",
                              timeText(fault.time, _form), fault.text));
}

void CaptureScan::summarize() {
    _progress.clear();
    if (_isQuiet) return;
    if (_isVerbose || isatty(STDERR_FILENO) == 1) {
        const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - _start).count();
        const double rate = seconds > 0 ? static_cast<double>(_messages) / seconds : 0;
        tell(fmt::format("{}, {}, {:.3f} s, {:.0f} messages/s", Capture::counted(_messages, "message"),
                         Capture::counted(_bytes, "byte"), seconds, rate));
    }
    if (_bad == 0) return;
    // The most frequent first.
    std::vector<std::pair<uint64_t, std::string>> kinds;
    for (const auto& [kind, count] : _kinds) kinds.emplace_back(count, kind);
    std::ranges::stable_sort(kinds, std::ranges::greater{}, [](const auto& it) { return it.first; });
    if (_elsewhere != 0) kinds.emplace_back(_elsewhere, "in other messages");
    std::string line = Capture::counted(_bad, "fault");
    for (std::size_t i = 0; i < kinds.size(); ++i)
        line += fmt::format("{}{} {}", i == 0 ? ": " : ", ", kinds[i].first, kinds[i].second);
    tell(line);
}

} // namespace qlproto
