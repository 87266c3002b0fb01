#include "Gullwick/HUD/HudFixture.h"

#include "Gullwick/HUD/BeachSelect.h"
#include "Gullwick/HUD/ClockText.h"
#include "Gullwick/HUD/Palette.h"
#include "Gullwick/HUD/ResultCard.h"
#include "Gullwick/HUD/SignalMeter.h"
#include "Gullwick/HUD/TideClock.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <limits>

namespace gull {
namespace {

using HudTextsTest = HudFixture;

TEST_F(HudTextsTest, ClockRoundsUp) {
    EXPECT_EQ(clock(59.2), "1:00");
    EXPECT_EQ(clock(60.0), "1:00");
    EXPECT_EQ(clock(60.01), "1:01");
    EXPECT_EQ(clock(0), "0:00");
    EXPECT_EQ(clock(0.4), "0:01");
    EXPECT_EQ(clock(125), "2:05");
    EXPECT_DEATH(clock(std::numeric_limits<double>::quiet_NaN()), "clock");
    EXPECT_DEATH(clock(1e30), "clock");
}

TEST_F(HudTextsTest, TheTitleNamesTheBeach) {
    const Drawing drawing = draw(playing(4));
    EXPECT_EQ(inkOf(drawing, "BEACH 04 / 08"), Palette::coral);
    EXPECT_EQ(inkOf(drawing, "SMUGGLERS' INLET"), Palette::cream);
    EXPECT_EQ(inkOf(drawing, "Bottle caps by the hundred. Gold by the handful."), Palette::dim);
    const auto& name = std::get<Drawing::Text>(drawing.findText("SMUGGLERS' INLET")->content).style;
    EXPECT_EQ(name.tracking, 2);
    EXPECT_EQ(name.font.size, 20);
}

TEST_F(HudTextsTest, TheClockWarnsInTheLastSecondsOfPlayOnly) {
    HudState state = playing(2);
    state.timeLeft = 15.0;
    EXPECT_EQ(inkOf(draw(state), "0:15"), Palette::coral);
    state.timeLeft = 15.01;
    EXPECT_EQ(inkOf(draw(state), "0:16"), Palette::cream);
    state.timeLeft = 3;
    for (const Phase phase : {Phase::intro, Phase::flooding, Phase::finished, Phase::selecting}) {
        state.phase = phase;
        EXPECT_FALSE(TideClock{state}.isUrgent());
    }
    state.timeLeft = 500;
    EXPECT_EQ(TideClock{state}.share(), 1);
    state.timeLeft = -1;
    EXPECT_EQ(TideClock{state}.share(), 0);
    state.timeLeft = 0;
    state.spec.tideSeconds = 0;
    EXPECT_EQ(TideClock{state}.share(), 1) << "no number";
}

TEST_F(HudTextsTest, PingsShowOnceThereAreAny) {
    HudState state = playing(2);
    const double without = rectOf(draw(state), "tide").height;
    state.pings = 2;
    const Drawing drawing = draw(state);
    EXPECT_EQ(inkOf(drawing, "PINGS 2"), Palette::sea);
    EXPECT_GT(rectOf(drawing, "tide").height, without);
}

TEST_F(HudTextsTest, TheMeterJudgesOnlyWhereThereIsADisplay) {
    struct Row {
        int beach;
        double meter;
        bool treasure;
        long long lit;
        Colour colour;
        const char* caption;
    };
    const Row rows[] = {
        {1, 0, true, 0, Palette::gold, "SIGNAL"},
        {1, 0.01, true, 1, Palette::gold, "SIGNAL"},
        {2, 0.02, false, 1, Palette::slate, "SIGNAL · JUNK?"},
        {2, 0.5, true, 6, Palette::gold, "SIGNAL · METAL"},
        {2, 1.3, true, 16, Palette::gold, "SIGNAL · METAL"},
        {5, 0, true, 0, Palette::sea, "SIGNAL · NO DISPLAY"},
        {8, 1, false, 12, Palette::sea, "SIGNAL · NO DISPLAY"},
    };
    for (const Row& row : rows) {
        HudState state = playing(row.beach);
        state.meter = row.meter;
        state.meterIsTreasure = row.treasure;
        const SignalMeter meter{state};
        EXPECT_EQ(meter.lit(), row.lit);
        EXPECT_EQ(meter.litColour(), row.colour);
        EXPECT_EQ(meter.caption(), row.caption);
        int lit = 0;
        const Drawing drawing(meter.body(), 300, 100, 1);
        for (const Drawing::Mark& mark : drawing.marks()) {
            const auto* style = std::get_if<ShapeStyle>(&mark.content);
            lit += style != nullptr && style->fill == row.colour;
        }
        EXPECT_EQ(lit, std::min(row.lit, 12LL));
    }
    HudState broken = playing(1);
    broken.meter = std::numeric_limits<double>::infinity();
    EXPECT_DEATH(SignalMeter{broken}.lit(), "SignalMeter");
}

TEST_F(HudTextsTest, TrayAndJunkCounterCount) {
    HudState state = playing(3);
    state.tray = {true, false, true};  // shorter than the list: the last slot is empty
    state.haul = 300;
    Drawing drawing = draw(state);
    EXPECT_NE(drawing.findText("FINDS 2 / 4  ·  NEED 3  ·  HAUL 300"), nullptr);
    EXPECT_EQ(drawing.textsIn(rectOf(drawing, "tray.slot.1")), std::vector<std::string>{"?"});
    EXPECT_EQ(drawing.textsIn(rectOf(drawing, "tray.slot.3")), std::vector<std::string>{"?"});
    EXPECT_TRUE(drawing.textsIn(rectOf(drawing, "tray.slot.0")).empty());
    EXPECT_EQ(inkOf(drawing, "0"), Palette::dim);
    EXPECT_NE(drawing.findText("JUNK DUG"), nullptr);
    EXPECT_EQ(drawing.find("junk.icon")->opacity, 0.4);

    state.junkCount = 2;
    drawing = draw(state);
    EXPECT_EQ(inkOf(drawing, "2"), Palette::cream);
    EXPECT_NE(draw(playing(1)).findText("NO JUNK HERE"), nullptr);
}

TEST_F(HudTextsTest, APopupNamesTheFindAndItsWorth) {
    HudState state = playing(1);
    HudPose pose = HudPose::atRest(state);
    pose.popup = {ItemKind::coin, 0, 0.5};
    const Drawing coin = draw(state, pose);
    EXPECT_EQ(inkOf(coin, "+50"), Palette::gold);
    EXPECT_NE(coin.findText("GOLD DOUBLOON"), nullptr);
    pose.popup.shown = ItemKind::cap;
    EXPECT_NE(draw(state, pose).findText("+0"), nullptr);
}

TEST_F(HudTextsTest, TheCardSaysHowItEnded) {
    struct Row {
        int beach;
        int stars;
        const char* headline;
        const char* verdict;
        const char* leadsOn;
    };
    const Row rows[] = {
        {3, 0, "THE TIDE CAME IN", "You needed 3 finds and dug up 2.", "click / ↩  try again"},
        {3, 1, "BEACH CLEARED", "Some treasure is still down there. Find it all for a second star.",
         "click / ↩  next beach"},
        {3, 2, "EVERY LAST ONE", "All found. Leave the junk in the sand for the third star.",
         "click / ↩  next beach"},
        {3, 3, "CLEAN SWEEP", "Every treasure, not one bottle cap.", "click / ↩  next beach"},
        {8, 0, "THE TIDE CAME IN", "You needed 5 finds and dug up 2.", "click / ↩  try again"},
        {8, 1, "BEACH CLEARED", "Some treasure is still down there. Find it all for a second star.", nullptr},
        {8, 3, "THE PIRATES' GOLD", "Every beach combed. The chest is yours.", nullptr},
    };
    for (const Row& row : rows) {
        HudState state = finished(row.beach, row.stars, 2);
        state.isNewBest = true;
        state.progress.stars = {{1, 3}, {2, 2}};
        const Drawing drawing = draw(state);
        EXPECT_EQ(inkOf(drawing, row.headline), row.stars > 0 ? Palette::gold : Palette::coral);
        EXPECT_NE(drawing.findText(row.verdict), nullptr) << row.headline;
        std::vector<std::string> hints = drawing.textsIn(rectOf(drawing, "card.hints"));
        std::vector<std::string> expected = {"R  replay", "L  all beaches"};
        if (row.leadsOn != nullptr) expected.insert(expected.begin(), row.leadsOn);
        EXPECT_EQ(hints, expected);
        EXPECT_EQ(drawing.findText("NEW BEST HAUL") != nullptr, row.stars > 0);
        EXPECT_EQ(drawing.findText("TOTAL 5 / 24 ★") != nullptr, row.beach == 8 && row.stars > 0);
    }
}

TEST_F(HudTextsTest, TheCardCountsPingsOnlyIfThereWereAny) {
    HudState state = finished(3, 1, 3);
    state.haul = 370;
    state.junkCount = 4;
    state.timeLeft = 0.2;
    using Texts = std::vector<std::string>;
    Drawing drawing = draw(state);
    EXPECT_EQ(drawing.textsIn(rectOf(drawing, "card.figures")),
              (Texts{"370", "HAUL", "3/4", "FINDS", "4", "JUNK", "0:01", "TIDE LEFT"}));
    state.pings = 7;
    drawing = draw(state);
    const Texts five = drawing.textsIn(rectOf(drawing, "card.figures"));
    ASSERT_EQ(five.size(), 10U);
    EXPECT_EQ(five[8], "7");
    EXPECT_EQ(five[9], "PINGS");
}

TEST_F(HudTextsTest, TilesShowStarsOrALock) {
    HudState state = playing(1);
    state.phase = Phase::selecting;
    state.progress.stars = {{1, 3}, {2, 1}};
    state.selection = 5;  // locked, and chosen all the same
    const Drawing drawing = draw(state);
    EXPECT_NE(drawing.findText("4 / 24 ★"), nullptr);
    const auto signs = [&](int tile) {
        const Rect rect = rectOf(drawing, "select.tile." + std::to_string(tile));
        std::string found;
        for (const Drawing::Mark& mark : drawing.marks()) {
            const auto* sign = std::get_if<Drawing::Sign>(&mark.content);
            const bool inside = mark.rect.x > rect.x && mark.rect.x < rect.x + rect.width &&
                                mark.rect.y > rect.y && mark.rect.y < rect.y + rect.height;
            if (sign == nullptr || !inside) continue;
            found += sign->symbol == Symbol::starFill ? '*' : sign->symbol == Symbol::star ? 'o' : 'L';
        }
        return found;
    };
    EXPECT_EQ(signs(1), "***");
    EXPECT_EQ(signs(2), "*oo");
    EXPECT_EQ(signs(3), "ooo") << "open, never passed";
    EXPECT_EQ(signs(4), "L");
    EXPECT_EQ(signs(5), "L");

    const ShapeStyle* chosen = nullptr;
    int outlined = 0;
    for (const Drawing::Mark& mark : drawing.marks()) {
        const auto* style = std::get_if<ShapeStyle>(&mark.content);
        if (style == nullptr || style->stroke != Palette::coral) continue;
        chosen = style;
        ++outlined;
    }
    EXPECT_EQ(outlined, 1);
    ASSERT_NE(chosen, nullptr);
    EXPECT_NEAR(chosen->lineWidth, 2 * 1.06, 1e-9);
    EXPECT_NEAR(chosen->stops.front().colour.a, 0.12, 1e-12) << "locked wins over chosen";
    EXPECT_EQ(inkOf(drawing, "02"), Palette::cream);
    EXPECT_EQ(inkOf(drawing, "05"), times(Palette::dim, 0.5));
    EXPECT_EQ(inkOf(drawing, "LIGHTHOUSE POINT"), Palette::dim) << "locked, but to be read";
}

TEST_F(HudTextsTest, TextsSpeakOfWhatIsInHand) {
    const Controls mouse{Controls::Kind::mouse};
    const Controls pad{Controls::Kind::controller, {"Cross", "Circle", "Square", "Share", "Options"}};
    struct Row {
        Controls controls;
        const char* instructions;
        const char* select;
        const char* goOn;
    };
    const Row rows[] = {
        {{},
         "slide one finger to sweep  ·  click to dig  ·  H ping (−5 s)  ·  R restart  ·  L beaches  ·  esc "
         "frees "
         "the pointer",
         "touch the trackpad or use ← → ↑ ↓ to choose  ·  click or ↩ to go  ·  esc to go back",
         "click / ↩  next beach"},
        {mouse, "move the mouse to sweep  ·  click to dig  ·  H ping (−5 s)  ·  R restart  ·  L beaches",
         "use ← → ↑ ↓ to choose  ·  click a beach or ↩ to go  ·  esc to go back", "click / ↩  next beach"},
        {pad,
         "left stick to sweep  ·  Cross to dig  ·  Square ping (−5 s)  ·  Share restart  ·  Options beaches",
         "left stick to choose  ·  Cross to go  ·  Circle to go back", "Cross  next beach"},
    };
    for (const Row& row : rows) {
        HudState state = playing(3);
        state.controls = row.controls;
        EXPECT_NE(draw(state).findText(row.instructions), nullptr);
        state.phase = Phase::selecting;
        EXPECT_NE(draw(state).findText(row.select), nullptr);
        state = finished(3, 1, 3);
        state.controls = row.controls;
        EXPECT_NE(draw(state).findText(row.goOn), nullptr);
    }
}

TEST_F(HudTextsTest, TheFirstLossAndTheFirstLockTeachOneThingEach) {
    HudState state = finished(3, 0, 2);
    EXPECT_FALSE(draw(state).find("card.lesson"));
    state.isFirstLoss = true;
    EXPECT_NE(draw(state).findText("H points to the nearest treasure, for 5 s of tide"), nullptr);
    state = playing(1);
    state.phase = Phase::selecting;
    state.selection = state.refusedBeach = 3;
    EXPECT_EQ(inkOf(draw(state), "locked  ·  a star on beach 2, Shell Bay, opens it"), Palette::coral);
    state.selection = 4;
    EXPECT_EQ(draw(state).findText("locked  ·  a star on beach 2, Shell Bay, opens it"), nullptr);
}

TEST_F(HudTextsTest, IconsAreMadeOnceAndAheadOfNeed) {
    const BeachSpec& beach = Campaign::beach(2);  // coin, key, ring, coin
    int calls = 0;
    while (icons.prepareOne(beach)) ++calls;
    EXPECT_EQ(calls, 4);
    EXPECT_THAT(source.made,
                testing::UnorderedElementsAre(ItemKind::coin, ItemKind::key, ItemKind::ring, ItemKind::cap));
    HudState state = finished(2, 3, 4);
    draw(state);
    state.phase = Phase::playing;
    const Drawing drawing = draw(state);
    EXPECT_EQ(source.made.size(), 4U);
    int pictures = 0;
    for (const Drawing::Mark& mark : drawing.marks()) {
        pictures += std::holds_alternative<Drawing::Picture>(mark.content);
    }
    EXPECT_EQ(pictures, 5) << "four slots and the junk counter";
}

}  // namespace
}  // namespace gull
