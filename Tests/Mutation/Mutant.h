#pragma once

// Included by the changed sources that mutate.py writes.

#include <fcntl.h>
#include <unistd.h>

#include <bitset>
#include <cstdlib>
#include <string>

namespace mutation {

/// The change that this process makes: its number in the environment variable MUTANT; 0 for none.
inline const int active = std::getenv("MUTANT") ? std::atoi(std::getenv("MUTANT")) : 0;
/// Where the numbers of all places are noted that are reached, once each; -1 where nobody asked.
inline const int trace = std::getenv("MUTANT_TRACE")
                             ? ::open(std::getenv("MUTANT_TRACE"), O_WRONLY | O_APPEND | O_CREAT, 0600)
                             : -1;
inline std::bitset<20000> reached;

inline bool is(int number) {
    if (trace >= 0 && !reached[static_cast<std::size_t>(number)]) {
        reached.set(static_cast<std::size_t>(number));
        const std::string line = std::to_string(number) + "\n";
        if (::write(trace, line.data(), line.size()) < 0) std::abort();
    }
    return number == active;
}

}  // namespace mutation
