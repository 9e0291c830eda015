#include "zorv/cloud/cloud_container.h"

#include <chrono>
#include <new>
#include <utility>

#include "zorv/core/debug_output.h"
#include "zorv/core/path_tools.h"
#include "zorv/core/platform/files.h"
#include "zorv/core/platform/folders.h"
#include "zorv/math/affine_map3d.h"
#include "zorv/points/point_list.h"

namespace {

std::int64_t Now() {
    return std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
}

}  // namespace

/// Passes the events of a cloud on for as long as both the cloud and the container live.
class ZoPointCloudContainer::CloudObserver : public ZoObserver {
  public:
    CloudObserver(ZoStandardNotifier* cloud, std::shared_ptr<ZoPointCloudContainer*> listener)
        : ZoObserver(cloud), container(std::move(listener)) {}

  protected:
    void Notify(ZoNotifyEvent* event) override {
        if (*container) (*container)->Notify(event);
    }

  private:
    std::shared_ptr<ZoPointCloudContainer*> container;
};

ZoPointCloudContainer::ZoPointCloudContainer() : self(std::make_shared<ZoPointCloudContainer*>(this)) {}

ZoPointCloudContainer::ZoPointCloudContainer(const ZoPointCloudContainer& other) : ZoPointCloudContainer() {
    *this = other;
}

ZoPointCloudContainer& ZoPointCloudContainer::operator=(const ZoPointCloudContainer& other) {
    if (this == &other) return *this;
    ZoObserver::operator=(other);
    clouds.Destroy();
    other.clouds.CopyTo(&clouds);
    box = other.box;
    center = other.center;
    dirty = other.dirty;
    firstId = other.firstId;
    hostValue = other.hostValue;
    return *this;
}

ZoPointCloudContainer::~ZoPointCloudContainer() {
    *self = nullptr;
    Destroy();
}

void ZoPointCloudContainer::Notify(ZoNotifyEvent*) {
    clouds.NotifyChanged(nullptr, nullptr);
}

std::size_t ZoPointCloudContainer::Size() const {
    std::size_t size = 0;
    for (const ZoPointCloud* cloud = First(); cloud; cloud = cloud->NextConst())
        size += cloud->Size();
    return size;
}

ZoPointCloud* ZoPointCloudContainer::Adopt(std::unique_ptr<ZoPointCloud> cloud, std::uint32_t id, bool heard) {
    cloud->SetId(id);
    if (heard) cloud->forwarder.observer = std::make_unique<CloudObserver>(cloud.get(), self);
    ZoPointCloud* const added = clouds.Add(cloud.release());
    SetDirty();
    return added;
}

ZoPointCloud* ZoPointCloudContainer::AddCloud() {
    ZoPointCloud* const cloud = Adopt(std::make_unique<ZoPointCloud>(), clouds.GetFreeId(firstId), true);
    CheckForRebuildDisplayLists();
    return cloud;
}

ZoPointCloud* ZoPointCloudContainer::AddCloud(ZoPointCloud* cloud) {
    if (!cloud) return nullptr;
    Adopt(std::unique_ptr<ZoPointCloud>(cloud), clouds.GetFreeId(firstId), false);
    CheckForRebuildDisplayLists();
    return cloud;
}

ZoPointCloud* ZoPointCloudContainer::AddCloud(std::size_t count, const std::wstring& name) {
    auto cloud = std::make_unique<ZoPointCloud>();
    try {
        cloud->Reserve(count);
    } catch (const std::bad_alloc&) {
        dbgprintf("Error Create Pointcloud: %zu", count);
        return nullptr;
    }
    cloud->SetName(name);
    ZoPointCloud* const added = Adopt(std::move(cloud), clouds.GetFreeId(firstId), true);
    CheckForRebuildDisplayLists();
    return added;
}

ZoPointCloud* ZoPointCloudContainer::AddCloud(const ZoPointList* list) {
    if (!list) return nullptr;
    auto cloud = std::make_unique<ZoPointCloud>();
    const auto count = static_cast<std::size_t>(list->Count());
    cloud->scanInfo.timeStart = cloud->scanInfo.timeStart2 = Now();
    try {
        cloud->Reserve(count);
        for (const ZoPoint* point = list->First(); point; point = point->NextConst()) {
            ZoScanPoint3d taken(*point);
            taken.SetFlags(0);
            cloud->AddPoint(taken);
        }
    } catch (const std::bad_alloc&) {
        dbgprintf("Error Create Pointcloud COO: %zu", count);
        return nullptr;
    }
    cloud->scanInfo.timeEnd = cloud->scanInfo.timeEnd2 = Now();
    cloud->SetName(L"Coo Cloud");
    ZoPointCloud* const added = Adopt(std::move(cloud), clouds.GetFreeId(firstId), true);
    UpdateCenterAndBox(added);
    return added;
}

bool ZoPointCloudContainer::Delete(ZoPointCloud* cloud) {
    if (!cloud || !clouds.Exist(cloud)) return false;
    const std::unique_ptr<ZoPointCloud> deleted(clouds.Subtract(cloud));
    SetDirty();
    return true;
}

