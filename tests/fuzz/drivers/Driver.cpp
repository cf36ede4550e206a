#include <fuzz/Targets.h>

#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    try {
        fuzz::ARVO_FUZZ_TARGET({data, size});
    } catch (const std::exception &finding) {
        std::fprintf(stderr, "%s\n", finding.what());
        std::abort();
    }
    return 0;
}
