#include "Engine/Render/DrawList.h"

#include <algorithm>
#include <cmath>
#include <glm/gtc/matrix_inverse.hpp>
#include <glm/gtc/matrix_transform.hpp>

namespace gull {

glm::vec3 linear(const Colour& colour) {
    auto decode = [](double c) {
        return static_cast<float>(c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4));
    };
    return {decode(colour.r), decode(colour.g), decode(colour.b)};
}

namespace {

struct Inherited {
    glm::dmat4 world{1};
    double opacity = 1;
    int order = 0;
    Layer layer = Layer::still;
};

class Gatherer {
  public:
    Gatherer(const Stage& stage, const Viewpoint& view, MeshCache& meshes, DrawList::Which which,
             DrawList::Detail detail, DrawList& list)
        : stage_(stage), view_(view), meshes_(meshes), which_(which), detail_(detail), list_(list) {}

    void visit(const Node& node, const Inherited& from) {
        if (node.hidden || node.opacity <= 0) return;
        Inherited here;
        here.world = from.world * node.localTransform();
        here.opacity = from.opacity * node.opacity;
        here.order = node.renderingOrder != 0 ? node.renderingOrder : from.order;
        here.layer = node.layer == Layer::inherited ? from.layer : node.layer;
        DrawLayer& layer = here.layer == Layer::moving  ? list_.moving
                           : here.layer == Layer::water ? list_.water
                                                        : list_.still;
        if (here.layer != Layer::still || which_ != DrawList::Which::notStill) {
            if (node.geometry) addGeometry(node, here, layer);
            for (const auto& system : node.particles)
                if (!isOver(*system, stage_.time))
                    layer.particles.push_back({system.get(), here.world, static_cast<float>(here.opacity),
                                               here.order,
                                               glm::distance(view_.eye, glm::dvec3(here.world[3]))});
        }
        if (node.light) addLight(*node.light, here.world, layer);
        for (const auto& child : node.children()) visit(*child, here);
    }

  private:
    void addGeometry(const Node& node, const Inherited& here, DrawLayer& layer) {
        if (node.materials.empty() || node.geometry->indices.empty()) return;
        bool coarse = detail_ == DrawList::Detail::coarse && node.coarseGeometry;
        const Mesh& mesh = meshes_.mesh(coarse ? node.coarseGeometry : node.geometry);
        PixelArea area = view_.area(mesh.bounds, here.world);
        if (area.empty() && !node.castsShadow) return;
        glm::dvec3 middle((mesh.bounds.min + mesh.bounds.max) * 0.5);
        middle = glm::dvec3(here.world * glm::dvec4(middle, 1));
        double stretch =
            std::max({glm::length(glm::dvec3(here.world[0])), glm::length(glm::dvec3(here.world[1])),
                      glm::length(glm::dvec3(here.world[2]))});
        double radius = glm::length(mesh.bounds.size()) / 2 * stretch;
        glm::mat3 normalMatrix(glm::inverseTranspose(glm::dmat3(here.world)));
        auto materialOf = [&](std::size_t i) {
            return node.materials[std::min(i, node.materials.size() - 1)].get();
        };
        for (std::size_t i = 0; i < mesh.elements.size(); ++i) {
            const Material* material = materialOf(i);
            Mesh::Element element = mesh.elements[i];
            // Elements of one material are neighbours in the mesh and are drawn as one.
            for (; i + 1 < mesh.elements.size() && materialOf(i + 1) == material; ++i)
                element.chunkCount += mesh.elements[i + 1].chunkCount;
            if (!material || element.chunkCount == 0) continue;
            DrawItem item;
            item.mesh = &mesh;
            item.element = element;
            item.material = material;
            item.model = here.world;
            item.normalMatrix = normalMatrix;
            item.opacity = static_cast<float>(here.opacity);
            item.order = here.order;
            item.distance = glm::distance(view_.eye, middle);
            item.middle = middle;
            item.radius = radius;
            item.castsShadow = node.castsShadow;
            item.blended = material->blend != Material::Blend::opaque || here.opacity < 1;
            item.area = area;
            (item.blended ? layer.blended : layer.opaque).push_back(item);
        }
    }

