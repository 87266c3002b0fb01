#pragma once

#include <cstddef>
#include <glm/mat4x4.hpp>
#include <glm/vec4.hpp>
#include <iterator>

namespace gull {

/// What every shader of a frame reads: the uniform block "Frame" of Shaders/frame.glsl. FrameFields.h lists
/// the fields of both. World space, linear light.
struct FrameBlock {
    static constexpr unsigned binding = 0;
    static constexpr int mostLamps = 4;
    /// The numbers of lamps that programs are compiled for. A few of them serve any number; play needs at
    /// most the rig's lamp and one treasure's.
    static constexpr int lampPrograms[] = {0, 1, 2, mostLamps};
    /// The number of lamps in the program that lights by `lamps`; unused ones are dark.
    static int lampsInProgram(std::size_t lamps) { return lamps < 3 ? static_cast<int>(lamps) : mostLamps; }

    using mat4 = glm::mat4;
    using vec4 = glm::vec4;
#define FRAME_FIELD(type, name, initial) type name = initial
#define FRAME_ARRAY(type, name, count) type name[count] = {}
#include "Engine/Render/Shaders/FrameFields.h"
#undef FRAME_FIELD
#undef FRAME_ARRAY
};

/// Byte offsets of the block's fields under std140.
namespace std140 {

/// The types with the same size alone, in an array and in C++; no other type compiles in FrameFields.h.
template <class Type>
consteval std::size_t size() = delete;
template <>
consteval std::size_t size<glm::vec4>() {
    return 16;
}
template <>
consteval std::size_t size<glm::mat4>() {
    return 64;
}

struct FrameLayout {
    using mat4 = glm::mat4;
    using vec4 = glm::vec4;
#define FRAME_FIELD(type, name, initial) std::byte name[size<type>()]
#define FRAME_ARRAY(type, name, count) std::byte name[size<type>() * (count)]
#include "Engine/Render/Shaders/FrameFields.h"
#undef FRAME_FIELD
#undef FRAME_ARRAY
};

#define FRAME_FIELD(type, name, initial)                                     \
    static_assert(offsetof(FrameBlock, name) == offsetof(FrameLayout, name), \
                  #name " is not where std140 has it")
#define FRAME_ARRAY(type, name, count) FRAME_FIELD(type, name, 0)
#include "Engine/Render/Shaders/FrameFields.h"
#undef FRAME_FIELD
#undef FRAME_ARRAY

}  // namespace std140

static_assert(sizeof(FrameBlock) == sizeof(std140::FrameLayout));
static_assert(std::size(decltype(FrameBlock::lampPlace){}) == FrameBlock::mostLamps &&
              std::size(decltype(FrameBlock::lampLight){}) == FrameBlock::mostLamps);

}  // namespace gull
