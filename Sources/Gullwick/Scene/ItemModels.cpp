#include "Gullwick/Scene/ItemModels.h"

#include "Gullwick/Scene/ItemParts.h"

namespace gull::ItemModels {

std::unique_ptr<Node> node(ItemKind kind, Textures& textures) {
    auto parent = std::make_unique<Node>(std::string(rawValue(kind)));
    switch (kind) {
        case ItemKind::coin:
            itemParts::coin(*parent, textures);
            break;
        case ItemKind::ring:
            itemParts::ring(*parent);
            break;
        case ItemKind::watch:
            itemParts::watch(*parent, textures);
            break;
        case ItemKind::key:
            itemParts::key(*parent);
            break;
        case ItemKind::gem:
            itemParts::gem(*parent);
            break;
        case ItemKind::compass:
            itemParts::compass(*parent, textures);
            break;
        case ItemKind::chest:
            itemParts::chest(*parent, textures);
            break;
        case ItemKind::cap:
            itemParts::cap(*parent);
            break;
        case ItemKind::can:
            itemParts::can(*parent, textures);
            break;
        case ItemKind::nail:
            itemParts::nail(*parent);
            break;
        case ItemKind::foil:
            itemParts::foil(*parent);
            break;
    }
    return parent;
}

}  // namespace gull::ItemModels
