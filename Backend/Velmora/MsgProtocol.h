// A protocol as its users see it at run time: identity, and a descriptor for every message identifier.
#pragma once

#include <cstddef>
#include <string>

#include "Backend/Velmora/MsgDescriptor.h"

namespace Velmora {

/// The order of the virtual operations is a contract with code built apart from this module. All texts are static.
class MsgProtocol {
  public:
    virtual ~MsgProtocol() = default;

    virtual const char* getName() const = 0;
    /// The descriptor of that message type, or null if the protocol has none. The protocol keeps the ownership.
    virtual MsgDescriptor* getDescriptor(MsgType_t id) const = 0;
    /// The definition as offered to peers; stores its length in bytes. Never null.
    virtual const void* getCompressedDefinition(size_t& length) const = 0;
    /// The definition as text: what getCompressedDefinition() offers, which this framework knows no compressed form of.
    virtual std::string getDefinition() const;
    virtual const char* getSignature() const = 0;        ///< of the protocol; 32 hexadecimal digits
    virtual const char* getSignatureAPI() const = 0;     ///< of its API view
    virtual const char* getSignatureStorage() const = 0; ///< of its storage view
    /// The message identifiers in the order of MsgDescriptor::index(); stores their number.
    virtual const int* getMessageIndex(size_t& count) const = 0;
    /// The name of a message type. The caller guarantees that the protocol has it.
    virtual const char* getMessageName(MsgType_t id) const = 0;
};

} // namespace Velmora
