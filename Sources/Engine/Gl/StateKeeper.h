#pragma once

namespace gull {

/// Whoever remembers what is bound in the OpenGL context, to set only what differs. A new name may be one
/// that was in use, and bound, before: so whoever makes one says so.
class StateKeeper {
  public:
    /// Makes the next call set everything.
    virtual void forgetState() = 0;

  protected:
    ~StateKeeper() = default;
};

}  // namespace gull
