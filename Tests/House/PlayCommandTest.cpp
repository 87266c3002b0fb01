#include "TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <cstdlib>
#include <string>

namespace gull {
namespace {

namespace fs = std::filesystem;

/// A checkout with the real script in it; its tools and game are stand-ins that only report how they were
/// called.
class PlayCommandTest : public testing::Test {
  protected:
    TemporaryFolder folder_;
    fs::path root_ = folder_ / "the checkout";

    void SetUp() override {
        fs::create_directories(root_ / "cmake");
        fs::copy_file("play", root_ / "play");
        fs::copy_file("cmake/commands.sh", root_ / "cmake/commands.sh");
        // Everything installed, except what a test takes out.
        script("tools/dpkg-query",
               "sed -n '/Packages=(/,/)/p' \"$ROOT/cmake/commands.sh\" | grep '^    ' | xargs -n 1 |"
               "grep -vxF \"${MISSING-none}\" | sed 's/$/ installed/'");
        script("tools/apt-get", "echo apt-get \"$@\" >> \"$ROOT/called\"");
        script("tools/cmake", "echo from cmake; echo from cmake >&2; exit ${CMAKE_STATUS-0}");
        script("tools/id", "echo 0");
        script("the checkout/build/Sources/gullwick",
               "pwd; for word; do echo \"<$word>\"; done; echo complaint >&2; exit 7");
    }

    void script(const std::string& name, const std::string& body) {
        const fs::path file = folder_ / name;
        fs::create_directories(file.parent_path());
        writeText(file, "#!/bin/bash\n" + body + "\n");
        fs::permissions(file, fs::perms(0755));
    }

    struct Result {
        std::string out, err;
        int status;
    };
    /// Runs a command line in the temporary folder.
    Result run(const std::string& command) {
        const std::string line =
            "cd '" + folder_.path().string() +
            "' && export ROOT=\"$PWD/the checkout\" && PATH=" + "\"$PWD/tools:$PATH\" && { " + command +
            "; } >out 2>err";
        const int status = std::system(line.c_str());
        return {readText(folder_ / "out"), readText(folder_ / "err"), WEXITSTATUS(status)};
    }
};

TEST_F(PlayCommandTest, theGameGetsItsArgumentsAndKeepsItsOutputAndStatus) {
    const std::string expected = fs::canonical(folder_.path()).string() + "\n<--shot>\n<a b.png>\n<>\n<*>\n";
    const std::string arguments = R"( --shot "a b.png" "" '*')";
    fs::create_symlink("the checkout/play", folder_ / "link");
    for (const char* name : {"'./the checkout/play'", "\"$ROOT/play\"", "./link"}) {
        const Result result = run(name + arguments);
        EXPECT_EQ(result.out, expected) << name;
        EXPECT_EQ(result.err, "complaint\n") << name;
        EXPECT_EQ(result.status, 7);
    }
}

TEST_F(PlayCommandTest, aBuildThatFailsIsShownOnStandardErrorAndNothingRuns) {
    const Result result = run("CMAKE_STATUS=3 './the checkout/play'");
    EXPECT_EQ(result.out, "");
    EXPECT_NE(result.err.find("from cmake\n"), std::string::npos) << result.err;
    EXPECT_NE(result.err.find("this failed: "), std::string::npos) << result.err;
    EXPECT_EQ(result.status, 1);
}

TEST_F(PlayCommandTest, onlyWhatIsMissingIsInstalled) {
    run("'./the checkout/play'");
    EXPECT_FALSE(fs::exists(root_ / "called"));
    const Result result = run("MISSING=libsdl2-dev './the checkout/play'");
    EXPECT_EQ(result.status, 7) << result.err;
    EXPECT_EQ(result.err, "gullwick: installing libsdl2-dev\ncomplaint\n");
    const std::string called = readText(root_ / "called");
    EXPECT_NE(called.find("install --no-install-recommends libsdl2-dev\n"), std::string::npos) << called;
}

}  // namespace
}  // namespace gull
