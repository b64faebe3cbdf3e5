// Values picked out of a body against the walk over all of it: any choice of them, of any bytes, with a page after the body
// that must not be touched. Of a body that verify() accepts all values are the same ones; of others, those before the fault.
#include "fuzz/Input.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <string>
#include <vector>

#include "Inspect/BodyWalk.h"
#include "Inspect/Selection.h"
#include "Inspect/Verify.h"
#include "tests/Guarded.h"

namespace {

using namespace Inspect;

/// The values for which the bits of `choice` say so, one bit after the other, in declaration order.
class Chooser {
  public:
    explicit Chooser(uint64_t choice) : _choice(choice) {}
    bool next() { return (_choice >> _bit++ % 64 & 1) != 0; }

  private:
    const uint64_t _choice;
    unsigned _bit = 0;
};

/// What a value of any kind holds, to be compared.
struct Held {
    int64_t number;
    double real;
    std::string text;
    bool operator==(const Held& other) const {
        return number == other.number && text == other.text
               && std::bit_cast<uint64_t>(real) == std::bit_cast<uint64_t>(other.real);
    }
};

void check(const MessageInfo& message, std::string_view body) {
    uint64_t choice = ~uint64_t{0};
    if (!body.empty() && (body.size() & 1) != 0) std::memcpy(&choice, body.data(), std::min<size_t>(8, body.size()));

    Chooser forSelection(choice);
    std::vector<std::string> chosen; // paths without indices
    const auto plain = [](std::string path) {
        for (size_t at; (at = path.find('[')) != path.npos;) path.erase(at, path.find(']') - at + 1);
        return path;
    };
    const Selection selection(*message.type, [&](Path path, const ValueInfo& value) {
        const bool isChosen = forSelection.next();
        if (isChosen) chosen.push_back(plain(path_text(path)) + (value.kind == Kind::vector ? "#" : ""));
        return isChosen;
    });
    std::vector<Held> picked;
    const Selection::Outcome outcome = selection.read(body, [&](const Value& it) {
        picked.push_back({it.number, it.real, std::string(it.text)});
        return true;
    });

    const Result result = verify(message.id, body.data(), body.data() + body.size(), tolerant);
    FUZZ_CHECK(!result || outcome == Selection::Outcome::complete);
    size_t i = 0;
    walk_body(*message.type, body, [&](const BodyValue& it) {
        if (!result && (it.end > result.offset || it.end == it.begin)) return false; // damaged, or missing
        const std::string path = plain(std::string(it.path)) + (it.value.kind == Kind::vector ? "#" : "");
        if (std::find(chosen.begin(), chosen.end(), path) == chosen.end()) return true;
        FUZZ_CHECK(i < picked.size());
        FUZZ_CHECK(
            (picked[i++]
             == Held{is_bytes(it.value.kind) ? 0 : it.number, it.real, is_bytes(it.value.kind) ? it.text() : ""}));
        return true;
    });
    FUZZ_CHECK(!result || i == picked.size());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    initializeOnce();
    static Guarded guarded(1 << 20);
    const Input input(data, size);
    check(all_messages()[input.index], guarded.hold(input.body));
    return 0;
}
