// Opens beaches one after another, each drawn complete off screen on the fast tier, and prints the resident
// memory on the way: it must not grow once every beach was shown.
//
//     build/Benchmarks/ManyBeaches [count]        (500 without argument; about half a second each)

#include "BeachOffScreen.h"
#include "Gullwick/App/Memory.h"
#include "ResidentMemory.h"

#include <fmt/format.h>

#include <cstdio>
#include <cstdlib>

namespace gull {
namespace {

void open(int count) {
    BeachOffScreen beach;
    double time = 0;
    for (int opened = 1; opened <= count; ++opened) {
        beach.scene.setBeach((opened - 1) % 8 + 1);
        beach.scene.introStart = time;
        // A moment of the fly-in, then the camera at rest.
        for (double step : {0.1, 1.5}) {
            time += step;
            beach.step(time, step);
            beach.draw(step > 1 ? BuildMode::complete : BuildMode::gradual);
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
    gull::open(count > 1 ? std::atoi(arguments[1]) : 500);
}
