// What every command that reads a capture does: take its messages in turn, name the bad ones, count.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <deque>
#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "Capture/Errors.h"
#include "Capture/KeptConnections.h"
#include "Capture/MessageSource.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/messages/Filter.h"
#include "tools/qlproto/messages/MessageReader.h"
#include "tools/qlproto/messages/OpenCapture.h"
#include "tools/qlproto/messages/OrderedPipeline.h"
#include "tools/qlproto/terminal/Errors.h"
#include "tools/qlproto/terminal/LiveView.h"
#include "tools/qlproto/terminal/Progress.h"

namespace qlproto {

/// What is known of a packet that holds fewer bytes than it had: its message, time, and both lengths.
std::string cutText(const Capture::Packet& packet, uint64_t originalLength);

class CaptureScan {
  public:
    struct Fault {
        uint64_t packet; ///< from 1; 0 before the first
        uint64_t offset; ///< 0 if it is after the packet
        int64_t time;    ///< of the packet; 0 if it is after the packet
        std::string kind, text;
        std::size_t capture = 0;  ///< its number, if there are several
        bool isElsewhere = false; ///< in a message that is of no concern
    };

    /// Throws FilterError.
    explicit CaptureScan(const ScanOptions& options = {})
        : _policy(options.policy),
          _filter(options),
          _left(options.first),
          _network(options.network),
          _form(options.time),
          _told(options.isQuiet ? 0 : options.faults),
          _isQuiet(options.isQuiet),
          _isVerbose(options.isVerbose) {}

    /// Calls `handle(packet, reader)` for each good message of the captures that the options take. What they do not take is
    /// verified, but never decoded. Bad packets and damaged places are told on standard error.
    template <class Handle>
    void run(const std::vector<std::string>& paths, Handle&& handle) {
        const auto source = open(paths);
        MessageReader reader(_policy);
        Capture::Packet packet;
        std::string fault;
        while (_left != 0 && next(*source, packet)) {
            const Verdict verdict = judge(packet, reader, fault);
            if (verdict == Verdict::bad) note(faultOf(packet, _packets, reader, fault));
            if (verdict != Verdict::taken) continue;
            ++_messages;
            --_left;
            handle(packet, reader);
        }
        _view.clear();
    }

    /// As many as runParallel() can use.
    static std::size_t workers() { return std::max(1u, std::thread::hardware_concurrency()); }

    /// The same on several threads. `handles[i](packet, reader, text)` is called on thread i with any part of the
    /// messages; it appends what becomes of the message to `text`. `write(text)` gets the texts in order, a batch at a
    /// time, on the calling thread. `flush()` is called before input is waited for.
    template <class Handle, class Write, class Flush>
    void runParallel(const std::vector<std::string>& paths, std::vector<Handle>& handles, Write&& write,
                     Flush&& flush) {
        const auto source = open(paths);
        if (_left == 0) return;
        std::deque<MessageReader> readers;
        while (readers.size() < handles.size()) readers.emplace_back(_policy);
        OrderedPipeline<Batch> pipeline(handles.size());
        pipeline.run([&] { return source->isReady(); },
                     [&](Batch& batch) {
                         if (!source->isReady()) flush();
                         return fill(*source, batch);
                     },
                     [&](Batch& batch, std::size_t worker) {
                         std::string fault;
                         for (const Item& item : batch.items) {
                             const Capture::Packet packet = batch.packet(item);
                             switch (judge(packet, readers[worker], fault)) {
                             case Verdict::bad:
                                 batch.faults.push_back(faultOf(packet, item.number, readers[worker], fault));
                                 break;
                             case Verdict::taken:
                                 handles[worker](packet, readers[worker], batch.text);
                                 batch.pieces.push_back({item.number, batch.text.size()});
                                 break;
                             case Verdict::passedOver:
                                 break;
                             }
                         }
                     },
                     [&](const Batch& batch) {
                         const bool isLast = batch.pieces.size() >= _left;
                         const Piece last = isLast ? batch.pieces[_left - 1] : Piece{UINT64_MAX, batch.text.size()};
                         const uint64_t taken = isLast ? _left : batch.pieces.size();
                         settle(batch, last.packet, taken);
                         write(std::string_view(batch.text).substr(0, last.end));
                         _progress.update(batch.end, source->captures().fileSize());
                         return !isLast;
                     });
    }

    /// The same for what does not depend on the order of messages: each thread adds to a Gathered of its own; they are
    /// merged at the end.
    template <class Gathered>
    Gathered gather(const std::vector<std::string>& paths) {
        struct Handle {
            Gathered gathered;
            void operator()(const Capture::Packet& packet, const MessageReader& reader, std::string&) {
                gathered.add(packet, reader);
            }
        };
        std::vector<Handle> handles(workers());
        if (_left != UINT64_MAX) // which are the first is known in their order alone
            run(paths, [&](const Capture::Packet& packet, const MessageReader& reader) {
                handles[0].gathered.add(packet, reader);
            });
        else
            runParallel(
                paths, handles, [](std::string_view) {}, [] {});
        for (std::size_t i = 1; i < handles.size(); ++i) handles[0].gathered.merge(handles[i].gathered);
        return std::move(handles[0].gathered);
    }

