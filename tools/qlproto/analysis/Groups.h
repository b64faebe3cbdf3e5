// What was gathered of each value that messages have in a field. Memory is bounded: from a number of values on, further
// ones share the place of the others.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>

namespace qlproto {

template <class T>
class Groups {
  public:
    explicit Groups(std::size_t most) : _most(most) {}

    /// The place of a value, or of the messages that have none.
    T& operator[](const std::optional<std::string>& value) {
        if (!value) return _without;
        if (const auto found = _byValue.find(*value); found != _byValue.end()) return found->second;
        return _byValue.size() < _most ? _byValue[*value] : _others;
    }

    /// Calls `visit(name, T)` for each value, the others and those without.
    template <class Visit>
    void forEach(Visit visit) const {
        for (const auto& [value, it] : _byValue) visit(value.empty() ? "\"\"" : value, it);
        visit("(others)", _others);
        visit("(without)", _without);
    }

  private:
    std::size_t _most;
    std::map<std::string, T> _byValue;
    T _others, _without;
};

} // namespace qlproto
