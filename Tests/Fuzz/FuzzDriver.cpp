// Runs a fuzz target without libFuzzer: FuzzX [INPUTS [SEED]], or FuzzX FILE to repeat one input. Half of the
// inputs are noise, the other half come from the target's seeds by a few cuts, copies and changed bytes.

#include "Fuzz/FuzzInput.h"
#include "GullCore/Rng.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <vector>

namespace {

using namespace gull;
using Bytes = std::vector<std::uint8_t>;

Bytes bytes;  // of the present input

/// Leaves the input behind for inspection after a failure.
void keepInput(int signal) {
    std::ofstream("fuzz-input", std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

std::size_t below(SplitMix64& random, std::size_t end) {
    return end == 0 ? 0 : static_cast<std::size_t>(random.next() % end);
}

Bytes noise(SplitMix64& random) {
    Bytes result(below(random, below(random, 8) == 0 ? 4096 : 256));
    for (auto& byte : result) byte = static_cast<std::uint8_t>(random.next());
    return result;
}

Bytes changedSeed(SplitMix64& random) {
    const char* const seed = *(fuzzSeeds.begin() + below(random, fuzzSeeds.size()));
    Bytes result(seed, seed + std::strlen(seed));
    for (std::size_t changes = below(random, 5); changes > 0 && !result.empty(); --changes) {
        const auto at = result.begin() + static_cast<std::ptrdiff_t>(below(random, result.size()));
        const auto end =
            at + static_cast<std::ptrdiff_t>(below(random, static_cast<std::size_t>(result.end() - at) + 1));
        switch (below(random, 3)) {
            case 0:
                *at = static_cast<std::uint8_t>(random.next());
                break;
            case 1:
                result.erase(at, end);
                break;
            default: {
                const Bytes part(at, end);
                result.insert(result.begin() + static_cast<std::ptrdiff_t>(below(random, result.size())),
                              part.begin(), part.end());
            }
        }
    }
    return result;
}

}  // namespace

int main(int argc, char** argv) {
    char* end = nullptr;
    const unsigned long inputs = argc > 1 ? std::strtoul(argv[1], &end, 10) : 1000;
    if (end && *end != '\0') {
        std::ifstream file(argv[1], std::ios::binary);
        bytes.assign(std::istreambuf_iterator<char>(file), {});
        return LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    }
    for (const int signal : {SIGABRT, SIGSEGV, SIGFPE}) std::signal(signal, keepInput);
    SplitMix64 random(argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 1);
    for (unsigned long i = 0; i < inputs; ++i) {
        bytes = fuzzSeeds.size() > 0 && i % 2 == 0 ? changedSeed(random) : noise(random);
        LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    }
    std::printf("%lu inputs\n", inputs);
    return 0;
}
