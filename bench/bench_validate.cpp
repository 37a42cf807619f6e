// Validating reads of the same board, over and over: the time of one, and a
// soak loop that shows whether resident memory stays flat as grammars are
// reused. The soak runs first; ZR_BENCH_VALIDATE_ROUNDS sets its length
// (10,000 by default) and the program fails if memory grew past its margin.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "ComMsgMgr.h"
#include "HBOBoard.h"
#include "HBOParser.h"
#include "HBOXercesReader.h"
#include "HPAParamMgr.h"

namespace {

const std::string kBoard = std::string(ZR_BENCH_SOURCE_DIR) + "/data/boards/board_files/tarnwick/1.2/board.xml";

long residentKiB() {
    std::ifstream statm("/proc/self/statm");
    long size = 0, resident = 0;
    if (!(statm >> size >> resident))
        return -1;
    return resident * 4;
}

bool readValidated() {
    HBOBoard board;
    return HBOParser().parseFile(kBoard, &board);
}

void BM_ValidatingRead(benchmark::State& state) {
    for (auto _ : state)
        if (!readValidated())
            state.SkipWithError("the board did not read");
}
BENCHMARK(BM_ValidatingRead)->Unit(benchmark::kMillisecond);

// Memory is taken after a warm-up, when allocator pools and caches have
// settled; growth past the margin over the remaining rounds is a leak.
bool soak(long rounds) {
    const long warmUp = rounds < 1000 ? rounds / 5 : 200;
    for (long i = 0; i < warmUp; ++i)
        if (!readValidated())
            return false;
    const long before = residentKiB();
    for (long i = warmUp; i < rounds; ++i)
        if (!readValidated())
            return false;
    const long after = residentKiB();
    const long marginKiB = 512;
    std::printf("soak: %ld validating reads, resident %ld KiB after %ld, %ld KiB at the end (%+ld KiB), "
                "grammar files read: %u\n",
                rounds, before, warmUp, after, after - before, HBOXercesReader::grammarLoads());
    return after - before <= marginKiB;
}

}  // namespace

int main(int argc, char** argv) {
    HPAParamMgr::getParamMgr()->setValue("board.validateXML", "true");
    ComMsgMgr::setPrintToStderr(false);
    const char* env = std::getenv("ZR_BENCH_VALIDATE_ROUNDS");
    const long rounds = env ? std::atol(env) : 10000;
    if (!soak(rounds)) {
        std::fprintf(stderr, "soak: the board did not read, or resident memory grew\n");
        return 1;
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
