// Slots for things that live for a while: orders, quotes. A slot's number is the token of its events.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

namespace qlproto::session {

template <class T>
class LifeCycles {
  public:
    /// Puts `value` into a free slot and returns the slot's number.
    int begin(T value) {
        if (_free.empty()) {
            _free.push_back(static_cast<int>(_slots.size()));
            _slots.emplace_back();
        }
        const int slot = _free.back();
        _free.pop_back();
        (*this)[slot] = std::move(value);
        return slot;
    }

    /// Empties the slot for another.
    void end(int slot) {
        (*this)[slot] = T();
        _free.push_back(slot);
    }

    T& operator[](int slot) { return _slots[static_cast<std::size_t>(slot)]; }
    int size() const { return static_cast<int>(_slots.size()); } ///< slots, free ones included

  private:
    std::vector<T> _slots;
    std::vector<int> _free;
};

} // namespace qlproto::session
