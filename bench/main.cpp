// Runs all measurements. The order they are added in is that of the table.
#include <chrono>

#include "bench/Measure.h"
#include "generated/QLProtocol/QLProtocol.h"

int main(int argc, char** argv) {
    // Once per process and cold, as in a host: not a thing to repeat in a loop.
    const auto start = std::chrono::steady_clock::now();
    Quillon::initialize();
    const std::chrono::duration<double, std::micro> took = std::chrono::steady_clock::now() - start;
    benchmark::AddCustomContext("initialize_us", std::to_string(took.count()));

    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    bench::addOurs();
    bench::addSession();
    bench::addModule();
    bench::addHostile();
    bench::addFloors();
    bench::addFlyweight();
    bench::addProtobuf();
    bench::addFlatBuffers();
    bench::addCapnProto();
    bench::addMsgPack();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    Quillon::finalize();
}
