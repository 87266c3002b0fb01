// Anti-aliasing after the fact: the contrast around a pixel tells which way an edge runs, and the picture is averaged along
// it.
#include "colour.glsl"
#include "frame.glsl"

uniform sampler2D source;
out vec4 outColour;

float brightness(ivec2 pixel) { return luminance(texelFetch(source, pixel, 0).rgb); }

void main() {
    ivec2 pixel = clamp(ivec2(gl_FragCoord.xy), ivec2(1), ivec2(frame.picture.xy) - 2);
    float nw = brightness(pixel + ivec2(-1, 1)), ne = brightness(pixel + 1);
    float sw = brightness(pixel - 1), se = brightness(pixel + ivec2(1, -1));
    vec2 along = vec2(sw + se - nw - ne, nw + sw - ne - se);
    // Where there is no edge, the pixel itself.
    float contrast = max(abs(along.x), abs(along.y));
    along *= clamp(contrast * 20.0 - 1.0, 0.0, 1.0) / max(min(abs(along.x), abs(along.y)) + 0.02, contrast * 0.2);
    vec2 at = gl_FragCoord.xy * frame.picture.zw, reach = clamp(along, -3.0, 3.0) * 0.25 * frame.picture.zw;
    outColour = 0.5 * (textureLod(source, at - reach, 0.0) + textureLod(source, at + reach, 0.0));
}
