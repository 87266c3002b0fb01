#pragma once

#include "GullCore/Beach.h"
#include "Gullwick/App/CommandLine.h"

#include <cstdint>
#include <optional>
#include <string>
#include <variant>

namespace gull {

/// The moment of play that a picture shows, as given on the command line.
struct SnapshotOptions {
    std::optional<std::string> iconsFolder;  ///< icons instead of a scene
    int width = 1400;                        ///< points
    int height = 900;
    int beach = 1;
    std::optional<std::uint64_t> seed;  ///< empty: buried at random
    std::optional<double> elapse;       ///< seconds
    int find = 0;
    int junk = 0;
    std::optional<PlotPoint> coil;
    bool trail = false;
    std::optional<double> reveal;  ///< seconds after the dig of treasure number `find` (counted from 0)
    bool ping = false;
    bool flood = false;
    bool finish = false;
    bool select = false;
    bool closeUp = false;  ///< --icon
    bool hud = true;
    std::string path = "shot.png";

    /// Reads the options; the text says why nothing can be rendered, as a sentence for the player. A value
    /// that is not a number leaves its default.
    static std::variant<SnapshotOptions, std::string> parse(const CommandLine& commandLine);
};

}  // namespace gull
