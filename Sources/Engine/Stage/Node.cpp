#include "Engine/Stage/Node.h"

#include <algorithm>
#include <cmath>
#include <glm/ext/matrix_transform.hpp>
#include <glm/geometric.hpp>

namespace gull {

Box transformed(const Box& box, const glm::dmat4& transform) {
    Box result;
    if (box.empty()) return result;
    for (int corner = 0; corner < 8; ++corner) {
        const glm::dvec3 point((corner & 1) ? box.max.x : box.min.x, (corner & 2) ? box.max.y : box.min.y,
                               (corner & 4) ? box.max.z : box.min.z);
        result.include(glm::dvec3(transform * glm::dvec4(point, 1)));
    }
    return result;
}

namespace {

/// Rz * Ry * Rx.
glm::dmat3 rotation(const glm::dvec3& angles) {
    const double cx = std::cos(angles.x), sx = std::sin(angles.x);
    const double cy = std::cos(angles.y), sy = std::sin(angles.y);
    const double cz = std::cos(angles.z), sz = std::sin(angles.z);
    return {{cz * cy, sz * cy, -sy},
            {cz * sy * sx - sz * cx, sz * sy * sx + cz * cx, cy * sx},
            {cz * sy * cx + sz * sx, sz * sy * cx - cz * sx, cy * cx}};
}

}  // namespace

Node& Node::add(std::unique_ptr<Node> child) {
    child->parent_ = this;
    children_.push_back(std::move(child));
    return *children_.back();
}

Node& Node::addChild(std::string childName) {
    return add(std::make_unique<Node>(std::move(childName)));
}

std::unique_ptr<Node> Node::removeFromParent() {
    if (!parent_) return nullptr;
    auto& siblings = parent_->children_;
    const auto place = std::find_if(siblings.begin(), siblings.end(),
                                    [this](const auto& sibling) { return sibling.get() == this; });
    std::unique_ptr<Node> self = std::move(*place);
    siblings.erase(place);
    parent_ = nullptr;
    return self;
}

void Node::removeAllChildren() {
    children_.clear();
}

Node* Node::find(std::string_view childName) {
    for (const auto& child : children_) {
        if (child->name == childName) return child.get();
        if (Node* found = child->find(childName)) return found;
    }
    return nullptr;
}

glm::dmat4 Node::localTransform() const {
    const glm::dmat3 turn = orientation ? glm::mat3_cast(*orientation) : rotation(eulerAngles);
    return {glm::dvec4(turn[0] * scale.x, 0), glm::dvec4(turn[1] * scale.y, 0),
            glm::dvec4(turn[2] * scale.z, 0), glm::dvec4(position, 1)};
}

glm::dmat4 Node::worldTransform() const {
    return parent_ ? parent_->worldTransform() * localTransform() : localTransform();
}

glm::dvec3 Node::worldPosition() const {
    return glm::dvec3(worldTransform()[3]);
}

Box Node::bounds() const {
    Box box;
    if (hidden) return box;
    if (geometry) box = geometry->bounds();
    for (const auto& child : children_) box.include(child->bounds());
    return transformed(box, localTransform());
}

void Node::lookAt(const glm::dvec3& target, const glm::dvec3& up) {
    const glm::dvec3 toTarget = target - position;
    const double distance = glm::length(toTarget);
    if (distance < 1e-12) return;
    const glm::dvec3 back = -toTarget / distance;
    glm::dvec3 right = glm::cross(up, back);
    if (glm::length(right) < 1e-9) {
        // Looking along `up`: any perpendicular direction will do.
        right = glm::cross(std::abs(back.z) < 0.9 ? glm::dvec3(0, 0, 1) : glm::dvec3(1, 0, 0), back);
    }
    right = glm::normalize(right);
    orientation = glm::quat_cast(glm::dmat3(right, glm::cross(back, right), back));
}

std::unique_ptr<Node> makeNode(Geometry geometry, std::shared_ptr<Material> material) {
    return makeNode(std::make_shared<const Geometry>(std::move(geometry)),
                    std::vector<std::shared_ptr<Material>>{std::move(material)});
}

std::unique_ptr<Node> makeNode(GeometryRef geometry, std::vector<std::shared_ptr<Material>> materials) {
    auto node = std::make_unique<Node>();
    node->geometry = std::move(geometry);
    node->materials = std::move(materials);
    return node;
}

}  // namespace gull
