uniform sampler2D staticDepth;
void main() {
    ivec2 last = textureSize(staticDepth, 0) - 1;
    ivec2 corner = ivec2(gl_FragCoord.xy) * 2 - 1;
    float farthest = 0.0;
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 4; ++x)
            farthest = max(farthest, texelFetch(staticDepth, clamp(corner + ivec2(x, y), ivec2(0), last), 0).r);
    gl_FragDepth = farthest;
}
