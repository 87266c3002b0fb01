uniform sampler2D staticDepth;
uniform vec2 ratio;  // of the picture's size to the target's
void main() {
    ivec2 last = textureSize(staticDepth, 0) - 1;
    ivec2 corner = ivec2((gl_FragCoord.xy - 0.5) * ratio) - 1, count = ivec2(ceil(ratio)) + 2;
    float farthest = 0.0;
    for (int y = 0; y < count.y; ++y)
        for (int x = 0; x < count.x; ++x)
            farthest = max(farthest, texelFetch(staticDepth, clamp(corner + ivec2(x, y), ivec2(0), last), 0).r);
    gl_FragDepth = farthest;
}