void ZoPointCloudContainer::Destroy() {
    clouds.Destroy();
    box.Reset();
    center.Reset();
}

int ZoPointCloudContainer::CopyTo(ZoPointCloudContainer* other) const {
    if (!other) return 0;
    int copied = 0;
    const ZoPointCloud* const last = clouds.Last();
    for (const ZoPointCloud* cloud = First(); cloud; cloud = cloud == last ? nullptr : cloud->NextConst(), ++copied) {
        ZoPointCloud* const copy = other->AddCloud();
        copy->SetName(L"Copy " + cloud->GetName());
        copy->CopyFrom(cloud);
    }
    return copied;
}

int ZoPointCloudContainer::MoveTo(ZoPointCloudContainer* other) {
    if (!other || other == this) return 0;
    int moved = 0;
    for (; !clouds.IsEmpty(); ++moved)
        other->AddCloud(clouds.SubtractFirst());
    return moved;
}

void ZoPointCloudContainer::Deselect(bool activeOnly) {
    for (ZoPointCloud* cloud = First(); cloud; cloud = cloud->Next()) {
        if (!activeOnly || cloud->IsActive()) cloud->Deselect();
    }
}

std::size_t ZoPointCloudContainer::DeleteSelectedPoints(bool activeOnly) {
    std::size_t deleted = 0;
    for (ZoPointCloud* cloud = First(); cloud; cloud = cloud->Next()) {
        if (activeOnly && !cloud->IsActive()) continue;
        const std::size_t lost = cloud->DeleteSelectedPoints();
        if (lost > 0) SetDirty();
        deleted += lost;
    }
    UpdateCenterAndBoxBefore(First());
    return deleted;
}

int ZoPointCloudContainer::Transform(const ZoAffinMap3d& map, bool all) {
    int transformed = 0;
    for (ZoPointCloud* cloud = First(); cloud; cloud = cloud->Next()) {
        if (!all && !cloud->IsActive()) continue;
        cloud->Transform(map);
        ++transformed;
    }
    if (transformed > 0) {
        UpdateCenterAndBoxBefore(First());
        dirty = 1;
    }
    return transformed;
}

void ZoPointCloudContainer::ZSort(bool ascending) {
    for (ZoPointCloud* cloud = First(); cloud; cloud = cloud->Next()) {
        if (cloud->IsActive()) cloud->ZSort(ascending);
    }
}

bool ZoPointCloudContainer::HasSelectedPoints(bool inPoints) const {
    if (!inPoints) return !clouds.IsEmpty();
    for (const ZoPointCloud* cloud = First(); cloud; cloud = cloud->NextConst()) {
        if (cloud->HasSelectedPoints()) return true;
    }
    return false;
}

void ZoPointCloudContainer::UpdateCenterAndBox(ZoPointCloud* cloud) {
    if (!cloud) {
        UpdateCenterAndBoxBefore(nullptr);
        return;
    }
    TakeIn(*cloud);
    CheckForRebuildDisplayLists();
}

void ZoPointCloudContainer::UpdateCenterAndBoxBefore(const ZoPointCloud* upToDate) {
    box.Reset();
    center.Reset();
    bool isUpToDate = false;
    for (ZoPointCloud* cloud = First(); cloud; cloud = cloud->Next()) {
        isUpToDate = isUpToDate || cloud == upToDate;
        if (!isUpToDate) cloud->CalcCenterAndBoundingBox(false);
        TakeIn(*cloud);
    }
    CheckForRebuildDisplayLists();
}

void ZoPointCloudContainer::TakeIn(const ZoPointCloud& cloud) {
    // The centre of two empty ones would count a point.
    if (cloud.center.GetCount() == 0) return;
    box.Union(cloud.box);
    center.Add(cloud.center);
}

ZoPointCloud* ZoPointCloudContainer::TakeImport(std::unique_ptr<ZoPointCloud> cloud) {
    if (!cloud) return nullptr;
    ZoPointCloud* const added = Adopt(std::move(cloud), clouds.GetFreeId(firstId), true);
    UpdateCenterAndBox(added);
    return added;
}

bool ZoPointCloudContainer::TakeImport(std::unique_ptr<ZoPointCloud> cloud, const std::wstring& path,
                                       ZoPointCloudReadResult& result) {
    if (!cloud) return false;
    cloud->SetName(ZoGetFilename(path));
    zorv::detail::FileTimes times;
    if (zorv::detail::ReadFileTimes(zorv::detail::NativePath(path), times)) cloud->scanInfo.timeStart = times.written;
    ZoPointCloud* const added = Adopt(std::move(cloud), clouds.GetFreeId(firstId), true);
    result.Add(added);
    UpdateCenterAndBoxBefore(added);
    return true;
}

void ZoPointCloudContainer::CheckForRebuildDisplayLists() {
    bool rebuild = false;
    for (const ZoPointCloud* cloud = First(); cloud && !rebuild; cloud = cloud->NextConst())
        rebuild = cloud->GetRebuild();
    if (!rebuild) return;
    for (ZoPointCloud* cloud = First(); cloud; cloud = cloud->Next())
        cloud->SetRebuild(true);
}
