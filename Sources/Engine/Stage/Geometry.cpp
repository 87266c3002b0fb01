#include "Engine/Stage/Geometry.h"

#include <glm/common.hpp>
#include <glm/vector_relational.hpp>

namespace gull {

void Box::include(const glm::dvec3& point) {
    min = glm::min(min, point);
    max = glm::max(max, point);
}

void Box::include(const Box& other) {
    if (other.empty()) return;
    min = glm::min(min, other.min);
    max = glm::max(max, other.max);
}

bool Box::contains(const Box& other) const {
    return !other.empty() && glm::all(glm::greaterThanEqual(other.min, min)) &&
           glm::all(glm::lessThanEqual(other.max, max));
}

Box Geometry::bounds() const {
    Box box;
    for (const Vertex& vertex : vertices) box.include(glm::dvec3(vertex.position));
    return box;
}

}  // namespace gull
