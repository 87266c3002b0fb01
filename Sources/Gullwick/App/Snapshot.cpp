#include "Gullwick/App/Snapshot.h"

#include "Engine/Compositor/Renderer.h"
#include "Engine/Files/SmallFile.h"
#include "Engine/Gl/OffscreenContext.h"
#include "Engine/Log/Log.h"
#include "Engine/Raster/Canvas.h"
#include "Engine/Raster/Png.h"
#include "Gullwick/App/Environment.h"
#include "Gullwick/App/IconRenderer.h"
#include "Gullwick/App/PlayersLanguage.h"
#include "Gullwick/App/SnapshotOptions.h"
#include "Gullwick/App/StillBeach.h"
#include "Gullwick/HUD/HUDView.h"
#include "Gullwick/HUD/HudState.h"

#include <fmt/format.h>

#include <cmath>
#include <memory>
#include <optional>

namespace gull {

namespace {

int fail(const std::string& why) {
    Log::say("{}", why);
    return 1;
}

/// The item pictures, one file a kind. Without graphics they are empty, like in the game.
int writeIcons(const std::string& folder, Renderer* renderer) {
    Textures textures;
    IconRenderer source(renderer, textures);
    ItemIcons icons(source);
    bool encoded = true;
    for (const ItemKind kind : allKinds()) {
        encoded &= Snapshot::write(icons.image(kind), fmt::format("{}/{}.png", folder, rawValue(kind)));
    }
    return encoded ? 0 : 1;
}

/// The scene with the HUD over it, as one picture of the scene's size.
Image compose(const Image& scene, StillBeach& beach, Renderer& renderer, const SnapshotOptions& options,
              double scale) {
    Canvas canvas(options.width, options.height, scale);
    const double width = options.width, height = options.height;
    canvas.drawImage(scene, {0, 0, width, height});
    IconRenderer source(&renderer, beach.game().world().textures());
    ItemIcons icons(source);
    drawHud(canvas, HudState::of(beach.game(), beach.settings().showTicks(), playersLanguage({})), icons);
    return canvas.image();
}

}  // namespace

int Snapshot::run(const CommandLine& commandLine) {
    const auto parsed = SnapshotOptions::parse(commandLine);
    if (const auto* problem = std::get_if<std::string>(&parsed)) return fail(*problem);
    const auto& options = std::get<SnapshotOptions>(parsed);

    std::string missing;
    const auto context = OffscreenContext::create(&missing);
    std::optional<Renderer> renderer;
    if (context) renderer.emplace();
    if (options.iconsFolder) {
        if (!context) Log::say("the icons stay empty: {}", missing);
        return writeIcons(*options.iconsFolder, renderer ? &*renderer : nullptr);
    }
    if (!context) {
        fmt::print("no Metal device\n");
        return fail(missing);
    }
    const double scale = requestedScale().value_or(1.0);
    const PixelSize size{static_cast<int>(std::lround(options.width * scale)),
                         static_cast<int>(std::lround(options.height * scale))};
    const int limit = graphicsInfo().maximumSize;
    if (size.width < 1 || size.height < 1 || size.width > limit || size.height > limit) {
        return fail(fmt::format("--size: this machine renders 1 to {} pixels a side; {}x{} was asked for",
                                limit, size.width, size.height));
    }
    StillBeach beach(options);
    const Image scene = renderer->snapshot(beach.game().world().stage(), size);
    return write(options.hud ? compose(scene, beach, *renderer, options, scale) : scene, options.path) ? 0
                                                                                                       : 1;
}

bool Snapshot::write(const Image& image, const std::string& path) {
    const auto png = encodePng(image);
    if (!png) {
        fmt::print("render failed\n");
        return false;
    }
    const std::string_view bytes(reinterpret_cast<const char*>(png->data()), png->size());
    if (const auto outcome = SmallFile::replace(path, bytes); !outcome) {
        Log::say("{} cannot be written: {}", path, outcome.failure);
    }
    fmt::print("wrote {}\n", path);
    return true;
}

}  // namespace gull
