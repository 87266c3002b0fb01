#pragma once

#include <memory>
#include <string>

namespace gull {

/// An OpenGL context without a window or a display; framebuffer objects only. Current from construction until
/// destruction.
class OffscreenContext {
  public:
    /// Null if this machine offers none; `reason` (may be null) then says what is missing and how to get it.
    static std::unique_ptr<OffscreenContext> create(std::string* reason = nullptr);
    ~OffscreenContext();
    OffscreenContext(const OffscreenContext&) = delete;
    OffscreenContext& operator=(const OffscreenContext&) = delete;

    void makeCurrent();

  private:
    OffscreenContext();
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace gull
