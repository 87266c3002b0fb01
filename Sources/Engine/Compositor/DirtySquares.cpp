#include "Engine/Compositor/DirtySquares.h"

#include <algorithm>

namespace gull {

void DirtySquares::begin(const PixelSize& size) {
    size_ = size;
    across_ = (size.width + squareSize - 1) / squareSize;
    int along = (size.height + squareSize - 1) / squareSize;
    dirty_.assign(static_cast<std::size_t>(across_) * static_cast<std::size_t>(along), 1);
}

void DirtySquares::mark(const PixelArea& area) {
    PixelArea part = area.intersection(PixelArea::whole(size_));
    if (part.empty()) return;
    for (int y = part.y / squareSize; y <= (part.top() - 1) / squareSize; ++y) {
        auto row = dirty_.begin() + y * across_;
        std::fill(row + part.x / squareSize, row + (part.right() - 1) / squareSize + 1, char{1});
    }
}

std::vector<PixelArea> DirtySquares::take() {
    std::vector<PixelArea> areas;
    std::size_t rowBefore = 0;  // the first area of the row below
    for (int y = 0; y * squareSize < size_.height; ++y) {
        std::size_t thisRow = areas.size();
        for (int x = 0; x < across_; ++x) {
            if (dirty_[static_cast<std::size_t>(y * across_ + x)])
                addBeside(areas, {x * squareSize, y * squareSize, squareSize, squareSize});
        }
        // A row equal to the one below only makes that one taller.
        std::size_t count = areas.size() - thisRow;
        bool same = thisRow > 0 && thisRow - rowBefore == count && count > 0;
        for (std::size_t i = 0; same && i < count; ++i) {
            const PixelArea& below = areas[rowBefore + i];
            const PixelArea& here = areas[thisRow + i];
            same = below.x == here.x && below.width == here.width && below.top() == here.y;
        }
        if (same) {
            for (std::size_t i = 0; i < count; ++i) areas[rowBefore + i].height += squareSize;
            areas.resize(thisRow);
        } else {
            rowBefore = thisRow;
        }
    }
    std::fill(dirty_.begin(), dirty_.end(), char{0});
    for (PixelArea& area : areas) area = area.intersection(PixelArea::whole(size_));
    return areas;
}

}  // namespace gull
