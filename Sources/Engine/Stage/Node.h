#pragma once

#include "Engine/Stage/Camera.h"
#include "Engine/Stage/Geometry.h"
#include "Engine/Stage/Light.h"
#include "Engine/Stage/Material.h"
#include "Engine/Stage/Particles.h"

#include <glm/gtc/quaternion.hpp>
#include <glm/mat4x4.hpp>
#include <glm/vec3.hpp>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace gull {

/// The layer of a frame that draws a node. The still layer is drawn once and kept; the moving one is drawn
/// every frame. The water layer changes slowly and lies under all blended moving things; it may be redrawn in
/// parts, each every few frames.
enum class Layer { inherited, still, water, moving };

/// The bounds of `box` after `transform`.
Box transformed(const Box& box, const glm::dmat4& transform);

/// A node of the scene: a transform and what is attached to it. A node owns its children; pointers and
/// references to a node are borrowed and stay valid until it is removed from its parent.
class Node {
  public:
    Node() = default;
    explicit Node(std::string nodeName) : name(std::move(nodeName)) {}
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;

    std::string name;
    glm::dvec3 position{0};
    /// Radians; rotates about x first, then y, then z: R = Rz * Ry * Rx.
    glm::dvec3 eulerAngles{0};
    std::optional<glm::dquat> orientation;  ///< overrides eulerAngles
    glm::dvec3 scale{1};
    bool hidden = false;     ///< hides the children too
    double opacity = 1;      ///< of this node and its children
    int renderingOrder = 0;  ///< of blended surfaces: lower first, then farther first
    bool castsShadow = true;
    Layer layer = Layer::inherited;  ///< the root's is still

    GeometryRef geometry;
    /// The same shape with fewer triangles, for fast drawing; null: use `geometry`.
    GeometryRef coarseGeometry;
    std::vector<std::shared_ptr<Material>> materials;
    std::shared_ptr<Light> light;
    std::shared_ptr<Camera> camera;
    std::vector<std::shared_ptr<ParticleSystem>> particles;

    Node* parent() const { return parent_; }
    const std::vector<std::unique_ptr<Node>>& children() const { return children_; }
    Node& add(std::unique_ptr<Node> child);
    /// A new, empty child.
    Node& addChild(std::string childName = {});
    /// Takes the node out of its parent and returns it; empty for a root.
    std::unique_ptr<Node> removeFromParent();
    void removeAllChildren();
    /// The first descendant of that name, depth first, or null.
    Node* find(std::string_view childName);

    glm::dmat4 localTransform() const;
    glm::dmat4 worldTransform() const;
    glm::dvec3 worldPosition() const;
    /// The bounds of the geometry of this node and its visible descendants, in the space of this node's
    /// parent.
    Box bounds() const;
    /// Points the local -z axis at `target` (in the parent's space), with the local y axis as close to `up`
    /// as possible.
    void lookAt(const glm::dvec3& target, const glm::dvec3& up = {0, 1, 0});

  private:
    Node* parent_ = nullptr;
    std::vector<std::unique_ptr<Node>> children_;
};

/// A node that shows `geometry` in one material.
std::unique_ptr<Node> makeNode(Geometry geometry, std::shared_ptr<Material> material);
std::unique_ptr<Node> makeNode(GeometryRef geometry, std::vector<std::shared_ptr<Material>> materials);

}  // namespace gull
