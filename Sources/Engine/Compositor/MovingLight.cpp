#include "Engine/Compositor/MovingLight.h"

#include "Engine/Compositor/CoarsePixels.h"
#include "Engine/Compositor/ReliefGrid.h"
#include "Engine/Render/FlatPasses.h"
#include "Engine/Render/PicturePass.h"
#include "Engine/Render/RenderContext.h"
#include "Engine/Render/TextureUnits.h"

namespace gull {

namespace {

std::vector<PixelArea> within(const PixelArea& part, const std::vector<PixelArea>& areas) {
    std::vector<PixelArea> inside;
    for (const PixelArea& area : areas)
        if (const PixelArea common = area.intersection(part); !common.empty()) inside.push_back(common);
    return inside;
}

int allMarks(const MovingReach& reach) {
    return (reach.shadow ? ReliefGrid::shadowMark : 0) | (reach.lamps > 0 ? ReliefGrid::lampMark : 0);
}

ProgramKey lightProgram(ProgramKind kind, const MovingLight::Inputs& inputs, int marks) {
    ProgramKey key{kind};
    key.features.set(Feature::movingShadow, (marks & ReliefGrid::shadowMark) != 0);
    key.features.set(Feature::noToneMapping, !inputs.view.camera.hdr);
    key.features.set(Feature::paint, static_cast<bool>(inputs.ground.paint));
    if ((marks & ReliefGrid::lampMark) != 0) key.lamps = inputs.reach.lamps;
    return key;
}

}  // namespace

ProgramKey lightChangeProgram(const MovingLight::Inputs& inputs, int marks) {
    ProgramKey key = lightProgram(ProgramKind::lightChange, inputs, marks);
    key.features.set(Feature::rectangles);
    key.features.set(Feature::fewTaps);
    return key;
}

DrawState MovingLight::lightState(const Inputs& inputs, const ProgramKey& key) const {
    const StaticPictures& ground = inputs.ground;
    DrawState state;
    state.program = &context_.programs.get(key);
    state.frameUniforms = inputs.frameUniforms;
    const std::pair<int, TextureRef> textures[] = {
        {unitStaticLit, ground.lit},         {unitStaticShade, ground.shade},
        {unitStaticSurface, ground.surface}, {unitStaticNormal, ground.normal},
        {unitStaticDepth, ground.depth},     {unitPaint, ground.paint},
        {unitSource, ground.picture},        {unitMovingShadow, inputs.movingShadow}};
    for (const auto& [unit, texture] : textures)
        if (texture) state.textures.push_back({unit, texture});
    return state;
}

TextureRef MovingLight::findCover(const Inputs& inputs, const PixelSize& size) {
    ensureSize(context_.device, covered_, size, {{Format::r8}});
    context_.device.clear(covered_.whole(), {{{0, 0, 0, 0}}, {}});
    DrawState state = lightState(inputs, {ProgramKind::movingCover, {Feature::rectangles}});
    state.target = covered_.whole();
    for (const int marks : {ReliefGrid::shadowMark + 0, ReliefGrid::shadowMark | ReliefGrid::lampMark})
        drawAreas(context_, state, inputs.reach.areas[static_cast<std::size_t>(marks)]);
    return covered_.colour();
}

void MovingLight::relight(const Inputs& inputs, const Target& target) {
    TextureRef cover;
    if (inputs.reach.shadow) cover = findCover(inputs, target.size());
    DrawState state = lightState(inputs, lightProgram(ProgramKind::relight, inputs, allMarks(inputs.reach)));
    if (cover) state.textures.push_back({unitMovingCover, cover});
    state.target = target.whole();
    state.depthTest = DepthTest::always;
    state.writesDepth = true;
    drawScreen(context_, std::move(state));
}

TextureRef MovingLight::findChange(const Inputs& inputs, const PixelArea& part) {
    const PixelSize& size = inputs.view.size;
    ensureSize(context_.device, change_, coarse(size), {{Format::bgra8}});
    // Filtering at full resolution reads one coarse pixel further.
    std::array<std::vector<PixelArea>, 4> reached;
    PixelArea around;
    for (std::size_t marks = 1; marks < 4; ++marks) {
        reached[marks] = within(part.grown(coarsePixel(size)), inputs.reach.areas[marks]);
        for (const PixelArea& area : reached[marks]) around = around.united(area);
    }
    if (around.empty()) return change_.colour();
    context_.device.clear(change_.whole().within(coarse(around, size)), {{{0, 0, 0, 0}}, {}});
    // The program for all marks replaces one that is not compiled yet.
    const ProgramKey all = lightChangeProgram(inputs, allMarks(inputs.reach));
    for (int marks = 1; marks < 4; ++marks) {
        const auto& areas = reached[static_cast<std::size_t>(marks)];
        if (areas.empty()) continue;
        const ProgramKey wanted = lightChangeProgram(inputs, marks);
        DrawState state = lightState(inputs, context_.programs.has(wanted) ? wanted : all);
        state.target = change_.whole();
        drawAreas(context_, std::move(state), areas);
    }
    return change_.colour();
}

void MovingLight::applyChange(TextureRef change, const MovingReach& reach, const PixelArea& part,
                              const DrawTarget& target) {
    std::vector<PixelArea> areas;
    for (const std::vector<PixelArea>& reached : reach.areas)
        for (const PixelArea& area : within(part, reached)) areas.push_back(area);
    blendPicture(context_, target, change, areas);
}

}  // namespace gull
