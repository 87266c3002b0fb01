#include "Gullwick/HUD/HudFixture.h"

#include "Gullwick/HUD/HudMotion.h"

#include <algorithm>

namespace gull {
namespace {

using HudMotionTest = HudFixture;

TEST_F(HudMotionTest, LayersShowByPhase) {
    struct Row {
        Phase phase;
        bool bars, bottomBar, toast, card, select;
    };
    const Row rows[] = {
        {Phase::intro, true, true, true, false, false},
        {Phase::playing, true, true, true, false, false},
        {Phase::flooding, true, true, true, false, false},
        {Phase::finished, true, false, false, true, false},
        {Phase::selecting, false, false, false, false, true},
    };
    for (const Row& row : rows) {
        HudState state = playing(3);
        state.phase = row.phase;
        state.toast = "something";
        HudPose pose = HudPose::atRest(state);
        pose.popup = {ItemKind::ring, 24, 1};
        const Drawing drawing = draw(state, pose);
        EXPECT_EQ(shows(drawing, "shade.top"), row.bars);
        EXPECT_EQ(shows(drawing, "title"), row.bars);
        EXPECT_EQ(shows(drawing, "tide"), row.bars);
        for (const char* gauge : {"signal", "tray", "junk", "instructions"}) {
            EXPECT_EQ(shows(drawing, gauge), row.bars && row.bottomBar) << gauge;
        }
        EXPECT_EQ(shows(drawing, "toast"), row.toast);
        EXPECT_EQ(shows(drawing, "card"), row.card);
        EXPECT_EQ(shows(drawing, "select"), row.select);
        EXPECT_TRUE(shows(drawing, "popup"));
    }
}

TEST_F(HudMotionTest, PhasesFadeWithEaseOutAndEndExactly) {
    HudMotion motion;
    HudState state = playing(3);
    motion.follow(state, 10, false);
    EXPECT_EQ(motion.pose(10), HudPose::atRest(state));
    EXPECT_FALSE(motion.isMoving(10));
    state.phase = Phase::finished;
    motion.follow(state, 10, false);
    // Half of a quarter second of (0, 0, 0.58, 1).
    EXPECT_NEAR(motion.pose(10.125).card, 0.6846431874274606, 1e-9);
    EXPECT_NEAR(motion.pose(10.125).bottomBar, 1 - 0.6846431874274606, 1e-9);
    EXPECT_TRUE(motion.isMoving(10.2));
    motion.follow(state, 10.3, false);
    EXPECT_EQ(motion.pose(10.3), HudPose::atRest(state));
    EXPECT_FALSE(motion.isMoving(10.3));
}

TEST_F(HudMotionTest, ToastsFadeInOutAndIntoEachOther) {
    HudMotion motion;
    HudState state = playing(3);
    motion.follow(state, 0, false);
    state.toast = "one";
    motion.follow(state, 1, false);
    EXPECT_NEAR(motion.pose(1.1).toasts.at(0).opacity, 0.6846431874274606, 1e-9);
    state.toast = "two";
    motion.follow(state, 2, false);
    const HudPose between = motion.pose(2.1);
    ASSERT_EQ(between.toasts.size(), 2U);
    EXPECT_NEAR(between.toasts[0].opacity + between.toasts[1].opacity, 1, 1e-9);
    state.toast.reset();
    motion.follow(state, 3, false);
    EXPECT_TRUE(motion.pose(3.25).toasts.empty());
    EXPECT_FALSE(motion.isMoving(3.25));
    // A toast that comes while the card is up is seen when the card goes.
    state.phase = Phase::finished;
    state.toast = "late";
    motion.follow(state, 4, false);
    EXPECT_TRUE(motion.pose(4.3).toasts.empty());
    state.phase = Phase::playing;
    motion.follow(state, 5, false);
    EXPECT_EQ(motion.pose(5.3).toasts.at(0).text, "late");
}

TEST_F(HudMotionTest, AFoundSlotPopsAndANewBeachsTrayDoesNot) {
    for (const bool reduceMotion : {false, true}) {
        HudMotion motion;
        HudState state = playing(3);
        motion.follow(state, 0, reduceMotion);
        state.tray[1] = true;
        motion.follow(state, 1, reduceMotion);
        double top = 0;
        for (double t = 1; t < 2; t += 0.005) top = std::max(top, motion.pose(t).slots[1]);
        EXPECT_NEAR(top, reduceMotion ? 1.0 : 1.0948, 2e-3);
        EXPECT_EQ(motion.pose(0.99).slots[0], 0);
        EXPECT_EQ(motion.pose(2.5).slots[1], 1);
        state = playing(4);
        motion.follow(state, 3, reduceMotion);
        EXPECT_EQ(motion.pose(3).slots, std::vector<double>(4, 0));
        EXPECT_FALSE(motion.isMoving(3));
    }
}

TEST_F(HudMotionTest, TheCursorsTileSwellsAndTheOneBeforeSettles) {
    HudMotion motion;
    HudState state = playing(3);
    state.selection = 1;
    motion.follow(state, 0, false);
    state.phase = Phase::selecting;
    state.selection = 3;  // where the select opens: no move
    motion.follow(state, 1, false);
    EXPECT_EQ(motion.pose(1).tile[2], 1);
    state.selection = 4;
    motion.follow(state, 2, false);
    const HudPose pose = motion.pose(2.06);
    EXPECT_GT(pose.tile[3], 0.2);
    EXPECT_NEAR(pose.tile[2] + pose.tile[3], 1, 1e-9);
    EXPECT_EQ(motion.pose(3).tile[3], 1);
    EXPECT_EQ(motion.pose(3).tile[2], 0);
}

TEST_F(HudMotionTest, ThePopupRisesInTwoStagesAndStartsOverWithTheNextFind) {
    HudMotion motion;
    HudState state = playing(3);
    motion.follow(state, 0, false);
    state.findStamp = 1;
    state.lastFind = ItemKind::watch;
    const auto at = [&](double time) {
        motion.follow(state, time, false);
        return motion.pose(time).popup;
    };
    using Popup = HudPose::Popup;
    EXPECT_EQ(at(10), (Popup{ItemKind::watch, 0, 0}));
    EXPECT_EQ(at(10.35), (Popup{ItemKind::watch, 0, 0}));
    EXPECT_NEAR(at(10.525).alpha, 0.6846431874274606, 1e-9);
    EXPECT_NEAR(at(10.525).lift, 24 * 0.6846431874274606, 1e-9);
    EXPECT_EQ(at(10.71), (Popup{ItemKind::watch, 24, 1}));
    EXPECT_EQ(at(12), (Popup{ItemKind::watch, 24, 1}));
    EXPECT_NEAR(at(12.25).alpha, 1 - 0.3153568125725393, 1e-9);
    EXPECT_NEAR(at(12.25).lift, 24 + 22 * 0.3153568125725393, 1e-9);
    EXPECT_EQ(at(12.51), (Popup{ItemKind::watch, 46, 0}));
    EXPECT_FALSE(motion.isMoving(12.51));

    state.findStamp = 2;
    state.lastFind = ItemKind::coin;
    at(20);
    EXPECT_EQ(at(21), (Popup{ItemKind::coin, 24, 1}));
    state.findStamp = 3;
    state.lastFind = ItemKind::ring;
    EXPECT_EQ(at(21.1), (Popup{ItemKind::ring, 0, 0}));
    EXPECT_EQ(at(22.05), (Popup{ItemKind::ring, 24, 1})) << "the first one's end does not end the second";
    at(23.2);
    EXPECT_LT(at(23.4).alpha, 1);

    // Play may end while it is up: it is gone before the card is up, and no other comes late.
    for (const double endsAfter : {0.2, 0.5, 1.5}) {
        HudMotion cut;
        HudState end = playing(3);
        cut.follow(end, 0, false);
        end.findStamp = 1;
        end.lastFind = ItemKind::coin;
        cut.follow(end, 1, false);
        end.phase = Phase::finished;
        cut.follow(end, 1 + endsAfter, false);
        for (double t = 1 + endsAfter; t < 5; t += 0.05) {
            cut.follow(end, t, false);
            if (t > 1 + endsAfter + 0.15) {
                ASSERT_EQ(cut.pose(t).popup.alpha, 0) << endsAfter;
            }
        }
        EXPECT_FALSE(cut.isMoving(5));
    }

    HudMotion silent;
    state.lastFind.reset();
    silent.follow(state, 0, false);
    state.findStamp = 4;
    silent.follow(state, 1, false);
    EXPECT_FALSE(silent.pose(2).popup.shown.has_value());
}

TEST_F(HudMotionTest, TheTickMarkBlinksTwiceForAPair) {
    HudMotion motion;
    HudState state = playing(6);
    state.showTicks = true;
    motion.follow(state, 0, false);
    EXPECT_TRUE(shows(draw(state), "signal.tick"));
    // Frames of a sixtieth, ticks at 1 s and 1.055 s.
    int flashes = 0;
    bool lit = false;
    for (int frame = 0; frame < 30; ++frame) {
        const double now = 0.95 + frame / 60.0;
        state.tickStamp = (now >= 1) + (now >= 1.055);
        motion.follow(state, now, false);
        const bool nowLit = motion.pose(now).tick > 0;
        flashes += nowLit && !lit;
        lit = nowLit;
    }
    EXPECT_EQ(flashes, 2);
    EXPECT_FALSE(lit);
    state.showTicks = false;
    EXPECT_FALSE(shows(draw(state), "signal.tick"));
}

}  // namespace
}  // namespace gull
