// How far moving things cover the sun.
#include "depth.glsl"
#include "relight.glsl"
#include "shadow.glsl"

uniform sampler2D staticDepth;
uniform sampler2DShadow movingShadow;
layout(location = 0) out vec4 outColour;
void main() {
    vec3 c = shadowEye + shadowRay * axisDistance(texelFetch(staticDepth, ivec2(gl_FragCoord.xy), 0).r);
    outColour = vec4(covered(movingShadow, vec3(c.xy, c.z - kMoving.z), kMoving.x, 0.0, 0.0));
}
