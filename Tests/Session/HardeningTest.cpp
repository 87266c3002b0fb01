// What the built game has of cmake/Hardening.cmake, read from its ELF file. Builds for debugging and with
// sanitizers have none of it.

#ifdef GULL_HARDENED

#include "Session/Process.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace gull::session {
namespace {

using testing::ContainsRegex;
using testing::HasSubstr;

std::string readelf(const std::string& what) {
    const Result result = run("readelf", {"--wide", what, GULLWICK_BINARY});
    EXPECT_EQ(result.status, 0) << result.errors;
    return result.output;
}

TEST(Hardening, TheGameIsLoadedAnywhereAndItsTablesAreReadOnly) {
    EXPECT_THAT(readelf("--file-header"), HasSubstr("DYN (Position-Independent Executable file)"));
    EXPECT_THAT(readelf("--program-headers"), HasSubstr("GNU_RELRO"));
    EXPECT_THAT(readelf("--program-headers"), ContainsRegex("GNU_STACK .* RW "));
    EXPECT_THAT(readelf("--dynamic"), ContainsRegex("FLAGS.*NOW"));
}

TEST(Hardening, TheStackAndTheCallsOfTheCLibraryAreChecked) {
    const std::string symbols = readelf("--dyn-syms");
    EXPECT_THAT(symbols, HasSubstr("__stack_chk_fail"));
    EXPECT_THAT(symbols, ContainsRegex("__(memcpy|snprintf)_chk"));
}

}  // namespace
}  // namespace gull::session

#endif
