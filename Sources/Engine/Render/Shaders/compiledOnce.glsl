// Never discards, but a software rasteriser cannot know: it compiles a pass without blending, depth or this twice,
// the second time for blocks that are covered as a whole, which gains less than compiling takes.
#define COMPILED_ONCE if (gl_FragCoord.x < 0.0) discard
