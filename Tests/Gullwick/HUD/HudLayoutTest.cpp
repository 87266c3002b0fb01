#include "Gullwick/HUD/HudFixture.h"

#include "Gullwick/HUD/Palette.h"

#include <cmath>
#include <string>
#include <utility>

namespace gull {
namespace {

using HudLayoutTest = HudFixture;

TEST_F(HudLayoutTest, BarsStandAtTheirEdges) {
    HudState state = playing(4);
    state.pings = 2;
    const Drawing drawing = draw(state);
    EXPECT_EQ(rectOf(drawing, "shade.top"), (Rect{0, 0, 1240, 190}));
    EXPECT_EQ(rectOf(drawing, "shade.bottom"), (Rect{0, 640, 1240, 160}));
    EXPECT_EQ(rectOf(drawing, "title").x, 26);
    EXPECT_EQ(rectOf(drawing, "title").y, 32);
    const Rect tide = rectOf(drawing, "tide");
    EXPECT_DOUBLE_EQ(tide.x + tide.width, 1240 - 26);
    EXPECT_EQ(tide.y, 32);
    const Rect words = rectOf(drawing, "instructions");
    EXPECT_NEAR(words.y + words.height, 800 - 20, 1e-9);
    EXPECT_NEAR(words.x + words.width / 2, 620, 1e-9);

    const Rect signal = rectOf(drawing, "signal");
    const Rect tray = rectOf(drawing, "tray");
    const Rect junk = rectOf(drawing, "junk");
    EXPECT_EQ(signal.x, 26);
    EXPECT_EQ(signal.width, 210);
    EXPECT_EQ(junk.width, 210);
    EXPECT_NEAR(junk.x + junk.width, 1240 - 26, 1e-9);
    EXPECT_NEAR(tray.x + tray.width / 2, 620, 1e-9);
    for (const Rect& rect : {signal, tray, junk}) EXPECT_NEAR(rect.y + rect.height, words.y - 10, 1e-9);
}

TEST_F(HudLayoutTest, GaugesHaveTheirSizes) {
    HudState state = playing(3);
    state.timeLeft = 95 * 0.25;
    state.meter = 0.5;
    const Drawing drawing = draw(state);
    const Rect bar = rectOf(drawing, "tide.bar");
    EXPECT_EQ(bar.width, 150);
    EXPECT_EQ(bar.height, 4);
    EXPECT_NEAR(rectOf(drawing, "tide.left").width, 150 * 0.25, 1e-9);
    EXPECT_EQ(rectOf(drawing, "tide.left").x, bar.x);

    const Rect first = rectOf(drawing, "signal.bar.0");
    EXPECT_EQ(first.x, rectOf(drawing, "signal").x + 14);
    for (int i = 0; i < 12; ++i) {
        const Rect level = rectOf(drawing, "signal.bar." + std::to_string(i));
        EXPECT_NEAR(level.x, first.x + 10 * i, 1e-9);
        EXPECT_NEAR(level.height, 8 + 2.2 * i, 1e-9);
        EXPECT_NEAR(level.y + level.height, first.y + first.height, 1e-9);
    }

    const Rect slot = rectOf(drawing, "tray.slot.0");
    EXPECT_EQ(slot.width, 52);
    EXPECT_EQ(slot.height, 52);
    EXPECT_NEAR(rectOf(drawing, "tray.slot.1").x - slot.x, 60, 1e-9);
    EXPECT_NEAR(slot.y, rectOf(drawing, "tray").y + 9, 1e-9);
}

TEST_F(HudLayoutTest, TheNeedMarkerStandsInTheGapAfterTheLastNeededSlot) {
    for (const int need : {1, 3}) {
        HudState state = playing(3);
        state.spec.need = need;
        const Drawing drawing = draw(state);
        const Rect slot = rectOf(drawing, "tray.slot." + std::to_string(need - 1));
        const Rect marker = rectOf(drawing, "tray.need");
        EXPECT_NEAR(marker.x + 1, slot.x + 26 + 31, 1e-9);
        EXPECT_EQ(marker.width, 2);
        EXPECT_EQ(marker.height, 52);
        EXPECT_NEAR(marker.y, slot.y, 1e-9);
    }
    for (const int need : {0, 5}) {
        HudState state = playing(3);
        state.spec.need = need;
        EXPECT_FALSE(draw(state).find("tray.need").has_value()) << need;
    }
}

TEST_F(HudLayoutTest, NoWordOfAToastStandsAloneInALine) {
    width = 860;
    height = 560;
    HudState state = playing(1);
    for (const char* words :
         {"Controller: left stick sweeps · bottom button digs · left button pings · Start beaches",
          "Pointer freed — the mouse moves the detector now. Esc to use the trackpad again"}) {
        state.toast = words;
        const Drawing drawing = draw(state);
        const Drawing::Mark* mark = drawing.findText(words);
        ASSERT_NE(mark, nullptr);
        const auto& style = std::get<Drawing::Text>(mark->content).style;
        const double line = measureText("M", style).height;
        const auto lines = std::lround(mark->rect.height / line);
        ASSERT_GE(lines, 2) << words;
        // Lines of about one length: together they nearly fill the box.
        TextStyle unwrapped = style;
        unwrapped.maxWidth = 0;
        EXPECT_GT(measureText(words, unwrapped).width, 0.75 * static_cast<double>(lines) * mark->rect.width)
            << words;
    }
}

TEST_F(HudLayoutTest, ToastAndPopupKeepTheirDistances) {
    HudState state = playing(2);
    state.toast = "Nothing here — dig where the ticks are fastest";
    HudPose pose = HudPose::atRest(state);
    pose.popup = {ItemKind::coin, 24, 1};
    const Drawing drawing = draw(state, pose);
    const Rect toast = rectOf(drawing, "toast");
    EXPECT_EQ(toast.y, 112);
    EXPECT_NEAR(toast.x + toast.width / 2, 620, 1e-9);
    const Rect words = drawing.findText(*state.toast)->rect;
    EXPECT_NEAR(words.x - toast.x, 16, 1e-9);
    EXPECT_NEAR(words.y - toast.y, 8, 1e-9);
    const Rect popup = rectOf(drawing, "popup");
    EXPECT_NEAR(popup.y + popup.height, 800 - 170 - 24, 1e-9);
    EXPECT_NEAR(popup.x + popup.width / 2, 620, 1e-9);
}

TEST_F(HudLayoutTest, TheCampaignIsAGridOfTwoRows) {
    HudState state = playing(1);
    state.phase = Phase::selecting;
    state.selection = 6;
    const Drawing drawing = draw(state);
    const Rect first = rectOf(drawing, "select.tile.1");
    EXPECT_EQ(first.width, 138);
    EXPECT_EQ(first.height, 124);
    for (int i = 0; i < 8; ++i) {
        Rect tile = rectOf(drawing, "select.tile." + std::to_string(i + 1));
        if (i == 5) {  // swollen about its centre
            EXPECT_NEAR(tile.width, 138 * 1.06, 1e-9);
            tile = {tile.x + 138 * 0.03, tile.y + 124 * 0.03, 138, 124};
        }
        EXPECT_NEAR(tile.x, first.x + (138 + 14) * (i % 4), 1e-9) << i;
        EXPECT_NEAR(tile.y, first.y + (124 + 14) * (i / 4), 1e-9) << i;
    }
    EXPECT_NEAR(first.x + (4 * 138 + 3 * 14) / 2.0, 620, 1e-9);
}

TEST_F(HudLayoutTest, TheCardStandsInTheMiddleWithItsSlots) {
    const Drawing drawing = draw(finished(3, 1, 3));
    const Rect card = rectOf(drawing, "card");
    EXPECT_NEAR(card.x + card.width / 2, 620, 1e-9);
    EXPECT_NEAR(card.y + card.height / 2, 400, 1e-9);
    const Rect slot = rectOf(drawing, "card.slot.0");
    EXPECT_EQ(slot.width, 48);
    EXPECT_EQ(slot.height, 48);
    EXPECT_NEAR(rectOf(drawing, "card.slot.1").x - slot.x, 58, 1e-9);
    EXPECT_NEAR(drawing.findText("BEACH CLEARED")->rect.y, card.y + 26, 1e-9);
    const Rect hints = rectOf(drawing, "card.hints");
    EXPECT_NEAR(hints.y + hints.height, card.y + card.height - 26, 1e-9);
}

TEST_F(HudLayoutTest, TextIsNeverCut) {
    for (const auto& [w, h] : {std::pair{860.0, 560.0}, {640.0, 400.0}, {1240.0, 800.0}, {900.0, 1600.0}}) {
        width = w;
        height = h;
        expectAllTextHasRoom();
    }
}

TEST_F(HudLayoutTest, TheUsualToastsTakeOneLineInTheSmallestWindow) {
    width = 860;
    height = 560;
    HudState state = playing(5);
    state.pings = 99;
    state.toast = "Beach cleared! Keep going for the rest, or wait out the tide";
    const Drawing drawing = draw(state);
    EXPECT_LT(rectOf(drawing, "toast").height, 40);
    EXPECT_LT(rectOf(drawing, "toast").x + rectOf(drawing, "toast").width,
              drawing.findText("PINGS 99")->rect.x);
}

TEST_F(HudLayoutTest, SixTreasuresFitTheSmallestWindowByTheirGaps) {
    width = 860;
    height = 560;
    const Drawing drawing = draw(playing(8));
    const Rect signal = rectOf(drawing, "signal");
    const Rect tray = rectOf(drawing, "tray");
    const Rect junk = rectOf(drawing, "junk");
    EXPECT_NEAR(signal.x, 26, 1e-9);
    EXPECT_NEAR(junk.x + junk.width, 860 - 26, 1e-9);
    EXPECT_EQ(signal.width, 210);
    EXPECT_NEAR(tray.width, 6 * 52 + 5 * 8 + 24, 1e-9);
    EXPECT_EQ(junk.width, 210);
    // 808 less 796 in four gaps of 3.
    EXPECT_NEAR(tray.x - (signal.x + signal.width), 6, 1e-9);
    EXPECT_NEAR(junk.x - (tray.x + tray.width), 6, 1e-9);

    width = 820;  // then the padding gives way
    const Drawing narrow = draw(playing(8));
    EXPECT_NEAR(rectOf(narrow, "signal").x, 12, 1e-9);
    EXPECT_EQ(rectOf(narrow, "signal").width, 210);
    EXPECT_NEAR(rectOf(narrow, "tray").x, 12 + 210, 1e-9);
}

TEST_F(HudLayoutTest, ALongTaglineWrapsInsteadOfPushingTheClockAway) {
    HudState state = playing(1);
    state.spec.tagline =
        "A tagline that goes on and on about sand and water and about what may lie below, and on";
    const Drawing drawing = draw(state);
    EXPECT_LE(rectOf(drawing, "title").width, 380);
    EXPECT_GT(drawing.findText(state.spec.tagline)->rect.height, 30);
    const Rect tide = rectOf(drawing, "tide");
    EXPECT_DOUBLE_EQ(tide.x + tide.width, 1214);
}

TEST_F(HudLayoutTest, TheCardStandsInTheMiddleUnlessALowWindowHasNoRoomForTheTopBar) {
    const Rect middle = rectOf(draw(finished(1, 1, 2)), "card");
    EXPECT_NEAR(middle.y + middle.height / 2, 400, 0.51);
    height = 560;
    width = 860;
    const Drawing low = draw(finished(8, 3, 6));
    const Rect card = rectOf(low, "card"), title = rectOf(low, "title");
    EXPECT_GE(card.y, title.y + title.height);
    EXPECT_LE(card.y + card.height, 560);
    height = 400;
    const Rect lowest = rectOf(draw(finished(8, 3, 6)), "card");
    EXPECT_GE(lowest.y, 0);
    EXPECT_LE(lowest.y + lowest.height, 400) << "and never leaves the window";
}

}  // namespace
}  // namespace gull
