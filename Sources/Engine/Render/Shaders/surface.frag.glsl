#include "colour.glsl"
#include "depth.glsl"
#include "fog.glsl"
#include "lamps.glsl"
#include "mapBorder.glsl"
#include "shadow.glsl"
#include "sparkle.glsl"
#include "surface.glsl"
#include "toneMapping.glsl"
#include "water.glsl"

uniform sampler2D diffuseMap;
uniform sampler2D normalMap;
uniform sampler2D multiplyMap;
uniform samplerCube environment;
uniform sampler2D contactShadowMap;
#ifdef WATER
uniform sampler2D waterMirror;
#endif
#if defined(WATER_DEPTH) || defined(OUT_WATER)
uniform sampler2D staticDepth;
#endif

#ifdef OUT_WATER
uniform sampler2D staticLit;
#ifdef BLOOM
uniform sampler2D bloom;
#endif
layout(location = 0) out vec4 outWater;  // blended over the tone-mapped picture; w: share of it that is hidden
#elif defined(OUT_STATIC)
layout(location = 0) out vec4 outLit;  // w: 1, or 2 under water
// Share of the light that does not come from the sun; w: how far the sun is covered.
layout(location = 1) out vec4 outShade;
layout(location = 2) out vec4 outSurface;  // albedo that a lamp lights, w: share of the light that paint dims
layout(location = 3) out vec4 outNormal;
#else
layout(location = 0) out vec4 outColour;
#endif

#ifdef NORMAL_MAP
// The mesh has no tangents: the tangent frame comes from how position and texture coordinates change across
// the pixel. w: length of the averaged normal, below 1 where the map's detail is smaller than a pixel.
vec4 bentNormal(vec3 n) {
    vec3 sampled = texture(normalMap, mapsAt.zw).xyz * 2.0 - 1.0;
    float normalLength = clamp(length(sampled), 0.05, 1.0);
    vec3 dp1 = dFdx(position), dp2 = dFdy(position);
    vec2 duv1 = dFdx(mapsAt.zw), duv2 = dFdy(mapsAt.zw);
    vec3 a = cross(dp2, n), b = cross(n, dp1);
    vec3 t = a * duv1.x + b * duv2.x;
    vec3 s = a * duv1.y + b * duv2.y;
    float scale = inversesqrt(max(max(dot(t, t), dot(s, s)), 1e-20));
    vec3 bent = n * sampled.z + (t * sampled.x + s * sampled.y) * (scale * kSurface.z);
    return vec4(normalize(bent), normalLength);
}
#endif

#ifdef SUN_SHADOW
uniform sampler2DShadow sunShadow;
#endif

#if LIGHTING == 2
// Microfacets with the Trowbridge-Reitz distribution, the fast form of the height-correlated Smith term and
// Schlick's Fresnel: D V F, for a light of irradiance pi.
vec3 glint(vec3 n, vec3 v, vec3 l, float nl, float nv, float alpha, vec3 f0) {
    vec3 h = normalize(v + l);
    float nh = max(dot(n, h), 0.0), vh = max(dot(v, h), 0.0);
    float a2 = alpha * alpha;
    float d = nh * nh * (a2 - 1.0) + 1.0;
    float distribution = a2 / max(d * d, 1e-7);
    float visibility = 0.5 / max(mix(2.0 * nl * nv, nl + nv, alpha), 1e-4);
    float k = 1.0 - vh, k2 = k * k;
    vec3 fresnel = f0 + (1.0 - f0) * (k2 * k2 * k);
    return fresnel * (distribution * visibility * nl);
}

// The share of the environment that is reflected: f0 * x + y (a fit of the integral over the hemisphere).
vec2 mirrorShare(float roughness, float nv) {
    vec4 r = roughness * vec4(-1.0, -0.0275, -0.572, 0.022) + vec4(1.0, 0.0425, 1.04, -0.04);
    float a = min(r.x * r.x, exp2(-9.28 * nv)) * r.x + r.y;
    return vec2(-1.04, 1.04) * a + r.zw;
}
#endif

#ifdef WATER
const float kThrow = 1.6;  // world units for each unit of a wave's slope: twice the way to what is mirrored, on average
#endif

