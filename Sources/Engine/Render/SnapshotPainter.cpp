#include "Engine/Render/SnapshotPainter.h"

#include "Engine/Render/TextureUnits.h"

#include <epoxy/gl.h>

#include <algorithm>

namespace gull {

namespace {

/// Rows drawn at once: the multisampled buffers stay small whatever the picture's size.
constexpr int rowsOfTile = 256;

}  // namespace

Target SnapshotPainter::draw(const Stage& stage, const PixelSize& size) {
    Viewpoint view = Viewpoint::of(stage, size);
    DrawList list = DrawList::of(stage, view, studio_.meshes);
    FrameBlock block =
        frameBlock(stage, view, list, studio_.environments.bind(stage.environment, list.sun.onGround()),
                   studio_.options);
    std::vector<Lamp> lamps = list.kept.lamps;
    lamps.insert(lamps.end(), list.drifting.lamps.begin(), list.drifting.lamps.end());
    lamps.insert(lamps.end(), list.moving.lamps.begin(), list.moving.lamps.end());
    setLamps(block, lamps);
    studio_.uniforms.upload(block);
    const DrawLayer* layers[] = {&list.kept, &list.drifting, &list.moving};
    PixelArea whole = PixelArea::whole(size);

    Shading shading;
    shading.lamps = lamps;
    shading.sunShadow = list.sun.light && list.sun.light->castsShadow;
    shading.occlusion = view.camera.hdr && !view.camera.orthographicScale;
    ShadowMap shadow;
    if (shading.sunShadow)
        shadow.draw({&list.kept, &list.drifting, &list.moving}, list.sun.matrix,
                    list.sun.light->shadowMapSize, studio_.sunDepth);
    else
        shadow.clear();
    shadow.bind(unitSunShadow);
    ContactShadows contact(studio_.screen, studio_.options, studio_.contactShadows);
    shading.waterDepth = shading.occlusion;
    Target depth;
    if (shading.occlusion) {
        depth = Target(size, {{}, Format::depth24});
        depth.bind();
        glClear(GL_DEPTH_BUFFER_BIT);
        for (const DrawLayer* layer : layers) studio_.drawDepth(*layer, view, whole);
        contact.draw(depth.depth(), view, whole);
        bindTexture(unitKeptDepth, depth.depth());
    } else {
        contact.clear();
    }
    contact.bind();
    // What bears no paint is drawn by the program for what rests in the window: one less to compile before
    // the overlay has its first icon.
    Shading plain = shading;
    plain.output = Shading::Output::kept;

    Target light(size, {{Format::rgba16f}});
    PixelSize tileSize{size.width, std::min(size.height, rowsOfTile)};
    Target tile(tileSize, {{Format::rgba16f}, Format::depth24, 4});
    for (int y = 0; y < size.height; y += rowsOfTile) {
        PixelArea area = PixelArea{0, y, size.width, rowsOfTile}.intersection(whole);
        block.tile = {0, y, 0, 0};
        studio_.uniforms.upload(block);
        tile.bind();
        glViewport(0, -y, size.width, size.height);
        glDepthMask(GL_TRUE);
        glClearColor(0, 0, 0, 0);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glEnable(GL_DEPTH_TEST);
        glDepthFunc(GL_LEQUAL);
        for (const DrawLayer* layer : layers)
            for (const DrawItem& item : layer->opaque)
                studio_.surfaces.draw(item, item.material->multiplyMap ? shading : plain, view, area);
        studio_.drawSky(stage, view, shading.output);
        studio_.drawBlended(layers, shading, view, area, stage.time);
        studio_.resolve.draw(tile, {{0, 0, area.width, area.height}}, light, 0, y);
    }
    block.tile = {0, 0, 0, 0};
    studio_.uniforms.upload(block);

    unsigned bloom = studio_.development.bloom(light.colour(), view);
    Target picture(size, {{Format::bgra8}});
    picture.bind();
    studio_.development.develop(light.colour(), bloom, 0, view);
    return picture;
}

Image readPixels(const PixelSize& size) {
    Image image(size.width, size.height);
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    glReadPixels(0, 0, size.width, size.height, GL_RGBA, GL_UNSIGNED_BYTE, image.pixels.data());
    auto rowBytes = static_cast<std::ptrdiff_t>(size.width) * 4;
    for (int y = 0; y < size.height / 2; ++y)
        std::swap_ranges(image.pixels.begin() + y * rowBytes, image.pixels.begin() + (y + 1) * rowBytes,
                         image.pixels.begin() + (size.height - 1 - y) * rowBytes);
    return image;
}

}  // namespace gull
