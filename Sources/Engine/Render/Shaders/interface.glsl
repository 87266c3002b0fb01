// Stages are linked separately (separate shader objects), so a value passes from one to the next by its
// location. A file that both stages include declares it once; VARYING and FLAT make it an output of the
// vertex stage and an input of the fragment stage. frameValues.glsl uses locations 0 to 8 and 23 to 31; other
// files have 9 to 22.
#ifdef VERTEX
#define VARYING(place) layout(location = place) out
#define FLAT(place) layout(location = place) flat out
out gl_PerVertex { vec4 gl_Position; };
#else
#define VARYING(place) layout(location = place) in
#define FLAT(place) layout(location = place) flat in
#endif