void main() {
    vec4 base = baseColour;
#ifdef DIFFUSE_MAP
    vec4 painted = texture(diffuseMap, mapsAt.xy);
    base *= vec4(mix(vec3(1.0), decoded(painted.rgb), kStrength.x), painted.a);
#endif
#ifdef MULTIPLY_MAP
    vec3 paintHere = decoded(texture(multiplyMap, multiplyAt.xy).rgb);
    paintHere = mix(vec3(1.0), paintHere, kStrength.y * withinMap(multiplyAt.xy));
    base.rgb *= paintHere;
#endif
    vec3 toEye = kEye.xyz - position;
    float range = length(toEye);
    vec3 v = toEye / range;
    vec3 n = normalize(normal);
    if (!gl_FrontFacing) n = -n;

    float alpha = base.a;
    vec3 body = base.rgb;          // albedo
    vec3 scattered = vec3(0.0);    // from the sky and lamps
    vec3 mirrored = vec3(0.0);     // the environment, reflected
    vec3 sunBody = vec3(0.0);      // the sun, scattered, without shadow
    vec3 sunGlint = vec3(0.0);     // the sun, reflected, without shadow
    float cover = 0.0;             // how far the sun is covered
    float opening = 1.0;           // share of the sky that nothing near hides
    vec3 arriving = vec3(1.0);     // share of the open sky's and ground's light that arrives

#if LIGHTING == 0
    scattered = body;
#else
    vec3 facing = n;
    vec3 sky = skyHere;
    float normalLength = 1.0;
#ifdef NORMAL_MAP
    vec4 bent = bentNormal(n);
    n = bent.xyz;
    sky = max(sky + kSkyX * (n.x - facing.x) + kSkyY * (n.y - facing.y) + kSkyZ * (n.z - facing.z), 0.0);
    normalLength = bent.w;
#endif
#ifdef CONTACT_SHADOWS
    vec4 contact = texture(contactShadowMap, (gl_FragCoord.xy + kTile.xy) * kPicture.xy);
    opening = contact.a;
    arriving = contact.rgb * (255.0 / 128.0);
#endif
    vec3 l = kSun.xyz;
    float nl = max(dot(n, l), 0.0);
#ifdef SUN_SHADOW
#if defined(OUT_DISPLAY) || defined(WATER)
    cover = coveredOnce(sunShadow, shadowAt);  // motion and waves hide how soft a shadow's edge is
#else
    // At least as wide as the pixel: a thinner edge would come and go along its length.
    vec2 across = dFdx(shadowAt.xy), along = dFdy(shadowAt.xy);
    float pixel = 0.5 * sqrt(max(dot(across, across), dot(along, along)));
    cover = covered(sunShadow, shadowAt, kSunColour.w, kVignette.z, pixel);
#endif
#endif
#if LIGHTING == 2
    float nv = max(dot(n, v), 1e-3);
    vec3 f0 = mix(vec3(0.04), base.rgb, kSurface.x);
    body = base.rgb * (1.0 - kSurface.x);
#ifdef ROUGHNESS
    float roughness = max(kSurface.y * multiplyAt.z, 0.045);
#else
    float roughness = max(kSurface.y, 0.045);
#endif
    float facets = roughness * roughness;
#if defined(UNIFORMS_PER_PIXEL) && !defined(NORMAL_MAP)
    // So does what turns within the pixel: thin pipes would glint in dots.
    vec3 turnX = dFdx(n), turnY = dFdy(n);
    facets = sqrt(min(facets * facets + min(0.5 * (dot(turnX, turnX) + dot(turnY, turnY)), 0.2), 1.0));
    roughness = sqrt(facets);
#endif
#ifdef NORMAL_MAP
    // Detail lost in the averaged normal returns as roughness: variance = (1 - |n|) / |n|.
    float variance = min((1.0 - normalLength) / normalLength, 0.3);
    facets = sqrt(min(facets * facets + kStrength.z * kSurface.z * kSurface.z * variance, 1.0));
    roughness = sqrt(facets);
#endif
    sunGlint = glint(n, v, l, nl, nv, facets, f0) * kSunColour.rgb;
#ifdef SPARKLE
    vec3 sparkle = kSunColour.rgb * (kStrength.w * step(0.9, multiplyAt.z) * (1.0 - cover) *
                                     sparklingGrain(position.xz, max(dot(n, normalize(v + l)), 0.0)));
#ifdef MULTIPLY_MAP
    sparkle *= 1.0 - hidesSparkle(paintHere);
#endif
    sunGlint += sparkle;
#endif
    vec3 r = reflect(-v, n);
#ifdef WATER
    r.y = abs(r.y);  // the far side of a wave reflects the next wave, which reflects the sky
#endif
#ifdef WATER
    // Waves too small to see widen what they mirror; they do not dim it.
    vec2 share = mirrorShare(max(kSurface.y, 0.045), max(dot(facing, v), 1e-3));
#else
    vec2 share = mirrorShare(roughness, nv);
#endif
    // Light that one bounce between the facets loses returns in the next ones: 1 + f0 (1 / (x + y) - 1).
    vec3 bounces = 1.0 + f0 * (1.0 / (share.x + share.y) - 1.0);
    vec3 root = textureLod(environment, r, roughness * 5.0).rgb;
    vec3 seen = root * root;
#ifdef WATER
    // Things nearby stand in front of the sky, where waves throw the reflected ray.
    vec3 hit = position + vec3(n.x - facing.x, 0.0, n.z - facing.z) * kThrow;
    vec4 c = frame.viewProjection * vec4(hit.x, 2.0 * frame.fogRange.w - hit.y, hit.z, 1.0);
    vec4 standing = textureLod(waterMirror, vec2(-c.x, c.y) / c.w * 0.5 + 0.5, 0.0);
    seen = seen * (1.0 - standing.a) + standing.rgb / max(kEye.w, 1e-3);
    sunGlint *= 1.0 - standing.a;
#else
    seen = mix(vec3(luminance(seen)), seen, kVignette.w);
#endif
    mirrored = seen * (f0 * share.x + share.y) * bounces * kEye.w;
    mirrored *= opening;
    // White balance is for what scatters light. Glare keeps its sun's hue, and metal the sky's.
    vec3 balance = kToneGain.rgb / luminance(kToneGain.rgb);
    sunGlint /= balance;
#ifndef WATER
    balance = mix(vec3(1.0), balance, kSurface.x);
#endif
    mirrored /= balance;
#endif
    sunBody = body * nl * kSunColour.rgb;
    float direct = mix(1.0, opening, kEmission.w);
    sunBody *= direct;
    sunGlint *= direct;
    scattered = body * sky * arriving;
#ifdef LAMPS
#if LIGHTING == 2 && !defined(WATER)
    vec3 lamps = lampLight(position, n);
    scattered += body * lamps;
    // A lamp stands for a ball of light: metal mirrors all of it, besides the glint of its centre.
    mirrored += base.rgb * (0.9 * kSurface.x) * mix(vec3(luminance(lamps)), lamps, kVignette.w) / balance;
    for (int i = 0; i < LAMPS; ++i) {
        vec4 lamp = lampAt(i, position);
        mirrored += glint(n, v, lamp.xyz, max(dot(n, lamp.xyz), 0.0), nv, facets, f0) * kLampLight[i].rgb * lamp.w;
    }
#else
    scattered += body * lampLight(position, n);
#endif
#endif
#endif

    float fog = fogAt(range);
#ifdef WATER
    vec3 within = scattered + sunBody * (1.0 - kSun.w * cover) + kEmission.rgb;
    within = min(within * kMultiply.rgb, vec3(kMultiply.w));
    // Ground in shadow keeps a share of the sun; a mirror either shows the sun or does not.
    vec3 top = min((mirrored + sunGlint * (1.0 - cover)) * kMultiply.rgb, vec3(kMultiply.w));
    float mirror = f0.x * share.x + share.y;
    within *= 1.0 - mirror;
    float thickness = 1e3;
    float surfaceAt = axisDistance(gl_FragCoord.z);
    float slope = fwidth(surfaceAt);  // nearly the ground's, too: the farthest ground is that much too far
#ifdef OUT_WATER
    float ground = texelFetch(staticDepth, ivec2(gl_FragCoord.xy), 0).r;
    thickness = max(axisDistance(ground) - surfaceAt - 0.25 * slope, 0.0);
#elif defined(WATER_DEPTH)
    // The farthest near by: at the edge of what stands before the water its own depth would make the water clear.
    float ground = 0.0;
    for (int i = 0; i < 9; ++i) {
        vec2 near = gl_FragCoord.xy + kTile.xy + vec2(float(i % 3), float(i / 3)) - 1.0;
        ground = max(ground, textureLod(staticDepth, near * kPicture.xy, 0.0).r);
    }
    thickness = max(axisDistance(ground) - surfaceAt - slope, 0.0);
#endif
    vec4 water = waterOver(within + top, within, alpha, mirror, thickness, kSurface.w);
    alpha = water.a;
    vec3 colour = mix(water.rgb, kFog.rgb * alpha, fog);
#ifdef OUT_WATER
    // Tone mapped with and without the water, from the mean of the ground here. The slope of the tone curve
    // says how that scales the ground's finer detail; it is taken as value over light, as for any power
    // curve.
    vec2 coarse = vec2(textureSize(staticDepth, 0)), pixel = gl_FragCoord.xy / coarse / kPicture.xy;
    vec3 dry = texelFetch(staticLit, ivec2((gl_FragCoord.xy - 0.5) / coarse / kPicture.xy), 0).rgb;
    vec3 wet = dry * (1.0 - alpha) + colour;
#ifdef BLOOM
    vec3 glow = texelFetch(bloom, ivec2(gl_FragCoord.xy / coarse * vec2(textureSize(bloom, 0))), 0).rgb * kGrade.y;
    dry += glow;
    wet += glow;
#endif
    vec3 below = toneMapped(dry, pixel), above = toneMapped(wet, pixel);
    vec3 gain = above / max(below, vec3(1e-3));
    float scale = (1.0 - alpha) * luminance(gain) * luminance(dry) / max(luminance(wet), 1e-4);
    scale = clamp(scale, 0.0, min(min(gain.r, gain.g), min(gain.b, 1.0)));
    outWater = vec4(above - below * scale, 1.0 - scale);
#endif
#else
    vec3 shade = min((scattered + mirrored + kEmission.rgb) * kMultiply.rgb, vec3(kMultiply.w));
    vec3 sun = (sunBody + sunGlint) * kMultiply.rgb;
    vec3 lit = min(shade + sun * (1.0 - kSun.w * cover), vec3(kMultiply.w));
#if LIGHTING == 0
    vec3 unlit = lit;
#ifndef OUT_DISPLAY
    lit = shade = unlitLight(lit, frame.grade.x, gl_FragCoord.xy + kTile.xy);
#endif
#endif
#ifdef ADDITIVE
    vec3 colour = lit * ((1.0 - fog) * alpha);
    alpha = 0.0;
#else
    shade = mix(shade, kFog.rgb, fog);
    lit = mix(lit, kFog.rgb, fog);
    vec3 colour = lit * alpha;
#endif
#endif

#ifdef OUT_WATER
#elif defined(OUT_STATIC)
    outLit = vec4(lit, position.y < frame.sunShape.z ? 2.0 : 1.0);
    outShade = vec4(shade / max(lit, vec3(1e-4)), cover);
#ifdef PAINTABLE
    vec3 dimmed = (scattered + sunBody * (1.0 - kSun.w * cover)) * kMultiply.rgb * (1.0 - fog);
    float paint = clamp(luminance(dimmed) / max(luminance(lit), 1e-4), 0.0, 1.0) * step(1e-4, kStrength.y);
#else
    float paint = 0.0;
#endif
    outSurface = vec4(sqrt(body * (1.0 - fog) * opening), paint);
#if defined(SPARKLE) && LIGHTING == 2
    // Paint leaves nothing of the sparkle.
    float sparkling = clamp(luminance(sparkle) * (1.0 - fog) / max(luminance(lit), 1e-4), 0.0, 1.0);
#else
    float sparkling = 0.0;
#endif
    outNormal = vec4(n * 0.5 + 0.5, 1.0 - sparkling);
#elif defined(OUT_DISPLAY)
    vec2 pixel = gl_FragCoord.xy + kTile.xy;
#if LIGHTING == 0 && defined(ADDITIVE)
    outColour = unlitGlow(unlit, (1.0 - fog) * base.a);
#elif LIGHTING == 0
    outColour = vec4(unlitShown(unlit, fog, pixel) * alpha, alpha);
#elif defined(ADDITIVE)
    outColour = vec4(encoded(colour), 0.0);
#else
    vec3 straight = alpha > 0.0 ? colour / alpha : colour;
    outColour = vec4(toneMapped(straight, pixel) * alpha, alpha);
#endif
#else
    outColour = vec4(colour, alpha);
#endif
}
