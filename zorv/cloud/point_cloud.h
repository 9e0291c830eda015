#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <vector>

#include "zorv/cloud/scan_info.h"
#include "zorv/cloud/scan_point.h"
#include "zorv/core/flag.h"
#include "zorv/core/notifier.h"
#include "zorv/export.h"
#include "zorv/math/bounding_box3d.h"
#include "zorv/math/center_point3d.h"
#include "zorv/math/point3d.h"
#include "zorv/math/vector3d.h"

class Zo3dSelectVolume;
class ZoAffinMap3d;
class ZoFileBuffMemoryMap;
class ZoPointCloudContainer;

/// A cloud of points with its bounds, its mean, a selection and the points of deletions that can be undone.
///
/// The points are reached through the vector. Who changes them there brings box and centre up to date with
/// CalcCenterAndBoundingBox. A copy has everything but the observers; assignment leaves those of the left side alone.
class ZORV_API ZoPointCloud : public TZoFlagNode<ZoPointCloud>, public ZoStandardNotifier {
  public:
    static constexpr int kActive = 2;

    /// Active, with the present time as its start.
    ZoPointCloud();
    ZoPointCloud(const ZoPointCloud&) = default;
    ZoPointCloud& operator=(const ZoPointCloud& other);

    /// Tells the observers but `skip` that something changed; `hint` becomes the object of the event.
    virtual void NotifyChanged(void* hint, ZoObserver* skip);

    /// The cloud that is this object; null for null. The object must be a cloud.
    static ZoPointCloud* cast(const ZoObject* object);
    static const char* desc() { return gpDesc; }

    bool IsActive() const { return IsFlagSet(kActive) != 0; }
    void SetActive(bool on) { on ? SetFlag(kActive) : ClearFlag(kActive); }

    std::size_t Size() const { return points.size(); }
    /// Makes room for that many points more. Throws std::bad_alloc, also for more than a vector can hold.
    void Reserve(std::size_t more);
    /// Appends a copy with all its fields and takes it into box and centre, a selected one into the selected box too.
    void AddPoint(const ZoScanPoint3d& point) {
        points.push_back(point);
        const ZoScanPoint3d& added = points.back();
        center.Add(added.x(), added.y(), added.z());
        box.Update(added);
        if (added.IsSelected()) selectedBox.Update(added);
    }
    /// Replaces the points, box and centre by those of the other cloud and leaves the rest alone.
    void CopyFrom(const ZoPointCloud* cloud);
    /// Appends the other cloud's points and joins its boxes and centre to those here; the selected centre stays. The
    /// cloud may be this one. Null does nothing here and above.
    void Insert(const ZoPointCloud* cloud);

    /// Box and centre anew, from all points or from the selected ones. A size that differs from the former one by more
    /// than a hundredth asks for new display lists. False, with both reset, for a cloud without points.
    bool CalcCenterAndBoundingBox(bool onlySelected);
    /// Box and centre anew from the points as the map takes them.
    bool CalcCenterAndBoundingBox(const ZoAffinMap3d& map, bool onlySelected);
    /// Adds the points as the map takes them to a box and a centre, which are not reset, and gives the mean of their
    /// mapped normals, which is not normalised. Changes nothing here. False for a cloud without points.
    bool CalcCenterAndBoundingBox(ZoBoundingBox3d& sumBox, ZoCenterPoint3d& sumCenter, ZoVector3d& meanNormal,
                                  const ZoAffinMap3d& map, bool onlySelected) const;
    /// Widens a box by the points as the map takes them; false for a cloud without points.
    bool UpdateBoundingBox(ZoBoundingBox3d& widened, const ZoAffinMap3d& map, bool onlySelected) const;
    /// The same for a box of all points and one of the selected ones.
    bool UpdateBoundingBoxes(ZoBoundingBox3d& all, ZoBoundingBox3d& selected, const ZoAffinMap3d& map) const;

