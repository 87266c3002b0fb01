#include "Engine/Gl/OffscreenContext.h"

#include <epoxy/egl.h>
#include <fmt/format.h>

#include <vector>

namespace gull {

struct OffscreenContext::Impl {
    EGLDisplay display = EGL_NO_DISPLAY;
    EGLContext context = EGL_NO_CONTEXT;

    ~Impl() {
        if (display == EGL_NO_DISPLAY) return;
        eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
        if (context != EGL_NO_CONTEXT) eglDestroyContext(display, context);
        eglTerminate(display);
    }

    /// True when `candidate` gives a context of OpenGL 3.3 core that needs no surface.
    bool open(EGLDisplay candidate) {
        if (candidate == EGL_NO_DISPLAY || !eglInitialize(candidate, nullptr, nullptr)) return false;
        const EGLint want[] = {EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT, EGL_SURFACE_TYPE, 0, EGL_NONE};
        const EGLint version[] = {EGL_CONTEXT_MAJOR_VERSION,
                                  3,
                                  EGL_CONTEXT_MINOR_VERSION,
                                  3,
                                  EGL_CONTEXT_OPENGL_PROFILE_MASK,
                                  EGL_CONTEXT_OPENGL_CORE_PROFILE_BIT,
                                  EGL_NONE};
        EGLConfig config = nullptr;
        EGLint count = 0;
        if (eglBindAPI(EGL_OPENGL_API) && eglChooseConfig(candidate, want, &config, 1, &count) && count > 0) {
            EGLContext made = eglCreateContext(candidate, config, EGL_NO_CONTEXT, version);
            if (made != EGL_NO_CONTEXT) {
                if (eglMakeCurrent(candidate, EGL_NO_SURFACE, EGL_NO_SURFACE, made)) {
                    display = candidate;
                    context = made;
                    return true;
                }
                eglDestroyContext(candidate, made);
            }
        }
        eglTerminate(candidate);
        return false;
    }

    bool openAny() {
        if (epoxy_has_egl_extension(EGL_NO_DISPLAY, "EGL_MESA_platform_surfaceless") &&
            open(eglGetPlatformDisplayEXT(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr)))
            return true;
        if (!epoxy_has_egl_extension(EGL_NO_DISPLAY, "EGL_EXT_platform_device") ||
            !epoxy_has_egl_extension(EGL_NO_DISPLAY, "EGL_EXT_device_enumeration"))
            return false;
        EGLint count = 0;
        if (!eglQueryDevicesEXT(0, nullptr, &count)) return false;
        std::vector<EGLDeviceEXT> devices(static_cast<std::size_t>(count));
        eglQueryDevicesEXT(count, devices.data(), &count);
        for (EGLDeviceEXT device : devices)
            if (open(eglGetPlatformDisplayEXT(EGL_PLATFORM_DEVICE_EXT, device, nullptr))) return true;
        return false;
    }
};

OffscreenContext::OffscreenContext() : impl_(std::make_unique<Impl>()) {}
OffscreenContext::~OffscreenContext() = default;

std::unique_ptr<OffscreenContext> OffscreenContext::create(std::string* reason) {
    std::unique_ptr<OffscreenContext> context(new OffscreenContext);
    if (context->impl_->openAny()) return context;
    if (reason)
        *reason =
            "EGL offers no OpenGL 3.3 without a display; a software rasteriser comes with "
            "\"apt install libegl1 libgl1-mesa-dri\"";
    return nullptr;
}

void OffscreenContext::makeCurrent() {
    eglMakeCurrent(impl_->display, EGL_NO_SURFACE, EGL_NO_SURFACE, impl_->context);
}

}  // namespace gull
