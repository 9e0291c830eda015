#include "zorv/photo/field_of_view.h"

#include <array>

#include "zorv/core/number_format.h"
#include "zorv/core/platform/files.h"
#include "zorv/core/text_conversion.h"
#include "zorv/math/triangle3d.h"

namespace {

ZoPoint3d Position(const ZoPoint& point) {
    return {point.x, point.y, point.z};
}

std::array<ZoTrinagle3d, ZoPhotoFieldOfView::kSides> Sides(const ZoPhotoFieldOfView& view) {
    std::array<ZoTrinagle3d, ZoPhotoFieldOfView::kSides> sides;
    for (int i = 0; i < ZoPhotoFieldOfView::kSides; ++i) {
        const int next = (i + 1) % ZoPhotoFieldOfView::kSides;
        sides[static_cast<std::size_t>(i)].Set(Position(view.apex), Position(view.farPoints[i]),
                                               Position(view.farPoints[next]));
    }
    return sides;
}

/// Without a depth the far points fall together, and no side has an area.
bool HasDepth(const ZoPhotoFieldOfView& view) {
    return !(view.farPoints[0] == view.farPoints[2]);
}

}  // namespace

bool ZoPhotoFieldOfView::Intersect(const ZoPhotoFieldOfView& other, bool ifUnknown) const {
    if (!valid || !other.valid) return ifUnknown;
    if (!HasDepth(*this) || !HasDepth(other)) return false;
    const auto own = Sides(*this);
    const auto others = Sides(other);
    for (const ZoTrinagle3d& side : own) {
        for (const ZoTrinagle3d& otherSide : others) {
            if (side.Intersect(otherSide) != 0) return true;
        }
    }
    return false;
}

bool ZoPhotoFieldOfView::WriteAsPly(const char* fileName) const {
    if (!valid || !fileName) return false;
    zorv::detail::FileReplacement file(string2wstring(fileName));
    if (!file.IsOpen()) return false;
    std::string text =
        "ply\nformat ascii 1.0\nelement vertex 5\nproperty float x\nproperty float y\nproperty float z\n"
        "element face 4\nproperty list uchar int vertex_indices\nend_header\n";
    for (const ZoPoint* vertex : {&apex, &farPoints[0], &farPoints[1], &farPoints[2], &farPoints[3]}) {
        zorv::detail::AppendFixed(text, vertex->x, 6);
        text += ' ';
        zorv::detail::AppendFixed(text, vertex->y, 6);
        text += ' ';
        zorv::detail::AppendFixed(text, vertex->z, 6);
        text += '\n';
    }
    text += "3 0 1 2\n3 0 2 3\n3 0 3 4\n3 0 4 1\n";
    file.Stream() << text;
    return file.Commit();
}
