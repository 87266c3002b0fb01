#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace gull {

/// The mode that the program was started in.
enum class Mode { help, version, devices, allowTouchpad, appIcons, snapshot, selfTest, game };

/// The words after the program's name. Flags are whole words, found at any position; the value of a flag is
/// the word after its first occurrence, or follows an equals sign.
class CommandLine {
  public:
    explicit CommandLine(const std::vector<std::string>& words);

    /// With every flag and every value a word of its own, and short forms written out.
    const std::vector<std::string>& arguments() const { return arguments_; }
    bool has(std::string_view flag) const;
    /// Empty if the flag is absent or is the last word.
    std::optional<std::string> value(std::string_view flag) const;

    /// Help, version, devices, the touchpad's permission and the game's own icon come first, then pictures,
    /// then the self-test; else the game.
    Mode mode() const;
    /// One sentence for every unknown word, with the flag that was probably meant; for every value that its
    /// flag cannot use; and for every flag that needs another one.
    std::vector<std::string> complaints() const;

    static std::string help();
    static std::string version();

  private:
    std::vector<std::string> arguments_;
    std::vector<std::string> problems_;  ///< found while parsing the words
};

}  // namespace gull
