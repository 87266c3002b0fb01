#pragma once

#include "Engine/Raster/Image.h"
#include "GullCore/Beach.h"
#include "GullCore/Levels.h"

#include <map>

namespace gull {

/// Makes a small picture of an item's model; implemented by the owner of a renderer.
class IconSource {
  public:
    virtual ~IconSource() = default;
    /// ItemIcons::size pixels square, transparent behind the model. Without a GPU: transparent all over.
    virtual Image image(ItemKind kind) = 0;
};

/// The pictures of the item models that the HUD shows, each made once and kept.
class ItemIcons {
  public:
    static constexpr int size = 160;  ///< pixels

    /// `source` is owned by the caller and must outlive the icons.
    explicit ItemIcons(IconSource& source) : source_(source) {}
    ItemIcons(const ItemIcons&) = delete;
    ItemIcons& operator=(const ItemIcons&) = delete;

    /// Makes the picture on first use. The reference stays valid as long as this object.
    const Image& image(ItemKind kind);
    /// Makes one of the pictures that a beach will need and that is not made yet; false if there are none
    /// left. Called once a frame while a beach opens, so that no find has to wait for its picture.
    bool prepareOne(const BeachSpec& spec);

  private:
    IconSource& source_;
    std::map<ItemKind, Image> made_;
};

}  // namespace gull
