const float kGathers = 4.0;  // halvings, per world unit of water, of what a thin layer lacks of `alpha`

// Wet ground is darker, because the surface throws back part of what it scatters. That goes on into deeper water, where
// it is not lost.
float wetted(float thickness) { return mix(0.66, 0.84, clamp(thickness * 2.0, 0.0, 1.0)); }

// A layer of liquid over the ground, premultiplied. `whole` is the light of bottomless water, `within` the part of it from
// below the surface. A thick layer hides `alpha` of the ground, a thin one less, and thickness hides more (Beer's law).
// Reflections do not fade with clearness, only where the water ends: sand that is merely damp is dark, but not glossy.
vec4 waterOver(vec3 whole, vec3 within, float alpha, float mirror, float thickness, float density) {
    float clear = (1.0 - alpha * (1.0 - exp2(-thickness * kGathers))) * exp2(-thickness * density);
    float edge = clamp(thickness * 16.0, 0.0, 1.0), gloss = clamp(thickness * 7.0, 0.0, 1.0);
    vec3 top = (whole - within) * gloss;
    return vec4(top + within * (1.0 - clear), 1.0 - clear * wetted(thickness) * (1.0 - mirror * gloss)) * edge;
}
