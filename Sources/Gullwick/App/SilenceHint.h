#pragma once

namespace gull {

class AppSettings;
class Feedback;
class GameController;

/// Tells a player who can neither hear nor feel the ticks that they can be seen as well: once if there is
/// nothing to hear them with, and once after the sound was turned off.
class SilenceHint {
  public:
    static constexpr double patience = 1.0;  ///< seconds of silence, while devices are still coming up

    /// Everything is owned by the caller and must outlive this object.
    SilenceHint(GameController& game, Feedback& feedback, const AppSettings& settings)
        : game_(game), feedback_(feedback), settings_(settings) {}

    /// Once a frame; `now`: uptime in seconds.
    void poll(double now);

  private:
    bool isSilent();

    GameController& game_;
    Feedback& feedback_;
    const AppSettings& settings_;
    double nextLook_ = 0;
    double silentSince_ = -1;
    bool toldNoDevice_ = false;
    bool toldTurnedOff_ = false;
};

}  // namespace gull
