// Opens beaches one after another, each drawn complete off screen on the fast tier, and prints the resident
// memory on the way: it must not grow once every beach was shown.
//
//     build/Benchmarks/ManyBeaches [count]        (500 without argument; about half a second each)

#include "Engine/Loop/Clock.h"
#include "Engine/Render/OffscreenContext.h"
#include "Engine/Render/Renderer.h"
#include "Engine/Render/Target.h"
#include "Gullwick/App/Memory.h"
#include "Gullwick/Scene/BeachScene.h"

#include <fmt/format.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

namespace gull {
namespace {

constexpr Renderer::Size size{1240, 800};

/// Of this process, MB; 0 where the system does not tell.
double residentMemory() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmRSS:")) return std::atof(line.c_str() + 6) / 1024;
    return 0;
}

void open(int count) {
    ManualClock clock;
    MainLoop loop{clock};
    DelayedWork work{loop};
    BeachScene scene{work};
    Renderer renderer;
    Target window{{size.width, size.height}, {{Format::rgba8}}};
    scene.frame(static_cast<double>(size.width) / size.height);
    renderer.setTier(RenderTier::fast);
    double time = 0;
    for (int opened = 1; opened <= count; ++opened) {
        scene.setBeach((opened - 1) % 8 + 1);
        scene.introStart = time;
        // A moment of the fly-in, then the camera at rest.
        for (double step : {0.1, 1.5}) {
            time += step;
            scene.update(time, step, {0.4, 0.4}, {0.1, 0}, 0, 0.6, {1, 0.76, 0.28, 1});
            renderer.draw(scene.stage(), size, window.framebuffer(), step > 1);
        }
        if (opened != 1 && opened % 8 != 0) continue;
        if (opened > 16 && opened % 40 != 0) continue;
        fmt::print("{:>4} beaches: {:.0f} MB resident\n", opened, residentMemory());
        std::fflush(stdout);
    }
}

}  // namespace
}  // namespace gull

int main(int count, char** arguments) {
    gull::returnLargeBlocks();
    auto context = gull::OffscreenContext::create();
    gull::open(count > 1 ? std::atoi(arguments[1]) : 500);
}
