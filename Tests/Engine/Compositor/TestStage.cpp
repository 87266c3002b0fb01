#include "Engine/Compositor/TestStage.h"

#include "Engine/Stage/Primitives.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

namespace gull::test {

namespace {

using std::numbers::pi;

std::uint8_t byte(double v) {
    return static_cast<std::uint8_t>(std::lround(std::min(std::max(v, 0.0), 1.0) * 255));
}

template <class Maker>
Image picture(int width, int height, Maker maker) {
    Image image(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            Colour c = maker((x + 0.5) / width, 1 - (y + 0.5) / height);
            std::uint8_t* p = image.at(x, y);
            p[0] = byte(c.r * c.a), p[1] = byte(c.g * c.a), p[2] = byte(c.b * c.a), p[3] = byte(c.a);
        }
    return image;
}

std::shared_ptr<Texture> normals(double across, double along, double bend) {
    return std::make_shared<Texture>(picture(128, 128, [=](double u, double v) {
        double x = bend * std::cos(2 * pi * (across * u + 0.3 * std::sin(2 * pi * v)));
        double y = bend * std::cos(2 * pi * (along * v + 0.2 * std::sin(2 * pi * u)));
        double l = std::sqrt(x * x + y * y + 1);
        return Colour{x / l / 2 + 0.5, y / l / 2 + 0.5, 1 / l / 2 + 0.5, 1};
    }));
}

std::shared_ptr<Texture> sky(int width) {
    return std::make_shared<Texture>(picture(width, width / 2, [](double u, double v) {
        double up = v * 2 - 1;
        Colour c = up < 0
                       ? Colour{0.4, 0.36, 0.3, 1}
                       : Colour{0.95 - 0.65 * std::sqrt(up), 0.85 - 0.35 * std::sqrt(up), 0.8 - 0.05 * up, 1};
        double sun = std::exp(-((u - 0.4) * (u - 0.4) * 4 + (v - 0.62) * (v - 0.62)) * 300);
        return Colour{c.r + sun, c.g + sun * 0.9, c.b + sun * 0.7, 1};
    }));
}

double height(double x, double z) {
    double slope = z > -5 ? (z + 5) * 0.035 : -0.13 * std::pow(-5 - z, 1.2);
    return slope + 0.05 * std::sin(0.45 * x + 0.3 * z);
}

Geometry slope() {
    Geometry mesh;
    constexpr int columns = 97, rows = 65;
    for (int i = 0; i < rows; ++i)
        for (int j = 0; j < columns; ++j) {
            double x = -24 + 0.5 * j, z = -20 + 0.5 * i;
            Geometry::Vertex vertex;
            vertex.position = glm::vec3(x, height(x, z), z);
            vertex.normal = glm::normalize(glm::vec3((height(x - 0.05, z) - height(x + 0.05, z)) / 0.1, 1,
                                                     (height(x, z - 0.05) - height(x, z + 0.05)) / 0.1));
            vertex.uv0 = glm::vec2(x / 3.2, z / 3.2);
            vertex.uv1 = glm::vec2((x + 8) / 16, (5 - z) / 10);
            vertex.colour = z < -5 ? glm::vec4(0.4, 0.32, 0.24, 1) : glm::vec4(0.86, 0.66, 0.42, 1);
            mesh.vertices.push_back(vertex);
        }
    for (std::uint32_t i = 0; i + 1 < rows; ++i)
        for (std::uint32_t j = 0; j + 1 < columns; ++j) {
            std::uint32_t a = i * columns + j;
            for (std::uint32_t k : {a, a + columns, a + 1, a + 1, a + columns, a + columns + 1})
                mesh.indices.push_back(k);
        }
    mesh.elements = {{0, static_cast<std::uint32_t>(mesh.indices.size())}};
    return mesh;
}

std::shared_ptr<Material> pbr(const Colour& colour, double metalness, double roughness) {
    auto material = std::make_shared<Material>();
    material->diffuse = colour;
    material->metalness = metalness;
    material->roughness = roughness;
    return material;
}

}  // namespace

std::shared_ptr<Texture> plainTexture(const Colour& colour, int width, int height) {
    return std::make_shared<Texture>(picture(width, height, [=](double, double) { return colour; }));
}

double encodedByte(double v) {
    v = std::min(std::max(v, 0.0), 1.0);
    return 255 * (v <= 0.0031308 ? 12.92 * v : 1.055 * std::pow(v, 1 / 2.4) - 0.055);
}

ShoreStage::ShoreStage() {
    stage.background = sky(512);
    stage.environment = sky(256);
    stage.environmentIntensity = 0.85;
    stage.fog = {{0.9, 0.85, 0.8, 1}, 26, 120, 1.4};

    auto lens = std::make_shared<Camera>();
    lens->exposureOffset = -0.2;
    lens->bloomIntensity = 0.45;
    lens->bloomThreshold = 0.9;
    lens->bloomBlurRadius = 10;
    lens->vignettingIntensity = 0.4;
    lens->vignettingPower = 1.1;
    lens->contrast = 0.08;
    lens->saturation = 1.06;
    camera = &stage.root.addChild("camera");
    camera->camera = lens;
    camera->position = {0, 8.4, 13.4};
    camera->lookAt({0, -0.2, -1.6});
    stage.pointOfView = camera;

    auto sunLight = std::make_shared<Light>();
    sunLight->colour = {1, 0.93, 0.8, 1};
    sunLight->castsShadow = true;
    sunLight->shadowMapSize = 2048;
    sun = &stage.root.addChild("sun");
    sun->light = sunLight;
    sun->position = glm::normalize(glm::dvec3(-0.5, 0.55, -0.65)) * 60.0;
    sun->lookAt({0, 0, 0});
    auto ambientLight = std::make_shared<Light>();
    ambientLight->kind = Light::Kind::ambient;
    ambientLight->colour = {0.5, 0.6, 0.9, 1};
    ambientLight->intensity = 110;
    stage.root.addChild("ambient").light = ambientLight;

    groundMaterial = pbr({1, 1, 1, 1}, 0, 0.93);
    marks = plainTexture({1, 1, 1, 1}, 320, 200);
    groundMaterial->multiplyMap = {marks, Wrap::clamp, Wrap::clamp, {1, 1}, {0, 0}, 1};
    groundMaterial->normalMap = {
        normals(0, 7, 0.35), Wrap::repeat, Wrap::repeat, {0.8, 0.8}, {0, 0}, 0, 0.55};
    ground = &stage.root.add(makeNode(slope(), groundMaterial));
    ground->castsShadow = false;
    for (int i = 0; i < 4; ++i) {
        Node& post =
            stage.root.add(makeNode(primitives::cylinder(0.12, 1.6), pbr({0.45, 0.3, 0.2, 1}, 0, 0.8)));
        double x = -6.0 + 4 * i;
        post.position = {x, height(x, -2) + 0.6, -2};
        Node& ball = stage.root.add(makeNode(primitives::sphere(0.35), pbr({0.8, 0.6, 0.3, 1}, i % 2, 0.25)));
        ball.position = {x + 1, height(x + 1, 1.5) + 0.3, 1.5};
    }

    auto water = pbr({0.07, 0.43, 0.5, 1}, 0, 0.06);
    water->blend = Material::Blend::alpha;
    water->opacity = 0.6;
    water->smooth = true;
    water->normalMap = {normals(2, 3, 0.2), Wrap::repeat, Wrap::repeat, {60, 38}, {0, 0}, 0, 0.55};
    sea = &stage.root.add(makeNode(primitives::plane(320, 200), water));
    sea->position = {0, -0.1, -90};
    sea->eulerAngles = {-pi / 2, 0, 0};
    sea->renderingOrder = 2;
    sea->layer = Layer::water;

    rig = &stage.root.addChild("rig");
    rig->layer = Layer::moving;
    rig->position = {0.5, height(0.5, 0) + 0.32, 0};
    rig->add(makeNode(primitives::torus(0.64, 0.075), pbr({0.07, 0.075, 0.08, 1}, 0.1, 0.45)));
    Node& shaft = rig->add(makeNode(primitives::cylinder(0.06, 4), pbr({0.32, 0.34, 0.37, 1}, 0.8, 0.35)));
    shaft.eulerAngles = {1.18, 0.35, 0};
    shaft.position = {0.6, 0.9, 1.7};
    auto lampLight = std::make_shared<Light>();
    lampLight->kind = Light::Kind::omni;
    lampLight->colour = {1, 0.76, 0.28, 1};
    lampLight->intensity = 70;
    lampLight->attenuationEnd = 2.2;
    lamp = &rig->addChild("lamp");
    lamp->light = lampLight;
    lamp->position = {0, -0.18, 0};

    auto glow = std::make_shared<Material>();
    glow->lighting = Material::Lighting::constant;
    glow->multiply = {0.5, 0.38, 0.14, 1};
    glow->blend = Material::Blend::add;
    glow->writesDepth = false;
    ring = &stage.root.add(makeNode(primitives::plane(1.2, 1.2), glow));
    ring->position = {-2.5, height(-2.5, 0) + 0.035, 0};
    ring->eulerAngles = {-pi / 2, 0, 0};
    ring->renderingOrder = 6;
    ring->layer = Layer::moving;

    auto spray = std::make_shared<ParticleSystem>();
    spray->image = plainTexture({1, 1, 1, 0.8});
    spray->birthRate = 400;
    spray->emissionDuration = 0.5;
    spray->lifeSpan = 1;
    spray->speed = 2;
    spray->spreadingAngle = 38;
    spray->acceleration = {0, -3, 0};
    spray->size = 0.07;
    spray->colour = {0.85, 0.7, 0.5, 1};
    Node& burst = stage.root.addChild("burst");
    burst.layer = Layer::moving;
    burst.position = {3, height(3, 1), 1};
    burst.particles.push_back(spray);
    stage.time = 0.6;
}

FlatStage::FlatStage() {
    auto lens = std::make_shared<Camera>();
    lens->hdr = false;
    lens->orthographicScale = 1;
    camera = &stage.root.addChild("camera");
    camera->camera = lens;
    camera->position = {0, 0, 5};
    stage.pointOfView = camera;
    material = std::make_shared<Material>();
    material->lighting = Material::Lighting::lambert;
    plane = &stage.root.add(makeNode(primitives::plane(4, 4), material));
    auto light = std::make_shared<Light>();
    sun = &stage.root.addChild("sun");
    sun->light = light;
    sun->position = {0, 0, 60};
    sun->lookAt({0, 0, 0});
}

}  // namespace gull::test
