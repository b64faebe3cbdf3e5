#include "Capture/Records.h"

#include <algorithm>

#include "Capture/Erf.h"
#include "Capture/Errors.h"
#include "Capture/Pcap.h"

namespace Capture {

template <class Form>
bool Records<Form>::next(Packet& packet) {
    _damage.reset();
    do {
        if (!nextRecord()) return false;
    } while (_form.isFiller(_found->record));

    const typename Form::Record& record = _found->record;
    const bool isRepaired = _found->isSound && !(_form.isWellFormed(record) && record.isWhole());
    const std::string_view bytes = _window.peek(record.packetAt() + _found->length);
    if (isRepaired && !_damage) _damage = Damage{_window.position(), 0, describe(bytes)};
    packet.time = _form.timeOf(record);
    packet.bytes = bytes.substr(record.packetAt(), _found->length);
    packet.offset = _window.position();
    packet.original = isRepaired ? _found->length : record.original;
    packet.linkType = _form.linkTypeOf(record);
    return true;
}

/// Goes on to the next record; false at the end.
template <class Form>
bool Records<Form>::nextRecord() {
    const uint64_t last = _window.position();
    if (_found && _finder.pass(*_found))
        damaged({last, 0, "the next one begins inside its " + counted(_found->length, "byte")});
    _found.reset();
    if (_window.peek(1).empty()) return false;

    const uint64_t from = _window.position();
    if ((_found = _finder.recordHere())) return true;
    const std::string reason = describe(_window.peek(Form::HEADER));
    _found = _finder.search();
    damaged({from, _window.position() - from, reason});
    return _found.has_value();
}

template <class Form>
bool Records<Form>::isReady() const {
    std::string_view held = _window.held();
    if (_found) held.remove_prefix(std::min(held.size(), _found->record.packetAt() + _found->length));
    return held.size() >= Form::HEADER && held.size() >= _form.recordAt(held).size();
}

template <class Form>
void Records<Form>::jumped() {
    _found.reset();
    _finder.forgetTime();
}

template <class Form>
std::string Records<Form>::describe(std::string_view header) const {
    if (header.size() < Form::HEADER) return "the capture ends inside its header";
    const typename Form::Record record = _form.recordAt(header);
    const std::string fault = _form.fault(record);
    if (!fault.empty()) return fault;
    if (_window.size() != 0 && _window.position() + record.size() > _window.size())
        return "the capture ends inside its " + counted(record.captured, "byte");
    return "no record follows its " + counted(record.captured, "byte");
}

template class Records<PcapForm>;
template class Records<ErfForm>;

} // namespace Capture
