// The sun in single grains of sand at `ground`, times the sun's light. The ground is divided into cells; in some of them
// lies a grain that happens to turn the sun to the eye. It is a dot about two pixels wide; where these cover more ground
// than the grain does, it is dimmer by as much. `aligned`: cosine between the normal and the half vector; the steeper the
// face that is needed, the fewer grains have it.
float sparklingGrain(vec2 ground, float aligned) {
    const float cellsPerUnit = 12.0, grainArea = 9e-5, brightness = 1.2;
    vec2 place = ground * cellsPerUnit;
    vec3 lot = fract(floor(place.xyx) * vec3(0.1031, 0.1030, 0.0973));
    lot += dot(lot, lot.yzx + 33.33);
    lot = fract((lot.xxy + lot.yzz) * lot.zyx);
    vec2 off = (fract(place) - 0.3 - 0.4 * lot.xy) / cellsPerUnit;
    mat2 pixel = mat2(dFdx(ground), dFdy(ground));
    float area = max(abs(determinant(pixel)), 1e-8);
    vec2 pixels = vec2(pixel[1].y * off.x - pixel[1].x * off.y, pixel[0].x * off.y - pixel[0].y * off.x) / area;
    float chance = 0.035 * aligned * aligned * aligned;
    float grain = step(1.0 - chance, lot.z) * (0.3 + 0.7 * lot.x);
    return grain * brightness * min(grainArea / area, 1.0) * exp2(-2.5 * dot(pixels, pixels));
}

// Painted sand does not sparkle: it was turned over, or is wet.
float hidesSparkle(vec3 paint) { return clamp((1.0 - paint.g) * 20.0, 0.0, 1.0); }
