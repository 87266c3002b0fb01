#include "frameValues.glsl"

// Distance in front of the eye, along its axis, of a depth from 0 to 1.
float axisDistance(float depth) { return kTile.w / (depth * 2.0 - 1.0 + kTile.z); }
