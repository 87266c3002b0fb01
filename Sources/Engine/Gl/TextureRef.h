#pragma once

#include <cstdint>

namespace gull {

/// A texture that somebody else owns: a plain value to hand from the pass that made it to those that read it.
struct TextureRef {
    enum class Kind : std::uint8_t { flat, cube, multisampled };

    unsigned name = 0;  ///< 0: none
    Kind kind = Kind::flat;

    explicit operator bool() const { return name != 0; }
    bool operator==(const TextureRef&) const = default;
};

/// A texture for the sampler that the shaders find at `unit`. Sampler object 0 uses the texture's own filter.
struct TextureBinding {
    int unit = 0;
    TextureRef texture;
    unsigned sampler = 0;
};

}  // namespace gull
