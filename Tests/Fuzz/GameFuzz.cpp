// The controller and the surface together: any input in any order.

#include "Fuzz/FuzzGame.h"
#include "Fuzz/FuzzInput.h"

using namespace gull;

const std::initializer_list<const char*> gull::fuzzSeeds = {};

namespace {

void step(FuzzGame& play, FuzzInput& input) {
    static constexpr Key keys[] = {Key::returnKey, Key::space, Key::escape, Key::left,
                                   Key::right,     Key::up,    Key::down,   Key::character};
    GameController& game = play.game;
    switch (input.below(14)) {
        case 0:
        case 1:
        case 2:
            play.turn(input.below(100) * 0.002);
            break;
        case 3: {
            std::vector<Contact> contacts(static_cast<std::size_t>(input.below(4)));
            for (Contact& contact : contacts) contact = {input.below(5), input.share(), input.share()};
            play.surface.touches(contacts);
            break;
        }
        case 4:
        case 5:
            play.surface.mouse({static_cast<MouseEvent::Kind>(input.below(4)), input.share() * 1240,
                                input.share() * 800, input.below(4)});
            break;
        case 6:
            play.surface.key({keys[input.below(8)],
                              static_cast<char32_t>("hrnlp12"[input.below(7)]),
                              {},
                              input.below(4) == 0});
            break;
        case 7:
            play.surface.stick(input.share() * 2 - 1, input.share() * 2 - 1, 0.016);
            break;
        case 8:
            input.below(2) == 0 ? play.surface.focusGained() : play.surface.focusLost();
            break;
        case 9:
            play.surface.setCovered(input.below(3) == 0);
            break;
        case 10:
            game.dig();
            break;
        case 11:
            if (input.below(8) == 0)
                game.beginBeach(1 + input.below(8), input.below(2) == 0, input.take<std::uint16_t>());
            break;
        case 12:
            if (input.below(4) == 0) game.debugAdvance(input.below(60));
            break;
        default:
            play.surface.setViewSize({input.below(200) * 10.0, input.below(200) * 10.0});
            break;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    FuzzGame play(input.take<std::uint16_t>());
    for (int steps = 0; !input.isEmpty() && steps < 2000; ++steps) {
        step(play, input);
        play.check();
    }
    play.turn(5);
    play.check();
    return 0;
}
