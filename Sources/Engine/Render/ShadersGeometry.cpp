#include "Engine/Render/Shaders.h"

// What draws geometry without lighting it.
namespace gull::shaders {

const std::string_view depthVertex = R"glsl(
layout(location = 0) in vec3 inPosition;
#ifdef FROM_SUN
uniform mat4 toLight;  // model to the shadow map, 0 to 1
void main() {
    gl_Position = vec4((toLight * vec4(inPosition, 1.0)).xyz * 2.0 - 1.0, 1.0);
}
#else
uniform mat4 model;
invariant gl_Position;
void main() {
    vec4 world = model * vec4(inPosition, 1.0);
    gl_Position = frame.viewProjection * world;
}
#endif
)glsl";

const std::string_view areaVertex = R"glsl(
layout(location = 0) in vec2 pixel;
uniform vec2 shift;   // from the rectangles' pixels to the target's
uniform vec2 texel;   // of the target
uniform float depth;  // -1 near to 1 far
void main() { gl_Position = vec4((pixel + shift) * texel * 2.0 - 1.0, depth, 1.0); }
)glsl";

const std::string_view paintVertex = R"glsl(
layout(location = 0) in vec3 inPosition;
layout(location = 2) in vec2 inUv0;
layout(location = 3) in vec2 inUv1;
uniform mat4 model;
uniform vec4 place;  // xy: scale, zw: offset
uniform vec2 shape;  // which coordinates, intensity
invariant gl_Position;
layout(location = 9) out vec2 at;
layout(location = 10) flat out float strength;
void main() {
    vec4 world = model * vec4(inPosition, 1.0);
    gl_Position = frame.viewProjection * world;
    at = (shape.x > 0.5 ? inUv1 : inUv0) * place.xy + place.zw;
    strength = shape.y;
}
)glsl";

const std::string_view paintFragment = R"glsl(
layout(location = 9) in vec2 at;
layout(location = 10) flat in float strength;
uniform sampler2D multiplyMap;
uniform sampler2D keptSurface;
uniform sampler2D keptDepth;
layout(location = 0) out vec4 outColour;
void main() {
    ivec2 pixel = ivec2(gl_FragCoord.xy);
    if (gl_FragCoord.z > texelFetch(keptDepth, pixel, 0).r + 2e-6) discard;
    vec3 paint = decoded(texture(multiplyMap, at).rgb);
    outColour = vec4(sqrt(mix(vec3(1.0), paint, strength * texelFetch(keptSurface, pixel, 0).w)), 1.0);
}
)glsl";

const std::string_view depthFragment = R"glsl(
void main() {}
)glsl";

}  // namespace gull::shaders
