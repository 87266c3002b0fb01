#include "Engine/Window/VideoChoice.h"

#include <cstdint>
#include <cstdlib>

#ifdef GULL_WAYLAND
#include <dlfcn.h>
#include <wayland-client.h>

#include <filesystem>
#include <memory>
#include <set>
#include <system_error>
#endif

namespace gull {
namespace {

bool isSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value && *value;
}

}  // namespace

VideoChoice chooseVideo() {
    if (isSet("SDL_VIDEODRIVER") || (!isSet("WAYLAND_DISPLAY") && !isSet("WAYLAND_SOCKET"))) return {};
    // A socket passed as a file descriptor accepts only one connection, and that one is SDL's.
    const std::string missing = isSet("WAYLAND_SOCKET") ? std::string() : missingOnWayland();
    if (missing.empty()) return {"wayland,x11", {}};
    return {"x11,wayland", missing};
}

#ifdef GULL_WAYLAND
namespace {

using Globals = std::set<std::string>;

void note(void* globals, wl_registry*, std::uint32_t, const char* interface, std::uint32_t) {
    static_cast<Globals*>(globals)->insert(interface);
}
void forget(void*, wl_registry*, std::uint32_t) {}

struct Unloaded {
    void operator()(void* library) const { dlclose(library); }
};

/// Libdecor draws title bars with plugins installed next to it; without one it draws none.
bool hasDecorations() {
    if (const char* folder = std::getenv("LIBDECOR_PLUGIN_DIR")) return std::filesystem::exists(folder);
    const std::unique_ptr<void, Unloaded> library(dlopen("libdecor-0.so.0", RTLD_LAZY));
    Dl_info place{};
    const void* symbol = library ? dlsym(library.get(), "libdecor_new") : nullptr;
    if (!symbol || dladdr(symbol, &place) == 0) return false;
    std::error_code problem;
    const auto plugins = std::filesystem::path(place.dli_fname).parent_path() / "libdecor" / "plugins-1";
    for (const auto& entry : std::filesystem::directory_iterator(plugins, problem))
        if (entry.path().extension() == ".so") return true;
    return false;
}

}  // namespace

std::string missingOnWayland() {
    const std::unique_ptr<wl_display, decltype(&wl_display_disconnect)> display(wl_display_connect(nullptr),
                                                                                &wl_display_disconnect);
    if (!display) return "no Wayland compositor answers";
    Globals globals;
    {
        const std::unique_ptr<wl_registry, decltype(&wl_registry_destroy)> registry(
            wl_display_get_registry(display.get()), &wl_registry_destroy);
        static constexpr wl_registry_listener listener{note, forget};
        wl_registry_add_listener(registry.get(), &listener, &globals);
        if (wl_display_roundtrip(display.get()) < 0) return "the Wayland compositor does not answer";
    }
    if (!globals.contains("xdg_wm_base")) return "this Wayland compositor has no windows";
    if (!globals.contains("zwp_pointer_constraints_v1") ||
        !globals.contains("zwp_relative_pointer_manager_v1"))
        return "this Wayland compositor cannot lock the pointer";
    if (!globals.contains("zxdg_decoration_manager_v1") && !hasDecorations())
        return "this Wayland compositor draws no title bars, and libdecor (on Debian the package "
               "libdecor-0-plugin-1-cairo) is not there to draw one";
    return {};
}

#else

std::string missingOnWayland() {
    return "built without Wayland";
}

#endif

}  // namespace gull
