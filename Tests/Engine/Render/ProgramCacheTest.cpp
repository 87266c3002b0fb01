#include "Engine/Gl/GraphicsDevice.h"
#include "Engine/Gl/OffscreenContext.h"
#include "Engine/Render/ProgramCache.h"
#include "Engine/Render/Shaders.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>
#include <stdexcept>

namespace gull {

namespace {

using testing::HasSubstr;

TEST(ProgramCache, namesFilesInTheMessagesOfEveryCompiler) {
    const auto names = shaders::fileNames;
    const auto blur = std::find(names.begin(), names.end(), "blur.frag.glsl") - names.begin() + 1;
    const std::string line = std::to_string(blur * 10000 + 12);
    EXPECT_EQ(withFileNames("0:" + line + "(5): error: 'x' undeclared"),
              "blur.frag.glsl:12(5): error: 'x' undeclared");
    EXPECT_EQ(withFileNames("0(" + line + ") : error C1008"), "blur.frag.glsl(12) : error C1008");
    EXPECT_EQ(withFileNames("ERROR: 0:" + line + ": 'x'\nERROR: 1 compilation errors"),
              "ERROR: blur.frag.glsl:12: 'x'\nERROR: 1 compilation errors");
    for (const char* unknown : {"0:2(1): error", "0:99990001(1): error", "0:123456789012(1): error", ""})
        EXPECT_EQ(withFileNames(unknown), unknown);
}

/// The number of the line, from 1, on which `text` first occurs in a shader file.
int lineOf(const std::string& text, const std::string& file) {
    std::ifstream lines("Sources/Engine/Render/Shaders/" + file);
    int number = 0;
    for (std::string line; std::getline(lines, line);) {
        ++number;
        if (line.find(text) != std::string::npos) return number;
    }
    throw std::runtime_error(file + " lacks " + text);
}

/// The driver's message about the contact shadows' shader with `word` misspelt.
std::string messageWithFault(GraphicsDevice& device, const std::string& word) {
    std::string source = programSource({ProgramKind::contactShadows}, shaderDialect()).fragment;
    source.insert(source.find(word), "no");
    try {
        compileStage(device, ShaderStage::Kind::fragment, "test", source);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return {};
}

TEST(ProgramCache, aFaultIsReportedAtItsFileAndLine) {
    std::string reason;
    const auto context = OffscreenContext::create(&reason);
    ASSERT_TRUE(context) << reason;
    GraphicsDevice device;
    const auto faultAt = [](const std::string& word, const std::string& file) {
        return HasSubstr(file + ":" + std::to_string(lineOf(word, file)) + "(");
    };
    EXPECT_THAT(messageWithFault(device, "kTile.w"), faultAt("kTile.w", "depth.glsl"));
    EXPECT_THAT(messageWithFault(device, "tapCount; ++i"),
                faultAt("tapCount; ++i", "contactShadows.frag.glsl"));
}

}  // namespace

}  // namespace gull
