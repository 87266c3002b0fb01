// A layer of liquid over the ground, premultiplied. `whole` is the light of bottomless water, `within` the
// part of it from below the surface. The surface hides `alpha` of the ground, and thickness hides more
// (Beer's law). Reflections do not fade with clearness. The last few centimetres at the water's edge fade out
// softly.
vec4 waterOver(vec3 whole, vec3 within, float alpha, float mirror, float thickness, float density) {
    float clear = (1.0 - alpha) * exp2(-thickness * density);
    float edge = clamp(thickness * 8.0, 0.0, 1.0);
    return vec4(whole - within * clear, 1.0 - clear * (1.0 - mirror)) * edge;
}
