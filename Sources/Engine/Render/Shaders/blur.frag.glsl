#include "compiledOnce.glsl"
#include "screen.glsl"

uniform sampler2D source;
uniform vec2 step_;      // from tap to tap
out vec4 outColour;
void main() {
    COMPILED_ONCE;
    // Half of a Gaussian, weights of 9 taps two sigma wide.
    const float weight[5] = float[](0.2042, 0.1802, 0.1238, 0.0663, 0.0276);
    vec3 sum = textureLod(source, st, 0.0).rgb * weight[0];
    for (int i = 1; i < 5; ++i) {
        sum += textureLod(source, st + step_ * float(i), 0.0).rgb * weight[i];
        sum += textureLod(source, st - step_ * float(i), 0.0).rgb * weight[i];
    }
    outColour = vec4(sum, 1.0);
}
