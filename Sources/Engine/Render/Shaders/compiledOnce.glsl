// Never discards, but a software rasteriser cannot know that. It compiles a pass without blending, depth or
// discard twice, the second time for fully covered blocks, and that gains less than the compilation costs.
#define COMPILED_ONCE if (gl_FragCoord.x < 0.0) discard
