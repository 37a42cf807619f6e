// One libFuzzer program per target of ZrFuzzEntries; ZR_FUZZ_TARGET names it.
#include <cstdio>
#include <cstdlib>

#include "ZrFuzzEntries.h"

namespace {
zrfuzz::Entry g_entry = nullptr;
}

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    g_entry = zrfuzz::findTarget(ZR_FUZZ_TARGET);
    if (!g_entry) {
        std::fprintf(stderr, "no fuzz target named %s\n", ZR_FUZZ_TARGET);
        std::exit(2);
    }
    zrfuzz::setUp();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) { return g_entry(data, size); }
