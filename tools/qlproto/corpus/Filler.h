// Values for every message from its field list alone, for vectors at the limits of what can travel.
#pragma once

#include <concepts>
#include <limits>
#include <string>

#include "Backend/Velmora/Enumeration.h"
#include "Backend/Velmora/Wire.h"
#include "generated/QLProtocol/QLProtocol.fields.h"

namespace qlproto::corpus {

enum class Filling {
    small,     ///< one-byte numbers, texts of a few letters, two elements in every vector
    least,     ///< the least of every number and the first enumerator
    most,      ///< the greatest of every number and the last enumerator
    sentinels, ///< in every 64-bit number, one sentinel after the other
    bytes,     ///< all bytes in the first text, whose length takes two bytes thereby; one of them in each other
    counts,    ///< as small, with 130 elements in vectors of numbers and strings, whose counts take two bytes thereby
};

class Filler {
  public:
    explicit Filler(Filling filling) : _filling(filling) {}

    /// Sets every field of a freshly constructed message.
    template <class T>
    void fill(T& value) {
        if constexpr (Velmora::Composite<T>) {
            fields(Velmora::of<T>{}, [&](const char*, auto member, auto) { return fill(value.*member), true; });
        } else if constexpr (Velmora::Vector<T>) {
            using Element = typename T::value_type;
            constexpr bool isSimple = !Velmora::Composite<Element>;
            value.resize(_filling == Filling::counts && isSimple ? 130 : isSmall() ? 2 : 1);
            for (std::size_t i = 0; i < value.size(); ++i) fill(value[i]);
        } else if constexpr (Velmora::String<T>) {
            value = text();
        } else if constexpr (Velmora::Enumerator<T>) {
            value = enumerator<Velmora::EnumerationOf<T>>();
        } else {
            value = number<T>();
        }
    }

  private:
    bool isSmall() const { return _filling == Filling::small || _filling == Filling::counts; }

    std::string text() {
        if (isSmall()) return {"abc", 1 + _step++ % 3};
        if (_filling != Filling::bytes) return "";
        if (_texts++ != 0) return std::string(1, static_cast<char>(0x80 - _texts));
        std::string all(256, '\0');
        for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<char>(i);
        return all;
    }

    template <class Helper>
    auto enumerator() {
        return Helper::_fromIndex[_filling == Filling::most ? Helper::_nbValues - 1
                                  : isSmall()               ? _step++ % Helper::_nbValues
                                                            : 0];
    }

    template <class T>
    T number() {
        static constexpr int64_t sentinels[] = {Velmora::MAX, Velmora::NMA, Velmora::NDA, Velmora::NA};
        switch (_filling) {
        case Filling::least:
            return std::numeric_limits<T>::min();
        case Filling::most:
            return std::numeric_limits<T>::max();
        case Filling::sentinels:
            if constexpr (std::same_as<T, int64_t>) return sentinels[_step++ % 4];
            return T{};
        default:
            return static_cast<T>(_step++ % 29 + 1);
        }
    }

    Filling _filling;
    unsigned _step = 0;
    int _texts = 0;
};

} // namespace qlproto::corpus
