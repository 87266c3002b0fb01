#include "Engine/Touch/ContactTracker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <map>
#include <random>
#include <sstream>
#include <string>

namespace gull {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// "SLOT 1", "ID 7", "X 300", "TOUCH 0", "REPORT"..., one event each; "@1.5" sets the time of those that
/// follow.
PadEvent parsed(const std::string& word, std::istream& in) {
    struct Code {
        std::uint16_t type;
        std::uint16_t code;
    };
    static const std::map<std::string, Code> codes = {
        {"SLOT", {PadCode::typeAxis, PadCode::slot}},
        {"ID", {PadCode::typeAxis, PadCode::slotTrackingId}},
        {"X", {PadCode::typeAxis, PadCode::slotX}},
        {"Y", {PadCode::typeAxis, PadCode::slotY}},
        {"TOOL", {PadCode::typeAxis, PadCode::slotTool}},
        {"PRESSURE", {PadCode::typeAxis, 0x3a}},
        {"SX", {PadCode::typeAxis, PadCode::axisX}},
        {"SY", {PadCode::typeAxis, PadCode::axisY}},
        {"TOUCH", {PadCode::typeKey, PadCode::buttonTouch}},
        {"CLICK", {PadCode::typeKey, 0x110}},
        {"REPORT", {PadCode::typeSync, PadCode::syncReport}},
        {"DROPPED", {PadCode::typeSync, PadCode::syncDropped}},
    };
    const auto [type, code] = codes.at(word);
    PadEvent event{0, type, code, 0};
    if (type != PadCode::typeSync) in >> event.value;
    return event;
}

constexpr ContactTracker::Traits slotted = {{0, 1000}, {0, 500}, 5, false};
constexpr ContactTracker::Traits slotless = {{0, 1000}, {0, 500}, 0, false};

class ContactTrackerTest : public testing::Test {
  protected:
    const std::vector<Contact>& trace(const std::string& text) {
        std::istringstream in(text);
        for (std::string word; in >> word;) {
            if (word[0] == '@') {
                time = std::stod(word.substr(1));
                continue;
            }
            PadEvent event = parsed(word, in);
            event.time = time;
            tracker.take(event);
        }
        return tracker.contacts();
    }

