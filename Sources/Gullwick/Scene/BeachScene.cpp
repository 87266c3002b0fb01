#include "Gullwick/Scene/BeachScene.h"

#include "Engine/Log/Require.h"
#include "Engine/Stage/FiniteCheck.h"
#include "Gullwick/Scene/DetectorRig.h"
#include "Gullwick/Scene/Digs.h"
#include "Gullwick/Scene/Dressing.h"
#include "Gullwick/Scene/Materials.h"
#include "Gullwick/Scene/PingArrow.h"
#include "Gullwick/Scene/RipplePool.h"
#include "Gullwick/Scene/SceneCamera.h"
#include "Gullwick/Scene/SceneLights.h"
#include "Gullwick/Scene/Sea.h"
#include "Gullwick/Scene/Terrain.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace gull {

namespace {

constexpr double trailUploadGap = 0.05;  // seconds
constexpr double shakeDecay = 9;         // a second
constexpr double undulation = 0.03;      // of the sand between two samples of its height

/// How far beyond the plot a mark on its border runs out, world units: a fiftieth of its width.
constexpr double fadesBeyond = Terrain::plotWidth / 50;

/// The part of the world that a rectangle of the trail covers.
Box worldBox(const PixelRect& rect) {
    const double perX = Terrain::plotWidth / TrailCanvas::width,
                 perZ = Terrain::plotDepth / TrailCanvas::height;
    // What lies on the plot's border is seen a little beyond it.
    const auto beyond = [](bool onBorder) { return onBorder ? fadesBeyond : 0; };
    const double left = rect.x * perX - Terrain::plotWidth / 2 - beyond(rect.x == 0),
                 far = rect.y * perZ - Terrain::plotDepth / 2 - beyond(rect.y == 0);
    const double right = (rect.x + rect.width) * perX - Terrain::plotWidth / 2 +
                         beyond(rect.x + rect.width == TrailCanvas::width),
                 near = (rect.y + rect.height) * perZ - Terrain::plotDepth / 2 +
                        beyond(rect.y + rect.height == TrailCanvas::height);
    constexpr int steps = 8;
    Box box;
    for (int i = 0; i <= steps; ++i) {
        for (int k = 0; k <= steps; ++k) {
            const double x = std::lerp(left, right, static_cast<double>(i) / steps);
            const double z = std::lerp(far, near, static_cast<double>(k) / steps);
            box.include({x, Terrain::height(x, z), z});
        }
    }
    box.min.y -= undulation;
    box.max.y += undulation;
    return box;
}

std::shared_ptr<Material> sandMaterial(Textures& textures, const TrailCanvas& trail) {
    auto material = Materials::pictured(textures.sandDetail(), 0, 0.93);
    material->diffuseMap.wrapS = material->diffuseMap.wrapT = Wrap::repeat;
    Channel& ripples = material->normalMap;
    ripples.texture = textures.sandNormal();
    ripples.intensity = 0.55;
    ripples.wrapS = ripples.wrapT = Wrap::repeat;
    ripples.scale = {0.8, 0.8};
    // The trail's top row lies along the seaward edge, where the plot's own coordinates begin.
    Channel& marks = material->multiplyMap;
    marks.texture = trail.texture();
    marks.uvSet = 1;
    marks.scale = {1, -1};
    marks.offset = {0, 1};
    return material;
}

}  // namespace

struct BeachScene::Parts {
    Parts(Stage& stage, Textures& textures, DelayedWork& delayedWork, const TrailCanvas& trail)
        : camera(stage),
          lights(stage),
          sea(stage.root, textures),
          ripples(stage.root, textures),
          ping(stage.root, textures),
          detector(stage.root, textures),
          digs(stage, textures, delayedWork),
          sand(sandMaterial(textures, trail)) {}

    SceneCamera camera;
    SceneLights lights;
    Sea sea;
    RipplePool ripples;
    PingArrow ping;
    DetectorRig detector;
    Digs digs;
    SandMesh sandMesh;
    std::shared_ptr<Material> sand;
    Node* beachRoot = nullptr;
    double lastTrailUpload = 0;
};

BeachScene::BeachScene(DelayedWork& delayedWork)
    : parts_(std::make_unique<Parts>(stage_, textures_, delayedWork, trail)) {
    setBeach(1);
}

BeachScene::~BeachScene() = default;

