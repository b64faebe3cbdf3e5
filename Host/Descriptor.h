// An open file of the system, closed at the end.
#pragma once

#include <utility>

#include <unistd.h>

namespace Host {

class Descriptor {
  public:
    explicit Descriptor(int number = -1) : _number(number) {} ///< negative: none
    Descriptor(Descriptor&& other) noexcept : _number(std::exchange(other._number, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(_number, other._number);
        return *this;
    }
    ~Descriptor() {
        if (_number >= 0) ::close(_number);
    }

    explicit operator bool() const { return _number >= 0; }
    int number() const { return _number; }

  private:
    int _number;
};

} // namespace Host
