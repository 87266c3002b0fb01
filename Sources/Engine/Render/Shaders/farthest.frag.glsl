uniform sampler2D keptDepth;
void main() {
    ivec2 last = textureSize(keptDepth, 0) - 1;
    ivec2 corner = ivec2(gl_FragCoord.xy) * 2 - 1;
    float farthest = 0.0;
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 4; ++x)
            farthest = max(farthest, texelFetch(keptDepth, clamp(corner + ivec2(x, y), ivec2(0), last), 0).r);
    gl_FragDepth = farthest;
}
