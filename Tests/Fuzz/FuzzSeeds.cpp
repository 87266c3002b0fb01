// Lets libFuzzer begin with the meaningful inputs of the target: now and then one of them takes the place of
// the input that it would change.

#include "Fuzz/FuzzInput.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned random) {
    const auto& seeds = gull::fuzzSeeds;
    if (seeds.size() > 0 && random % 16 == 0) {
        const char* const seed = *(seeds.begin() + random / 16 % seeds.size());
        size = std::min(std::strlen(seed), maxSize);
        std::memcpy(data, seed, size);
        if (random / 256 % 4 == 0) return size;
    }
    return LLVMFuzzerMutate(data, size, maxSize);
}
