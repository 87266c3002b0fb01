#include "Engine/Render/MovingLight.h"

#include "Engine/Render/Shaders.h"
#include "Engine/Render/TextureUnits.h"

#include <epoxy/gl.h>

#include <string>

namespace gull {

namespace {

std::vector<PixelArea> within(const PixelArea& part, const std::vector<PixelArea>& areas) {
    std::vector<PixelArea> inside;
    for (const PixelArea& area : areas)
        if (const PixelArea common = area.intersection(part); !common.empty()) inside.push_back(common);
    return inside;
}

int allMarks(const MovingLight::Reach& reach) {
    return (reach.shadow ? ReliefGrid::shadowMark : 0) | (reach.lamps > 0 ? ReliefGrid::lampMark : 0);
}

}  // namespace

MovingLight::MovingLight(Studio& studio)
    : studio_(studio),
      cover_(studio.stages, "moving cover", {shaders::relightVertex, {"IN_RECTANGLES"}},
             {shaders::coverFragment}),
      apply_(studio.stages, "change of light", {shaders::areaVertex}, {shaders::filmFragment, {"SMALL"}}) {}

MovingLight::Kind MovingLight::kind(bool change, const Reach& reach, int marks, const KeptLayer& kept) {
    return {change, (marks & ReliefGrid::shadowMark) != 0,
            (marks & ReliefGrid::lampMark) != 0 ? reach.lamps : 0, !kept.view().camera.hdr,
            kept.paint() != 0};
}

const Program& MovingLight::program(const Kind& kind) {
    if (auto found = programs_.find(kind); found != programs_.end()) return found->second;
    std::vector<std::string> defines;
    if (kind.shadow) defines.emplace_back("MOVING_SHADOW");
    if (kind.lamps > 0) defines.push_back("LAMPS " + std::to_string(kind.lamps));
    std::vector<std::string> passed;  // what the vertex shader hands over
    if (kind.lamps > 0) passed.push_back(defines.back());
    if (kind.change) {
        passed.emplace_back("IN_RECTANGLES");
        defines.emplace_back("FEW_LOOKS");
    }
    if (kind.plainFilm) defines.emplace_back("PLAIN_FILM");
    if (kind.paint) defines.emplace_back("PAINT");
    return programs_
        .emplace(kind, Program(studio_.stages, kind.change ? "find change of light" : "relight",
                               {shaders::relightVertex, passed},
                               {kind.change ? shaders::changeFragment : shaders::relightFragment, defines}))
        .first->second;
}

void MovingLight::drawOver(const Target& target, const Reach& reach, const KeptLayer& kept) {
    glDisable(GL_BLEND);
    if (reach.shadow) {
        if (!covered_ || !(covered_.size() == target.size()))
            covered_ = Target(target.size(), {{Format::r8}});
        covered_.bind();
        glClearColor(0, 0, 0, 0);
        glClear(GL_COLOR_BUFFER_BIT);
        glDisable(GL_DEPTH_TEST);
        cover_.use();
        for (int marks : {ReliefGrid::shadowMark + 0, ReliefGrid::shadowMark | ReliefGrid::lampMark})
            studio_.areas.draw(reach.areas[static_cast<std::size_t>(marks)]);
        bindTexture(unitMovingCover, covered_.colour());
    }
    target.bind();
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_ALWAYS);
    glDepthMask(GL_TRUE);
    const Program& relight = program(kind(false, reach, allMarks(reach), kept));
    relight.use();
    studio_.screen.draw(relight);
}

void MovingLight::begin(const KeptLayer& kept) {
    const PixelSize& size = kept.view().size;
    const PixelSize half{(size.width + 1) / 2, (size.height + 1) / 2};
    if (!change_ || !(change_.size() == half)) change_ = Target(half, {{Format::bgra8}});
    change_.bind();
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_BLEND);
    bindTexture(unitSource, kept.picture().colour());
}

void MovingLight::find(const Reach& reach, const KeptLayer& kept, const PixelArea& part) {
    begin(kept);
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT);
    // A program that is not there yet, for nothing was rehearsed, is stood in for by the one that does all.
    const Kind all = kind(true, reach, allMarks(reach), kept);
    for (int marks = 1; marks < 4; ++marks) {
        // Smoothing at full resolution looks one pixel of the half farther.
        const auto areas = within(part.grown(2), reach.areas[static_cast<std::size_t>(marks)]);
        if (areas.empty()) continue;
        const Kind wanted = kind(true, reach, marks, kept);
        program(programs_.count(wanted) != 0 ? wanted : all).use();
        studio_.areas.draw(areas);
    }
}

void MovingLight::rehearse(const Reach& reach, const KeptLayer& kept, int marks) {
    if ((marks & ReliefGrid::shadowMark) != 0 && !reach.shadow) return;
    begin(kept);
    program(kind(true, reach, marks, kept)).use();
    studio_.areas.draw({{0, 0, 2, 2}});
}

void MovingLight::apply(const Reach& reach, const PixelSize& size, const PixelArea& part) {
    std::vector<PixelArea> areas;
    for (const std::vector<PixelArea>& reached : reach.areas)
        for (const PixelArea& area : within(part, reached)) areas.push_back(area);
    bindTexture(unitSource, change_.colour());
    glEnable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    apply_.use();
    apply_.set("shift", glm::vec2(0));
    apply_.set("texel", 1.0F / glm::vec2(size.width, size.height));
    apply_.set("depth", 0.0F);
    studio_.areas.draw(areas);
    glDisable(GL_BLEND);
}

}  // namespace gull
