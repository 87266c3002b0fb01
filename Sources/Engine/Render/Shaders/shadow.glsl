const vec2 taps[16] = vec2[](
    vec2(0.1768, 0.0000), vec2(-0.2258, 0.2069), vec2(0.0346, -0.3938), vec2(0.2848, 0.3711),
    vec2(-0.5223, -0.0932), vec2(0.4943, -0.3154), vec2(-0.1656, 0.6154), vec2(-0.3159, -0.6075),
    vec2(0.6848, 0.2493), vec2(-0.7124, 0.2945), vec2(0.3432, -0.7341), vec2(0.2555, 0.8085),
    vec2(-0.7650, -0.4430), vec2(0.8973, -0.1975), vec2(-0.5482, 0.7787), vec2(-0.1259, -0.9762));

// How far the sun is covered at a place in a shadow map: 0 open, 1 in full shadow. Takes five wide taps first
// and more only where these disagree, at an edge: some tell whether the caster is farther than `gap` toward
// the sun, which widens the edge, and the rest smooth the edge. `least` is the narrowest edge that the
// picture can show. A loop of length 0 is skipped even where branches are not.
float covered(sampler2DShadow map, vec3 c, float radius, float gap, float least) {
    vec2 inside = step(vec2(0.0), c.xy) * step(c.xy, vec2(1.0));
    float widest = max(radius * 1.2, min(radius * 2.8, 9.0 / 4096.0));
    vec2 a = vec2(widest, widest * 0.5), b = vec2(-a.y, a.x);
    float first = texture(map, c) + texture(map, vec3(c.xy + a, c.z)) + texture(map, vec3(c.xy + b, c.z)) +
                  texture(map, vec3(c.xy - a, c.z)) + texture(map, vec3(c.xy - b, c.z));
    float open = first * 0.2;
#ifdef FEW_TAPS
    const int tapCount = 8;
#else
    const int tapCount = 16;
#endif
    bool edge = first > 0.01 && first < 4.99;
    float near = 0.0;
    int count = edge && gap > 0.0 ? 4 : 0;
    for (int i = 0; i < count; ++i)
        near += texture(map, vec3(c.xy + (i < 2 ? a : b) * (1.0 - 2.0 * float(i & 1)), c.z - gap));
    float distant = count > 0 ? clamp((4.0 - near) / max(5.0 - first, 0.01), 0.0, 1.0) : 0.0;
    float reach = clamp(mix(radius, widest, distant), least, max(widest, radius));
    float sum = 0.0;
    count = edge ? tapCount : 0;
    for (int i = 0; i < count; ++i) sum += texture(map, vec3(c.xy + taps[i * 16 / tapCount] * reach, c.z));
    if (count > 0) open = sum / float(tapCount);
    return (1.0 - open) * inside.x * inside.y;
}

// The same from a single tap, with an edge as narrow as the map's texels. It fades out toward the map's
// border, because nothing is known beyond, where water and far sand still lie.
float coveredOnce(sampler2DShadow map, vec3 c) {
    vec2 margin = min(c.xy, 1.0 - c.xy);
    return (1.0 - texture(map, c)) * clamp(min(margin.x, margin.y) * 16.0, 0.0, 1.0);
}
