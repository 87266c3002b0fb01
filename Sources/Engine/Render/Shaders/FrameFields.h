// The fields of the uniform block "Frame", in order: FrameBlock in C++ and the block in frame.glsl are both
// made from this list. FRAME_FIELD(type, name, initial value); FRAME_ARRAY(type, name, count). Only mat4 and
// vec4, which std140 packs as C++ does. World space, linear light.
FRAME_FIELD(mat4, viewProjection, mat4(1));
FRAME_FIELD(mat4, inverseViewProjection, mat4(1));
FRAME_FIELD(mat4, sunMatrix, mat4(1));              // world to the sun's shadow map, 0 to 1 on all axes
FRAME_FIELD(mat4, movingSunMatrix, mat4(1));        // the same for the shadow map of moving things
FRAME_FIELD(vec4, eye, vec4(0));                    // w: exposure factor
FRAME_FIELD(vec4, sunDirection, vec4(0, 1, 0, 0));  // toward the sun; w: how black its shadow is
FRAME_FIELD(vec4, sunColour, vec4(0));              // w: shadow edge radius, texture coordinates
// x: normal offset, y: depth bias; z: height below which still surfaces are noted as under water.
FRAME_FIELD(vec4, sunShape, vec4(0, 0, -1e9, 0));
// Of the moving shadow map: x: edge radius, y: normal offset, z: depth bias.
FRAME_FIELD(vec4, movingShape, vec4(0));
FRAME_FIELD(vec4, ambient, vec4(0));
FRAME_ARRAY(vec4, irradiance, 9);       // spherical harmonics of the sky's light on a white Lambert surface
FRAME_FIELD(vec4, fogColour, vec4(0));  // w: density exponent
// x: start, y: 1 / length (0: off), z: environment intensity; w: level of the water that waterMirror shows.
FRAME_FIELD(vec4, fogRange, vec4(0));
FRAME_FIELD(vec4, picture, vec4(0));  // width, height, 1 / width, 1 / height
FRAME_FIELD(vec4, lens, vec4(0));     // 1 / P00, 1 / P11, P22, P32 of a perspective projection
FRAME_FIELD(vec4, tile, vec4(0));     // xy: origin of the tile being drawn, pixels of the picture
// x: 1 with tone mapping, y: contrast, z: saturation, w: bloom intensity.
FRAME_FIELD(vec4, grade, vec4(0));
FRAME_FIELD(vec4, toneGain, vec4(1));  // gain of each channel; w: hue preservation
// x: intensity, y: power; z: distance, in depths of the sun's shadow map, from which a caster's shadow has a
// wide edge; w: share of the sky's colour cast that surfaces other than water reflect.
FRAME_FIELD(vec4, vignette, vec4(0));
FRAME_ARRAY(vec4, lampPlace, 4);  // w: 1 / (end - start), 0 without limit
FRAME_ARRAY(vec4, lampLight, 4);  // w: end / (end - start), 1 without limit
FRAME_FIELD(vec4, lampExponents, vec4(2));
