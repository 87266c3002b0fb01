#include "Gullwick/HUD/AlertCard.h"
#include "Gullwick/HUD/MenuBar.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace gull {
namespace {

KeyEvent stroke(Key key, char32_t character = 0, bool isRepeat = false) {
    return {key, character, {}, isRepeat};
}

struct MenuBarTest : testing::Test {
    std::vector<std::string> done;
    bool secondEnabled = false;
    MenuBar bar{[this] { return menus(); }};
    double now = 0;

    Command command(const std::string& title, bool enabled = true) {
        Command made;
        made.title = title;
        made.enabled = enabled;
        made.action = [this, title] { done.push_back(title); };
        return made;
    }
    std::vector<Menu> menus() {
        Command sub;
        sub.title = "More";
        sub.submenu = {command("one", false), command("two"), command("three")};
        return {{"Program", {command("About"), Command::separator(), command("Quit")}},
                {"Game", {command("Off", false), command("Second", secondEnabled), sub, command("Last")}}};
    }
    Drawing drawing() {
        bar.follow(now);
        now += 1;
        return Drawing(bar.body(now, 800, 600), 800, 600, 1);
    }
    void press(Key key) { EXPECT_TRUE(bar.handle(stroke(key))); }
    void mouse(MouseEvent::Kind kind, const std::string& name, bool free = true) {
        const Drawing seen = drawing();
        const auto found = seen.find(name);
        ASSERT_TRUE(found.has_value()) << name;
        bar.handle({kind, found->rect.x + 5, found->rect.y + 5, 1}, seen, free);
    }
    void click(const std::string& name) {
        mouse(MouseEvent::Kind::down, name);
        if (bar.isOpen()) mouse(MouseEvent::Kind::up, name);
    }
};

TEST_F(MenuBarTest, IsWalkedWithKeysAlone) {
    EXPECT_FALSE(bar.handle(stroke(Key::down))) << "closed, it takes no keys";
    press(Key::f10);
    ASSERT_TRUE(bar.isOpen());
    EXPECT_EQ(bar.chosenItem(), 0U);
    press(Key::down);
    EXPECT_EQ(bar.chosenItem(), 2U) << "over the separator";
    press(Key::down);
    EXPECT_EQ(bar.chosenItem(), 0U) << "and around";
    press(Key::right);
    EXPECT_EQ(bar.openMenu(), 1U);
    EXPECT_EQ(bar.chosenItem(), 2U) << "the first that can be chosen";
    press(Key::right);
    EXPECT_EQ(bar.chosenSubItem(), 1U);
    press(Key::down);
    press(Key::left);
    EXPECT_EQ(bar.chosenSubItem(), std::nullopt);
    EXPECT_TRUE(bar.isOpen());
    press(Key::returnKey);
    press(Key::up);
    EXPECT_EQ(bar.chosenSubItem(), 2U);
    press(Key::returnKey);
    EXPECT_EQ(done, std::vector<std::string>{"three"});
    EXPECT_FALSE(bar.isOpen());
    press(Key::alt);
    press(Key::left);
    EXPECT_EQ(bar.openMenu(), 1U);
    press(Key::escape);
    EXPECT_FALSE(bar.isOpen());
    EXPECT_EQ(done.size(), 1U);
}

TEST_F(MenuBarTest, TakesEveryKeyWhileItIsOpen) {
    press(Key::alt);
    EXPECT_TRUE(bar.handle(stroke(Key::character, U'r')));
    EXPECT_TRUE(bar.handle(stroke(Key::returnKey, 0, true))) << "a held key chooses nothing";
    EXPECT_TRUE(done.empty());
    press(Key::alt);
    EXPECT_FALSE(bar.isOpen());
}

TEST_F(MenuBarTest, ComesToAFreePointerAtTheEdge) {
    const Drawing nothing;
    const auto move = [&](double y, bool free) {
        bar.handle({MouseEvent::Kind::moved, 400, y, 0}, nothing, free);
    };
    move(3, false);
    EXPECT_FALSE(drawing().find("menuBar").has_value()) << "a captured pointer calls nothing";
    move(40, true);
    EXPECT_FALSE(drawing().find("menuBar").has_value());
    move(3, true);
    EXPECT_TRUE(drawing().find("menuBar").has_value());
    EXPECT_FALSE(bar.isOpen()) << "only shown: the beach goes on taking input";
    move(40, true);
    EXPECT_TRUE(drawing().find("menuBar").has_value());
    move(100, true);
    drawing();
    EXPECT_FALSE(drawing().find("menuBar").has_value());
}

TEST_F(MenuBarTest, IsUsedWithTheMouseAlone) {
    bar.handle({MouseEvent::Kind::moved, 400, 3, 0}, Drawing(), true);
    click("menu.title.1");
    ASSERT_EQ(bar.openMenu(), 1U);
    mouse(MouseEvent::Kind::moved, "menu.title.0");
    EXPECT_EQ(bar.openMenu(), 0U);
    mouse(MouseEvent::Kind::moved, "menu.title.1");
    click("menu.item.0");
    EXPECT_TRUE(bar.isOpen()) << "disabled";
    mouse(MouseEvent::Kind::moved, "menu.item.2");
    mouse(MouseEvent::Kind::moved, "menu.sub.1");
    EXPECT_EQ(bar.chosenSubItem(), 1U);
    click("menu.sub.1");
    EXPECT_EQ(done, std::vector<std::string>{"two"});
    EXPECT_FALSE(bar.isOpen());

    bar.handle(stroke(Key::f10));
    const Drawing seen = drawing();
    EXPECT_TRUE(bar.handle({MouseEvent::Kind::down, 700, 500, 1}, seen, true)) << "and does nothing else";
    EXPECT_FALSE(bar.isOpen()) << "a click beside it closes it";
    bar.follow(now += 1);
    bar.follow(now += 1);
    EXPECT_FALSE(drawing().find("menu.title.0")) << "the bar leaves with it";
}

TEST_F(MenuBarTest, AltWithALetterIsTheMenusAndNeverTheGames) {
    const auto alt = [&](char32_t letter) {
        Modifiers modifiers;
        modifiers.alt = true;
        return bar.handle(KeyEvent{Key::character, letter, modifiers, false});
    };
    EXPECT_TRUE(alt(U'r'));
    EXPECT_FALSE(bar.isOpen());
    EXPECT_TRUE(alt(U'g'));
    EXPECT_EQ(bar.openMenu(), 1U);
    EXPECT_EQ(bar.chosenItem(), 2U);
    EXPECT_TRUE(alt(U'p'));
    EXPECT_EQ(bar.openMenu(), 0U);
    EXPECT_TRUE(done.empty());
}

TEST_F(MenuBarTest, ThePointerMayCutTheCornerToASubmenu) {
    bar.handle({MouseEvent::Kind::moved, 400, 3, 0}, Drawing(), true);
    click("menu.title.1");
    mouse(MouseEvent::Kind::moved, "menu.item.2");
    const Drawing seen = drawing();
    const Rect parent = seen.find("menu.item.2")->rect;
    const Rect below = seen.find("menu.item.3")->rect;
    const Rect goal = seen.find("menu.sub.2")->rect;
    const auto move = [&](double x, double y) {
        bar.handle({MouseEvent::Kind::moved, x, y, 0}, seen, true);
        bar.follow(now += 0.02);
    };
    // From the parent straight to the submenu's last line, over the line below the parent.
    const double fromX = parent.x + 20, fromY = parent.y + parent.height - 2;
    bool crossed = false;
    for (int step = 0; step <= 20; ++step) {
        const double x = fromX + (goal.x + 10 - fromX) * step / 20;
        const double y = fromY + (goal.y + 10 - fromY) * step / 20;
        crossed = crossed || seen.at(x, y, "menu.") == "menu.item.3";
        move(x, y);
        ASSERT_EQ(bar.chosenItem(), 2U) << step;
    }
    EXPECT_TRUE(crossed) << "else this shows nothing";
    EXPECT_EQ(bar.chosenSubItem(), 2U);

    // Straight down is not a detour, and stopping on the way means the line.
    move(fromX, fromY);
    EXPECT_EQ(bar.chosenItem(), 2U);
    move(fromX - 1, below.y + 5);
    EXPECT_EQ(bar.chosenItem(), 3U);
    move(fromX, fromY);
    move(fromX + 15, below.y + 1);
    EXPECT_EQ(bar.chosenItem(), 2U);
    bar.follow(now += 0.1);
    EXPECT_EQ(bar.chosenItem(), 2U);
    bar.follow(now += 0.4);
    EXPECT_EQ(bar.chosenItem(), 3U);
}

TEST_F(MenuBarTest, AClosedMenuFadesAndTakesNothing) {
    press(Key::f10);
    drawing();
    press(Key::escape);
    bar.follow(now);
    const Drawing fading(bar.body(now + 0.05, 800, 600), 800, 600, 1);
    ASSERT_TRUE(fading.find("menu.item.0"));
    EXPECT_GT(fading.find("menu.item.0")->opacity, 0);
    EXPECT_TRUE(bar.isMoving(now + 0.05));
    const Rect line = fading.find("menu.item.0")->rect;
    EXPECT_FALSE(bar.handle({MouseEvent::Kind::up, line.x + 5, line.y + 5, 1}, fading, true));
    EXPECT_TRUE(done.empty());
    EXPECT_FALSE(Drawing(bar.body(now + 1, 800, 600), 800, 600, 1).find("menu.item.0"));
}

TEST_F(MenuBarTest, AnOldPictureOfTheMenusIsNotWalkedInto) {
    bar.handle({MouseEvent::Kind::moved, 400, 3, 0}, Drawing(), true);
    click("menu.title.1");
    mouse(MouseEvent::Kind::moved, "menu.item.2");
    const Drawing seen = drawing();
    const auto at = [&](const char* name) { return seen.find(name)->rect; };
    ASSERT_TRUE(seen.find("menu.sub.1") && seen.find("menu.item.3"));
    // Two moves before the next frame: the first closes the submenu that the second still sees.
    bar.handle({MouseEvent::Kind::moved, at("menu.item.3").x + 5, at("menu.item.3").y + 5, 1}, seen, true);
    bar.handle({MouseEvent::Kind::moved, at("menu.sub.1").x + 5, at("menu.sub.1").y + 5, 1}, seen, true);
    EXPECT_EQ(bar.chosenSubItem(), std::nullopt);
    // And the shorter menu beside it, whose lines are fewer than those still seen.
    bar.handle({MouseEvent::Kind::moved, at("menu.title.0").x + 5, at("menu.title.0").y + 5, 1}, seen, true);
    bar.handle({MouseEvent::Kind::up, at("menu.item.3").x + 5, at("menu.item.3").y + 5, 1}, seen, true);
    EXPECT_TRUE(done.empty());
}

TEST_F(MenuBarTest, AsksForTheMenusAsTheyStandWhenItOpens) {
    press(Key::f10);
    press(Key::right);
    EXPECT_EQ(bar.chosenItem(), 2U);
    press(Key::escape);
    secondEnabled = true;
    press(Key::f10);
    press(Key::right);
    EXPECT_EQ(bar.chosenItem(), 1U);
}

TEST(AlertCard, ReturnPressesTheSafeButtonUntilTheFocusWasMoved) {
    int confirmed = 0;
    const auto ask = [&] { return resetAlert([&] { ++confirmed; }); };
    for (const Key key : {Key::returnKey, Key::keypadEnter, Key::space, Key::escape}) {
        AlertCard card = ask();
        card.handle(stroke(key));
        EXPECT_TRUE(card.isAnswered());
    }
    EXPECT_EQ(confirmed, 0);
    AlertCard held = ask();
    held.handle(stroke(Key::returnKey, 0, true));
    EXPECT_FALSE(held.isAnswered()) << "a key still held from the game";
    AlertCard moved = ask();
    moved.handle(stroke(Key::left));
    moved.handle(stroke(Key::escape));
    EXPECT_EQ(confirmed, 0) << "Escape cancels wherever the focus is";
    for (const Key key : {Key::left, Key::tab}) {
        AlertCard card = ask();
        card.handle(stroke(key));
        card.handle(stroke(Key::returnKey));
        EXPECT_TRUE(card.isAnswered());
    }
    EXPECT_EQ(confirmed, 2);
}

TEST(AlertCard, ButtonsAnswerThePointerAndACardThatAsksNothingClosesBesideIt) {
    AlertCard card = aboutCard("1.0.0");
    const Drawing seen(card.body(), 860, 560, 1);
    const Rect close = seen.find("alert.button.0")->rect;
    const auto faces = [&] {
        std::vector<Colour> colours;
        const Drawing now(card.body(), 860, 560, 1);
        for (const Drawing::Mark& mark : now.marks())
            if (const auto* style = std::get_if<ShapeStyle>(&mark.content)) colours.push_back(style->fill);
        return colours;
    };
    const auto rest = faces();
    card.handle({MouseEvent::Kind::moved, close.x + 5, close.y + 5, 0}, seen);
    const auto hovered = faces();
    EXPECT_NE(hovered, rest);
    card.handle({MouseEvent::Kind::down, close.x + 5, close.y + 5, 1}, seen);
    EXPECT_NE(faces(), hovered);
    card.handle({MouseEvent::Kind::moved, 5, 5, 0}, seen);
    EXPECT_EQ(faces(), rest);
    card.handle({MouseEvent::Kind::down, 5, 5, 1}, seen);
    EXPECT_TRUE(card.isAnswered());
    AlertCard asks = resetAlert({});
    asks.handle({MouseEvent::Kind::down, 5, 5, 1}, seen);
    EXPECT_FALSE(asks.isAnswered());
}

TEST(AlertCard, IsAnsweredByAWholeClickOnAButton) {
    int confirmed = 0;
    AlertCard card = resetAlert([&] { ++confirmed; });
    const Drawing seen(card.body(), 860, 560, 1);
    EXPECT_NE(seen.findText("Reset all progress?"), nullptr);
    EXPECT_NE(seen.findText("Your stars and best hauls are erased and you start again from beach 1."),
              nullptr);
    const Rect reset = seen.find("alert.button.0")->rect;
    const Rect cancel = seen.find("alert.button.1")->rect;
    EXPECT_LT(reset.x, cancel.x);
    const auto send = [&](MouseEvent::Kind kind, const Rect& at) {
        card.handle({kind, at.x + 10, at.y + 10, 1}, seen);
    };
    send(MouseEvent::Kind::down, {0, 0, 0, 0});
    send(MouseEvent::Kind::up, reset);
    EXPECT_FALSE(card.isAnswered()) << "pressed elsewhere";
    send(MouseEvent::Kind::down, reset);
    send(MouseEvent::Kind::up, cancel);
    EXPECT_FALSE(card.isAnswered()) << "let go elsewhere";
    send(MouseEvent::Kind::down, reset);
    send(MouseEvent::Kind::up, reset);
    EXPECT_TRUE(card.isAnswered());
    EXPECT_EQ(confirmed, 1);
}

}  // namespace
}  // namespace gull
