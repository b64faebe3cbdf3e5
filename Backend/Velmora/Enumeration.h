// The operations of the enumeration helpers, written once for all of them.
//
// A helper H (generated, for example Quillon::Side) has no instances, only static members: the enumeration `Type`, its
// `Name`, and three tables that H::initialize() fills:
//
//     _names[value]     the enumerator's name, null where no enumerator has that value
//     _toIndex[value]   the enumerator's ordinal in declaration order, 0 where none has that value
//     _fromIndex[k]     the value of the enumerator with ordinal k
//
// The value tables are as long as the largest value asks for, so that a lookup is one read. A byte beyond them counts
// as a value without a name.
#pragma once

#include <algorithm>
#include <cstring>
#include <ostream>
#include <stdexcept>
#include <string>

#include "Backend/Common/Inline.h"
#include "Backend/Velmora/FieldList.h"

/// Calls the hook of a protocol, which declares it, only for an invalid value, so that the field's name becomes a string
/// only then.
// clang-format off
#define VALIDATE_ENUM(fieldName, valid) { if ( !valid ) validateEnum(fieldName, valid); }
// clang-format on

namespace Velmora {

/// Fills the tables of helper H from its enumerator list. May run again; it writes the same contents.
template <class H>
void initializeEnumeration() {
    for (const char*& name : H::_names) name = nullptr;
    unsigned int index = 0;
    enumerators(of<H>{}, [&](const char* name, typename H::Type value) {
        H::_names[value] = name;
        H::_toIndex[value] = static_cast<unsigned char>(index);
        H::_fromIndex[index] = value;
        ++index;
    });
    H::_initialized = true;
}

/// The name of the enumerator of that value, or null.
template <class H>
QL_FORCE_INLINE const char* enumeratorName(unsigned char value) {
    const size_t slot = value;
    if constexpr (H::_maxValue < 255)
        if (slot > H::_maxValue) return nullptr;
    return H::_names[slot];
}

/// The same of any value, also one that does not fit a byte.
template <class H>
const char* enumeratorName(typename H::Type value) {
    return static_cast<unsigned int>(value) <= H::_maxValue ? H::_names[value] : nullptr;
}

/// The lowest enumerator's value.
template <class H>
constexpr unsigned int lowestEnumerator() {
    unsigned int lowest = H::_maxValue;
    enumerators(of<H>{}, [&](const char*, auto v) { lowest = std::min(lowest, static_cast<unsigned int>(v)); });
    return lowest;
}

/// The length of the name of an enumerator, known without a look at the name.
template <class H>
QL_FORCE_INLINE size_t enumeratorNameLength(typename H::Type value) {
    constexpr unsigned int lowest = lowestEnumerator<H>();
    struct Lengths {
        unsigned char of[H::_maxValue - lowest + 1] = {};
    };
    static constexpr Lengths lengths = [] {
        Lengths made;
        enumerators(of<H>{}, [&](const char* name, auto v) {
            made.of[static_cast<unsigned int>(v) - lowest] =
                static_cast<unsigned char>(std::char_traits<char>::length(name));
        });
        return made;
    }();
    return lengths.of[static_cast<unsigned int>(value) - lowest];
}

/// The ordinal of an enumerator; 0 for a value that is none.
template <class H>
QL_FORCE_INLINE unsigned char enumeratorIndex(typename H::Type value) {
    return static_cast<unsigned int>(value) <= H::_maxValue ? H::_toIndex[value] : 0;
}

/// H::isValid(value) for helpers that are initialised. Where the enumerators have no gap it needs no look at the table.
template <class H>
QL_FORCE_INLINE bool isEnumerator(unsigned char value) {
    constexpr unsigned int lowest = lowestEnumerator<H>();
    constexpr unsigned int span = H::_maxValue - lowest;
    if constexpr (span + 1 == H::_nbValues)
        return value - lowest <= span; // what lies below has wrapped around
    else
        return enumeratorName<H>(value) != nullptr;
}

/// Reports a byte to the hook of H's protocol if it has no name, out of line. The protocol's validateEnum(of<H>, ...) is
/// found by H.
template <class H>
QL_COLD_PATH void validateRare(unsigned char value, const char* fieldName) {
    validateEnum(of<H>{}, fieldName, H::isValid(value));
}

/// Whether validate() has something to say.
template <class H>
QL_FORCE_INLINE bool isDoubtful(unsigned char value) {
    return __builtin_expect(!H::_initialized || !isEnumerator<H>(value), 0);
}

/// Checks the byte of an enumeration field on its way to or from the wire. Asserts, as isValid() does, that H is
/// initialised.
template <class H>
QL_FORCE_INLINE void validate(unsigned char value, const char* fieldName) {
    if (isDoubtful<H>(value)) validateRare<H>(value, fieldName);
}

/// The value as an enumerator. Throws std::invalid_argument if it is none.
template <class H>
typename H::Type enumeratorFromValue(unsigned char value) {
    if (H::isValid(value)) return static_cast<typename H::Type>(value);
    // Deliberate: the value is inserted as a character, not as digits, and 0 therefore ends the text. Hosts match on
    // it.
    std::string text = std::string("Invalid value for ") + H::Name + ": ";
    if (value != 0) text += static_cast<char>(value);
    throw std::invalid_argument(text);
}

/// The enumerator of that exact name. Throws std::invalid_argument if there is none or `text` is null.
template <class H>
typename H::Type enumeratorFromString(const char* text) {
    if (text == nullptr)
        throw std::invalid_argument(std::string("Empty string for converting to enum ") + H::Name + ".");
    for (unsigned int value = 0; value <= H::_maxValue; ++value)
        if (H::_names[value] != nullptr && std::strcmp(H::_names[value], text) == 0)
            return static_cast<typename H::Type>(value);
    throw std::invalid_argument(std::string("Invalid string '") + text + "' for converting to enum " + H::Name + ".");
}

/// Writes the enumerator's name, never padded: a field width is used up without effect. A value without a name writes
/// nothing and turns a standard stream bad, as inserting a null text does; a FastOStream is left as it is. Only the low
/// byte of the value is looked at.
template <class H, class Stream>
Stream& printEnumerator(Stream& os, typename H::Type value) {
    const char* name = H::toString(static_cast<unsigned char>(value));
    if constexpr (std::is_base_of_v<std::ostream, Stream>) {
        if (name == nullptr) {
            os.setstate(std::ios_base::badbit);
            return os;
        }
        os.width(0);
    }
    os << name; // a FastOStream writes nothing for a null text
    return os;
}

} // namespace Velmora
