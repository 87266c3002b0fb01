#include "Gullwick/App/Commands.h"

#include "Gullwick/Game/GameHarness.h"
#include "Gullwick/Game/TouchSurface.h"
#include "Gullwick/HUD/MenuBar.h"

namespace gull {
namespace {

struct CommandsTest : GameHarness, WindowCommands, PointerLock {
    std::string asked;
    bool fullScreen = false;
    TouchSurface surface{game, settings, *this, clock};

    void showAbout() override { asked += "about "; }
    void quit() override { asked += "quit "; }
    void minimise() override { asked += "minimise "; }
    void toggleFullScreen() override { fullScreen = !fullScreen; }
    bool isFullScreen() const override { return fullScreen; }
    void askReset() override { asked += "reset "; }
    void speak(const std::string& code) override { asked += "speak " + code + " "; }
    bool hasFont(const Language& wanted) override { return wanted.code() != "ja" || hasJapaneseFont; }
    bool hasJapaneseFont = true;
    void takeScreenshot() override { asked += "picture "; }
    void lock() override {}
    void unlock() override {}

    Language language;
    std::vector<Menu> menus() { return buildMenus(game, surface, settings, feedback, *this, language); }
    static const Command* search(const std::vector<Command>& commands, const std::string& title) {
        for (const Command& command : commands) {
            if (command.title == title) return &command;
            if (const Command* inner = search(command.submenu, title)) return inner;
        }
        return nullptr;
    }
    Command command(const std::string& title) {
        for (const Menu& menu : menus()) {
            if (const Command* found = search(menu.commands, title)) return *found;
        }
        ADD_FAILURE() << title;
        return {};
    }
    bool enabled(const std::string& title) { return command(title).enabled; }
    bool press(Key key, char32_t character = 0, bool withCommand = false) {
        Modifiers modifiers;
        modifiers.command = modifiers.control = withCommand;
        return perform(menus(), KeyEvent{key, character, modifiers, false});
    }
};

TEST_F(CommandsTest, TheTableReadsAsThePlayerSeesIt) {
    std::string table;
    for (const Menu& menu : menus()) {
        table += menu.title + "\n";
        for (const Command& each : menu.commands) {
            table += each.isSeparator() ? "  --\n" : "  " + each.title + " | " + each.shortcut.text() + "\n";
            for (const Command& inner : each.submenu) {
                table += inner.isSeparator() ? "    --\n"
                                             : "    " + inner.title + " | " + inner.shortcut.text() + "\n";
            }
        }
    }
    std::string tenths;
    for (int percent = 100; percent >= 0; percent -= 10)
        tenths += "    " + std::to_string(percent) + " % | \n";
    EXPECT_EQ(table,
              "Gullwick\n  About Gullwick | \n  --\n  Quit Gullwick | Ctrl+Q\n"
              "Game\n  Dig | Return\n  Ping (costs 5 s of tide) | H\n  Restart This Beach | R\n"
              "  Next Beach | N\n  All Beaches… | L\n  Beaches | \n"
              "    1  Calm Cove | Ctrl+1\n    2  Shell Bay | Ctrl+2\n    3  Pier Shallows | Ctrl+3\n"
              "    4  Smugglers' Inlet | Ctrl+4\n    5  Lighthouse Point | Ctrl+5\n"
              "    6  Wreck Sands | Ctrl+6\n    7  Storm Beach | Ctrl+7\n    8  Pirates' Landing | Ctrl+8\n"
              "  --\n  Reset Progress… | \n  Pause | P\n"
              "Options\n  Haptic Feedback | \n  Sound | \n  Trackpad Sweeps the Beach | Esc\n"
              "  --\n  Show Ticks | \n  Reduce Motion | \n  Pause in Background | \n"
              "  Effects Volume | \n" +
                  tenths + "  Surf Volume | \n" + tenths +
                  "  Language | \n    As the System | \n    --\n    English | \n    Deutsch | \n"
                  "    Español | \n    Français | \n    日本語 | \n"
                  "Window\n  Minimize | Ctrl+M\n  Enter Full Screen | F11\n  Take Screenshot | F12\n");
}

TEST_F(CommandsTest, CommandsAreOfferedWhereTheyMeanSomething) {
    game.beginBeach(1, true, 7);
    EXPECT_FALSE(enabled("Ping (costs 5 s of tide)")) << "intro";
    play(1);
    EXPECT_TRUE(enabled("Ping (costs 5 s of tide)"));
    EXPECT_FALSE(enabled("Next Beach"));
    EXPECT_TRUE(enabled("1  Calm Cove"));
    EXPECT_FALSE(enabled("2  Shell Bay"));
    lose();
    EXPECT_FALSE(enabled("Next Beach")) << "no star";
    EXPECT_FALSE(enabled("Ping (costs 5 s of tide)"));
    play(1);
    win();
    EXPECT_TRUE(enabled("Next Beach"));
    EXPECT_TRUE(enabled("2  Shell Bay"));
    EXPECT_FALSE(enabled("3  Pier Shallows"));
    for (const char* always : {"Dig", "Restart This Beach", "All Beaches…", "Beaches", "Reset Progress…",
                               "About Gullwick", "Sound", "Minimize"}) {
        EXPECT_TRUE(enabled(always)) << always;
    }
}

TEST_F(CommandsTest, KeysRunTheirCommands) {
    play(1);
    EXPECT_TRUE(press(Key::character, U'h'));
    EXPECT_EQ(game.pings, 1);
    EXPECT_FALSE(press(Key::character, U'n')) << "disabled";
    EXPECT_FALSE(press(Key::character, U'2', true)) << "locked";
    EXPECT_FALSE(press(Key::character, U'h', true)) << "another key with the modifier";
    EXPECT_EQ(game.pings, 1);
    EXPECT_TRUE(press(Key::returnKey));
    EXPECT_GT(game.busyUntil(), clock.now());
    EXPECT_TRUE(press(Key::character, U'l'));
    EXPECT_EQ(game.phase, Phase::selecting);
    EXPECT_TRUE(press(Key::character, U'r'));
    EXPECT_EQ(game.phase, Phase::selecting) << "nothing to restart there";
    EXPECT_TRUE(press(Key::escape));
    EXPECT_EQ(game.phase, Phase::playing) << "Escape leaves the select";
    EXPECT_TRUE(settings.trackpadSweep()) << "and leaves the trackpad alone";
    EXPECT_TRUE(press(Key::character, U'r'));
    EXPECT_EQ(game.phase, Phase::intro);
    EXPECT_TRUE(press(Key::character, U'1', true));
    EXPECT_TRUE(press(Key::f11));
    EXPECT_EQ(command("Exit Full Screen").shortcut.text(), "F11");
    press(Key::character, U'm', true);
    press(Key::character, U'q', true);
    command("Reset Progress…").action();
    command("About Gullwick").action();
    EXPECT_EQ(asked, "minimise quit reset about ");
}

TEST_F(CommandsTest, ReturnLeadsOnFromTheCard) {
    play(1);
    lose();
    press(Key::returnKey);
    EXPECT_EQ(game.phase, Phase::intro);
    EXPECT_EQ(game.spec->number, 1) << "the same beach again";
    play(1);
    win();
    press(Key::returnKey);
    EXPECT_EQ(game.spec->number, 2);
}

TEST_F(CommandsTest, OverAMenuOnlyTheWindowsOwnKeysWork) {
    play(1);
    const auto press = [&](Key key, char32_t character, bool withCommand) {
        Modifiers modifiers;
        modifiers.command = withCommand;
        return perform(menus(), KeyEvent{key, character, modifiers, false}, true);
    };
    EXPECT_FALSE(press(Key::character, U'r', false));
    EXPECT_FALSE(press(Key::returnKey, 0, false));
    EXPECT_FALSE(press(Key::character, U'1', true));
    EXPECT_EQ(game.phase, Phase::playing);
    EXPECT_TRUE(press(Key::f11, 0, false));
    EXPECT_TRUE(fullScreen);
    EXPECT_TRUE(press(Key::character, U'q', true));
    EXPECT_TRUE(press(Key::f12, 0, false));
    EXPECT_EQ(asked, "quit picture ");
}

TEST_F(CommandsTest, VolumesAreChosenInTenthsHeardAndKept) {
    play(1);
    const auto choose = [&](const char* what, const char* percent) {
        search(command(what).submenu, percent)->action();
        EXPECT_TRUE(search(command(what).submenu, percent)->checked);
        int checked = 0;
        for (const Command& each : command(what).submenu) checked += each.checked;
        EXPECT_EQ(checked, 1) << what;
    };
    const float fullSurf = senses.surf;
    senses.all.clear();
    choose("Effects Volume", "50 %");
    ASSERT_EQ(senses.count("tap"), 1U);
    EXPECT_NEAR(senses.all.back().gain, 0.25, 1e-6);
    EXPECT_EQ(senses.surf, fullSurf);
    choose("Surf Volume", "20 %");
    EXPECT_NEAR(senses.surf, 0.04 * fullSurf, 1e-6);
    choose("Surf Volume", "0 %");
    EXPECT_EQ(senses.surf, 0);
    senses.all.clear();
    choose("Effects Volume", "0 %");
    EXPECT_EQ(senses.count("tap"), 0U);
    const AppSettings kept(folder / "settings.json");
    EXPECT_EQ(kept.surfVolume(), 0);
    EXPECT_EQ(kept.effectsVolume(), 0);
}

TEST_F(CommandsTest, PauseIsOfferedInPlayAndGoesOnAgain) {
    play(2);
    press(Key::character, U'p');
    EXPECT_TRUE(game.isPaused);
    EXPECT_FALSE(enabled("Ping (costs 5 s of tide)"));
    command("Go On").action();
    EXPECT_FALSE(game.isPaused);
    lose();
    EXPECT_FALSE(enabled("Pause"));
}

TEST_F(CommandsTest, ALockedBeachStaysShutEvenIfForced) {
    play(1);
    command("2  Shell Bay").action();
    EXPECT_EQ(game.spec->number, 1);
}

TEST_F(CommandsTest, OptionsAreCheckedAsTheyStandAndAnswerWithAProof) {
    senses.all.clear();
    EXPECT_TRUE(command("Sound").checked);
    command("Sound").action();
    EXPECT_FALSE(command("Sound").checked);
    EXPECT_EQ(senses.count("found"), 0U);
    command("Sound").action();
    EXPECT_EQ(senses.count("found"), 1U) << "turned on, it is heard";
    command("Haptic Feedback").action();
    EXPECT_FALSE(command("Haptic Feedback").checked);
    senses.all.clear();
    command("Haptic Feedback").action();
    turn(0.2);
    EXPECT_EQ(senses.count("levelChange"), 2U) << "turned on, it is felt";
    EXPECT_FALSE(command("Show Ticks").checked);
    command("Show Ticks").action();
    EXPECT_TRUE(settings.showTicks());
    command("Reduce Motion").action();
    EXPECT_TRUE(command("Reduce Motion").checked);
    EXPECT_TRUE(command("Pause in Background").checked);
    command("Pause in Background").action();
    EXPECT_FALSE(settings.pauseInBackground());
    settings.trackpadSweep = false;
    EXPECT_FALSE(command("Trackpad Sweeps the Beach").checked);
    command("Trackpad Sweeps the Beach").chosen();
    EXPECT_TRUE(settings.trackpadSweep());
    command("Trackpad Sweeps the Beach").chosen();
    EXPECT_FALSE(settings.trackpadSweep()) << "as its check mark shows";
    EXPECT_TRUE(press(Key::escape));
    EXPECT_TRUE(settings.trackpadSweep()) << "with no finger on the pad, Escape gives it back";
}

TEST_F(CommandsTest, ALanguageIsChosenByItsOwnName) {
    EXPECT_TRUE(command("As the System").checked);
    command("Deutsch").action();
    command("English").action();
    command("As the System").action();
    EXPECT_EQ(asked, "speak de speak en speak  ");
    settings.language = "de";
    EXPECT_TRUE(command("Deutsch").checked);
    EXPECT_FALSE(command("As the System").checked);
    language = *Language::find("de");
    EXPECT_EQ(menus()[1].title, "Spiel");
    EXPECT_TRUE(command("Deutsch").checked) << "by its own name in all languages";
    EXPECT_EQ(command("Gullwick beenden").shortcut.text(language), "Strg+Q");
    EXPECT_TRUE(enabled("日本語"));
    hasJapaneseFont = false;
    EXPECT_FALSE(enabled("ja (keine Schrift)")) << "boxes would be no name";
}

TEST_F(CommandsTest, MenusHaveRoomInEveryLanguage) {
    constexpr double width = 860, height = 560;
    for (const Language& each : Language::all()) {
        language = each;
        MenuBar bar([this] { return menus(); });
        const auto press = [&](Key key) { bar.handle(KeyEvent{key, 0, {}, false}); };
        const auto expectRoom = [&] {
            bar.follow(0);
            const Drawing drawing(bar.body(1, width, height, language), width, height, 1);
            for (const Drawing::Mark& mark : drawing.marks()) {
                const auto* words = std::get_if<Drawing::Text>(&mark.content);
                if (words == nullptr) continue;
                EXPECT_EQ(words->style.maxWidth, 0) << each.code() << ": wraps: " << words->text;
                EXPECT_LE(mark.rect.x + mark.rect.width, width) << each.code() << ": " << words->text;
                EXPECT_LE(mark.rect.y + mark.rect.height, height) << each.code() << ": " << words->text;
            }
        };
        press(Key::f10);
        for (std::size_t menu = 0; menu < menus().size(); ++menu) {
            ASSERT_EQ(bar.openMenu(), menu);
            expectRoom();
            const std::vector<Command> commands = menus()[menu].commands;
            for (std::size_t line = 0; line < commands.size(); ++line) {
                if (commands[line].submenu.empty()) continue;
                while (bar.chosenItem() != line) press(Key::down);
                press(Key::right);
                ASSERT_TRUE(bar.chosenSubItem().has_value());
                expectRoom();
                press(Key::left);
            }
            if (!commands[*bar.chosenItem()].submenu.empty()) press(Key::right);  // into it, and through it
            press(Key::right);
        }
    }
}

}  // namespace
}  // namespace gull
