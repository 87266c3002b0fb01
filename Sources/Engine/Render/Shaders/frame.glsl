// What every shader of a frame may read; FrameBlock is the same in C++.
#define FRAME_FIELD(type, name, initial) type name
#define FRAME_ARRAY(type, name, count) type name[count]
layout(std140) uniform Frame {
#include "FrameFields.h"
} frame;
