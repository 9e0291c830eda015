#include "zorv/core/archive.h"
#include "zorv/photo/camera_parameters.h"

void ZoCamera::ReadV9(CZipWrapper* archive) {
    ZoObject::ReadV9(archive);
    ZoFlag::ReadV9(archive);
    for (const auto& parameter : zorv::detail::kCameraParameters)
        archive->ReadValue(this->*parameter.member);
    archive->ReadValue(mode);
    rmax = r0 * kReachOfZeroRadius;
}

void ZoCamera::WriteV9(CZipWrapper* archive) const {
    ZoObject::WriteV9(archive);
    ZoFlag::WriteV9(archive);
    for (const auto& parameter : zorv::detail::kCameraParameters)
        archive->WriteValue(this->*parameter.member);
    archive->WriteValue(mode);
}
