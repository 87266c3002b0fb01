#include "Engine/Window/WaylandPresent.h"

#ifdef GULL_WAYLAND

#include "Engine/Window/PartialPresent.h"

#include <SDL.h>
#include <SDL_syswm.h>
#include <epoxy/egl.h>
#include <epoxy/gl.h>
#include <sys/mman.h>
#include <unistd.h>
#include <wayland-client.h>

#include <cstring>
#include <utility>

namespace gull {
namespace {

constexpr std::size_t mostBuffers = 3;  ///< one is shown, one waits for the screen, one is written

template <auto Destroy>
struct Destroyed {
    template <typename T>
    void operator()(T* object) const {
        Destroy(object);
    }
};

/// A buffer that the compositor may read at any time until it releases it.
struct Buffer {
    std::unique_ptr<wl_buffer, Destroyed<wl_buffer_destroy>> handle;
    unsigned char* pixels = nullptr;
    std::size_t bytes = 0;
    bool isFree = true;
    std::vector<Window::Part> stale;  ///< where it still holds an older frame

    Buffer() = default;
    Buffer(const Buffer&) = delete;
    Buffer& operator=(const Buffer&) = delete;
    ~Buffer() {
        if (pixels) munmap(pixels, bytes);
    }
};

void released(void* buffer, wl_buffer*) {
    static_cast<Buffer*>(buffer)->isFree = true;
}

void bindShm(void* shm, wl_registry* registry, std::uint32_t name, const char* interface, std::uint32_t) {
    if (std::strcmp(interface, wl_shm_interface.name) == 0)
        *static_cast<wl_shm**>(shm) =
            static_cast<wl_shm*>(wl_registry_bind(registry, name, &wl_shm_interface, 1));
}
void ignoreRemoval(void*, wl_registry*, std::uint32_t) {}

}  // namespace

struct WaylandPresent::Impl {
    wl_display* display = nullptr;  // SDL's own, and so is the surface
    wl_surface* surface = nullptr;
    // Events of our own objects wait here until we look, whenever SDL reads the socket.
    std::unique_ptr<wl_event_queue, Destroyed<wl_event_queue_destroy>> queue;
    std::unique_ptr<wl_shm, Destroyed<wl_shm_destroy>> shm;
    std::vector<std::unique_ptr<Buffer>> buffers;
    std::vector<Window::Part> owed;  ///< not yet shown to the compositor
    int width = 0;
    int height = 0;
    unsigned framebuffer = 0;
    unsigned texture = 0;

    bool connect();
    void resize(int newWidth, int newHeight);
    Buffer* freeBuffer();
    std::unique_ptr<Buffer> makeBuffer();
    void read(const Window::Part& part, unsigned char* pixels) const;
};

bool WaylandPresent::Impl::connect() {
    queue.reset(wl_display_create_queue(display));
    const std::unique_ptr<void, Destroyed<wl_proxy_wrapper_destroy>> wrapper(
        wl_proxy_create_wrapper(display));
    if (!queue || !wrapper) return false;
    wl_proxy_set_queue(static_cast<wl_proxy*>(wrapper.get()), queue.get());
    const std::unique_ptr<wl_registry, Destroyed<wl_registry_destroy>> registry(
        wl_display_get_registry(static_cast<wl_display*>(wrapper.get())));
    static constexpr wl_registry_listener listener{bindShm, ignoreRemoval};
    wl_shm* bound = nullptr;
    wl_registry_add_listener(registry.get(), &listener, &bound);
    wl_display_roundtrip_queue(display, queue.get());
    shm.reset(bound);
    return shm != nullptr;
}

void WaylandPresent::Impl::resize(int newWidth, int newHeight) {
    width = newWidth;
    height = newHeight;
    buffers.clear();
    owed.clear();
    if (framebuffer == 0) glGenFramebuffers(1, &framebuffer);
    if (texture == 0) glGenTextures(1, &texture);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, texture);
    // In the compositor's byte order, so reading needs no conversion.
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, width, height, 0, GL_BGRA, GL_UNSIGNED_INT_8_8_8_8_REV, nullptr);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_LEVEL, 0);
    glBindTexture(GL_TEXTURE_2D, 0);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture, 0);
}

std::unique_ptr<Buffer> WaylandPresent::Impl::makeBuffer() {
    auto made = std::make_unique<Buffer>();
    made->bytes = std::size_t{4} * static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    const int file = memfd_create("gullwick", MFD_CLOEXEC);
    if (file < 0) return nullptr;
    void* memory = ftruncate(file, static_cast<off_t>(made->bytes)) == 0
                       ? mmap(nullptr, made->bytes, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0)
                       : MAP_FAILED;
    if (memory != MAP_FAILED) {
        made->pixels = static_cast<unsigned char*>(memory);
        const std::unique_ptr<wl_shm_pool, Destroyed<wl_shm_pool_destroy>> pool(
            wl_shm_create_pool(shm.get(), file, static_cast<int>(made->bytes)));
        made->handle.reset(
            wl_shm_pool_create_buffer(pool.get(), 0, width, height, width * 4, WL_SHM_FORMAT_XRGB8888));
    }
    ::close(file);
    if (!made->handle) return nullptr;
    static constexpr wl_buffer_listener listener{released};
    wl_buffer_add_listener(made->handle.get(), &listener, made.get());
    made->stale = {{0, 0, width, height}};
    return made;
}

