// Messages in blocks of a pool, held by values that give the block back at the end.
//
//     OwnedMessage message(pool.decode(protocol, id, body, result));   // one thread has it, and may change it
//     SharedMessage shared = std::move(message).share();               // any number read it, each by a copy of this
#pragma once

#include <utility>

#include "Host/MsgControl.h"

namespace Velmora {

class SharedMessage {
  public:
    SharedMessage() = default;
    /// Empty if the block has MsgControl::MOST_READERS already.
    SharedMessage(const SharedMessage& other)
        : _control(other._control != nullptr && other._control->acquireReader() ? other._control : nullptr) {}
    SharedMessage(SharedMessage&& other) noexcept : _control(std::exchange(other._control, nullptr)) {}
    SharedMessage& operator=(SharedMessage other) noexcept {
        std::swap(_control, other._control);
        return *this;
    }
    ~SharedMessage() {
        if (_control != nullptr) _control->releaseReader();
    }

    explicit operator bool() const { return _control != nullptr; }
    const void* get() const { return _control->get(); } ///< the message. REQUIRES: not empty, as all below
    MsgType_t id() const { return _control->id(); }
    const MsgControl& control() const { return *_control; }

  private:
    friend class OwnedMessage;
    explicit SharedMessage(MsgControl* control) : _control(control) {}

    MsgControl* _control = nullptr;
};

class OwnedMessage {
  public:
    OwnedMessage() = default;
    /// Takes the writer's place, as MsgBlockPool hands it out; null makes an empty one.
    explicit OwnedMessage(MsgControl* control) : _control(control) {}
    OwnedMessage(OwnedMessage&& other) noexcept : _control(std::exchange(other._control, nullptr)) {}
    OwnedMessage& operator=(OwnedMessage&& other) noexcept {
        std::swap(_control, other._control);
        return *this;
    }
    ~OwnedMessage() {
        if (_control != nullptr) _control->releaseWriter();
    }

    explicit operator bool() const { return _control != nullptr; }
    void* get() const { return _control->get(); } ///< the message. REQUIRES: not empty, as all below
    MsgType_t id() const { return _control->id(); }
    MsgControl& control() const { return *_control; }

    /// Ends the writing. An empty one stays empty.
    SharedMessage share() && {
        if (_control != nullptr) _control->share();
        return SharedMessage(std::exchange(_control, nullptr));
    }

  private:
    MsgControl* _control = nullptr;
};

} // namespace Velmora