void BeachScene::setBeach(int number) {
    require(number >= 0, "beach {}: beaches are numbered from 1", number);
    const bool again = parts_->beachRoot && number == beachNumber_;
    beachNumber_ = number;
    look_ = BeachLook::forBeach(number);

    std::unique_ptr<Node> last;
    if (parts_->beachRoot) last = parts_->beachRoot->removeFromParent();
    Node& beach = stage_.root.addChild("beach");
    parts_->beachRoot = &beach;
    parts_->digs.begin(beach, look_);
    floodStart.reset();
    trail.reset();
    trail.upload();

    parts_->lights.apply(look_, number, textures_);
    parts_->camera.setExposure(look_.exposure - 0.2);

    // Grains glint only in a strong sun.
    parts_->sand->sparkle = std::clamp((look_.sunIntensity - 600) / 600, 0.0, 1.6);

    // Every visit finds the same ground and the same props on it.
    if (again) {
        for (const char* name : {"sand", "surroundings", "dressing"})
            beach.add(last->find(name)->removeFromParent());
    } else {
        Node& sand = beach.add(makeNode(parts_->sandMesh.coloured(look_), parts_->sand));
        sand.coarseGeometry = std::make_shared<const Geometry>(parts_->sandMesh.coarse(look_));
        sand.name = "sand";
        sand.castsShadow = false;
        Node& surroundings = beach.add(makeNode(parts_->sandMesh.surroundings(look_), parts_->sand));
        surroundings.coarseGeometry =
            std::make_shared<const Geometry>(parts_->sandMesh.coarseSurroundings(look_));
        surroundings.name = "surroundings";
        surroundings.castsShadow = false;
        beach.add(Dressing::build(number, look_, textures_));
    }

    parts_->sea.setLook(look_, textures_);
    tide = 0;
    parts_->ping.hide();
    parts_->ripples.hideAll();
    stage_.touchStill();
}

void BeachScene::frame(double aspect) {
    parts_->camera.frame(aspect);
    parts_->camera.place(time, reduceMotion ? -100 : introStart, reduceMotion ? 0 : shake);
}

void BeachScene::update(double newTime, double dt, const PlotPoint& coil, const glm::dvec2& coilVelocity,
                        double coilLift, double signal, const Colour& tint) {
    time = newTime;
    stage_.time = newTime;
    shake *= std::exp(-shakeDecay * dt);
    parts_->camera.place(time, reduceMotion ? -100 : introStart, reduceMotion ? 0 : shake);
    parts_->detector.place(Terrain::world(coil), coilVelocity, dt, coilLift);
    parts_->detector.setSignal(signal, tint);
    parts_->sea.update(time, tide, floodStart);
    parts_->ripples.update(time);
    parts_->ping.update(time);
    parts_->digs.update(time);
    if (trail.dirty() && time - parts_->lastTrailUpload > trailUploadGap) {
        stage_.touchPaint(worldBox(trail.upload()));
        parts_->lastTrailUpload = time;
    }
#ifndef NDEBUG
    const std::string fault = nonFiniteNumber(stage_);
    require(fault.empty(), "the stage holds a number that is not finite: {}", fault);
#endif
}

void BeachScene::ripple(const PlotPoint& at, const Colour& tint, double strength, double size) {
    parts_->ripples.start(Terrain::world(at), tint, strength * size, time);
}

void BeachScene::showPing(const PlotPoint& from, const PlotPoint& to) {
    parts_->ping.show(Terrain::world(from), Terrain::world(to), time);
}

void BeachScene::dig(const PlotPoint& at, const Hunt::DigOutcome& outcome) {
    std::optional<ItemKind> found;
    if (const auto* treasure = std::get_if<Hunt::Treasure>(&outcome)) found = treasure->item.kind;
    if (const auto* junk = std::get_if<Hunt::Junk>(&outcome)) found = junk->item.kind;
    trail.hole(at);
    parts_->digs.dig(Terrain::world(at), found, time);
    shake = std::max(shake, found ? 1.0 : 0.4);
}

const std::vector<Reveal>& BeachScene::reveals() const {
    return parts_->digs.reveals();
}

PlotPoint BeachScene::plotPoint(const glm::dvec2& point, const glm::dvec2& viewSize) const {
    const Camera& lens = parts_->camera.lens();
    const glm::dmat4 world = parts_->camera.node().worldTransform();
    const glm::dvec3 near = unproject(lens, world, {point, 0}, viewSize);
    const glm::dvec3 ray = unproject(lens, world, {point, 1}, viewSize) - near;
    if (std::abs(ray.y) <= 1e-9) return Terrain::plotPoint(0, 0);
    // Intersects the ray with the mean height of the sand, then refines with the height found there.
    glm::dvec3 hit = near + ray * ((0.15 - near.y) / ray.y);
    for (int step = 0; step < 3; ++step) {
        hit = near + ray * ((Terrain::height(hit.x, hit.z) - near.y) / ray.y);
    }
    const PlotPoint plot = Terrain::plotPoint(hit.x, hit.z);
    return {std::clamp(plot.x, 0.0, 1.0), std::clamp(plot.y, 0.0, 1.0)};
}

}  // namespace gull
