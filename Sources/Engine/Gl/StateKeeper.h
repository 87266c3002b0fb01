#pragma once

namespace gull {

/// Remembers what is bound in the OpenGL context, so as to set only what differs. OpenGL may reuse the name
/// of a deleted object that is still remembered as bound, so creating an object must be reported here.
class StateKeeper {
  public:
    /// Makes the next call set everything.
    virtual void forgetState() = 0;

  protected:
    ~StateKeeper() = default;
};

}  // namespace gull
