// The values that are measured: plain structures from which every peer, ours included, fills its own messages.
#pragma once

#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

namespace bench {

#define TYPE(T) struct T {
#define NUMBER(type, name, Name, lower) type name{};
#define TEXT(name, Name, lower) std::string name;
#define RECORD(T, name, Name, lower) T name;
#define TEXTS(name, Name, lower) std::vector<std::string> name;
#define RECORDS(T, name, Name, lower) std::vector<T> name;
#define END                                                                                                            \
    }                                                                                                                  \
    ;
#include "bench/Fields.def"

/// Messages of one type and about one size. Rotated while measured, so that no branch predictor learns one by heart;
/// many more would measure the caches and the predictor's capacity instead.
template <class M>
struct Shape {
    const char* name;
    std::vector<M> values;                ///< `distinct` of them
    std::vector<std::string> transcripts; ///< of our messages decoded from our bytes; what every peer must equal
};

inline constexpr size_t distinct = 32;

using Shapes =
    std::tuple<Shape<RuThereMessage>, Shape<SubmitOrderMessage>, Shape<MktDataMessage>, Shape<MktDataMessage>,
               Shape<MktDataMessage>, Shape<TradeCaptureMessage>, Shape<DropCopyMessage>, Shape<TradeLimitDataMessage>>;

/// The field of readers that want one alone: in the midst of an order, and the first of market data.
inline int32_t chosenField(const SubmitOrderMessage& m) { return m.contents.marketID; }
inline int32_t chosenField(const MktDataMessage& m) { return m.mvd.fmID.marketID; }
template <class M>
concept HasChosenField = requires(const M& m) {
    chosenField(m);
};

/// All shapes, made at the first call. The values are realistic and the same in every run.
const Shapes& shapes();

template <class Visit>
void forEachShape(Visit&& visit) {
    std::apply([&](const auto&... shape) { (visit(shape), ...); }, shapes());
}

} // namespace bench
