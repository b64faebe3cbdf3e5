// What rings and buses cost, between processes, and checkers that run for as long as one likes.
//
//     qlhostbench rates [iceoryx]  on one machine: memcpy, publishing, one publisher and one subscriber, against others
//     qlhostbench nats URL         over a NATS server, against its library alone
//     qlhostbench check MILLIONS   so many operations of pool and ring by several threads
//
// Rates are to be compared within one run only.
#include "bench/host/Runs.h"

int main(int argc, char** argv) {
    const std::string what = argc > 1 ? argv[1] : "rates";
    Quillon::initialize();
    if (what == "check")
        bench::check((argc > 2 ? std::stoull(argv[2]) : 100) * 1'000'000);
    else if (what == "nats" && argc > 2)
        bench::natsRates(argv[2]);
    else
        bench::rates(argc > 2);
    Quillon::finalize();
}