    void addLight(const Light& light, const glm::dmat4& world, DrawLayer& layer) {
        glm::vec3 colour = linear(light.colour) * static_cast<float>(light.intensity / 1000);
        if (light.kind == Light::Kind::ambient) {
            list_.ambient += colour;
        } else if (light.kind == Light::Kind::omni) {
            if (light.intensity > 0)
                layer.lamps.push_back({glm::dvec3(world[3]), colour * static_cast<float>(light.gain),
                                       light.attenuationStart, light.attenuationEnd,
                                       light.attenuationExponent});
        } else if (!list_.sun.light) {
            Sun& sun = list_.sun;
            sun.light = &light;
            sun.colour = colour;
            sun.toward = glm::normalize(glm::dvec3(world[2]));
            glm::dmat4 rigid = world;
            for (int i = 0; i < 3; ++i) rigid[i] = glm::normalize(rigid[i]);
            double half = light.shadowOrthographicScale;
            glm::dmat4 toClip =
                glm::ortho(-half, half, -half, half, light.shadowNear, light.shadowFar) * glm::inverse(rigid);
            sun.matrix = glm::translate(glm::dmat4(1), glm::dvec3(0.5)) *
                         glm::scale(glm::dmat4(1), glm::dvec3(0.5)) * toClip;
        }
    }

    const Stage& stage_;
    const Viewpoint& view_;
    MeshCache& meshes_;
    DrawList::Which which_;
    DrawList::Detail detail_;
    DrawList& list_;
};

double extent(const DrawItem& item) {
    return static_cast<double>(item.area.width) * static_cast<double>(item.area.height);
}

void sort(DrawLayer& layer) {
    std::stable_sort(layer.opaque.begin(), layer.opaque.end(),
                     [](const DrawItem& a, const DrawItem& b) { return extent(a) < extent(b); });
    std::stable_sort(layer.blended.begin(), layer.blended.end(), [](const DrawItem& a, const DrawItem& b) {
        return a.order != b.order ? a.order < b.order : a.distance > b.distance;
    });
}

}  // namespace

DrawList DrawList::of(const Stage& stage, const Viewpoint& view, MeshCache& meshes, Which which,
                      Detail detail) {
    DrawList list;
    Gatherer(stage, view, meshes, which, detail, list).visit(stage.root, {});
    sort(list.still);
    sort(list.water);
    sort(list.moving);
    return list;
}

namespace {

/// Fowler, Noll and Vo's hash (FNV-1a), a word at a time. Numbers are rounded to visible steps, so that a
/// thing that slows down for ever counts as still.
class Hash {
  public:
    static constexpr double step = 1.0 / 8192;  ///< world units; shares

    std::uint64_t value() const { return value_; }
    void mix(std::uint64_t word) { value_ = (value_ ^ word) * 1099511628211U; }
    void mix(const void* pointer) { mix(reinterpret_cast<std::uintptr_t>(pointer)); }
    void mix(std::initializer_list<double> numbers) {
        for (double number : numbers) mix(static_cast<std::uint64_t>(std::llround(number / step)));
    }
    void mix(const Colour& colour) { mix({colour.r, colour.g, colour.b, colour.a}); }
    void mix(const Channel& channel) {
        mix(channel.texture.get());
        if (!channel) return;
        mix(channel.texture->version());
        mix({channel.scale.x, channel.scale.y, channel.offset.x, channel.offset.y, channel.intensity});
    }
    void mix(const glm::dmat4& model) {
        for (int column = 0; column < 4; ++column) mix({model[column].x, model[column].y, model[column].z});
    }
    void mix(const Material& material) {
        for (const Channel* channel : {&material.diffuseMap, &material.normalMap, &material.multiplyMap})
            mix(*channel);
        for (const Colour* colour : {&material.diffuse, &material.multiply, &material.emission}) mix(*colour);
        mix({material.metalness, material.roughness, material.sparkle, material.opacity});
    }

  private:
    std::uint64_t value_ = 14695981039346656037U;
};

}  // namespace

std::uint64_t casterHash(const DrawLayer& layer) {
    Hash hash;
    for (const DrawItem& item : layer.opaque) {
        if (!item.castsShadow) continue;
        hash.mix(item.mesh);
        hash.mix(item.model);
    }
    return hash.value();
}

std::optional<std::uint64_t> appearanceHash(const DrawLayer& layer) {
    if (!layer.particles.empty()) return std::nullopt;
    Hash hash;
    for (const std::vector<DrawItem>* items : {&layer.opaque, &layer.blended}) {
        hash.mix(items->size());
        for (const DrawItem& item : *items) {
            hash.mix(item.mesh);
            hash.mix(item.element.firstChunk);
            hash.mix(item.model);
            hash.mix(*item.material);
            hash.mix({item.opacity});
        }
    }
    for (const Lamp& lamp : layer.lamps)
        hash.mix({lamp.position.x, lamp.position.y, lamp.position.z, lamp.colour.r, lamp.colour.g,
                  lamp.colour.b, lamp.start, lamp.end, lamp.exponent});
    return hash.value();
}

}  // namespace gull
