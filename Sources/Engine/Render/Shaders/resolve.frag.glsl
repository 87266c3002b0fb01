// The mean of four samples a pixel.

uniform sampler2DMS source;
uniform vec2 shift;
out vec4 outColour;
void main() {
    ivec2 pixel = ivec2(gl_FragCoord.xy - shift);
    outColour = 0.25 * (texelFetch(source, pixel, 0) + texelFetch(source, pixel, 1) +
                        texelFetch(source, pixel, 2) + texelFetch(source, pixel, 3));
}
