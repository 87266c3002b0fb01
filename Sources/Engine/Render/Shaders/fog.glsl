#include "frameValues.glsl"
#include "softPower.glsl"

// Share of the fog's colour at a distance from the eye.
float fogAt(float range) { return softPower(clamp((range - kGrade.z) * kGrade.w, 0.0, 1.0), kFog.w); }