Buffer* WaylandPresent::Impl::freeBuffer() {
    wl_display_dispatch_queue_pending(display, queue.get());
    for (const auto& buffer : buffers)
        if (buffer->isFree) return buffer.get();
    if (buffers.size() >= mostBuffers) return nullptr;
    auto made = makeBuffer();
    if (!made) return nullptr;
    buffers.push_back(std::move(made));
    return buffers.back().get();
}

void WaylandPresent::Impl::read(const Window::Part& part, unsigned char* pixels) const {
    const std::size_t start =
        static_cast<std::size_t>(part.y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(part.x);
    glReadPixels(part.x, height - part.y - part.height, part.width, part.height, GL_BGRA,
                 GL_UNSIGNED_INT_8_8_8_8_REV, pixels + 4 * start);
}

std::unique_ptr<WaylandPresent> WaylandPresent::of(SDL_Window* window) {
    SDL_SysWMinfo info;
    SDL_VERSION(&info.version);
    if (SDL_GetWindowWMInfo(window, &info) != SDL_TRUE || info.subsystem != SDL_SYSWM_WAYLAND) return nullptr;
    // If buffers have an age, the driver hands them to the compositor without a copy.
    const EGLDisplay display = eglGetCurrentDisplay();
    if (!display || epoxy_has_egl_extension(display, "EGL_EXT_buffer_age") ||
        !epoxy_has_gl_extension("GL_MESA_pack_invert"))
        return nullptr;
    auto impl = std::make_unique<Impl>();
    impl->display = info.info.wl.display;
    impl->surface = info.info.wl.surface;
    if (!impl->connect()) return nullptr;
    return std::unique_ptr<WaylandPresent>(new WaylandPresent(std::move(impl)));
}

WaylandPresent::WaylandPresent(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}

WaylandPresent::~WaylandPresent() {
    if (impl_->framebuffer != 0) glDeleteFramebuffers(1, &impl_->framebuffer);
    if (impl_->texture != 0) glDeleteTextures(1, &impl_->texture);
}

unsigned WaylandPresent::framebuffer(int width, int height) {
    if (width != impl_->width || height != impl_->height) impl_->resize(width, height);
    return impl_->framebuffer;
}

void WaylandPresent::present(std::vector<Window::Part> parts) {
    Impl& impl = *impl_;
    parts = fewer(std::move(parts));
    for (const auto& buffer : impl.buffers)
        buffer->stale.insert(buffer->stale.end(), parts.begin(), parts.end());
    impl.owed.insert(impl.owed.end(), parts.begin(), parts.end());
    impl.owed = fewer(std::move(impl.owed));
    if (impl.owed.empty()) return;
    Buffer* buffer = impl.freeBuffer();
    if (!buffer) return;

    glBindFramebuffer(GL_READ_FRAMEBUFFER, impl.framebuffer);
    glPixelStorei(GL_PACK_ROW_LENGTH, impl.width);
    glPixelStorei(GL_PACK_INVERT_MESA, 1);
    for (const Window::Part& part : fewer(std::exchange(buffer->stale, {}))) impl.read(part, buffer->pixels);
    glPixelStorei(GL_PACK_INVERT_MESA, 0);
    glPixelStorei(GL_PACK_ROW_LENGTH, 0);

    buffer->isFree = false;
    wl_surface_attach(impl.surface, buffer->handle.get(), 0, 0);
    if (wl_proxy_get_version(reinterpret_cast<wl_proxy*>(impl.surface)) >=
        WL_SURFACE_DAMAGE_BUFFER_SINCE_VERSION) {
        for (const Window::Part& part : impl.owed)
            wl_surface_damage_buffer(impl.surface, part.x, part.y, part.width, part.height);
    } else {
        wl_surface_damage(impl.surface, 0, 0, impl.width, impl.height);
    }
    impl.owed.clear();
    wl_surface_commit(impl.surface);
    wl_display_flush(impl.display);
}

}  // namespace gull

#else

namespace gull {

struct WaylandPresent::Impl {};
std::unique_ptr<WaylandPresent> WaylandPresent::of(SDL_Window*) {
    return nullptr;
}
WaylandPresent::WaylandPresent(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}
WaylandPresent::~WaylandPresent() = default;
unsigned WaylandPresent::framebuffer(int, int) {
    return 0;
}
void WaylandPresent::present(std::vector<Window::Part>) {}

}  // namespace gull

#endif
