#include "generator/compare/RandomBody.h"

namespace qlgen::compare {

Reading RandomBody::next() {
    Reading reading;
    add(_items, reading);
    return reading;
}

void RandomBody::add(Items items, Reading& reading) {
    for (const Item& item : items) {
        const Value it = value(item);
        reading.push_back({&item, _at, it});
        if (!item.isVector) continue;
        for (uint64_t i = 0; i < it.bits; ++i) {
            _at.push_back(static_cast<uint16_t>(i));
            add(item.element, reading);
            _at.pop_back();
        }
    }
}

uint64_t RandomBody::number() {
    if (below(5) < 3) return below(5);
    const uint64_t one = uint64_t{1} << below(64);
    return below(2) == 0 ? one : ~one + below(3); // around what a width or a length can hold
}

Value RandomBody::value(const Item& item) {
    if (item.isVector) return integer(below(_at.size() < 3 ? 3 : 1), item.type->bits, false);
    Value it = zeroOf(item);
    if (item.written() == Framing::text || item.written() == Framing::fixedText) {
        it.text.resize(below(below(32) == 0 ? 200 : 4));
        for (char& c : it.text) c = static_cast<char>(below(below(2) == 0 ? 4 : 256));
    } else if (item.type->form == WireForm::boolean) {
        it.bits = below(2);
    } else if (item.enumeration != nullptr) {
        const auto& all = item.enumeration->enumerators;
        if (!all.empty()) it = integer(static_cast<uint8_t>(all[below(all.size())].value), 8, false);
    } else if (it.kind == Value::Kind::integer) {
        it = integer(number(), item.type->bits, item.isSigned());
    } else {
        const uint64_t bits = number();
        it.bits = item.type->bits == 32 ? static_cast<uint32_t>(bits) : bits;
    }
    return it;
}

} // namespace qlgen::compare
