#include "Host/MemBus.h"

#include <charconv>
#include <filesystem>
#include <optional>

#include "Capture/Errors.h"
#include "Host/Journal.h"
#include "Host/RingPlace.h"

namespace Host {

namespace {

constexpr std::string_view SCHEME = "mem:";

struct Place {
    std::string path;
    size_t size = 64 << 20;
};

/// Throws BusError if the URL names no place.
Place placeOf(const std::string& url) {
    const size_t query = std::min(url.find('?'), url.size());
    const std::string name = url.substr(SCHEME.size(), query - SCHEME.size());
    Place place{name};
    if (name.empty()) throw BusError(url + ": no name of a bus: mem:NAME or mem:/path");
    if (name.find('/') == name.npos) place.path = "/dev/shm/qlbus-" + name;
    if (query == url.size()) return place;
    constexpr std::string_view sizeIs = "?size=";
    const std::string_view option = std::string_view(url).substr(query);
    uint32_t megabytes = 0;
    const auto [end, error] = std::from_chars(option.data() + std::min(option.size(), sizeIs.size()),
                                              option.data() + option.size(), megabytes);
    if (!option.starts_with(sizeIs) || error != std::errc() || end != option.data() + option.size() || megabytes == 0)
        throw BusError(url + ": '" + std::string(option) + "' is no ?size=MB");
    place.size = size_t{megabytes} << 20;
    return place;
}

MemRing openRing(const std::string& url) {
    const Place place = placeOf(url);
    try {
        return MemRing::open(place.path, place.size);
    } catch (const RingError& error) {
        throw BusError(url + ": " + error.what());
    }
}

/// Out of the journal what the ring no longer has, then out of the ring.
class MemSource : public Source {
  public:
    MemSource(const MemRing& ring, From from) : _ring(ring), _from(from), _reader(ring, from) {
        const std::string folder = ring.keeper().folder;
        if (folder.empty() || from.kind == From::Kind::live || ringHolds(from)) return;
        try {
            _journal.emplace(folder, from);
        } catch (const Capture::IoError&) {
            // It has been taken away: the ring tells what is lost.
        }
    }

    bool next(Record& record) override {
        if (!_journal) return _reader.next(record);
        if (_journal->next(record)) return true;
        // Its end, for now: what follows is in the ring. If not, who keeps the journal has written on meanwhile.
        _reader = RingReader(_ring, _journal->expected() != 0 ? From::at(_journal->expected()) : _from);
        const bool isThere = _reader.next(record);
        if (isThere && record.lost != 0 && _journal->next(record)) return true;
        _journal.reset();
        return isThere;
    }
    bool wait(int milliseconds) override { return _journal || _reader.wait(milliseconds); }

  private:
    bool ringHolds(const From& from) const {
        RingReader oldest(_ring, From::oldest());
        Record record;
        if (!oldest.next(record)) return false;
        return from.kind == From::Kind::sequence ? record.sequence <= from.sequence
                                                 : from.kind == From::Kind::time && record.time < from.time;
    }

    const MemRing& _ring;
    const From _from;
    std::optional<JournalReader> _journal;
    RingReader _reader;
};

/// The same under a name. The ring is told what has been dealt with.
class NamedSource : public Source {
  public:
    NamedSource(const MemRing& ring, const std::string& name, From from)
        : _place(ring, name), _source(ring, begin(ring, from)) {}

    bool next(Record& record) override {
        if (!_source.next(record)) return false;
        _last = record.sequence;
        return true;
    }
    bool wait(int milliseconds) override { return _source.wait(milliseconds); }
    void done() override {
        if (_last != 0) _place.goOnWith(_last + 1);
    }

  private:
    From begin(const MemRing& ring, From from) {
        if (_place.next() == 0 && from.kind == From::Kind::live) _place.goOnWith(ring.last() + 1);
        return _place.next() != 0 ? From::at(_place.next()) : from;
    }

    RingPlace _place;
    MemSource _source;
    uint64_t _last = 0;
};

/// What becomes of the ring's errors.
template <class Work>
auto asBusError(Work work) {
    try {
        return work();
    } catch (const RingError& error) {
        throw BusError(error.what());
    }
}

} // namespace

MemBus::MemBus(const std::string& url, Topics topics) : Bus(std::move(topics)), _ring(openRing(url)) {}

uint64_t MemBus::publish(const Record& record) {
    return asBusError([&] { return _ring.publish(record); });
}

Inspect::Encoded MemBus::publish(Velmora::MsgType_t id, const void* message, int64_t time, uint64_t& sequence) {
    return asBusError([&] { return _ring.publish(topics().protocol(), id, message, time, sequence); });
}

std::unique_ptr<Source> MemBus::read(From from) {
    return asBusError([&] { return std::make_unique<MemSource>(_ring, from); });
}

std::unique_ptr<Source> MemBus::readNamed(const std::string& name, From from) {
    return asBusError([&] { return std::make_unique<NamedSource>(_ring, name, from); });
}

void MemBus::journalIs(const KeptJournal& journal, uint64_t last) {
    asBusError([&] {
        _ring.startAfter(last);
        _ring.setKeeper({std::filesystem::absolute(journal.folder), journal.refusal});
    });
}

const Engine MEM_ENGINE{"mem", [](const std::string& url, Topics topics) -> std::unique_ptr<Bus> {
                            return std::make_unique<MemBus>(url, std::move(topics));
                        }};

} // namespace Host
