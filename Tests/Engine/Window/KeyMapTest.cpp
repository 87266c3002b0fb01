#include "Engine/Window/KeyMap.h"

#include "Engine/Window/DesktopScale.h"

#include <gtest/gtest.h>

namespace gull {
namespace {

// SDL's key codes and modifier bits, written out: they are part of its binary interface.
constexpr std::int32_t symReturn = 13, symEscape = 27, symKeypadEnter = 0x40000058, symUp = 0x40000052,
                       symF11 = 0x40000044, symDelete = 127, symVolume = 0x40000080;
constexpr std::uint16_t modLeftControl = 0x40, modLeftAlt = 0x100, modLeftShift = 1;

TEST(KeyMap, NamesTheKeysOfTheGame) {
    EXPECT_EQ(keyEvent(symReturn, 0, false)->key, Key::returnKey);
    EXPECT_EQ(keyEvent(symEscape, 0, false)->key, Key::escape);
    EXPECT_EQ(keyEvent(symKeypadEnter, 0, false)->key, Key::keypadEnter);
    EXPECT_EQ(keyEvent(symUp, 0, true)->key, Key::up);
    EXPECT_TRUE(keyEvent(symUp, 0, true)->isRepeat);
    EXPECT_EQ(keyEvent(symF11, 0, false)->key, Key::f11);
}

TEST(KeyMap, LettersIgnoreModifiersButTellThem) {
    const auto event = keyEvent('h', modLeftControl | modLeftShift, false);
    ASSERT_TRUE(event);
    EXPECT_EQ(event->character, U'h');
    EXPECT_TRUE(event->modifiers.control);
    EXPECT_TRUE(event->modifiers.shift);
    EXPECT_FALSE(event->modifiers.alt);
#ifndef __APPLE__
    EXPECT_TRUE(event->modifiers.command);
#endif
    EXPECT_TRUE(keyEvent('1', modLeftAlt, false)->modifiers.alt);
}

TEST(KeyMap, KeysWithoutUseAreDropped) {
    EXPECT_FALSE(keyEvent(symDelete, 0, false));
    EXPECT_FALSE(keyEvent(symVolume, 0, false));
    EXPECT_FALSE(keyEvent(0, 0, false));
}

TEST(AltTap, OnlyAltByItselfCounts) {
    AltTap tap;
    tap.pressed(true);
    EXPECT_TRUE(tap.released(true));
    tap.pressed(true);
    tap.pressed(false);  // another key while Alt is down
    EXPECT_FALSE(tap.released(true));
    EXPECT_FALSE(tap.released(true));
}

TEST(DesktopScale, RoundsDpiToQuartersWithinReason) {
    EXPECT_EQ(scaleOfDpi("96"), 1.0);
    EXPECT_EQ(scaleOfDpi("120"), 1.25);
    EXPECT_EQ(scaleOfDpi("140"), 1.5);
    EXPECT_EQ(scaleOfDpi("192.0"), 2.0);
    EXPECT_EQ(scaleOfDpi("48"), 1.0);
    EXPECT_EQ(scaleOfDpi("100000"), 4.0);
    EXPECT_FALSE(scaleOfDpi("large"));
    EXPECT_FALSE(scaleOfDpi("-96"));
    EXPECT_FALSE(scaleOfDpi("nan"));
}

}  // namespace
}  // namespace gull
