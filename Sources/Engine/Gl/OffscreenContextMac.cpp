// Not built or tried on macOS yet.

#include "Engine/Gl/OffscreenContext.h"

#include <OpenGL/OpenGL.h>

namespace gull {

struct OffscreenContext::Impl {
    CGLContextObj context = nullptr;

    ~Impl() {
        if (!context) return;
        CGLSetCurrentContext(nullptr);
        CGLDestroyContext(context);
    }
};

OffscreenContext::OffscreenContext() : impl_(std::make_unique<Impl>()) {}
OffscreenContext::~OffscreenContext() = default;

std::unique_ptr<OffscreenContext> OffscreenContext::create(std::string* reason) {
    std::unique_ptr<OffscreenContext> result(new OffscreenContext);
    const CGLPixelFormatAttribute wanted[] = {
        kCGLPFAOpenGLProfile, static_cast<CGLPixelFormatAttribute>(kCGLOGLPVersion_GL3_Core),
        kCGLPFAAllowOfflineRenderers, static_cast<CGLPixelFormatAttribute>(0)};
    CGLPixelFormatObj format = nullptr;
    GLint count = 0;
    if (CGLChoosePixelFormat(wanted, &format, &count) == kCGLNoError && format) {
        const CGLError error = CGLCreateContext(format, nullptr, &result->impl_->context);
        CGLDestroyPixelFormat(format);
        if (error == kCGLNoError) {
            result->makeCurrent();
            return result;
        }
    }
    if (reason) *reason = "this Mac offers no OpenGL 3.3 core context";
    return nullptr;
}

void OffscreenContext::makeCurrent() {
    CGLSetCurrentContext(impl_->context);
}

}  // namespace gull
