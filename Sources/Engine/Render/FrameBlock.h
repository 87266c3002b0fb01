#pragma once

#include <cstddef>
#include <glm/mat4x4.hpp>
#include <glm/vec4.hpp>

namespace gull {

/// What every shader of a frame reads, laid out as GLSL's std140 uniform block "Frame" (see
/// shaders::common). World space, linear light.
struct FrameBlock {
    static constexpr unsigned binding = 0;
    static constexpr int mostLamps = 4;
    /// The numbers of lamps that programs are made for, so that few programs serve any number: the rig's lamp
    /// and one treasure's are what play shows.
    static constexpr int lampPrograms[] = {0, 1, 2, mostLamps};
    /// For how many lamps a program that shall light by `lamps` is made. Those that are not there are dark.
    static int lampsInProgram(std::size_t lamps) { return lamps < 3 ? static_cast<int>(lamps) : mostLamps; }

    glm::mat4 viewProjection{1};
    glm::mat4 inverseViewProjection{1};
    glm::mat4 sunMatrix{1};              ///< world to the sun's shadow map, 0 to 1 on all axes
    glm::mat4 movingSunMatrix{1};        ///< the same for the moving layer's map
    glm::vec4 eye{0};                    ///< w: exposure factor
    glm::vec4 sunDirection{0, 1, 0, 0};  ///< toward the sun; w: how black its shadow is
    glm::vec4 sunColour{0};              ///< w: shadow edge radius, texture coordinates
    glm::vec4 sunShape{0};               ///< x: normal offset, y: depth bias
    glm::vec4 movingShape{0};            ///< moving map: x: edge radius, y: normal offset, z: depth bias
    glm::vec4 ambient{0};
    glm::vec4 irradiance[9];  ///< spherical harmonics of the sky's light on a white Lambert surface
    glm::vec4 fogColour{0};   ///< w: density exponent
    glm::vec4 fogRange{0};    ///< x: start, y: 1 / length (0: off), z: environment intensity
    glm::vec4 picture{0};     ///< width, height, 1 / width, 1 / height
    glm::vec4 lens{0};        ///< 1 / P00, 1 / P11, P22, P32 of a perspective projection
    glm::vec4 tile{0};        ///< xy: where the tile being drawn stands in the picture
    glm::vec4 grade{0};       ///< x: 1 with tone mapping, y: contrast, z: saturation, w: bloom intensity
    glm::vec4 film{1};        ///< gain of each channel; w: hue keeping
    /// x: intensity, y: power; z: how far off, in depths of the sun's shadow map, a thing casts a wide edge;
    /// w: share of its cast that the sky keeps in mirrors that are no water
    glm::vec4 vignette{0};
    glm::vec4 lampPlace[mostLamps];  ///< w: 1 / (end - start), 0 without limit
    glm::vec4 lampLight[mostLamps];  ///< w: end / (end - start), 1 without limit
    glm::vec4 lampExponents{2};
};

}  // namespace gull
