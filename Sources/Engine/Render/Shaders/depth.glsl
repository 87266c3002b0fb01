#include "frameValues.glsl"

// Distance from the eye along the camera's axis for a depth from 0 to 1.
float axisDistance(float depth) { return kTile.w / (depth * 2.0 - 1.0 + kTile.z); }
