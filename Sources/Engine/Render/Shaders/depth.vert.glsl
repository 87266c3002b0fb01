#include "frame.glsl"
#include "interface.glsl"

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
