#include "frame.glsl"
#include "paint.glsl"

layout(location = 0) in vec3 inPosition;
layout(location = 2) in vec2 inUv0;
layout(location = 3) in vec2 inUv1;
uniform mat4 model;
uniform vec4 place;  // xy: scale, zw: offset
uniform vec2 shape;  // which coordinates, intensity
invariant gl_Position;
void main() {
    vec4 world = model * vec4(inPosition, 1.0);
    gl_Position = frame.viewProjection * world;
    at = (shape.x > 0.5 ? inUv1 : inUv0) * place.xy + place.zw;
    strength = shape.y;
}
