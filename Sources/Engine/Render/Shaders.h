#pragma once

#include <span>
#include <string_view>

/// The sources of all shaders, from the files in Shaders/ with their includes: `surfaceVertex` is
/// surface.vert.glsl, `surfaceFragment` is surface.frag.glsl. They lack the version and the "#define" lines.
namespace gull::shaders {

extern const std::string_view fullScreenVertex;  ///< one triangle that covers the target
inline const std::string_view& fullScreen = fullScreenVertex;
extern const std::string_view relightVertex;  ///< rectangles of the picture, or all of it
extern const std::string_view surfaceVertex;
extern const std::string_view surfaceFragment;
extern const std::string_view mattFragment;  ///< after surfaceVertex, MATT
extern const std::string_view depthVertex;   ///< position only; same result as surfaceVertex
extern const std::string_view depthFragment;
extern const std::string_view areaVertex;   ///< rectangles of a picture
extern const std::string_view paintVertex;  ///< the multiply map of a still surface
extern const std::string_view paintFragment;
extern const std::string_view skyFragment;
extern const std::string_view particleVertex;
extern const std::string_view particleFragment;
extern const std::string_view contactShadowsFragment;
extern const std::string_view contactShadowBlurFragment;
extern const std::string_view brightFragment;
extern const std::string_view blurFragment;
extern const std::string_view toneMappingFragment;
extern const std::string_view movingCoverFragment;  ///< moving shadows alone
extern const std::string_view resolveFragment;
extern const std::string_view edgeSmoothingVertex;  ///< shapes a pixel larger than they are
extern const std::string_view edgeSmoothingFragment;
extern const std::string_view bitmapVertex;  ///< rectangles of an overlay layer
extern const std::string_view bitmapFragment;
extern const std::string_view relightFragment;      ///< the static layer under moving shadows and lamps
extern const std::string_view lightChangeFragment;  ///< their change of the tone-mapped picture
extern const std::string_view overlayFragment;      ///< a half-resolution picture, laid over the whole
extern const std::string_view
    farthestDepthFragment;  ///< depth at half resolution, the farthest of its pixels

/// The names of the files. In compilers' messages, line n of file f (counted from 1) is line 10000 f + n.
extern const std::span<const std::string_view> fileNames;

}  // namespace gull::shaders
