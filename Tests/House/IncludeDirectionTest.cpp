#include "House/IncludeRules.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace gull {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// Tests run in the root of the checkout.
SourceTree readSources() {
    SourceTree sources;
    for (const auto& entry : fs::recursive_directory_iterator("Sources")) {
        const auto type = entry.path().extension();
        if (type != ".h" && type != ".cpp" && type != ".mm") continue;
        std::ifstream file(entry.path());
        sources[fs::relative(entry.path(), "Sources").generic_string()] = {
            std::istreambuf_iterator<char>(file), {}};
    }
    return sources;
}

TEST(IncludeDirection, everyIncludePointsDown) {
    const SourceTree sources = readSources();
    ASSERT_GT(sources.size(), 50u) << "read from " << fs::current_path();
    EXPECT_THAT(includeViolations(sources), IsEmpty());
}

TEST(IncludeDirection, anUpwardOrSidewaysIncludeIsFound) {
    EXPECT_THAT(includeViolations({{"GullCore/Beach.h", "#include \"Gullwick/Scene/Look.h\"\n"},
                                   {"Gullwick/Scene/Look.h", "#pragma once\n"}}),
                ElementsAre("GullCore/Beach.h: includes Gullwick/Scene/Look.h: points against the arrows of "
                            "GullCore"));
    EXPECT_THAT(
        includeViolations({{"Engine/Loop/Clock.h", ""},
                           {"Engine/Sound/Mixer.cpp", "  # include \"Engine/Loop/Clock.h\"  // why\n"}}),
        ElementsAre(HasSubstr("against the arrows of Engine/Sound")));
    EXPECT_THAT(includeViolations({{"Engine/Log/Require.h", "#include \"Engine/Loop/Clock.h\"\n"},
                                   {"Engine/Loop/Clock.h", "#include \"Engine/Log/Require.h\"\n"}}),
                ElementsAre(HasSubstr("against the arrows of Engine/Log")));
    EXPECT_THAT(
        includeViolations({{"Gullwick/Scene/Look.h", ""},
                           {"Gullwick/Scene/Reveal.h", ""},
                           {"Gullwick/HUD/Tray.cpp",
                            "#include \"Gullwick/Scene/Look.h\"\n#include \"Gullwick/Scene/Reveal.h\"\n"}}),
        ElementsAre(HasSubstr("includes Gullwick/Scene/Reveal.h")));
}

TEST(IncludeDirection, aLibraryOutsideItsRoomIsFound) {
    EXPECT_THAT(
        includeViolations({{"Engine/Raster/Canvas.cpp", "#include <cairo.h>\n#include <vector>\n"},
                           {"Gullwick/HUD/Tray.cpp", "#include <cairo.h>\n"},
                           {"Gullwick/App/main.cpp", "#include <SDL.h>\n#include <fmt/format.h>\n"},
                           {"Engine/Window/Window.cpp", "#include <SDL.h>\n#include <epoxy/gl.h>\n"},
                           {"Engine/Views/Row.h", "#include <glm/vec2.hpp>\n"}}),
        ElementsAre(HasSubstr("Views/Row.h: includes glm/vec2.hpp"),
                    HasSubstr("App/main.cpp: includes SDL.h"), HasSubstr("HUD/Tray.cpp: includes cairo.h")));
    EXPECT_THAT(includeViolations({{"Engine/Raster/Impl.h", "#include <cairo.h>\n"},
                                   {"Engine/Raster/Canvas.cpp", "#include \"Engine/Raster/Impl.h\"\n"},
                                   {"Engine/Views/Row.cpp", "#include \"Engine/Raster/Impl.h\"\n"}}),
                ElementsAre(HasSubstr("Views/Row.cpp: includes Engine/Raster/Impl.h: a header that shows")));
}

TEST(IncludeDirection, aFileWithoutARoomAndAHeaderThatIsNotThereAreFound) {
    EXPECT_THAT(includeViolations({{"Engine/Sounds/Mixer.cpp", ""},
                                   {"GullCore/Beach.cpp", "#include \"Beach.h\"\n"},
                                   {"GullCore/Beach.h", ""}}),
                ElementsAre("Engine/Sounds/Mixer.cpp: stands in no room",
                            "GullCore/Beach.cpp: includes Beach.h: no such header below Sources"));
}

TEST(Renderer, openGlIsCalledInItsOwnRoomsAlone) {
    EXPECT_THAT(openGlCallsOutside(readSources()), IsEmpty());
    EXPECT_THAT(
        openGlCallsOutside({{"Engine/Gl/Target.cpp", "    glClear(bits);\n"},
                            {"Engine/Render/Sky.cpp", "// glClear(bits)\n    if (x) glClear(bits);\n"},
                            {"Engine/Render/Sea.cpp", "auto g = glitters(view); glm::vec3(1);\n"}}),
        ElementsAre("Engine/Render/Sky.cpp: glClear"));
}

TEST(Renderer, hasNoIncludeCircleAndNoLongFile) {
    EXPECT_THAT(rendererViolations(readSources()), IsEmpty());
    EXPECT_THAT(
        rendererViolations({{"Engine/Gl/A.h", "#include \"Engine/Gl/B.h\"\n"},
                            {"Engine/Gl/B.h", ""},
                            {"Engine/Gl/B.cpp", "#include \"Engine/Gl/A.h\"\n"},
                            {"Engine/Render/C.cpp", std::string(301, '\n')}}),
        ElementsAre("Engine/Render/C.cpp: longer than 300 lines", "Engine/Gl/A: stands in an include circle",
                    "Engine/Gl/B: stands in an include circle"));
}

}  // namespace
}  // namespace gull
