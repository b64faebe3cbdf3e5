// Runs every operation on every message under callgrind, which counts the instructions of each; see
// scripts/count-instructions. Run by itself it only does the work.
#include <valgrind/callgrind.h>

#include <memory>
#include <ostream>
#include <string_view>

#include <unistd.h>

#include "Host/MemRing.h"
#include "Inspect/Checked.h"
#include "bench/Ours.h"

namespace bench {
namespace {

/// Counts op(i) over all messages of a shape and dumps the count under that name. The first round warms up what is set
/// up at the first use, such as the addresses of a shared library's functions.
template <class Op>
void count(const std::string& name, Op&& op) {
    for (size_t i = 0; i < distinct; ++i) op(i);
    CALLGRIND_ZERO_STATS;
    CALLGRIND_TOGGLE_COLLECT;
    for (size_t i = 0; i < distinct; ++i) op(i);
    CALLGRIND_TOGGLE_COLLECT;
    CALLGRIND_DUMP_STATS_AT(name.c_str());
}

template <class M>
void countShape(const Shape<M>& shape) {
    using T = typename OurType<M>::type;
    OurMessages<M> ours(shape), others(shape);
    Scratch scratch;
    std::vector<char> out(plenty);
    char* const begin = out.data();
    char* const end = begin + plenty;
    bool keep = false, refused = false;

    const std::string name = shape.name;
    count(name + "/encode", [&](size_t i) {
        Velmora::FastCodec codec(begin, end);
        ours[i].write(codec);
    });
    count(name + "/safe-encode", [&](size_t i) { refused |= !Inspect::encode_checked(ours[i], begin, end); });
    count(name + "/decode", [&](size_t i) { ours.decode(i, scratch); });
    count(name + "/safe-decode", [&](size_t i) {
        scratch.restart();
        const std::string_view body(ours.bodies[i].data(), ours.bodies[i].size());
        refused |= Inspect::decode_verified<T>(body, scratch.alloc).object.release() == nullptr;
    });
    count(name + "/verify", [&](size_t i) {
        const std::vector<char>& body = ours.bodies[i];
        refused |= !Inspect::verify<T>(body.data(), body.data() + body.size(), Inspect::strict);
    });
    count(name + "/compare", [&](size_t i) { keep ^= ours[i] == others[i]; });
    count(name + "/copy", [&](size_t i) { scratch.fresh<T>() = ours[i]; });
    count(name + "/print", [&](size_t i) {
        Quillon::FastOStream text(begin, end);
        text << ours[i];
    });
    if (keep || refused) std::abort(); // an even number of equal messages; used, so that nothing can be left out
}

/// What a ring adds to the encoding, and what it takes to read one; nobody waits, so that nobody is woken.
template <class M>
void countRing(const Shape<M>& shape) {
    using T = typename OurType<M>::type;
    OurMessages<M> ours(shape);
    const std::string path = "/dev/shm/qlinstructions-" + std::to_string(getpid());
    Host::MemRing ring = Host::MemRing::open(path);
    unlink(path.c_str());
    Host::RingReader reader(ring);
    bool refused = false;
    const std::string name = shape.name;
    count(name + "/ring-publish", [&](size_t i) {
        uint64_t sequence = 0;
        refused |= !ring.publish(Inspect::default_protocol(), T::ID, &ours[i], 1, sequence);
    });
    Host::Record record;
    count(name + "/ring-read", [&](size_t) { refused |= !reader.next(record); });
    if (refused) std::abort();
}

} // namespace
} // namespace bench

int main() {
    Quillon::initialize();
    bench::forEachShape([](const auto& shape) { bench::countShape(shape); });
    bench::forEachShape([](const auto& shape) {
        if (shape.name == std::string_view("SubmitOrder")) bench::countRing(shape);
    });
    Quillon::finalize();
}
