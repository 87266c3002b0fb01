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
        script("tools/apt-get", "echo apt-get \"$@\" >> \"$ROOT/called\"; $APT_GET");
        script("tools/cmake",
               "echo \"$@\" >> \"$ROOT/cmake called\"; echo from cmake; echo from cmake >&2;"
               "[ $1 = --build ] && printf \"$NINJA\"; exit ${CMAKE_STATUS-0}");
        script("tools/id", "echo ${USER_ID-0}");
        script("tools/sudo", "echo sorry >&2; exit 1");
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

TEST_F(PlayCommandTest, progressIsToldByTenthsOrOnTheTerminalInOneLine) {
    const std::string command =
        "NINJA='[1/40] a\\n[20/40] b\\n[21/40] c\\n[40/40] d\\n' "
        "APT_GET='echo dlstatus:1:40.5:x' MISSING=cmake ";
    EXPECT_EQ(run(command + "'./the checkout/play'").err,
              "gullwick: installing cmake\ngullwick: downloading 40 %\n"
              "gullwick: building 0 %\ngullwick: building 50 %\ngullwick: building 100 %\ncomplaint\n");
    const Result onTerminal = run(command + "TERM=xterm script -qec \"'./the checkout/play'\" /dev/null");
    EXPECT_NE(onTerminal.out.find("\r\033[Kgullwick: building 52 %\r\033[K"), std::string::npos)
        << onTerminal.out;
    EXPECT_EQ(onTerminal.out.find("from cmake"), std::string::npos) << onTerminal.out;
}

TEST_F(PlayCommandTest, aFailedInstallIsOneSentenceWithTheCommandToPaste) {
    const std::string install = "apt-get install --no-install-recommends ninja-build\n";
    const Result offline =
        run("MISSING=ninja-build APT_GET='eval echo Could not resolve deb; exit 100' './the checkout/play'");
    EXPECT_EQ(offline.err,
              "gullwick: installing ninja-build\n"
              "gullwick: the packages could not be downloaded, because the network does not reach Debian's "
              "servers; once it does: ./play, or " +
                  install);
    EXPECT_EQ(offline.out, "");
    EXPECT_EQ(offline.status, 1);

    const Result refused = run("MISSING=ninja-build USER_ID=1000 './the checkout/play'");
    EXPECT_EQ(
        refused.err,
        "sorry\ngullwick: sudo does not let you install the packages that are missing; whoever may: sudo " +
            install);
    EXPECT_EQ(refused.status, 1);

    const Result other =
        run("MISSING=ninja-build APT_GET='eval echo disk full; exit 100' './the checkout/play'");
    EXPECT_NE(other.err.find("disk full\ngullwick: this failed: " + install.substr(0, 15)), std::string::npos)
        << other.err;
}

TEST_F(PlayCommandTest, aCheckoutThatWasMovedIsConfiguredAfresh) {
    writeText(root_ / "build/build.ninja", "");
    writeText(root_ / "build/CMakeCache.txt", "CMAKE_HOME_DIRECTORY:INTERNAL=" + root_.string() + "\n");
    run("'./the checkout/play'");
    EXPECT_EQ(readText(root_ / "cmake called").find("--fresh"), std::string::npos) << "it was not moved";
    writeText(root_ / "build/CMakeCache.txt", "CMAKE_HOME_DIRECTORY:INTERNAL=/elsewhere\n");
    const Result moved = run("'./the checkout/play'");
    EXPECT_NE(moved.err.find("was moved or copied here"), std::string::npos) << moved.err;
    EXPECT_NE(readText(root_ / "cmake called").find("--preset release --fresh\n"), std::string::npos);
    EXPECT_EQ(moved.status, 7);
}

TEST_F(PlayCommandTest, aCheckoutThatCannotBeWrittenToSaysSo) {
    fs::remove_all(root_ / "build");
    writeText(root_ / "build", "root writes to every folder, but not into a file");
    const Result result = run("'./the checkout/play'");
    EXPECT_NE(result.err.find("/build cannot be written to; copy the checkout"), std::string::npos)
        << result.err;
    EXPECT_EQ(result.status, 1);
}

}  // namespace
}  // namespace gull
