// A film of liquid over the ground, premultiplied. `whole` is the light of bottomless water, `within` the part
// of it that comes from below the surface. The film hides `alpha` of the ground at once and more with its
// thickness (Beer's law); what it mirrors does not fade with its clearness; its last finger's breadth at the
// water's edge runs out softly.
vec4 waterOver(vec3 whole, vec3 within, float alpha, float mirror, float thickness, float density) {
    float clear = (1.0 - alpha) * exp2(-thickness * density);
    float edge = clamp(thickness * 8.0, 0.0, 1.0);
    return vec4(whole - within * clear, 1.0 - clear * (1.0 - mirror)) * edge;
}