    double time = 0;
    ContactTracker tracker{slotted};
};

void expectAt(const Contact& contact, double x, double y) {
    EXPECT_NEAR(contact.x, x, 1e-12);
    EXPECT_NEAR(contact.y, y, 1e-12);
}

TEST_F(ContactTrackerTest, fingersAreFollowedWithTheNearEdgeAtZero) {
    const auto first = trace("SLOT 0 ID 10 X 250 Y 500 TOUCH 1 REPORT");
    ASSERT_THAT(first, SizeIs(1));
    expectAt(first[0], 0.25, 0);
    const auto two = trace("X 300 SLOT 1 ID 11 X 1000 Y 0 REPORT");
    ASSERT_THAT(two, SizeIs(2));
    expectAt(two[0], 0.3, 0);
    expectAt(two[1], 1, 1);
    EXPECT_EQ(two[0].id, first[0].id) << "the same finger keeps its id";
    EXPECT_NE(two[1].id, two[0].id);
    // Nothing counts before its report.
    EXPECT_THAT(trace("SLOT 0 ID -1"), SizeIs(2));
    const auto left = trace("REPORT");
    ASSERT_THAT(left, SizeIs(1));
    EXPECT_EQ(left[0].id, two[1].id);
    EXPECT_THAT(trace("SLOT 1 ID -1 TOUCH 0 REPORT"), IsEmpty());
}

TEST_F(ContactTrackerTest, aNewFingerAtTheOldPlaceHasAnIdOfItsOwn) {
    const auto first = trace("SLOT 0 ID 10 X 400 Y 100 REPORT");
    // The kernel omits unchanged values.
    trace("ID -1 REPORT");
    const auto second = trace("ID 11 REPORT");
    ASSERT_THAT(second, SizeIs(1));
    expectAt(second[0], 0.4, 0.8);
    EXPECT_NE(second[0].id, first[0].id);
    // One finger mistaken for another, without an end in between.
    const auto third = trace("ID 12 X 10 REPORT");
    EXPECT_NE(third.at(0).id, second[0].id);
}

TEST_F(ContactTrackerTest, palmsAreLeftOutForAsLongAsTheyArePalms) {
    EXPECT_THAT(trace("SLOT 0 ID 1 X 1 Y 1 TOOL 2 REPORT SLOT 1 ID 2 X 5 Y 5 TOOL 0 REPORT"), SizeIs(1));
    EXPECT_THAT(trace("SLOT 1 TOOL 2 REPORT"), IsEmpty());
    EXPECT_THAT(trace("SLOT 0 TOOL 0 REPORT"), SizeIs(1));
}

TEST_F(ContactTrackerTest, aTruncatedStreamYieldsNothingUntilAFingerIsWhole) {
    EXPECT_THAT(trace("X 400 REPORT Y 20 REPORT"), IsEmpty()) << "no finger was put down";
    EXPECT_THAT(trace("SLOT 3 ID 5 X 100 REPORT"), IsEmpty()) << "where it is across is not known";
    EXPECT_THAT(trace("Y 100 REPORT"), SizeIs(1));
    EXPECT_THAT(trace("ID -1 ID -1 REPORT REPORT"), IsEmpty());
}

TEST_F(ContactTrackerTest, slotsThatAreNotThereAreIgnored) {
    trace("SLOT 0 ID 1 X 100 Y 100 REPORT");
    const auto after =
        trace("SLOT 5 ID 9 X 900 REPORT SLOT -1 ID 8 X 800 Y 1 REPORT SLOT 2147483647 X 3 REPORT");
    ASSERT_THAT(after, SizeIs(1));
    expectAt(after[0], 0.1, 0.8);
    trace("SLOT 0 X 200 REPORT");
    expectAt(tracker.contacts().at(0), 0.2, 0.8);
    ContactTracker vast({{0, 10}, {0, 10}, 2000000000, false});
    vast.take({0, PadCode::typeAxis, PadCode::slot, 1999999999});
    vast.take({0, PadCode::typeAxis, PadCode::slotTrackingId, 1});
    vast.take({0, PadCode::typeSync, PadCode::syncReport, 0});
    EXPECT_THAT(vast.contacts(), IsEmpty());
}

TEST_F(ContactTrackerTest, aRangeGrowsWhereThePadIsLargerThanItSaysButNotForNoise) {
    trace("SLOT 0 ID 1 X 1100 Y 250 REPORT");
    expectAt(tracker.contacts().at(0), 1, 0.5);
    trace("X 550 REPORT");
    expectAt(tracker.contacts().at(0), 0.5, 0.5);
    trace("X 2147483647 REPORT");
    expectAt(tracker.contacts().at(0), 1, 0.5);
    trace("X -2147483648 REPORT");
    expectAt(tracker.contacts().at(0), 0, 0.5);
    trace("X 550 REPORT");
    expectAt(tracker.contacts().at(0), 0.5, 0.5);
}

TEST_F(ContactTrackerTest, aPadWithoutARangeIsAsLargeAsWhereItWasTouched) {
    ContactTracker unknown({{0, 0}, {7, 3}, 1, false});
    const auto touch = [&](int x, int y) {
        unknown.take({0, PadCode::typeAxis, PadCode::slotTrackingId, 4});
        unknown.take({0, PadCode::typeAxis, PadCode::slotX, x});
        unknown.take({0, PadCode::typeAxis, PadCode::slotY, y});
        unknown.take({0, PadCode::typeSync, PadCode::syncReport, 0});
        return unknown.contacts().at(0);
    };
    touch(0, 3);
    touch(400, 203);
    expectAt(touch(100, 53), 0.25, 0.75);
}

TEST_F(ContactTrackerTest, lostEventsEndWhatMayHaveEnded) {
    trace("SLOT 0 ID 1 X 100 Y 100 REPORT DROPPED SLOT 1 ID 2 X 3 Y 3");
    EXPECT_THAT(tracker.contacts(), SizeIs(1)) << "until the next report";
    EXPECT_THAT(trace("REPORT"), IsEmpty());
    EXPECT_THAT(trace("SLOT 1 ID 3 X 7 Y 7 REPORT"), SizeIs(1)) << "and goes on from there";
}

TEST_F(ContactTrackerTest, theDevicesOwnStateSettlesWhatWasLost) {
    const auto before = trace("SLOT 0 ID 1 X 100 Y 100 SLOT 1 ID 2 X 300 Y 100 REPORT DROPPED");
    tracker.resync({{1, 200, 100, 0}, {-1, 300, 100, 0}, {7, 900, 0, 0}}, 2, 0);
    const auto after = tracker.contacts();
    ASSERT_THAT(after, SizeIs(2));
    EXPECT_EQ(after[0].id, before[0].id) << "a finger that stayed keeps its id";
    expectAt(after[0], 0.2, 0.8);
    expectAt(after[1], 0.9, 1);
    trace("X 1000 REPORT");
    expectAt(tracker.contacts().at(1), 1, 1);  // the current slot is the device's
}

TEST_F(ContactTrackerTest, aContactThatNeverEndsDoesNotSteerForEver) {
    trace("@0 SLOT 0 ID 1 X 100 Y 100 TOUCH 1 REPORT");
    trace("@60 CLICK 1 REPORT");
    EXPECT_THAT(tracker.contacts(), SizeIs(1)) << "a finger may rest alone for as long as it likes";
    trace("@61 SLOT 1 ID 2 X 500 Y 400 REPORT");
    ASSERT_THAT(tracker.contacts(), SizeIs(1));
    expectAt(tracker.contacts()[0], 0.5, 0.2);
    trace("@62 SLOT 0 PRESSURE 30 REPORT");
    EXPECT_THAT(tracker.contacts(), SizeIs(2)) << "it is heard of again";
    trace("TOUCH 0 REPORT");
    EXPECT_THAT(tracker.contacts(), IsEmpty()) << "the pad says that nothing touches it";
}

TEST_F(ContactTrackerTest, aPadWithoutSlotsFollowsOneFinger) {
    tracker = ContactTracker(slotless);
    EXPECT_THAT(trace("SX 500 SY 500 REPORT"), IsEmpty());
    const auto first = trace("TOUCH 1 REPORT");
    ASSERT_THAT(first, SizeIs(1));
    expectAt(first[0], 0.5, 0);
    EXPECT_THAT(trace("SLOT 1 ID 4 X 3 Y 3 REPORT"), SizeIs(1)) << "slots mean nothing here";
    EXPECT_THAT(trace("TOUCH 0 REPORT"), IsEmpty());
    const auto second = trace("TOUCH 1 SX 0 REPORT");
    EXPECT_NE(second.at(0).id, first[0].id);
}

TEST_F(ContactTrackerTest, cornersOfABoxAreNotTakenForFingers) {
    tracker = ContactTracker({{0, 1000}, {0, 500}, 2, true});
    trace("SLOT 0 ID 1 X 10 Y 10 SLOT 1 ID 2 X 900 Y 400 SX 400 SY 100 TOUCH 1 REPORT");
    ASSERT_THAT(tracker.contacts(), SizeIs(1));
    expectAt(tracker.contacts()[0], 0.4, 0.8);
}

TEST_F(ContactTrackerTest, slowAndFastPadsEndAtTheSamePlace) {
    for (const int rate : {1, 125, 1000}) {
        tracker = ContactTracker(slotted);
        trace("@0 SLOT 0 ID 1 X 0 Y 0 REPORT");
        for (int i = 1; i <= 20 * rate; ++i)
            trace("@" + std::to_string(static_cast<double>(i) / rate) + " X " +
                  std::to_string(i * 50 / rate) + " REPORT");
        ASSERT_THAT(tracker.contacts(), SizeIs(1)) << rate << " Hz";
        expectAt(tracker.contacts()[0], 1, 1);
    }
}

TEST_F(ContactTrackerTest, noiseNeverYieldsAnythingOutsideThePad) {
    std::mt19937 random(11);
    const std::uint16_t axisCodes[] = {0, 1, 0x2f, 0x35, 0x36, 0x37, 0x39, 0x3a, 0x1ff};
    for (const auto& traits : {slotted, slotless, ContactTracker::Traits{{5, 5}, {0, -9}, 3, true}}) {
        ContactTracker noisy(traits);
        for (int i = 0; i < 200000; ++i) {
            PadEvent event;
            event.time = static_cast<double>(random() % 1000);
            event.type = static_cast<std::uint16_t>(random() % 4);
            event.code = event.type == PadCode::typeSync ? static_cast<std::uint16_t>(random() % 4)
                                                         : axisCodes[random() % 9];
            event.value = random() % 3 == 0 ? static_cast<std::int32_t>(random())
                                            : static_cast<std::int32_t>(random() % 12) - 3;
            noisy.take(event);
            ASSERT_LE(noisy.contacts().size(), 5U);
            for (const Contact& contact : noisy.contacts()) {
                ASSERT_TRUE(contact.x >= 0 && contact.x <= 1) << contact.x;
                ASSERT_TRUE(contact.y >= 0 && contact.y <= 1) << contact.y;
            }
        }
    }
}

}  // namespace
}  // namespace gull
