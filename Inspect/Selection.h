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
        if (run(0, _steps.size(), at, visit)) return Outcome::complete;
        return at.isAtEnd() ? Outcome::missing : Outcome::stopped;
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
        const EnumerationInfo* enumeration = nullptr;
    };

    Selection() = default;

    class Builder;

    template <class Visit>
    bool run(size_t begin, size_t end, Skipper& at, Visit&& visit) const;

    /// A value that is none but itself. A text that travels enciphered is deciphered into `room`.
    static Value take(const Step& step, Skipper& at, std::string& room);

    std::vector<Step> _steps;
};

/// The steps [begin, end). False if the visitor ended it or the body did.
template <class Visit>
bool Selection::run(size_t begin, size_t end, Skipper& at, Visit&& visit) const {
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
        case Step::Kind::read: {
            std::string room;
            const Value value = take(step, at, room);
            if (at.isAtEnd() || !visit(value)) return false;
            break;
        }
        case Step::Kind::vector:
        case Step::Kind::shownVector: {
            const size_t count = at.count(step.least);
            if (at.isAtEnd()) return false;
            if (step.kind == Step::Kind::shownVector
                && !visit(Value{
                    .kind = step.value, .number = static_cast<int64_t>(count), .text = {}, .isSecret = step.isSecret}))
                return false;
            for (size_t k = 0; k < count && step.n != 0; ++k)
                if (!run(i + 1, i + 1 + step.n, at, visit)) return false;
            i += step.n;
            break;
        }
        case Step::Kind::element:
            if (step.index >= at.count(step.least)) at.giveUp();
            for (size_t k = 0; k < step.index && !at.isAtEnd(); ++k) run(i + 1, i + 1 + step.n, at, visit);
            i += step.n;
            break;
        }
        if (at.isAtEnd()) return false;
    }
    return true;
}

} // namespace Inspect
