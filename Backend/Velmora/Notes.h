// What a definition says for people and tools about what it declares. Nothing of it changes how a value travels.
//
// The generated header QLProtocol.traits.h holds three functions, found by their argument:
//
//     TypeNotes typeNotes(of<X>)                           of an enumeration, a record or a message
//     std::array<FieldNotes, N> fieldNotes(of<X>)          of the fields, in the order of fields(of<X>, visit)
//     std::array<EnumeratorNotes, N> enumeratorNotes(of<H>)   of the enumerators, in the order of enumerators(of<H>, visit)
#pragma once

#include "Backend/Velmora/FieldList.h"

namespace Velmora {

// Texts are static. Those that are not given are empty.

struct TypeNotes {
    const char* name;
    const char* doc = "";
    const char* deprecated = ""; ///< why it is to be used no more; empty if it may be
};

struct FieldNotes {
    const char* doc = "";
    const char* deprecated = ""; ///< as of a type
    const char* identifies = ""; ///< what the value is the identifier of: "order"; empty if of nothing
    const char* station = "";    ///< where the time that it holds was taken: "exchange"; empty if it holds none
    bool isSecret = false;       ///< not to be shown in logs, and neither is what it holds
};

struct EnumeratorNotes {
    const char* doc = "";
    const char* deprecated = ""; ///< as of a type
};

/// The traits of the protocol that T belongs to. `protocolOf(of<T>)` is generated per protocol and never defined.
template <class T>
using ProtocolOf = decltype(protocolOf(of<T>{}));

} // namespace Velmora
