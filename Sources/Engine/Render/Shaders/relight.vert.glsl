#include "relight.glsl"

#ifdef RECTANGLES
layout(location = 0) in vec2 pixel;
#endif
void main() {
    writeFrameValues();
#ifdef RECTANGLES
    st = pixel * frame.picture.zw;
#else
    st = vec2(gl_VertexID == 1 ? 2.0 : 0.0, gl_VertexID == 2 ? 2.0 : 0.0);
#endif
    vec4 far = frame.inverseViewProjection * vec4(st * 2.0 - 1.0, 1.0, 1.0);
    float along = frame.lens.w / (1.0 + frame.lens.z);
    ray = (far.xyz / far.w - frame.eye.xyz) / along;
    shadowRay = mat3(frame.movingSunMatrix) * ray;
    shadowEye = (frame.movingSunMatrix * vec4(frame.eye.xyz, 1.0)).xyz;
    kMoving = frame.movingShape;
    gl_Position = vec4(st * 2.0 - 1.0, 0.0, 1.0);
}
