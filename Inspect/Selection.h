// Chosen values out of bodies of one type, by paths known at run time, without building messages: for filters, keys and
// listings.
//
//     const Inspect::Selection market = Inspect::Selection::at(*type, "contents.marketID");
//     market.read(body, [](const Inspect::Value& value) { ...; return true; });
//
// A selection is made once and is a list of steps: what to step over and what to read. It reads as peek() does (Peek.h),
// which is quicker where the path is known to the compiler.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "Inspect/Skipper.h"
#include "Inspect/Values.h"

namespace Inspect {

class Selection {
  public:
    /// The values for which `choose(path, value)` holds; it is asked of each field, of vectors, and of their elements, of
    /// which each stands for all: the index in the path is 0.
    Selection(const TypeInfo& type, const std::function<bool(Path, const ValueInfo&)>& choose);

    /// One value: "contents.parameters[3].value". Of a vector it is the number of elements. Throws std::invalid_argument if
    /// bodies of the type have no such value.
    static Selection at(const TypeInfo& type, std::string_view path);

    bool isEmpty() const { return _steps.empty(); } ///< whether nothing was chosen

    enum class Outcome {
        complete,
        stopped, ///< the visitor ended it
        missing, ///< the body ends before the last value chosen, or has no such element
    };

    /// Calls `visit(value)` for the values, in the order in which they travel, until it returns false. Texts, deciphered where
    /// they travel enciphered, are valid during the call. Of a body that is refused by verify() the values before the fault
    /// are those that read() would make of it.
    template <class Visit>
    Outcome read(std::string_view body, Visit&& visit) const {
        Skipper at(body.data(), body.data() + body.size());
        Showing<Visit> showing{visit};
        if (run(0, _steps.size(), at, showing)) return Outcome::complete;
        return at.isAtEnd() ? Outcome::missing : Outcome::stopped;
    }

    /// The same for those who know what was chosen: each value comes with its number among the chosen ones, as
    /// to.number(i, number), to.real(i, number), to.text(i, bytes), or of a vector to.elements(i, count). REQUIRES: verify()
    /// accepts the body.
    template <class To>
    void pour(std::string_view body, To&& to) const {
        Skipper at(body.data(), body.data() + body.size());
        std::string room;
        Pouring<To> pouring{to, room};
        run(0, _steps.size(), at, pouring);
    }

  private:
    struct Step {
        enum class Kind : uint8_t {
            numbers,     ///< steps over `n` varints
            bytes,       ///< steps over `n` bytes
            text,        ///< steps over a text
            fixedText,   ///< the same with two bytes of length
            read,        ///< shows the value
            vector,      ///< does the next `n` steps for each element, of which each takes `least` bytes
            shownVector, ///< the same, and shows how many there are
            element,     ///< does the next `n` steps for the elements before `index`, and goes on with that one
        } kind;
        Inspect::Kind value = {};
        bool isSecret = false;
        bool isTime = false;
        size_t n = 0;
        size_t least = 0;
        size_t index = 0;
        size_t number = 0; ///< of what is shown: its place among that
        const EnumerationInfo* enumeration = nullptr;
    };

    Selection() = default;

    class Builder;

    /// What is done with the values that are read. False ends it.
    template <class Visit>
    struct Showing {
        Visit& visit;
        bool value(const Step& step, Skipper& at) const {
            std::string room;
            const Value value = take(step, at, room);
            return !at.isAtEnd() && visit(value);
        }
        bool vector(const Step& step, size_t count) const {
            return visit(Value{
                .kind = step.value, .number = static_cast<int64_t>(count), .text = {}, .isSecret = step.isSecret});
        }
    };
    template <class To>
    struct Pouring {
        To& to;
        std::string& room;
        QL_FORCE_INLINE bool value(const Step& step, Skipper& at) const {
            hand(step, at, room, to);
            return true;
        }
        QL_FORCE_INLINE bool vector(const Step& step, size_t count) const {
            to.elements(step.number, count);
            return true;
        }
    };

