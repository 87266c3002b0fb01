#pragma once

#include "Engine/Loop/Task.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace gull {

class AppSettings;
class Feedback;
class GameController;

/// Plays the real game through its own controller, as a player would, and checks that rules and controller
/// behave. Prints a line for every check and never stops at a failed one.
namespace SelfTest {

/// Receives one line of the report, without its line end. It must output the line at once: the process ends
/// soon after the last one.
using Output = std::function<void(const std::string& line)>;

/// The beaches that the last argument asks for: "3" or "2,5"; pieces that are not numbers are ignored.
/// Anything else means the whole campaign.
std::vector<int> beaches(const std::vector<std::string>& arguments);

/// The whole run: mutes `feedback`, makes a controller that saves nothing and plays the beaches that
/// `arguments` ask for. Returns the process's exit status: 0 if every check passed, else 1. Everything is
/// owned by the caller and must outlive the task.
Task<int> run(MainLoop& loop, const AppSettings& settings, Feedback& feedback,
              std::vector<std::string> arguments, Output output);

/// The script alone, on the caller's controller, which has fresh progress.
Task<int> play(MainLoop& loop, GameController& game, std::vector<int> beaches, Output output);

}  // namespace SelfTest

}  // namespace gull
