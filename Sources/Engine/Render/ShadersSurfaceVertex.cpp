#include "Engine/Render/Shaders.h"

namespace gull::shaders {

const std::string_view surfaceVertex = R"glsl(
layout(location = 0) in vec3 inPosition;
layout(location = 1) in vec3 inNormal;
layout(location = 2) in vec2 inUv0;
layout(location = 3) in vec2 inUv1;
layout(location = 4) in vec4 inColour;
layout(location = 5) in float inRoughness;

uniform mat4 model;
uniform mat3 normalMatrix;
uniform vec4 diffusePlace;  // xy: scale, zw: offset
uniform vec4 normalPlace;
uniform vec4 multiplyPlace;
uniform vec3 uvSets;        // 0 or 1: which coordinates the three maps use
uniform vec4 diffuse;       // linear, straight alpha, all opacities included
uniform vec4 multiply;      // onto the result; w: brightest light
uniform vec4 emission;      // w: occlusion of the sun
uniform vec4 surface;       // metalness, roughness, bend of the normal map, density of water
uniform vec4 mapStrength;   // diffuse, multiply, glint spread, sparkle
#ifdef MATT
uniform vec4 diffuseMean;   // of the diffuse map, as stored; w: 1 where both sides show
// Developed: the surface with its map's mean in shadow, and what the sun adds to that.
layout(location = 16) out vec3 shaded;
layout(location = 17) out vec3 sunny;
#endif

invariant gl_Position;
layout(location = 9) out vec3 position;
layout(location = 10) out vec3 normal;
layout(location = 11) out vec4 mapsAt;      // diffuse, normal
layout(location = 12) out vec3 multiplyAt;  // z: roughness
layout(location = 13) out vec4 baseColour;
layout(location = 14) out vec3 shadowAt;
layout(location = 15) out vec3 skyHere;           // the sky's light on a white surface of this normal, ambient light included
#ifndef SMALL
layout(location = 16) flat out vec3 kSkyX;        // how that changes as the normal bends
layout(location = 17) flat out vec3 kSkyY;
layout(location = 18) flat out vec3 kSkyZ;
layout(location = 19) flat out vec4 kMultiply;
layout(location = 20) flat out vec4 kEmission;
layout(location = 21) flat out vec4 kSurface;
layout(location = 22) flat out vec4 kStrength;
#endif

// Nine spherical harmonics, the cosine lobe and 1/pi already in the coefficients.
vec3 skyLight(vec3 n) {
    return max(frame.irradiance[0].rgb + frame.irradiance[1].rgb * n.y + frame.irradiance[2].rgb * n.z +
                   frame.irradiance[3].rgb * n.x + frame.irradiance[4].rgb * (n.x * n.y) +
                   frame.irradiance[5].rgb * (n.y * n.z) + frame.irradiance[6].rgb * (3.0 * n.z * n.z - 1.0) +
                   frame.irradiance[7].rgb * (n.x * n.z) + frame.irradiance[8].rgb * (n.x * n.x - n.y * n.y),
               vec3(0.0));
}

void main() {
    passFrame();
    vec4 world = model * vec4(inPosition, 1.0);
    gl_Position = frame.viewProjection * world;
    position = world.xyz;
    normal = normalize(normalMatrix * inNormal);
    mapsAt.xy = (uvSets.x > 0.5 ? inUv1 : inUv0) * diffusePlace.xy + diffusePlace.zw;
    mapsAt.zw = (uvSets.y > 0.5 ? inUv1 : inUv0) * normalPlace.xy + normalPlace.zw;
    multiplyAt = vec3((uvSets.z > 0.5 ? inUv1 : inUv0) * multiplyPlace.xy + multiplyPlace.zw, inRoughness);
    baseColour = diffuse * inColour;
    shadowAt = (frame.sunMatrix * vec4(world.xyz + normal * frame.sunShape.x, 1.0)).xyz;
    shadowAt.z -= frame.sunShape.y;
#ifdef MATT
    vec3 toEye = frame.eye.xyz - position;
    if (diffuseMean.w > 0.5 && dot(normal, toEye) < 0.0) normal = -normal;
#endif
    skyHere = skyLight(normal) + frame.ambient.rgb;
#ifdef MATT
    vec3 body = baseColour.rgb * mix(vec3(1.0), decoded(diffuseMean.rgb), mapStrength.x);
#if LIGHTING == 0
    vec3 shade = body, sun = vec3(0.0);
#else
    vec3 shade = body * skyHere;
    vec3 sun = body * (max(dot(normal, frame.sunDirection.xyz), 0.0) * frame.sunColour.rgb) * multiply.rgb;
#endif
    shade = (shade + emission.rgb) * multiply.rgb + sun * (1.0 - frame.sunDirection.w);
    float fog = fogAt(length(toEye));
    vec2 pixel = (gl_Position.xy / gl_Position.w * 0.5 + 0.5) * frame.picture.xy;
    shaded = developed(mix(min(shade, vec3(multiply.w)), kFog.rgb, fog), pixel);
    shade += sun * frame.sunDirection.w;
    sunny = developed(mix(min(shade, vec3(multiply.w)), kFog.rgb, fog), pixel) - shaded;
#endif
#ifndef SMALL
    kSkyX = frame.irradiance[3].rgb;
    kSkyY = frame.irradiance[1].rgb;
    kSkyZ = frame.irradiance[2].rgb;
    kMultiply = multiply;
    kEmission = emission;
    kSurface = surface;
    kStrength = mapStrength;
#endif
}
)glsl";

// A matt surface, lit and developed at its vertices.
const std::string_view mattFragment = R"glsl(
layout(location = 11) in vec4 mapsAt;
layout(location = 14) in vec3 shadowAt;
layout(location = 16) in vec3 shaded;
layout(location = 17) in vec3 sunny;
uniform sampler2D diffuseMap;
uniform vec4 diffuseGain;  // 1 / diffuseMean
uniform sampler2DShadow sunShadow;
out vec4 outColour;
void main() {
#ifdef SUN_SHADOW
    vec3 colour = shaded + sunny * (1.0 - coveredOnce(sunShadow, shadowAt));
#else
    vec3 colour = shaded + sunny;
#endif
#ifdef DIFFUSE_MAP
    colour *= texture(diffuseMap, mapsAt.xy).rgb * diffuseGain.rgb;
#endif
    outColour = vec4(colour, 1.0);
}
)glsl";

}  // namespace gull::shaders
