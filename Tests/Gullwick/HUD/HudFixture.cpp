#include "Gullwick/HUD/HudFixture.h"

#include "Gullwick/HUD/AlertCard.h"

namespace gull {

namespace {

constexpr double hair = 0.01;
constexpr double smallestScale = 0.75;  // of 10 points
bool overlap(const Rect& a, const Rect& b) {
    return a.x + hair < b.x + b.width && b.x + hair < a.x + a.width && a.y + hair < b.y + b.height &&
           b.y + hair < a.y + a.height;
}

bool isWithin(const Rect& inner, const Rect& outer) {
    return inner.x >= outer.x - hair && inner.y >= outer.y - hair &&
           inner.x + inner.width <= outer.x + outer.width + hair &&
           inner.y + inner.height <= outer.y + outer.height + hair;
}

/// Trackpad, mouse and a controller whose buttons have long names, in turn.
Controls inHand(int number) {
    Controls controls;
    controls.kind = static_cast<Controls::Kind>(number % 3);
    controls.buttons = {"bottom button", "right button", "left button", "top button", "bottom button"};
    return controls;
}

bool isCut(const Drawing::Text& text) {
    if (text.style.maxWidth <= 0) return false;
    TextStyle free = text.style;
    free.maxLines = 0;
    return measureText(text.text, free).height > measureText(text.text, text.style).height + hair;
}

}  // namespace

void HudFixture::expectRoom(const Drawing& drawing, const std::string& layerName,
                            const std::vector<std::string>& panels) {
    const std::string where = language.code() + ", " + std::to_string(width) + " wide, " + layerName;
    int texts = 0;
    for (const Drawing::Layer& layer : drawing.layers()) {
        if (layer.name != layerName) continue;
        for (const Drawing::Mark& mark : drawing.marks(layer)) {
            const auto* text = std::get_if<Drawing::Text>(&mark.content);
            if (text == nullptr) continue;
            ++texts;
            seen.push_back(text->text);
            EXPECT_TRUE(text->scale >= smallestScale || width < 860)
                << where << ": " << text->text << " is shrunk to " << text->scale;
            EXPECT_FALSE(isCut(*text)) << where << ": " << text->text;
            const Rect rect{mark.rect.x + layer.dx, mark.rect.y + layer.dy, mark.rect.width,
                            mark.rect.height};
            EXPECT_TRUE(isWithin(rect, {0, 0, width, height})) << where << ": " << text->text;
            for (const std::string& name : panels) {
                const Rect panel = rectOf(drawing, name);
                EXPECT_TRUE(!overlap(rect, panel) || isWithin(rect, panel))
                    << where << ": \"" << text->text << "\" crosses the edge of " << name;
            }
        }
    }
    EXPECT_GT(texts, 0) << where;
}

void HudFixture::expectAllTextHasRoom() {
    for (int beach = 1; beach <= 8; ++beach) {
        HudState state = playing(beach);
        state.toast =
            language.tr("Pointer freed — the mouse moves the detector now. Esc to use the trackpad again");
        state.pings = 25;
        state.haul = 99999;
        state.junkCount = 99;
        state.showTicks = true;
        state.controls = inHand(beach);
        HudPose pose = HudPose::atRest(state);
        // All treasures, all captions of the meter, one a beach.
        pose.popup = {allKinds()[static_cast<std::size_t>(beach) % 7], 24, 1};
        state.meter = beach == 1 ? 0 : 0.5;
        state.meterIsTreasure = beach != 3;
        const Drawing drawing = draw(state, pose);
        expectRoom(drawing, "topBar", {"title", "tide"});
        for (const std::string& words : {language.tr("UNTIL HIGH TIDE"), language.tr("PINGS {}", 25)}) {
            EXPECT_FALSE(overlap(drawing.findText(words)->rect, rectOf(drawing, "toast"))) << width << words;
        }
        if (width >= 860) {
            EXPECT_FALSE(overlap(rectOf(drawing, "title"), rectOf(drawing, "toast")))
                << language.code() << ", " << width << " wide, beach " << beach;
        }
        expectRoom(drawing, "bottomBar", {"signal", "tray", "junk"});
        expectRoom(drawing, "toast.0", {"toast"});
        expectRoom(drawing, "popup", {"popup"});
        for (const int stars : {0, 1, 2, 3}) {
            HudState end = finished(beach, stars, 1);
            end.haul = 99999;
            end.pings = 25;
            end.isNewBest = true;
            end.isFirstLoss = true;
            end.controls = inHand(beach);
            const Drawing result = draw(end);
            expectRoom(result, "card", {"card"});
            for (const char* name : {"title", "tide"})
                EXPECT_FALSE(width >= 860 && overlap(rectOf(result, name), rectOf(result, "card")))
                    << language.code() << ", beach " << beach << ", " << stars << " stars: the card on "
                    << name;
        }
    }
    HudState select = playing(1);
    select.phase = Phase::selecting;
    std::vector<std::string> tiles;
    for (int i = 1; i <= 8; ++i) tiles.push_back("select.tile." + std::to_string(i));
    for (const int hand : {0, 1, 2}) {
        select.controls = inHand(hand);
        expectRoom(draw(select), "select", tiles);
    }
    select.selection = select.refusedBeach = 8;
    expectRoom(draw(select), "select", tiles);
    for (const AlertCard& card : {resetAlert({}, language), aboutCard("10.10.10", language)}) {
        const Drawing drawing(card.body().framed(width, height), width, height, 1);
        expectRoom(drawing, "alert", {"alert", "alert.button.0"});
    }
}

}  // namespace gull
