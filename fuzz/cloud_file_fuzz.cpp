// Any bytes as a native cloud file: what comes in is no more than the bytes can hold, plain reads give what a view
// gives, and what is written reads back as the same.

#include <cstddef>
#include <cstdint>
#include <string>

#include "input_file.h"
#include "require.h"

#include "zorv/cloud/cloud_container.h"
#include "zorv/core/platform/mapping.h"

namespace {

/// The bytes of the file that a container writes. A cloud without a scanner's record begins when it is read.
std::string Written(ZoPointCloudContainer& container, const InputFile& file) {
    for (ZoPointCloud* cloud = container.First(); cloud; cloud = cloud->Next())
        cloud->scanInfo.timeStart = 0;
    Require(container.Write(file.Name()) == 1);
    return file.Read();
}

void CheckFile(const InputFile& file, const std::string& bytes) {
    file.Write(bytes);
    ZoPointCloudContainer mapped, plain;
    ZoPointCloudReadResult result, plainResult;
    const bool isRead = mapped.Read(file.Name(), result);
    {
        const zorv::detail::MappingRefusal refusal(zorv::detail::MappingRefusal::kView);
        Require(plain.Read(file.Name(), plainResult) == isRead);
    }
    Require(isRead == (mapped.First() != nullptr));
    Require(result.points == mapped.Size() && result.points == plainResult.points);
    Require(mapped.Size() <= bytes.size() / 58);
    Require(result.clouds.size() <= bytes.size() / 76);
    for (const ZoPointCloud* cloud : result.clouds) {
        Require(cloud->points.capacity() <= bytes.size() / 58);
        Require(cloud->center.GetCount() == static_cast<int>(cloud->Size()));
    }

    const std::string first = Written(mapped, file);
    Require(Written(plain, file) == first);
    ZoPointCloudContainer back;
    back.Read(file.Name(), result);
    Require(back.Size() == mapped.Size());
    // Clouds without points do not come back; a name may lose what is no character.
    const std::string second = Written(back, file);
    ZoPointCloudContainer again;
    again.Read(file.Name(), result);
    Require(Written(again, file) == second);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const InputFile file;
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    CheckFile(file, bytes);
    return 0;
}
