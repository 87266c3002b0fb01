#include "frameValues.glsl"

// The light of sky and ground where something stands in its way; see SkyMaps. Rows: world to a part's place in the
// maps, three a part. Way: direction, share of the hemisphere. Open, hidden: light of the part on a surface that
// faces it, and what shines there where it is hidden; w: corner of its map.
uniform sampler2DShadow skyMaps;
uniform sampler2DShadow sunShadow;
uniform vec4 skyRows[96];
uniform vec4 skyWays[32];
uniform vec4 skyOpen[32];
uniform vec4 skyHidden[32];
uniform int skyParts;
uniform vec4 skyMap;       // side of a map in the texture; a texel in the world; bias; a texel in the texture
uniform vec4 groundSky;    // radiance of open ground in shadow, and what the sun adds
uniform vec4 groundSun;
const int groundWays = 6;

// The light that a white surface with normal n gets from a sky and a ground that nothing hides.
vec3 openLight(vec3 n) {
    return max(frame.irradiance[0].rgb + frame.irradiance[1].rgb * n.y + frame.irradiance[2].rgb * n.z +
                   frame.irradiance[3].rgb * n.x + frame.irradiance[4].rgb * (n.x * n.y) +
                   frame.irradiance[5].rgb * (n.y * n.z) + frame.irradiance[6].rgb * (3.0 * n.z * n.z - 1.0) +
                   frame.irradiance[7].rgb * (n.x * n.z) + frame.irradiance[8].rgb * (n.x * n.x - n.y * n.y),
               vec3(0.0)) +
           frame.ambient.rgb;
}

vec3 skyLightAt(vec3 p, vec3 n, vec2 jitter) {
    vec3 sum = vec3(0.0);
    vec4 lifted = vec4(p + n * (1.5 * skyMap.y), 1.0);
    for (int i = 0; i < skyParts; ++i) {
        float facing = max(dot(n, skyWays[i].xyz), 0.0);
        vec3 c = vec3(dot(skyRows[3 * i], lifted), dot(skyRows[3 * i + 1], lifted), dot(skyRows[3 * i + 2], lifted));
        vec2 within = (c.xy - vec2(skyOpen[i].w, skyHidden[i].w)) / skyMap.x;
        vec2 margin = min(within, 1.0 - within) * 40.0;
        float known = clamp(min(margin.x, margin.y) - 0.5, 0.0, 1.0);
        float open = mix(1.0, texture(skyMaps, vec3(c.xy + jitter * skyMap.w, c.z - skyMap.z)), known);
        sum += facing * mix(skyHidden[i].rgb, skyOpen[i].rgb, open);
    }
    // The ground is taken to lie at height 0 and to be as bright as in the open, but for the sun's shadows.
    float height = max(p.y, 0.02);
    for (int i = 0; i < groundWays; ++i) {
        float down = (float(i) + 0.5) / float(groundWays);
        float turn = float(i) * 2.39996323 + jitter.x, level = sqrt(1.0 - down * down);
        vec3 way = vec3(level * sin(turn), -down, -level * cos(turn));
        vec3 q = p + way * min(height / down, 6.0);
        vec3 c = (frame.sunMatrix * vec4(q, 1.0)).xyz;
        vec2 inside = step(vec2(0.0), c.xy) * step(c.xy, vec2(1.0));
        float cover = (1.0 - texture(sunShadow, vec3(c.xy, c.z - frame.sunShape.y))) * inside.x * inside.y;
        sum += max(dot(n, way), 0.0) * (2.0 / float(groundWays)) *
               (groundSky.rgb + groundSun.rgb * (1.0 - frame.sunDirection.w * cover));
    }
    return sum;
}
