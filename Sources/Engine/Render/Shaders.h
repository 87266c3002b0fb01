#pragma once

#include <string_view>

/// The sources of all shaders. `common` is put before every one of them.
namespace gull::shaders {

extern const std::string_view common;      ///< the Frame block, film curve, encoding, dither
extern const std::string_view fullScreen;  ///< vertex: one triangle that covers the target
extern const std::string_view surfaceVertex;
extern const std::string_view surfaceFragment;
extern const std::string_view depthVertex;  ///< position only; same result as surfaceVertex
extern const std::string_view depthFragment;
extern const std::string_view skyFragment;
extern const std::string_view particleVertex;
extern const std::string_view particleFragment;
extern const std::string_view occlusionFragment;
extern const std::string_view occlusionBlurFragment;
extern const std::string_view brightFragment;
extern const std::string_view blurFragment;
extern const std::string_view gradeFragment;
extern const std::string_view overlayFragment;

}  // namespace gull::shaders
