#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <iosfwd>
#include <memory>
#include <string>

#include "zorv/cloud/cloud_read_result.h"
#include "zorv/cloud/point_cloud.h"
#include "zorv/core/list.h"
#include "zorv/core/notifier.h"
#include "zorv/export.h"
#include "zorv/math/bounding_box3d.h"
#include "zorv/math/center_point3d.h"

class ZoAffinMap3d;
class ZoFileBuffMemoryMap;
class ZoPointList;

/// The list of clouds, which it owns.
class ZORV_API ZoPointCloudList : public TZoListHeader<ZoPointCloud> {};

/// The clouds of a project with the box and the centre over them all, and a counter of changes.
///
/// It hears the clouds that it made itself, also when another container has taken them over, and tells the observers
/// of `clouds`. It does not hear those that are handed to it.
class ZORV_API ZoPointCloudContainer : public ZoObserver {
  public:
    ZoPointCloudContainer();
    /// Copies of the clouds, with their ids and names. As after an assignment, the copies are not heard.
    ZoPointCloudContainer(const ZoPointCloudContainer& other);
    ZoPointCloudContainer& operator=(const ZoPointCloudContainer& other);

    /// Tells the observers of `clouds` that something changed.
    void Notify(ZoNotifyEvent* event) override;

    ~ZoPointCloudContainer() override;

    ZoPointCloud* First() const { return clouds.First(); }
    /// Points of all clouds.
    std::size_t Size() const;

    /// A new cloud with the first free id from `firstId` on. The container owns it, as in all these.
    ZoPointCloud* AddCloud();
    /// Takes a cloud over and gives it a new id; null gives null.
    ZoPointCloud* AddCloud(ZoPointCloud* cloud);
    /// A new cloud with room for that many points; null, with nothing added, when memory runs out.
    ZoPointCloud* AddCloud(std::size_t count, const std::wstring& name);
    /// A new cloud "Coo Cloud" of the points of a list; null for null and, with nothing added, when memory runs out.
    ZoPointCloud* AddCloud(const ZoPointList* list);
    /// False for null and for a cloud that is not in this container. Box and centre stay as they were.
    bool Delete(ZoPointCloud* cloud);
    /// Deletes all clouds.
    void Destroy();
    /// Gives the other container copies of points, box and centre as new clouds, named "Copy " and the name. Returns
    /// how many; 0 for null. The other one may be this one.
    int CopyTo(ZoPointCloudContainer* other) const;
    /// Hands all clouds over and returns how many; 0 for null and for this container itself.
    int MoveTo(ZoPointCloudContainer* other);

    /// These go through all clouds, or through the active ones.
    void Deselect(bool activeOnly);
    /// Returns the number of points deleted.
    std::size_t DeleteSelectedPoints(bool activeOnly);
    /// Returns the number of clouds transformed.
    int Transform(const ZoAffinMap3d& map, bool all);
    /// Orders the points of the active clouds by z.
    void ZSort(bool ascending);
    /// With true, whether any point is selected; with false, whether there is a cloud.
    bool HasSelectedPoints(bool inPoints) const;

    /// Takes box and centre of a cloud into those of the container. With null all clouds' box and centre are made anew,
    /// and the container's from them. A cloud without points changes nothing.
    void UpdateCenterAndBox(ZoPointCloud* cloud);
    /// Raises the counter of changes.
    void SetDirty() { ++dirty; }
    /// If one cloud needs new display lists, all get them.
    void CheckForRebuildDisplayLists();

    /// Reads a native cloud file (.zoptc), numbers all clouds from 1 and resets the counter of changes. True when the
    /// container holds a cloud then. False, with nothing changed, when the file cannot be opened (`error` is 1), is
    /// empty (2) or is no such file (`error` stays). Clouds that are damaged in the middle keep what stands before.
    bool Read(const std::wstring& path, ZoPointCloudReadResult& result);
    bool Read(const wchar_t* path, ZoPointCloudReadResult& result) { return Read(NameOf(path), result); }
    /// Writes a native cloud file and resets the counter of changes. 1, or 0 when that fails: a file of that name is
    /// then as it was. A cloud of more than 4294967295 points fits in no such file.
    int Write(const std::wstring& path);

    /// Imports one cloud, named after the file. False, with nothing changed, when the file cannot be opened or does not
    /// fit into memory; the result then has the system's error number.
    bool ReadPtsFile(const std::wstring& path, ZoPointCloudReadResult& result);
    bool ReadPtsFile(const wchar_t* path, ZoPointCloudReadResult& result) { return ReadPtsFile(NameOf(path), result); }
    /// The same for lines of x, y, z and red, green, blue.
    bool ReadXYZFile(const std::wstring& path, ZoPointCloudReadResult& result);
    bool ReadXYZFile(const wchar_t* path, ZoPointCloudReadResult& result) { return ReadXYZFile(NameOf(path), result); }
    /// The same for LAS and LAZ files; the error number is 4 for an empty name and 3 for a file that cannot be opened
    /// or is none of that kind.
    bool ReadLasLazFile(const std::wstring& path, ZoPointCloudReadResult& result);
    bool ReadLasLazFile(const wchar_t* path, ZoPointCloudReadResult& result) {
        return ReadLasLazFile(NameOf(path), result);
    }

    ZoPointCloudList& GetClouds() { return clouds; }
    const ZoPointCloudList& GetClouds() const { return clouds; }
    const ZoBoundingBox3d& GetBox() const { return box; }
    const ZoCenterPoint3d& GetCenter() const { return center; }
    std::uint32_t GetDirty() const { return dirty; }

    ZoPointCloudList clouds;
    ZoBoundingBox3d box;
    ZoCenterPoint3d center;
    std::uint32_t dirty = 0;      ///< changes since the last Read or Write; 0 for none
    std::uint32_t firstId = 0;    ///< where the search for a free id begins; 0 takes the largest plus 1
    std::uint32_t hostValue = 1;  ///< the host's

  protected:
    bool Read(ZoFileBuffMemoryMap& buffer, ZoPointCloudReadResult& result);
    int Write(std::FILE* file);
    ZoPointCloud* ReadPtsFile(std::FILE* file);
    ZoPointCloud* ReadXYZFile(std::ifstream& stream);
    ZoPointCloud* ObsolteReadPlyFile(std::ifstream& stream);

    /// UpdateCenterAndBox(nullptr) for a container in which the box and centre of the clouds from `upToDate` on, null
    /// for none, are those of their points.
    void UpdateCenterAndBoxBefore(const ZoPointCloud* upToDate);

  private:
    class CloudObserver;

    static std::wstring NameOf(const wchar_t* path) { return path ? path : L""; }

    ZoPointCloud* Adopt(std::unique_ptr<ZoPointCloud> cloud, std::uint32_t id, bool heard);
    void TakeIn(const ZoPointCloud& cloud);
    // Adds an imported cloud, with its box and centre, as AddCloud does: null gives null. The second form gives it what
    // its file tells and puts down the result; null gives false.
    ZoPointCloud* TakeImport(std::unique_ptr<ZoPointCloud> cloud);
    bool TakeImport(std::unique_ptr<ZoPointCloud> cloud, const std::wstring& path, ZoPointCloudReadResult& result);

    // What the clouds' observers know of the container; they may outlive it.
    std::shared_ptr<ZoPointCloudContainer*> self;
};
