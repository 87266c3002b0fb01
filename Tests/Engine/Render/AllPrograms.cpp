#include "Engine/Render/AllPrograms.h"

#include "Engine/Render/FrameBlock.h"
#include "Engine/Render/Shaders.h"

#include <initializer_list>
#include <iterator>
#include <set>
#include <tuple>
#include <utility>

namespace gull::test {

namespace {

using Defines = std::vector<std::string>;
using Switches = std::initializer_list<std::pair<bool, const char*>>;

class Collector {
  public:
    void add(const std::string& name, const ShaderSource& vertex, const ShaderSource& fragment) {
        const auto key =
            std::tuple(vertex.body.data(), vertex.defines, fragment.body.data(), fragment.defines);
        if (known_.insert(key).second) programs_.push_back({name, vertex, fragment});
    }
    std::vector<ProgramSource> take() { return std::move(programs_); }

  private:
    std::set<std::tuple<const char*, Defines, const char*, Defines>> known_;
    std::vector<ProgramSource> programs_;
};

Defines definesOf(Switches switches) {
    Defines defines;
    for (const auto& [on, name] : switches)
        if (on) defines.emplace_back(name);
    return defines;
}

Defines lampDefines(int lamps) {
    return lamps > 0 ? Defines{"LAMPS " + std::to_string(lamps)} : Defines{};
}

void append(Defines& defines, const Defines& more) {
    defines.insert(defines.end(), more.begin(), more.end());
}

enum class Output { linear, kept, display, film };

/// How a surface is drawn: by its material and by the pass.
struct SurfaceCase {
    Output output = Output::linear;
    int lighting = 2;  ///< constant, Lambert, physically based
    int lamps = 0;
    bool blended = false, added = false, smooth = false;
    bool diffuseMap = false, normalMap = false, multiplyMap = false, sparkle = false;
    bool sunShadow = false, occlusion = false, bloom = false, plainFilm = false, waterDepth = false,
         small = false;
};

void addSurface(Collector& programs, const SurfaceCase& c) {
    const bool film = c.smooth && c.blended && c.lighting == 2;
    const bool small = c.small && c.lighting == 2 && !c.added;
    const bool all = c.output == Output::kept && !c.blended && c.lighting == 2;
    const bool shaded = c.lighting != 0, solid = !c.blended || small;
    if (c.output == Output::film && !film) return;
    if (c.output == Output::kept && c.blended) return;  // only what is opaque is kept
    Defines defines = definesOf({
        {all || c.diffuseMap, "DIFFUSE_MAP"},
        {all || (shaded && c.normalMap), "NORMAL_MAP"},
        {c.multiplyMap && c.output != Output::kept, "MULTIPLY_MAP"},
        {all || (c.multiplyMap && c.output == Output::kept), "PAINTED"},
        {film, "SMOOTH"},
        {c.added, "ADDED"},
        {all || (shaded && c.sunShadow && (solid || film)), "SUN_SHADOW"},
        {all || (shaded && c.occlusion && !c.blended), "OCCLUSION"},
        {c.bloom && c.output == Output::film, "BLOOM"},
        {c.output == Output::kept, "OUT_KEPT"},
        {c.output == Output::display, "OUT_DISPLAY"},
        {c.output == Output::film, "OUT_FILM"},
        {c.plainFilm && c.output == Output::display, "PLAIN_FILM"},
        {c.waterDepth && film, "WATER_DEPTH"},
        {c.lighting == 2 && solid, "ROUGHNESS"},
        {small, "SMALL"},
        {all || (c.lighting == 2 && c.sparkle && c.output != Output::display && !small), "SPARKLE"},
    });
    const Defines lamps = lampDefines(shaded ? c.lamps : 0);
    defines.push_back("LIGHTING " + std::to_string(c.lighting));
    append(defines, lamps);
    programs.add("surface", {shaders::surfaceVertex, small ? Defines{"SMALL"} : lamps},
                 {shaders::surfaceFragment, defines});
}

/// Combinations of what a material has and a pass asks for. What only adds a line of its own is not combined
/// with everything else.
void addSurfacesOf(Collector& programs, Output output) {
    const bool display = output == Output::display, film = output == Output::film;
    SurfaceCase c;
    c.output = output;
    bool* const free[] = {&c.diffuseMap,
                          &c.normalMap,
                          &c.multiplyMap,
                          &c.sunShadow,
                          &c.smooth,
                          &c.blended,
                          &c.added,
                          film ? &c.bloom : &c.waterDepth,
                          display ? &c.plainFilm : &c.occlusion,
                          display ? &c.small : &c.sparkle};
    for (unsigned bits = 0; bits < 1U << std::size(free); ++bits) {
        for (std::size_t i = 0; i < std::size(free); ++i) *free[i] = (bits >> i & 1U) != 0;
        const bool bothMaps = c.diffuseMap && c.normalMap;
        if ((c.added && !c.blended) || (c.added && c.smooth) || (c.smooth && !c.blended)) continue;
        if ((c.multiplyMap || c.sparkle || c.occlusion || c.plainFilm) && !bothMaps) continue;
        if (c.occlusion && !c.sunShadow) continue;
        for (c.lighting = 0; c.lighting <= 2; ++c.lighting)
            for (const int lamps : FrameBlock::lampPrograms) {
                if (lamps % 4 != 0 && !bothMaps) continue;
                c.lamps = lamps;
                addSurface(programs, c);
            }
    }
}

/// Opaque surfaces of quick pictures.
void addMatt(Collector& programs) {
    for (unsigned bits = 0; bits < 16; ++bits) {
        Defines defines = definesOf({{true, "MATT"},
                                     {true, "SMALL"},
                                     {(bits & 1) != 0, "DIFFUSE_MAP"},
                                     {(bits & 2) != 0, "SUN_SHADOW"},
                                     {(bits & 4) != 0, "PLAIN_FILM"},
                                     {(bits & 8) != 0, "LIGHTING 1"},
                                     {(bits & 8) == 0, "LIGHTING 0"}});
        programs.add("matt surface", {shaders::surfaceVertex, defines}, {shaders::mattFragment, defines});
    }
}

void addMovingLight(Collector& programs) {
    programs.add("moving cover", {shaders::relightVertex, {"IN_RECTANGLES"}}, {shaders::coverFragment});
    programs.add("change of light", {shaders::areaVertex}, {shaders::filmFragment, {"SMALL"}});
    for (unsigned bits = 0; bits < 16; ++bits) {
        const bool change = (bits & 1) != 0;
        for (const int lamps : FrameBlock::lampPrograms) {
            Defines passed = lampDefines(lamps), defines = passed;
            append(passed, definesOf({{change, "IN_RECTANGLES"}}));
            append(defines, definesOf({{(bits & 2) != 0, "MOVING_SHADOW"},
                                       {change, "FEW_LOOKS"},
                                       {(bits & 4) != 0, "PLAIN_FILM"},
                                       {(bits & 8) != 0, "PAINT"}}));
            programs.add(change ? "find change of light" : "relight", {shaders::relightVertex, passed},
                         {change ? shaders::changeFragment : shaders::relightFragment, defines});
        }
    }
}

void addScreenPasses(Collector& programs) {
    const auto add = [&](const char* name, std::string_view fragment, const Defines& defines = {}) {
        programs.add(name, {shaders::fullScreen}, {fragment, defines});
    };
    add("sky", shaders::skyFragment);
    add("kept sky", shaders::skyFragment, {"OUT_KEPT"});
    add("developed sky", shaders::skyFragment, {"OUT_DISPLAY"});
    add("farthest depth", shaders::farthestFragment);
    add("bright pass", shaders::brightFragment);
    add("glow", shaders::blurFragment);
    add("film", shaders::gradeFragment);
    add("contact shadows", shaders::occlusionFragment);
    add("contact shadow blur", shaders::occlusionBlurFragment);
}

}  // namespace

std::vector<ProgramSource> allPrograms() {
    Collector programs;
    for (const Output output : {Output::linear, Output::kept, Output::display, Output::film})
        addSurfacesOf(programs, output);
    addMatt(programs);
    addMovingLight(programs);
    addScreenPasses(programs);
    for (const Defines& defines : {Defines{}, {"ADDED"}, {"OUT_DISPLAY"}, {"ADDED", "OUT_DISPLAY"}})
        programs.add("particles", {shaders::particleVertex}, {shaders::particleFragment, defines});
    for (const Defines& defines : {Defines{}, {"WASH"}, {"FADED"}})
        programs.add("sheet", {shaders::sheetVertex}, {shaders::sheetFragment, defines});
    programs.add("depth", {shaders::depthVertex}, {shaders::depthFragment});
    programs.add("sun depth", {shaders::depthVertex, {"FROM_SUN"}}, {shaders::depthFragment});
    programs.add("film over a picture", {shaders::depthVertex}, {shaders::filmFragment, {"SMALL"}});
    programs.add("paint", {shaders::paintVertex}, {shaders::paintFragment});
    programs.add("far away", {shaders::areaVertex}, {shaders::depthFragment});
    programs.add("resolve", {shaders::areaVertex}, {shaders::resolveFragment});
    return programs.take();
}

}  // namespace gull::test
