#include "colour.glsl"
#include "fog.glsl"
#include "surface.glsl"
#include "toneMapping.glsl"

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
uniform vec4 diffuse;       // linear, straight alpha, includes all opacities
#ifdef MATT
uniform vec4 diffuseMean;   // of the diffuse map, as stored; w: 1 where both sides show
#endif

invariant gl_Position;

// Nine spherical harmonics; the coefficients include the cosine lobe and 1/pi.
vec3 skyLight(vec3 n) {
    return max(frame.irradiance[0].rgb + frame.irradiance[1].rgb * n.y + frame.irradiance[2].rgb * n.z +
                   frame.irradiance[3].rgb * n.x + frame.irradiance[4].rgb * (n.x * n.y) +
                   frame.irradiance[5].rgb * (n.y * n.z) + frame.irradiance[6].rgb * (3.0 * n.z * n.z - 1.0) +
                   frame.irradiance[7].rgb * (n.x * n.z) + frame.irradiance[8].rgb * (n.x * n.x - n.y * n.y),
               vec3(0.0));
}

void main() {
    writeFrameValues();
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
#if LIGHTING == 0
    shaded = unlitShown(shade, fog, pixel);
    sunny = vec3(0.0);
#else
    shaded = toneMapped(mix(min(shade, vec3(multiply.w)), kFog.rgb, fog), pixel);
    shade += sun * frame.sunDirection.w;
    sunny = toneMapped(mix(min(shade, vec3(multiply.w)), kFog.rgb, fog), pixel) - shaded;
#endif
#endif
#ifndef UNIFORMS_PER_PIXEL
    kSkyX = frame.irradiance[3].rgb;
    kSkyY = frame.irradiance[1].rgb;
    kSkyZ = frame.irradiance[2].rgb;
    kMultiply = multiply;
    kEmission = emission;
    kSurface = surface;
    kStrength = mapStrength;
#endif
}
