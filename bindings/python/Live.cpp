#include "bindings/python/Live.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "Capture/Verification.h"
#include "Host/Engines.h"
#include "Host/Journal.h"
#include "bindings/python/Named.h"

namespace qlproto_python {

namespace py = pybind11;

namespace {

Host::From fromOf(const py::object& start) {
    if (!py::isinstance<py::str>(start)) return Host::From::at(start.cast<uint64_t>());
    const auto name = start.cast<std::string>();
    if (name == "live") return Host::From::live();
    if (name == "oldest") return Host::From::oldest();
    throw py::value_error("start is live, oldest or a sequence, not " + name);
}

} // namespace

LiveMessages::LiveMessages(const std::string& place, const py::object& start, const std::string& policy,
                           const std::vector<std::string>& names)
    : _place(place), _policy(policyOf(policy)) {
    for (const std::string& name : names) _ids.push_back(messageOf(py::str(name)).id);
    const Host::From from = fromOf(start);
    const py::gil_scoped_release unlocked;
    if (Host::isUrl(place)) {
        _bus = Host::openBus(place, Host::Topics(protocol()), Host::engines());
        _source = _bus->read(from);
    } else {
        _source = std::make_unique<Host::JournalReader>(place, from);
    }
}

py::object LiveMessages::next(std::optional<double> seconds) {
    using Clock = std::chrono::steady_clock;
    constexpr double lookAround = 100; // milliseconds after which interrupts are noticed
    const Clock::time_point begin = Clock::now();
    for (;;) {
        const double waited = std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
        const double left = seconds ? 1000 * *seconds - waited : lookAround;
        std::unique_lock lock(_mutex, std::defer_lock);
        bool isThere = false;
        {
            const py::gil_scoped_release unlocked; // before the mutex: who has that waits for the lock
            lock.lock();
            isThere = advance(static_cast<int>(std::clamp(left, 0.0, lookAround)));
        }
        if (isThere)
            return py::make_tuple(textOf(Inspect::reflect(protocol(), _record.id)->name), _record.id, _record.time,
                                  _record.sequence, _place, py::bytes(std::string(_record.body)), _values->object(),
                                  std::exchange(_lostBefore, 0));
        lock.unlock();
        if (PyErr_CheckSignals() != 0) throw py::error_already_set();
        if (left <= 0) return py::none();
    }
}

/// Whether there is a message. If nothing is published, waits.
bool LiveMessages::advance(int milliseconds) {
    constexpr int most = 1000; // that are left out, before interrupts are looked for
    for (int i = 0; i < most; ++i) {
        if (!_source->next(_record)) {
            _source->wait(milliseconds);
            return false;
        }
        if (take()) return true;
    }
    return false;
}

bool LiveMessages::take() {
    _lost += _record.lost;
    _lostBefore += _record.lost;
    if (!_ids.empty() && std::find(_ids.begin(), _ids.end(), _record.id) == _ids.end()) return false;
    const Inspect::Result result = Capture::verifyBody(protocol(), _record.id, _record.body, _policy);
    if (!result) {
        ++_faults;
        return false;
    }
    _values.emplace(*result.type, Capture::readableBody(protocol(), result, _record.body, _room));
    return true;
}

} // namespace qlproto_python
