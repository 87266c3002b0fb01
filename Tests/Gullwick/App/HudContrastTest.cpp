#include "Engine/Compositor/SoftwareContext.h"
#include "Engine/Raster/Canvas.h"
#include "Gullwick/App/IconRenderer.h"
#include "Gullwick/App/StillBeach.h"
#include "Gullwick/HUD/HUDView.h"
#include "Gullwick/HUD/HudState.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace gull {
namespace {

double linear(double encoded) {
    return encoded <= 0.04045 ? encoded / 12.92 : std::pow((encoded + 0.055) / 1.055, 2.4);
}
double luminance(const Colour& c) {
    return 0.2126 * linear(c.r) + 0.7152 * linear(c.g) + 0.0722 * linear(c.b);
}

/// What lies behind a text, shade and soft shadow included: of the pixels in its place sorted by brightness,
/// the middle one of the darker two thirds. All texts of the bars are lighter than what is behind them.
Colour behind(const Image& picture, const Rect& rect) {
    std::vector<Colour> pixels;
    for (int y = static_cast<int>(rect.y); y < static_cast<int>(rect.y + rect.height); ++y)
        for (int x = static_cast<int>(rect.x); x < static_cast<int>(rect.x + rect.width); ++x) {
            if (x < 0 || y < 0 || x >= picture.width || y >= picture.height) continue;
            const std::uint8_t* p = picture.at(x, y);
            pixels.push_back({p[0] / 255.0, p[1] / 255.0, p[2] / 255.0, 1});
        }
    const auto middle = pixels.begin() + static_cast<std::ptrdiff_t>(pixels.size() / 3);
    std::nth_element(pixels.begin(), middle, pixels.end(),
                     [](const Colour& a, const Colour& b) { return luminance(a) < luminance(b); });
    return *middle;
}

class HudContrast : public test::RenderTest {};

TEST_F(HudContrast, EveryTextOfTheBarsIsReadableOnEveryBeachCalmAndUrgent) {
    for (int number = 1; number <= 8; ++number) {
        for (const bool urgent : {false, true}) {
            SCOPED_TRACE(testing::Message() << "beach " << number << (urgent ? ", urgent" : ""));
            SnapshotOptions options;
            options.width = 1240;
            options.height = 800;
            options.beach = number;
            options.seed = 4;
            if (urgent) options.elapse = Campaign::beach(number).tideSeconds - 5;
            StillBeach beach(options);
            const Image scene = renderer->snapshot(beach.game().world().stage(), {1240, 800});
            IconRenderer source(nullptr, beach.game().world().textures());
            ItemIcons icons(source);
            const HudState state = HudState::of(beach.game(), beach.settings().showTicks(), Language());
            Canvas canvas(1240, 800, 1);
            canvas.drawImage(scene, {0, 0, 1240, 800});
            drawHud(canvas, state, icons);
            const Image picture = canvas.image();

            const HudPose pose = HudPose::atRest(state);
            const Drawing drawing(HUDView{state, state, pose, icons, 1240, 800}.body(), 1240, 800, 1);
            int texts = 0;
            for (const Drawing::Layer& layer : drawing.layers()) {
                if (layer.name != "topBar" && layer.name != "bottomBar") continue;
                for (const Drawing::Mark& mark : drawing.marks(layer)) {
                    const auto* text = std::get_if<Drawing::Text>(&mark.content);
                    if (text == nullptr || text->text == "?") continue;  // an empty slot is no text to read
                    const Colour ground = behind(picture, mark.rect);
                    const double a = text->colour.a;
                    const Colour shown{text->colour.r * a + ground.r * (1 - a),
                                       text->colour.g * a + ground.g * (1 - a),
                                       text->colour.b * a + ground.b * (1 - a), 1};
                    const double contrast = (luminance(shown) + 0.05) / (luminance(ground) + 0.05);
                    EXPECT_GE(contrast, text->style.font.size < 18 ? 4.5 : 3) << text->text;
                    ++texts;
                }
            }
            EXPECT_GE(texts, 8);
        }
    }
}

}  // namespace
}  // namespace gull