    template <class Do>
    bool run(size_t begin, size_t end, Skipper& at, const Do& it) const;

    /// A value that is none but itself. A text that travels enciphered is deciphered into `room`.
    static Value take(const Step& step, Skipper& at, std::string& room);
    static std::string_view decipher(std::string_view text, std::string& room);
    template <class To>
    static void hand(const Step& step, Skipper& at, std::string& room, To& to);

    std::vector<Step> _steps;
};

/// The steps [begin, end). False if the visitor ended it or the body did.
template <class Do>
bool Selection::run(size_t begin, size_t end, Skipper& at, const Do& it) const {
    for (size_t i = begin; i != end; ++i) {
        const Step& step = _steps[i];
        switch (step.kind) {
        case Step::Kind::numbers:
            at.numbers(step.n);
            break;
        case Step::Kind::bytes:
            at.bytes(step.n);
            break;
        case Step::Kind::text:
            at.text();
            break;
        case Step::Kind::fixedText:
            at.fixedText();
            break;
        case Step::Kind::read:
            if (!it.value(step, at)) return false;
            break;
        case Step::Kind::vector:
        case Step::Kind::shownVector: {
            const size_t count = at.count(step.least);
            if (at.isAtEnd()) return false;
            if (step.kind == Step::Kind::shownVector && !it.vector(step, count)) return false;
            for (size_t k = 0; k < count && step.n != 0; ++k)
                if (!run(i + 1, i + 1 + step.n, at, it)) return false;
            i += step.n;
            break;
        }
        case Step::Kind::element:
            if (step.index >= at.count(step.least)) at.giveUp();
            for (size_t k = 0; k < step.index && !at.isAtEnd(); ++k) run(i + 1, i + 1 + step.n, at, it);
            i += step.n;
            break;
        }
        if (at.isAtEnd()) return false;
    }
    return true;
}

/// Hands over the value, in the form that its kind has. A text that travels enciphered is deciphered into `room`.
template <class To>
QL_FORCE_INLINE void Selection::hand(const Step& step, Skipper& at, std::string& room, To& to) {
    const auto zigzag = [&]<class Signed>(Signed) -> int64_t {
        return Velmora::unzigzag<Signed>(at.number<std::make_unsigned_t<Signed>>());
    };
    switch (step.value) {
    case Kind::boolean:
        return to.number(step.number, at.held<uint8_t>() != 0);
    case Kind::int8:
        return to.number(step.number, at.held<int8_t>());
    case Kind::uint8:
    case Kind::enumeration:
        return to.number(step.number, at.held<uint8_t>());
    case Kind::int16:
        return to.number(step.number, zigzag(int16_t{}));
    case Kind::int32:
        return to.number(step.number, zigzag(int32_t{}));
    case Kind::int64:
        return to.number(step.number, zigzag(int64_t{}));
    case Kind::price:
        return to.number(step.number, static_cast<int64_t>(at.price()));
    case Kind::uint16:
        return to.number(step.number, at.number<uint16_t>());
    case Kind::uint32:
        return to.number(step.number, at.number<uint32_t>());
    case Kind::uint64:
        return to.number(step.number, static_cast<int64_t>(at.number<uint64_t>()));
    case Kind::uint16Fixed:
        return to.number(step.number, at.held<uint16_t>());
    case Kind::uint32Fixed:
        return to.number(step.number, at.held<uint32_t>());
    case Kind::int64Fixed:
        return to.number(step.number, at.held<int64_t>());
    case Kind::float4:
        return to.real(step.number, at.held<float>());
    case Kind::float8:
        return to.real(step.number, at.held<double>());
    case Kind::stringFixed:
        return to.text(step.number, at.fixedText());
    case Kind::string:
    case Kind::padding:
    case Kind::blob:
        return to.text(step.number, at.text());
    case Kind::cryptstring:
    case Kind::cryptblob:
        return to.text(step.number, decipher(at.text(), room));
    case Kind::record:
    case Kind::vector:
        break; // have steps of their own
    }
}

} // namespace Inspect
