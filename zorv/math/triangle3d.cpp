#include "zorv/math/triangle3d.h"

#include "zorv/core/number_format.h"
#include "zorv/core/platform/files.h"
#include "zorv/math/triangle_intersection.h"

int ZoTrinagle3d::Intersect(const ZoLine3d& line, ZoPoint3d& point, double* t) const {
    const ZoTrinagle3d_uvn prepared(*this);
    return prepared.IsDegenerate() ? -1 : prepared.Intersect(line, point, t);
}

int ZoTrinagle3d::Intersect(const ZoTrinagle3d& other) const {
    return tri_tri_intersect(P0().asDblArray(), P1().asDblArray(), P2().asDblArray(), other.P0().asDblArray(),
                             other.P1().asDblArray(), other.P2().asDblArray());
}

bool ZoTrinagle3d::WriteAsPly(const std::wstring& path) const {
    zorv::detail::FileReplacement file(path);
    if (!file.IsOpen()) return false;
    std::string text =
        "ply\nformat ascii 1.0\nelement vertex 3\nproperty float x\nproperty float y\nproperty float z\n"
        "element face 1\nproperty list uchar int vertex_indices\nend_header\n";
    for (const ZoPoint3d& vertex : vertices) {
        for (int i = 0; i < 3; ++i) {
            zorv::detail::AppendFixed(text, vertex[i], 6);
            text += i < 2 ? ' ' : '\n';
        }
    }
    text += "3 0 1 2\n";
    file.Stream() << text;
    return file.Commit();
}
