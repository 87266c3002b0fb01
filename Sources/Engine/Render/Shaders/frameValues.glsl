#include "interface.glsl"
#include "frame.glsl"

// The frame's values reach every pixel as flat varyings, because on a software rasteriser a uniform costs
// each pixel several times as much. Varyings cost each triangle instead, so things with many small triangles
// (UNIFORMS_PER_PIXEL) read uniforms.
#ifdef UNIFORMS_PER_PIXEL
#define kToneGain frame.toneGain
#define kVignette frame.vignette
#define kPicture vec4(frame.picture.zw, frame.eye.w, frame.grade.y)
#define kGrade vec4(frame.grade.zw, frame.fogRange.xy)
#define kFog frame.fogColour
#define kEye vec4(frame.eye.xyz, frame.fogRange.z)
#define kTile vec4(frame.tile.xy, frame.lens.zw)
#define kSun frame.sunDirection
#define kSunColour frame.sunColour
#define kLampPlace frame.lampPlace
#define kLampLight frame.lampLight
#define kLampExponents frame.lampExponents
#else
FLAT(0) vec4 kToneGain;       // gain of each channel, hue keeping
FLAT(1) vec4 kVignette;   // intensity, power; gap of wide shadow edges, cast of mirrored skies
FLAT(2) vec4 kPicture;    // 1 / width, 1 / height, exposure, contrast
FLAT(3) vec4 kGrade;      // saturation, bloom intensity, fog start, 1 / fog length
FLAT(4) vec4 kFog;        // colour, exponent
FLAT(5) vec4 kEye;        // position, intensity of the environment
FLAT(6) vec4 kTile;       // xy: origin of the tile; zw: lens, see axisDistance
FLAT(7) vec4 kSun;        // direction toward it, blackness of its shadow
FLAT(8) vec4 kSunColour;  // colour, edge radius of its shadow
#ifdef LAMPS
FLAT(23) vec4 kLampPlace[LAMPS];
FLAT(27) vec4 kLampLight[LAMPS];
FLAT(31) vec4 kLampExponents;
#endif
#endif

#ifdef VERTEX
void writeFrameValues() {
#ifndef UNIFORMS_PER_PIXEL
    kToneGain = frame.toneGain;
    kVignette = frame.vignette;
    kPicture = vec4(frame.picture.zw, frame.eye.w, frame.grade.y);
    kGrade = vec4(frame.grade.zw, frame.fogRange.xy);
    kFog = frame.fogColour;
    kEye = vec4(frame.eye.xyz, frame.fogRange.z);
    kTile = vec4(frame.tile.xy, frame.lens.zw);
    kSun = frame.sunDirection;
    kSunColour = frame.sunColour;
#ifdef LAMPS
    for (int i = 0; i < LAMPS; ++i) {
        kLampPlace[i] = frame.lampPlace[i];
        kLampLight[i] = frame.lampLight[i];
    }
    kLampExponents = frame.lampExponents;
#endif
#endif
}
#endif
