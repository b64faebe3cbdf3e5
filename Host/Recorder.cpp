#include "Host/Recorder.h"

#include <chrono>
#include <stdexcept>
#include <thread>

#include "Capture/Errors.h"

namespace Host {

Recorder::Recorder(Bus& bus, Journal& journal) : _bus(bus), _journal(journal) {
    _bus.journalIs({journal.folder(), ""}, journal.last());
    _source = _bus.read(journal.last() != 0 ? From::at(journal.last() + 1) : From::oldest());
}

Recorder::~Recorder() {
    try {
        if (!_refusal.empty()) _bus.journalIs({_journal.folder(), ""}, 0);
    } catch (const BusError&) {
        // It cannot be told any more.
    }
}

size_t Recorder::poll(int milliseconds) {
    size_t appended = 0;
    while (_isPending || _source->next(_record)) {
        if (!_isPending) _lost += _record.lost;
        _isPending = true;
        if (!append()) {
            std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
            return appended;
        }
        _isPending = false;
        if (++appended == 4096) return appended;
    }
    if (appended == 0) _source->wait(milliseconds);
    return appended;
}

/// False if the journal cannot be written to.
bool Recorder::append() {
    try {
        _journal.append(_record);
    } catch (const std::invalid_argument&) { // of a publisher who goes round the bus
        ++_lost;
    } catch (const Capture::IoError& error) {
        if (_refusal.empty()) _bus.journalIs({_journal.folder(), error.what()}, 0);
        _refusal = error.what();
        return false;
    }
    if (!_refusal.empty()) _bus.journalIs({_journal.folder(), ""}, 0);
    _refusal.clear();
    return true;
}

} // namespace Host