    /// Messages are verified, but not decoded: the readers hold none, and are quicker.
    void onlyVerify() { _isVerifying = true; }

    /// `listener` is told of each fault, too.
    void onFault(std::function<void(const Fault&)> listener) { _onFault = std::move(listener); }

    /// `listener(time)` is told when the capture begins, before any of its messages.
    void onBegin(std::function<void(int64_t)> listener) { _onBegin = std::move(listener); }

    /// Faults of messages for which it does not hold are counted, but people are not told of them one by one.
    void concerns(std::function<bool(Velmora::MsgType_t)> isConcerned) { _isConcerned = std::move(isConcerned); }

    /// Tells of something that is wrong with the packet just read, a fault of that kind. Not for runParallel().
    void complain(const Capture::Packet& packet, const std::string& kind, const std::string& fault);

    /// While run() reads what is no file, shows people on standard output what `text` tells of it so far.
    void showMeanwhile(std::function<std::string()> text) { _view.start(std::move(text)); }

    /// At the end, for people on standard error: on a terminal, or if asked to, messages that were taken, bytes, time and
    /// rate; and the faults by kind.
    void summarize();

    uint64_t messages() const { return _messages; } ///< that were taken
    uint64_t packets() const { return _packets; }
    int exitCode() const { return _bad == 0 ? EXIT_FINE : EXIT_BAD_DATA; }

  private:
    enum class Verdict { taken, passedOver, bad };

    /// What a message became: text of its batch up to `end`.
    struct Piece {
        uint64_t packet; ///< number, from 1
        std::size_t end;
    };
    struct Item {
        Capture::Packet packet; ///< but for its bytes, and its connection
        uint64_t number;
        std::size_t begin, size;    ///< of the packet in the batch's bytes
        std::size_t connection = 0; ///< in those of the batch
    };
    struct Batch {
        std::string bytes;
        std::vector<Item> items;
        uint64_t end = 0;           ///< offset in the file
        std::vector<Fault> damages; ///< of the capture between packets
        std::vector<Fault> faults;  ///< of packets
        /// Parts that an index let be passed over: the packet before, and the faults in them.
        std::vector<std::pair<uint64_t, uint64_t>> passedOver;
        std::string text;
        std::vector<Piece> pieces;
        Capture::KeptConnections connections;

        Capture::Packet packet(const Item& item) const {
            Capture::Packet packet = item.packet;
            packet.bytes = std::string_view(bytes).substr(item.begin, item.size);
            packet.connection = connections.find(item.connection);
            return packet;
        }
        void add(const Capture::Packet& packet, uint64_t number);
    };

    std::unique_ptr<Capture::MessageSource> open(const std::vector<std::string>& paths);
    Verdict judge(const Capture::Packet& packet, MessageReader& reader, std::string& fault) const;
    void beginAt(int64_t time, Capture::MessageSource& source);
    void notePassedOver(uint64_t faults);
    bool fill(Capture::MessageSource& source, Batch& batch);
    void settle(const Batch& batch, uint64_t last, uint64_t taken);
    bool next(Capture::MessageSource& source, Capture::Packet& packet);
    Fault faultOf(const Capture::Packet& packet, uint64_t number, const MessageReader& reader, std::string text) const;
    void note(const Fault& fault);
    void show(const Capture::MessageSource& source);

    const Inspect::Policy _policy;
    Filter _filter;
    uint64_t _left; ///< messages that may still be taken
    std::chrono::steady_clock::time_point _start = std::chrono::steady_clock::now();
    uint64_t _read = 0; ///< packets read ahead
    uint64_t _packets = 0;
    uint64_t _messages = 0;
    uint64_t _bytes = 0;
    const NetworkChoice _network;
    bool _isVerifying = false;
    std::vector<std::string> _paths;
    const TimeForm _form;
    uint64_t _told; ///< faults that people may still be told of
    const bool _isQuiet, _isVerbose;
    uint64_t _bad = 0;
    uint64_t _elsewhere = 0;                ///< of the bad ones
    std::map<std::string, uint64_t> _kinds; ///< the others
    std::function<bool(Velmora::MsgType_t)> _isConcerned;
    std::exception_ptr _failure; ///< of reading ahead
    std::function<void(int64_t)> _onBegin;
    std::function<void(const Fault&)> _onFault;
    Progress _progress;
    LiveView _view;
};

} // namespace qlproto
