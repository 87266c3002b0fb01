#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace gull {

/// What the program was started for.
enum class Mode { help, version, devices, snapshot, selfTest, game };

/// The words after the program's name. Flags are whole words, found at any position; the value of a flag is
/// the word after its first occurrence.
class CommandLine {
  public:
    explicit CommandLine(std::vector<std::string> arguments) : arguments_(std::move(arguments)) {}

    const std::vector<std::string>& arguments() const { return arguments_; }
    bool has(std::string_view flag) const;
    /// Nothing when the flag is absent or is the last word.
    std::optional<std::string> value(std::string_view flag) const;

    /// Help, version and devices come first, then pictures, then the self-test; else the game.
    Mode mode() const;
    /// One sentence for every word that is none of ours, with the flag that was probably meant, and for every
    /// value that its flag can make nothing of.
    std::vector<std::string> complaints() const;

    static std::string help();
    static std::string version();

  private:
    std::vector<std::string> arguments_;
};

}  // namespace gull
