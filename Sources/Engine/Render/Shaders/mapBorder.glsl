// A multiply map ends softly: what lies on its border is not drawn out over all that is beyond.
float withinMap(vec2 at) {
    vec2 beyond = max(-at, at - 1.0);
    return 1.0 - clamp(max(beyond.x, beyond.y) * 50.0, 0.0, 1.0);
}
