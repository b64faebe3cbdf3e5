// Random values that a writer can send, mostly small ones: where a body can be misread at all, some of them often are.
#pragma once

#include <random>

#include "generator/compare/Body.h"

namespace qlgen::compare {

class RandomBody {
  public:
    explicit RandomBody(Items items) : _items(items) {}

    /// The next one; the same sequence in every run.
    Reading next();

  private:
    void add(Items items, Reading& reading);
    Value value(const Item& item);
    uint64_t number();
    size_t below(size_t n) { return _engine() % n; }

    const Items _items;
    std::mt19937_64 _engine;
    std::vector<uint16_t> _at;
};

} // namespace qlgen::compare
