// Registering what is measured, as "shape/operation/who".
#pragma once

#include <benchmark/benchmark.h>

#include <memory>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include "bench/Values.h"

namespace bench {

/// Measures op(i), with i going round all messages of the shape, or `count`. `op` keeps alive what it works on.
template <class Op>
void measure(const std::string& shape, const std::string& operation, const std::string& who, Op op, double bytes = 0,
             size_t count = distinct) {
    const std::string name = shape + "/" + operation + "/" + who;
    benchmark::RegisterBenchmark(name.c_str(), [op = std::move(op), bytes, count](benchmark::State& state) mutable {
        size_t i = 0;
        for ([[maybe_unused]] auto _ : state) {
            op(i);
            benchmark::ClobberMemory();
            if (++i == count) i = 0;
        }
        if (bytes != 0) state.counters["bytes"] = bytes;
    });
}

/// Mean size of bodies, for the row of bytes on the wire.
template <class Body>
double meanSize(const std::vector<Body>& bodies) {
    const size_t total = std::accumulate(bodies.begin(), bodies.end(), size_t{0},
                                         [](size_t sum, const Body& body) { return sum + body.size(); });
    return static_cast<double>(total) / static_cast<double>(bodies.size());
}

// Each file that measures something adds it through one of these.
void addOurs();
void addSession();
void addModule();
void addHostile();
void addFloors();
void addFlyweight();
void addProtobuf();
void addFlatBuffers();
void addCapnProto();
void addMsgPack();

} // namespace bench
