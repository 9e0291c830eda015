// Any bytes as a PLY file: no more points and no more memory than there are lines for.

#include "cloud_text.h"

using namespace cloud_text;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const InputFile file;
    file.Write({reinterpret_cast<const char*>(data), size});
    std::ifstream stream(file.path, std::ios::binary);
    Container container;
    const ZoPointCloud* cloud = container.ObsolteReadPlyFile(stream);
    Require(cloud && container.clouds.Count() == 1);
    Require(cloud->Size() <= (size + 1) / 18);
    Require(cloud->points.capacity() <= size / 18 + 1);
    for (const ZoScanPoint3d& point : cloud->points) {
        for (int axis = 0; axis < 3; ++axis)
            Require(IsSame(point[axis], static_cast<double>(static_cast<float>(point[axis]))));
        Require((point.color & 0xff000000) == 0);
    }
    return 0;
}
