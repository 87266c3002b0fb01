// The command line, and what the environment may hold.

#include "Engine/Log/Require.h"
#include "Fuzz/FuzzInput.h"
#include "Gullwick/App/CommandLine.h"
#include "Gullwick/App/Numbers.h"
#include "Gullwick/App/SnapshotOptions.h"
#include "Gullwick/Game/SelfTest.h"
#include "Gullwick/Scene/SceneCamera.h"

#include <cmath>

using namespace gull;

const std::initializer_list<const char*> gull::fuzzSeeds = {
    "--shot\na.png\n--size\n640x400\n--beach\n4\n--seed\n11\n--find\n2\n--reveal\n0.8\n--elapse\n40",
    "--icon\nb.png\n--coil\n0.25,0.5\n--junk\n1\n--trail\n--ping", "--selftest\n2,5,x,99999999999",
    "1,2.5,-3e2"};

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    std::string text = input.rest();
    std::vector<std::string> words;
    for (const std::string_view word : split(text, '\n')) words.emplace_back(word);
    const CommandLine commandLine(words);
    for (const std::string& complaint : commandLine.complaints())
        require(!complaint.empty(), "a complaint without words");
    (void)commandLine.mode();
    (void)SelfTest::beaches(words);
    const auto parsed = SnapshotOptions::parse(commandLine);
    if (const auto* options = std::get_if<SnapshotOptions>(&parsed)) {
        const PlotPoint coil = options->coil.value_or(PlotPoint{});
        require(options->width > 0 && options->height > 0 && options->beach >= 0 && options->find >= 0 &&
                    std::abs(coil.x) <= 2 && std::abs(coil.y) <= 2 &&
                    std::abs(options->reveal.value_or(0)) <= 86400 &&
                    std::abs(options->elapse.value_or(0)) <= 86400,
                "an impossible picture was not refused");
    }
    std::erase(text, '\0');
    if (const auto angle = SceneCamera::parseAngle(text.c_str()))
        require(*angle > 0 && *angle < 180, "no lens has {} degrees", *angle);
    if (const auto place = SceneCamera::parseTriple(text.c_str()))
        require(std::isfinite(place->x + place->y + place->z), "a camera at no place");
    return 0;
}
