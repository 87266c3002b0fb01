// Keeps only what is brighter than the threshold, at a quarter of the size.
#include "compiledOnce.glsl"
#include "frameValues.glsl"
#include "screen.glsl"

uniform sampler2D source;
uniform vec2 texel;      // of the source
uniform float threshold;
out vec4 outColour;
void main() {
    COMPILED_ONCE;
    vec3 sum = vec3(0.0);
    for (int i = 0; i < 4; ++i) {
        vec2 at = st + (vec2(float(i & 1), float(i >> 1)) * 2.0 - 1.0) * texel;
        vec3 c = max(textureLod(source, at, 0.0).rgb * kPicture.z, vec3(0.0));
        float l = max(max(c.r, c.g), max(c.b, 1e-4));
        // A soft knee; the limit keeps a single pixel from counting for more than a few.
        float over = clamp(l - threshold + 0.2, 0.0, 0.4);
        sum += c * (max(over * over / 0.8, l - threshold) / l) * min(1.0, 1.6 / l);
    }
    outColour = vec4(sum * 0.25 / kPicture.z, 1.0);
}
