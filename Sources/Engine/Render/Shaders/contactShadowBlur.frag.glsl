#include "compiledOnce.glsl"
#include "depth.glsl"
#include "screen.glsl"

uniform sampler2D source;
uniform sampler2D staticDepth;
uniform vec2 texel;    // of the source
uniform int rows;      // of four texels each that are averaged: 4
out vec4 outColour;
float range(vec2 at) { return axisDistance(textureLod(staticDepth, at, 0.0).r); }
void main() {
    COMPILED_ONCE;
    float here = range(st);
    vec4 sum = vec4(0.0);
    float weights = 0.0;
    for (int y = 0; y < rows; ++y)
        for (int x = 0; x < 4; ++x) {
            vec2 at = st + (vec2(float(x), float(y)) - 1.5) * texel;
            float weight = max(1.0 - abs(range(at) - here) * 4.0 / max(abs(here) * 0.1, 0.2), 0.001);
            sum += textureLod(source, at, 0.0) * weight;
            weights += weight;
        }
    outColour = sum / weights;
}
