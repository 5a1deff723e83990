// The entry point of libFuzzer. It runs the target that the program was compiled for.
#include <cstddef>
#include <cstdint>

#include "fuzz/targets.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const Fuzz::Target& target = Fuzz::findTarget(ORVEL_FUZZ_TARGET);
    target.run({data, size});
    return 0;
}
