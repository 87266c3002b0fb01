#include "Gullwick/HUD/HudFixture.h"

#include <fontconfig/fontconfig.h>

#include <string>
#include <thread>
#include <utility>

namespace gull {
namespace {

/// Every font is a fifth wider, as a fallback might be.
class WiderFonts {
  public:
    WiderFonts() : before_(FcConfigReference(nullptr)), wider_(FcConfigCreate()) {
        FcChar8* systemFile = FcConfigFilename(nullptr);
        const std::string rules = "<fontconfig><include>" +
                                  std::string(reinterpret_cast<const char*>(systemFile)) +
                                  "</include><match target=\"font\"><edit name=\"matrix\" mode=\"assign\">"
                                  "<times><name>matrix</name><matrix><double>1.2</double><double>0</double>"
                                  "<double>0</double><double>1</double></matrix></times>"
                                  "</edit></match></fontconfig>";
        FcStrFree(systemFile);
        EXPECT_TRUE(
            FcConfigParseAndLoadFromMemory(wider_, reinterpret_cast<const FcChar8*>(rules.c_str()), FcTrue));
        EXPECT_TRUE(FcConfigBuildFonts(wider_));
        EXPECT_TRUE(FcConfigSetCurrent(wider_));
    }
    ~WiderFonts() {
        FcConfigSetCurrent(before_);
        FcConfigDestroy(before_);
        FcConfigDestroy(wider_);
    }
    WiderFonts(const WiderFonts&) = delete;
    WiderFonts& operator=(const WiderFonts&) = delete;

  private:
    FcConfig* before_;
    FcConfig* wider_;
};

using WiderFontTest = HudFixture;

TEST_F(WiderFontTest, AllTextHasRoomAFifthWider) {
    const std::vector<std::pair<std::string, TextStyle>> samples = {
        {"SIGNAL · NO DISPLAY", {.font = {.size = 9, .weight = FontWeight::semibold}}},
        {"X never marks the spot.", {.font = {.design = FontDesign::serif, .italic = true}}},
        {"Reset all progress?", {.font = {.size = 17, .design = FontDesign::proportional}}}};
    std::vector<double> usual;
    for (const auto& [words, style] : samples) usual.push_back(measureText(words, style).width);
    const WiderFonts fonts;
    // Layouts belong to a thread: this one knows no other fonts.
    std::thread([&] {
        for (std::size_t i = 0; i < samples.size(); ++i) {
            const auto& [words, style] = samples[i];
            ASSERT_NEAR(measureText(words, style).width, 1.2 * usual[i], 0.02 * usual[i]) << words;
        }
        for (const auto& [w, h] : {std::pair{860.0, 560.0}, {1240.0, 800.0}}) {
            width = w;
            height = h;
            expectAllTextHasRoom();
        }
    }).join();
}

}  // namespace
}  // namespace gull
