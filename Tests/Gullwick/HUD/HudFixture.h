#pragma once

#include "Gullwick/HUD/HUDView.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace gull {

/// Icons of one colour, counted.
struct PlainIcons final : IconSource {
    std::vector<ItemKind> made;
    Image image(ItemKind kind) override {
        made.push_back(kind);
        Image image(ItemIcons::size, ItemIcons::size);
        for (auto& byte : image.pixels) byte = 255;
        return image;
    }
};

/// A HUD in a made-up state, laid out at rest.
struct HudFixture : testing::Test {
    using Phase = HudState::Phase;

    PlainIcons source;
    ItemIcons icons{source};
    double width = 1240;
    double height = 800;
    Language language;
    std::vector<std::string> seen;  ///< every text that expectRoom() looked at

    HudState playing(int beach) const {
        HudState state;
        state.language = language;
        state.phase = Phase::playing;
        state.spec = Campaign::beach(beach);
        state.timeLeft = state.spec.tideSeconds;
        state.tray.assign(state.spec.treasures.size(), false);
        return state;
    }
    HudState finished(int beach, int stars, int finds) const {
        HudState state = playing(beach);
        state.phase = Phase::finished;
        state.earnedStars = stars;
        for (int i = 0; i < finds; ++i) state.tray[static_cast<std::size_t>(i)] = true;
        return state;
    }

    Drawing draw(const HudState& state, const HudPose& pose) {
        return Drawing(HUDView{state, state, pose, icons, width, height}.body(), width, height, 1);
    }
    Drawing draw(const HudState& state) { return draw(state, HudPose::atRest(state)); }

    static Rect rectOf(const Drawing& drawing, const std::string& name) {
        const auto found = drawing.find(name);
        EXPECT_TRUE(found.has_value()) << name;
        return found ? found->rect : Rect{};
    }
    static bool shows(const Drawing& drawing, const std::string& name) {
        const auto found = drawing.find(name);
        return found && found->opacity > 0;
    }
    /// The colour of a visible text; clear if it is not there.
    static Colour inkOf(const Drawing& drawing, const std::string& words) {
        const Drawing::Mark* mark = drawing.findText(words);
        EXPECT_NE(mark, nullptr) << words;
        return mark != nullptr ? std::get<Drawing::Text>(mark->content).colour : Colour{0, 0, 0, 0};
    }
    /// The longest texts of every screen, in a window of the fixture's size and in its language, have enough
    /// room.
    void expectAllTextHasRoom();
    /// No text of that layer leaves the window or its panel, is cut by an ellipsis or is shrunk beyond
    /// reading.
    void expectRoom(const Drawing& drawing, const std::string& layerName,
                    const std::vector<std::string>& panels);

    static const ShapeStyle* shapeAt(const Drawing& drawing, const Rect& rect) {
        for (const Drawing::Mark& mark : drawing.marks()) {
            const auto* style = std::get_if<ShapeStyle>(&mark.content);
            if (style != nullptr && mark.rect == rect) return style;
        }
        return nullptr;
    }
};

}  // namespace gull