    /// Selects the points in the volume besides those that are selected already. Returns how many are selected now.
    std::uint32_t SelectPoints(const Zo3dSelectVolume& volume);
    /// The selected centre keeps its value in these two.
    void Deselect();
    void InvertSelection();
    bool HasSelectedPoints() const;
    /// Removes the selected points, keeps them for UndoDelete and returns how many they were. Box and centre are made
    /// anew, even when none was selected.
    std::size_t DeleteSelectedPoints();
    bool HasUndoData() const { return !undoStack.empty(); }
    /// Brings the points of the last deletion back, at the end and not selected. False when there is none.
    bool UndoDelete();

    /// Orders the points by z; those whose z is not a number come last either way.
    void ZSort(bool ascending);
    /// Maps the points and their normals, those of deletions included. Normals are not normalised again; the selected
    /// box and centre stay as they were. Returns true.
    bool Transform(const ZoAffinMap3d& map);

    /// Gives all points the normal of one plane that is fitted to some 35 of them; its sign is that of the fit. False,
    /// with nothing changed, for fewer than 36 points or when the fit fails, as it does with a coordinate among them
    /// that is not finite.
    bool CalcEstimatedNormals();
    /// Turns the normals of all points towards a viewpoint, which is kept. A point at the viewpoint gets one of
    /// not-a-number.
    void EstimateNormals(const ZoPoint3d& from);
    void CountNormals(std::uint64_t& withNormal, std::uint64_t& total) const;

    /// Reads a cloud from a native cloud file and adds its points to those here. 1 when it is to be kept, else 0. A
    /// count of points that the file does not have costs no memory.
    int Read(ZoFileBuffMemoryMap& buffer, int version);
    /// Writes the cloud's part of a native cloud file; errors are left in the stream. 0, with nothing written, for a
    /// null stream or more points than the file can count, else 1.
    int Write(std::FILE* file) const;

    ZoScanPointVector& GetPoints() { return points; }
    const ZoScanPointVector& GetPoints() const { return points; }
    const ZoBoundingBox3d& GetBox() const { return box; }
    const ZoCenterPoint3d& GetCenter() const { return center; }
    const ZoBoundingBox3d& GetSelectedBox() const { return selectedBox; }
    const ZoCenterPoint3d& GetSelectedCenter() const { return selectedCenter; }
    std::vector<std::uint32_t>& GetDisplayLists() { return displayLists; }
    ScanDataInfo& GetScanInfo() { return scanInfo; }
    const ScanDataInfo& GetScanInfo() const { return scanInfo; }
    bool HasNoColors() const { return noColors != 0; }
    bool GetRebuild() const { return rebuild != 0; }
    void SetRebuild(bool on) { rebuild = on ? 1 : 0; }

    ZoScanPointVector points;
    std::vector<ZoScanPointVector> undoStack;  ///< one entry for each deletion; not stored
    ZoBoundingBox3d box;
    ZoCenterPoint3d center;
    ZoBoundingBox3d selectedBox;  ///< its count is the number of selected points
    ZoCenterPoint3d selectedCenter;
    std::vector<std::uint32_t> displayLists;  ///< the host's
    ZoPoint3d viewpoint;                      ///< of the last EstimateNormals; not stored
    ScanDataInfo scanInfo;
    std::uint32_t noColors = 0;   ///< 1 when an import found no colour
    std::uint32_t rebuild = 1;    ///< not 0 when the host has to build its display lists anew; the host clears it
    std::uint32_t hostValue = 0;  ///< the host's

  private:
    friend class ZoPointCloudContainer;

    // Tells the container of changes; goes with the cloud and into no copy.
    struct Forwarder {
        Forwarder() = default;
        Forwarder(const Forwarder&) noexcept {}
        Forwarder& operator=(const Forwarder&) noexcept { return *this; }
        std::unique_ptr<ZoObserver> observer;
    };

    void AppendRecords(ZoFileBuffMemoryMap& buffer, std::uint64_t told);

    static const char* const gpDesc;

    Forwarder forwarder;
};
