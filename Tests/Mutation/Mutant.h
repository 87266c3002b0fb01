#pragma once

// Included by the changed sources that mutate.py writes.

#include <cstdlib>

namespace mutation {

inline int numberIn(const char* variable) {
    const char* const text = std::getenv(variable);
    return text ? std::atoi(text) : 0;
}

/// The change that this process makes: its number in the environment variable MUTANT; 0 for none.
inline int active = numberIn("MUTANT");
/// Whether the first time that a place is reached matters: in a process that notes it, or that tries changes
/// in copies of itself. See Fork.h.
inline bool watching = std::getenv("MUTANT_TRACE") || std::getenv("MUTANT_TRY");
/// What happens there; true in a copy that makes the change.
bool reached(int number);

/// A load or two and a comparison: the changed places lie in loops over samples.
[[gnu::always_inline]] inline bool is(int number) {
    if (watching) [[unlikely]]
        return reached(number);
    return number == active;
}

}  // namespace mutation
