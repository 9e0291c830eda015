#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "input_file.h"
#include "require.h"

#include "zorv/cloud/cloud_container.h"
#include "zorv/core/platform/mapping.h"

/// What the harnesses of clouds in text share.
namespace cloud_text {

/// Opens what hosts do not need.
struct Container : ZoPointCloudContainer {
    using ZoPointCloudContainer::ObsolteReadPlyFile;
    using ZoPointCloudContainer::ReadPtsFile;
    using ZoPointCloudContainer::ReadXYZFile;
};

/// Where the first line begins: a byte order mark is no part of it.
inline std::size_t FirstLine(const std::string& bytes) {
    return bytes.starts_with("\xef\xbb\xbf") ? 3 : 0;
}

struct Xyz {
    double value[3] = {0.0, 0.0, 0.0};
};

/// The fields of a line by the C library: at most three, and how many there are.
inline std::size_t Fields(std::string line, const char* separators, Xyz& xyz) {
    std::size_t count = 0;
    for (std::size_t at = 0;;) {
        at = line.find_first_not_of(separators, at);
        if (at == line.npos) return count;
        const std::size_t end = std::min(line.find_first_of(separators, at), line.size());
        if (count < 3) xyz.value[count] = std::strtod(line.substr(at, end - at).c_str(), nullptr);
        ++count;
        at = end;
    }
}

inline bool IsSame(double a, double b) {
    return (std::isnan(a) && std::isnan(b)) || (a == b && std::signbit(a) == std::signbit(b));
}

/// Whether the cloud has these coordinates and takes no more memory than its lines can need.
inline void Check(const ZoPointCloud& cloud, const std::vector<Xyz>& expected, std::size_t mostPoints) {
    Require(cloud.Size() == expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        for (int axis = 0; axis < 3; ++axis)
            Require(IsSame(cloud.points[i][axis], expected[i].value[axis]));
    }
    Require(cloud.points.capacity() <= mostPoints);
    Require(cloud.center.GetCount() == static_cast<int>(cloud.Size()));
}

inline bool IsSame(const ZoPointCloud& a, const ZoPointCloud& b) {
    if (a.Size() != b.Size() || a.noColors != b.noColors) return false;
    for (std::size_t i = 0; i < a.Size(); ++i) {
        for (int axis = 0; axis < 3; ++axis) {
            if (!IsSame(a.points[i][axis], b.points[i][axis])) return false;
        }
        if (a.points[i].color != b.points[i].color) return false;
    }
    return true;
}

}  // namespace cloud_text
