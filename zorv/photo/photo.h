#pragma once

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <map>
#include <set>
#include <string>

#include "zorv/core/attribute.h"
#include "zorv/core/flag.h"
#include "zorv/core/sort_helper.h"
#include "zorv/export.h"
#include "zorv/math/matrix.h"
#include "zorv/math/region.h"
#include "zorv/math/vector.h"
#include "zorv/photo/camera.h"
#include "zorv/photo/field_of_view.h"
#include "zorv/photo/image_transform.h"
#include "zorv/photo/reseau_descriptor.h"
#include "zorv/photo/reseau_trafo.h"
#include "zorv/points/point_list.h"
#include "zorv/rectify/rectification.h"

class CZipWrapper;
class ZoLine3d;
class ZoPhotoList;
class ZoReaderObject;
class ZoScanPoint3d;

/// Whether a photo comes from film or from a digital camera.
enum eZoPhototype : std::int32_t { eZoPhotoAnalog = 0, eZoPhotoDigital = 1 };

/// One image of a project: its copy of a camera, the transformations from pixels to image coordinates, its exterior
/// orientation, its measurements, rectifications and attributes.
///
/// The id is the number of the photo, the name its image file with the path. Measurements stand in two lists: Imo holds
/// Biko coordinates (distortion still in them), Measure holds Image coordinates (see eConvertBikoMode); Temp is for
/// parking. They are in no record of the photo, but in point files of their own. A direction (x, y, z) of the camera
/// frame is R (x, y, z) in object space; the camera looks along -z.
///
/// A copy of a photo starts without measurements, rectifications and attributes. A photo belongs to one thread at a
/// time, also where an operation looks constant: several fill a cache.
class ZORV_API ZoPhoto : public TZoFlagNode<ZoPhoto> {
  public:
    static constexpr double kExposureCcdDistGood = 0.25;
    static constexpr double kExposureCcdDistWarning = 0.5;
    static constexpr int kCheckActive = 2;  ///< flag: the check mark of the host
    /// States of activeFlag.
    static constexpr int kActive = 0;
    static constexpr int kExtern = 2;

    explicit ZoPhoto(unsigned int number);
    ZoPhoto(unsigned int number, const std::wstring& fileName);
    /// These two read at once; the first throws what Read throws.
    explicit ZoPhoto(ZoReaderObject* object);
    explicit ZoPhoto(CZipWrapper* archive);
    ZoPhoto(const ZoPhoto& other);
    ~ZoPhoto() override;

    using TZoFlagNode<ZoPhoto>::Compare;
    int Compare(const ZoBaseListnode* other) const override;
    int Compare(const ZoListnode* other) const override;
    virtual ZoRegion& GetDigiRegion() { return digiRegion; }
    virtual bool IsOrthoPhoto() const { return false; }
    virtual bool IsVivaPanorama() const { return false; }
    /// Size of a pixel in mm of the image plane; the first one is the mean of the others and is kept until Init or
    /// RescaleTo.
    virtual double GetPixelSize() const;
    virtual double GetPixelSizeX() const;
    virtual double GetPixelSizeY() const;
    /// Own id minus the other's, so that lists sort ascending.
    virtual int Compare(ZoListnode* other) const;
    /// Writes what Read takes.
    virtual std::ostream& Write(std::ostream& stream) const;
    /// Keyword form, up to the end of the block, in any order and in old and new spellings. Returns 1; throws
    /// ZoParserStatus.
    virtual int Read(ZoReaderObject* object);

    std::uint32_t OrderingKey() const { return id; }
    static ZoPhoto* cast(const ZoObject* object);
    static const char* desc() { return gpDesc; }

    /// Sets the defaults of all fields but id, name, flags, regions, camera, reseau, trafos, rotation and the lists.
    void Init();
    /// Drops measurements, rectifications and attributes and takes everything else of the other photo, but not its
    /// lists.
    ZoPhoto& operator=(const ZoPhoto& other);

    /// Archive record. Reading ends where the item ends.
    void ReadV9(CZipWrapper* archive);
    void WriteV9(CZipWrapper* archive) const;

    // ---- interior orientation -------------------------------------------------------------------------------------

    /// Takes a copy of the camera, gives it a reach where it has none, and makes its camera pair. Null does only the
    /// second.
    void SetCamera(const ZoCamera& newCamera, bool fromClassic);
    void SetCamera(const ZoCamera* newCamera, bool fromClassic);
    void SetCamera(const ZorvLibAuto::Camera* newCamera);
    /// Makes the camera pair, for classic cameras too.
    void CreateAutoLibCamera();
    /// Makes the camera pairs of the photo and its rectifications anew, as needed after the trafos changed.
    void SetZorvLibAutoDataFromInternalData();
    ZoCamera& GetCamera() { return camera; }
    const ZoCamera& GetCamera() const { return camera; }
    ZoReseauDataDesc& ReseauData() { return reseauData; }
    const ZoReseauDataDesc& GetReseauData() const { return reseauData; }
    void SetReseauData(const ZoReseauDataDesc& desc) { reseauData = desc; }
    ZoReseauTrafo& GetReseauPreTrafo() { return preTrafo; }
    const ZoReseauTrafo& GetReseauPreTrafo() const { return preTrafo; }
    void SetReseauPreTrafo(const ZoReseauTrafo& trafo) { preTrafo = trafo; }
    ZoReseauTrafo& GetReseauMainTrafo() { return mainTrafo; }
    const ZoReseauTrafo& GetReseauMainTrafo() const { return mainTrafo; }
    void SetReseauMainTrafo(const ZoReseauTrafo& trafo) { mainTrafo = trafo; }
    ZoReseauTrafo& GetReseauPolyInv() { return polyInvTrafo; }
    const ZoReseauTrafo& GetReseauPolyInv() const { return polyInvTrafo; }
    void SetPolyInvTrafo(const ZoReseauTrafo& trafo) { polyInvTrafo = trafo; }
    /// From Digi to Biko, without a polynomial.
    ZoMatrix GetReseauTrafoMat() const;
    eZoTrafo2DType GetReseauTrafoType() const { return mainTrafo.GetType(); }
    const wchar_t* GetReseauTrafoName() const { return mainTrafo.GetTrafoName(); }

    // ---- the chain of image coordinates ---------------------------------------------------------------------------

    /// Converts one point in place; see ZoBikoTransform for what false means. For many points use ConvertList.
    bool ConvertBiko(ZoPoint* point, eConvertBikoMode mode) const;
    void ConvertList(ZoPointList* list, eConvertBikoMode mode) const;
    void ConvertMeasure(eConvertBikoMode mode) { ConvertList(&measureList, mode); }
    /// The photo's own transform, which CalcRayDirection uses.
    void SetBikoTransform(eConvertBikoMode mode, bool flip) { bikoTransform.Set(this, mode, flip); }
    const ZoBikoTransform& GetBikoTransform() const { return bikoTransform; }
    /// Between Digi and Flipped Digi, either way.
    void PixelRks_Lks(ZoPoint* point) const;
    const ZoRegion& GetDigiRegion() const { return digiRegion; }
    void SetPixelRegion(const ZoRegion& region);
    void SetBikoRegion(const ZoRegion& region) { bikoRegion = region; }
    void CalcBikoRegionFromDigiRegion() const;
    /// Extent of the image in mm; computed when it is not known yet.
    const ZoRegion& GetBikoRegion() const;
    /// Pixels per mm.
    double GetPhotoPixelScale() const;
    /// Somewhat more than half the diagonal of the image, in mm.
    double GetMaxBikoRadius() const;
    /// Changes the size of the stored image by a factor. False for 0.
    bool RescaleTo(double factor);
    /// Changes the scale of the image coordinates. False for a polynomial main trafo.
    bool RescaleTo(double factorX, double factorY);

    // ---- measurements ---------------------------------------------------------------------------------------------

    /// These take the point, convert it by ConvertBiko and put it into the list, in the place of one of its id; the
    /// second does not look for one. Null is handed back.
    ZoPoint* AddImo(ZoPoint* point, eConvertBikoMode mode);
    ZoPoint* AddImoFast(ZoPoint* point, eConvertBikoMode mode);
    ZoPoint* AddMeasure(ZoPoint* point, eConvertBikoMode mode);
    ZoPoint* AddImo(const ZoPoint& point, eConvertBikoMode mode);
    ZoPoint* AddImoFast(const ZoPoint& point, eConvertBikoMode mode);
    ZoPoint* AddMeasure(const ZoPoint& point, eConvertBikoMode mode);

    ZoPointList* GetImoList() { return &imoList; }
    const ZoPointList* GetImoList() const { return &imoList; }
    ZoPointList* GetMeasureList() { return &measureList; }
    const ZoPointList* GetMeasureList() const { return &measureList; }
    ZoPointList* GetTempList() { return &tempList; }
    ZoPoint* FirstImo() const { return imoList.First(); }
    ZoPoint* LastImo() const { return imoList.Last(); }
    int CountImo() const { return imoList.Count(); }
    void DestroyImo() { imoList.Destroy(); }
    ZoPoint* SubtractImo(unsigned int number) { return imoList.Subtract(number); }
    ZoPoint* FindImo(unsigned int number) const { return imoList.Find(number); }
    ZoPoint* FirstMeasure() const { return measureList.First(); }
    ZoPoint* LastMeasure() const { return measureList.Last(); }
    int CountMeasure() const { return measureList.Count(); }
    void DestroyMeasure() { measureList.Destroy(); }
    ZoPoint* SubtractMeasure(unsigned int number) { return measureList.Subtract(number); }
    ZoPoint* SubtractMeasure(ZoPoint* point) { return measureList.Subtract(point); }
    ZoPoint* FindMeasure(unsigned int number) const { return measureList.Find(number); }
    /// The next free number among the measurements of the Measure list.
    unsigned int GetFreeBikoId() const { return measureList.GetFreeId(0); }
    unsigned int& AktBikoId() { return aktBikoId; }

    /// Build the views by id that the two Find operations use; later changes of the lists do not reach them.
    void SetImoSorted() { sortHelperImo = ZoSortHelper<ZoPoint>(&imoList); }
    void SetMeasureSorted() { sortHelperMeasure = ZoSortHelper<ZoPoint>(&measureList); }
    ZoPoint* FindSortedImo(unsigned int number) const { return sortHelperImo.Find(number); }
    ZoPoint* FindSortedMeasure(unsigned int number) const { return sortHelperMeasure.Find(number); }
    const ZoSortHelper<ZoPoint>& GetSortHelperImo() const { return sortHelperImo; }
    const ZoSortHelper<ZoPoint>& GetSortHelperMeasure() const { return sortHelperMeasure; }
    /// Give every point the photo's number, and its address in spare1.
    void SetPhotoIdToImoList();
    void SetPhotoIdToMeasureList();

    /// Whole lists, coordinates as they are.
    int CopyImoTo(ZoPointList* list) const { return imoList.CopyTo(list); }
    int CopyMeasureTo(ZoPointList* list) const { return measureList.CopyTo(list); }
    int CopyMeasureToImo() { return measureList.CopyTo(&imoList); }
    /// The points whose id is in the set, or all without one. With `clear` the Measure list is emptied first, and each
    /// copy keeps the address of its source in spare2.
    int CopyImoToMeasure(bool clear, const std::set<unsigned int>* ids);
    void MoveImoTo(ZoPointList* list) { imoList.MoveTo(list); }
    void MoveMeasureTo(ZoPointList* list) { measureList.MoveTo(list); }
    void MoveImoToMeasure() { imoList.MoveTo(&measureList); }
    void MoveMeasureToImo() { measureList.MoveTo(&imoList); }
    void MoveImoToTemp() { imoList.MoveTo(&tempList); }
    void MoveMeasureToTemp() { measureList.MoveTo(&tempList); }
    void MoveTempToImo() { tempList.MoveTo(&imoList); }
    void MoveTempToMeasure() { tempList.MoveTo(&measureList); }
    /// One point, converted; an id that is not there does nothing.
    void CopyImoToMeasure(unsigned int number, eConvertBikoMode mode);
    void CopyMeasureToImo(unsigned int number, eConvertBikoMode mode);
    void MoveImoToMeasure(unsigned int number, eConvertBikoMode mode);
    void MoveMeasureToImo(unsigned int number, eConvertBikoMode mode);

    /// Residual statistics: how many residuals (mm) lie within so many pixels, their maximum and sum.
    void ResetImoStat();
    void UpdateImoStat(double dx, double dy, double tolerance);
    void UpdateImoStatFromImoList(double tolerance) { UpdateImoStatFromList(&imoList, tolerance); }
    void UpdateImoStatFromList(const ZoPointList* list, double tolerance);
    unsigned int GetImoStatInside() const { return imoStatInside; }
    unsigned int GetImoStatOutside() const { return imoStatOutside; }
    double GetImoStatMax() const { return imoStatMax; }
    double GetImoStatSum() const { return imoStatSum; }
    void SetImoCountCache() { imoCountCache = static_cast<std::uint64_t>(imoList.Count()); }
    std::uint64_t GetImoCountCache() const { return imoCountCache; }
    /// The other photos by the number of common measurements, the most first, from commonImoByPhoto.
    void CreateNeighbourPhotosMapFromCommonImo();
    const std::multimap<unsigned int, unsigned int, std::greater<>>& GetNeighbourPhotos() const {
        return neighbourPhotos;
    }
    std::map<unsigned int, unsigned int>& GetCommonImoByPhoto() { return commonImoByPhoto; }

    // ---- rectifications and attributes ----------------------------------------------------------------------------

    ZoElspTrafoList* GetElspList() { return &elspList; }
    const ZoElspTrafoList* GetElspList() const { return &elspList; }
    ZoElspTrafo* FirstElspTrafo() const { return elspList.First(); }
    ZoElspTrafo* LastElspTrafo() const { return elspList.Last(); }
    ZoElspTrafo* FindElspTrafo(unsigned int number) const { return elspList.Find(number); }
    ZoElspTrafo* SubtractElspTrafo(unsigned int number) { return elspList.Subtract(number); }
    /// The pointer passes to the photo. With `newId` the rectification gets the next number behind the last one given.
    ZoElspTrafo* AddElspTrafo(ZoElspTrafo* rectification, bool newId);
    ZoElspTrafo* AddElspTrafo(const ZoElspTrafo& rectification, bool newId);
    unsigned int IncLastElspId(unsigned int n) { return lastElspId += n; }
    /// The next rectification behind `after` (null: from the first) that holds at the point (Biko) and, if wanted, is
    /// active.
    ZoElspTrafo* GetElspTrafo(ZoPoint* point, ZoElspTrafo* after, bool activeOnly) const;
    int CountElspTrafo(ZoPoint* point, bool activeOnly) const;

    /// The attribute passes to the photo, or back to the caller, or is deleted.
    ZoAttribute* AddAttribute(ZoAttribute* attribute) { return attributeList.Add(attribute, this); }
    ZoAttribute* FindAttribute(const std::wstring& attributeName) const;
    ZoAttribute* FirstAttribute() const { return attributeList.First(); }
    ZoAttribute* SubtractAttribute(const std::wstring& attributeName);
    ZoAttribute* SubtractAttribute(ZoAttribute* attribute) { return attributeList.Subtract(attribute); }
    void DelAttribute(const std::wstring& attributeName);
    void DelAttribute(ZoAttribute* attribute);
    ZoAttributeList* GetAttributeList() { return &attributeList; }

    // ---- exterior orientation and geometry ------------------------------------------------------------------------

    bool HasAOR() const { return hasAOR; }
    void SetHasAOR(bool on) { hasAOR = on; }
    /// Position of the projection centre in object coordinates and rotation; each makes the field of view invalid.
    void SetPosAOR(const ZoVector& position);
    void SetPosAOR(double x, double y, double z);
    void SetRotAOR(const ZoMatrix& rotation);
    /// Angles in radians.
    void SetRotAOR(double a, double b, double c);
    void SetAOR(const ZoPhoto& other);
    const ZoVector& GetPosAOR() const { return posAOR; }
    void GetPosAOR(double& x, double& y, double& z) const;
    const ZoMatrix& GetRotAOR() const { return rotAOR; }
    void GetRotAOR(double& a, double& b, double& c) const;
    /// The pose as a 4 by 4 matrix; null does nothing.
    void GetAOR(ZoMatrix* pose) const;
    /// Position and angles, in gon or radians, with the numbers of photo and camera; null does nothing.
    void GetAOR(ZoPoint* point, bool gon) const;

    /// The ray of an image point (Image coordinates): starts at the projection centre, unit direction.
    void SetRayStart(ZoLine3d& ray) const;
    void CalcRay(ZoLine3d& ray, const ZoPoint* imagePoint) const;
    /// The direction alone, from coordinates that SetBikoTransform tells, such as pixels.
    void CalcRayDirection(ZoLine3d& ray, double x, double y) const;
    /// The point at that distance along the ray. True.
    bool CalcRayEndPoint(double& x, double& y, double& z, const ZoPoint* imagePoint, const double& length) const;
    bool CalcRayEndPoint(ZoPoint* result, const ZoPoint* imagePoint, const double& length) const;
    bool CalcRayEndPoint(ZoScanPoint3d* result, const ZoPoint* imagePoint, const double& length) const;
    /// Where the ray of an image point (Image coordinates) meets a plane. The first form checks nothing; the others
    /// give false and a reason in lastError.
    void CalcSipNoErrorCheck(ZoPoint* result, const ZoPlane& plane, const ZoPoint* imagePoint) const;
    bool CalcSip(ZoPoint* result, const ZoPlane& plane, const ZoPoint* imagePoint);
    bool CalcSip(ZoPoint* result, const ZoPlane& plane, unsigned int number, bool useMeasure);
    int GetLastError() const { return lastError; }

    /// Computes the field of view unless it is valid. False without an orientation.
    bool CalcFieldOfViewPlanes();
    const ZoPhotoFieldOfView& GetFieldOfView() const { return fieldOfView; }
    bool IsViewIntersect(const ZoPhoto& other, bool ifUnknown) const;
    /// Whether an active, oriented photo shows the object point; on request also whether the point lies within 120
    /// degrees of the viewing axis.
    bool IsInPhotoView(const ZoPoint& objectPoint, bool checkDirection) const;
    bool IsSamePointOfView(const ZoPhoto& other, double tolerance) const;
    bool IsLookingInSameDirection(const ZoPhoto& other) const;
    double CalcAngle(const ZoPhoto& other) const;
    double Distance(const ZoPhoto& other) const;
    double Distance(const ZoPoint& point) const;
    double Distance2(const ZoPhoto& other) const;
    double Distance2(const ZoPoint& point) const;
    /// Distances from each photo to its measured object points; photos without measurements get those of the photo
    /// that reaches farthest.
    static void CalcPhotoCooDistances(const ZoPhotoList* photos, const ZoPointList* coordinates);
    double GetMinCooDistance() const { return minCooDistance; }
    double GetMaxCooDistance() const { return maxCooDistance; }
    double GetMeanCooDistance() const { return meanCooDistance; }
    int GetCooDistanceCount() const { return cooDistanceCount; }

    // ---- the rest -------------------------------------------------------------------------------------------------

    bool ExistFile() const;
    bool Overlap(const ZoPoint* point) const { return digiRegion.Overlap(point); }
    bool Overlap(const ZoRegion* region) const { return digiRegion.Overlap(region); }
    double GetExposureDistance() const { return exposureDistance; }
    void SetExposureDistance(double metres) { exposureDistance = metres; }
    double ExposureDistance_mm() const { return exposureDistance * 1000; }
    /// In multiples of the longer side of the image.
    double ExposureDistanceCCD() const;
    int ExposureDistaceCCD_Group() const;
    /// Text for a list of photos; "??" for null.
    static std::wstring GuiString(const ZoPhoto* photo, bool markOriented);
    /// The digits of a file name as a number; with `limit` 1 in place of 0 and of numbers from 1073741824.
    static unsigned int SuggestIdFromFilename(const wchar_t* fileName, bool limit);

    bool IsActive() const { return activeFlag == kActive; }
    bool IsInactive() const { return activeFlag != kActive; }
    bool IsExtern() const { return activeFlag == kExtern; }
    bool IsDigital() const { return photoType == eZoPhotoDigital; }
    bool IsAnalog() const { return !IsDigital(); }
    const std::wstring& GetComment() const { return comment; }
    void SetComment(const std::wstring& text) { comment = text; }
    void SetComment(const wchar_t* text) { comment = text ? text : L""; }
    int GetActiveFlag() const { return activeFlag; }
    void SetActiveFlag(int state) { activeFlag = state; }
    int GetLayer() const { return layer; }
    void SetLayer(int value) { layer = value; }
    int GetRotation() const { return rotation; }
    void SetRotation(int value) { rotation = value; }
    double GetScale() const { return scale; }
    void SetScale(double value) { scale = value; }
    eZoPhototype GetPhototype() const { return photoType; }
    void SetType(eZoPhototype type) { photoType = type; }
    unsigned int GetDigitizerId() const { return digitizerId; }
    void SetDigitizer(unsigned int number) { digitizerId = number; }
    int GetDigPictPage() const { return digPictPage; }
    void SetDigPictPage(int page) { digPictPage = page; }
    int GetDigPictRot() const { return digPictRot; }
    void SetDigPictRot(int value) { digPictRot = value; }
    const ZoPosition& GetScreenPos() const { return screenPos; }
    void SetScreenPos(const ZoPosition& position) { screenPos = position; }
    int GetScreenScale() const { return screenScale; }
    void SetScreenScale(int value) { screenScale = value; }
    int GetScreenFlags() const { return screenFlags; }
    void SetScreenFlags(int value) { screenFlags = value; }
    const std::wstring& GetTpsSetupId() const { return tpsSetupId; }
    void SetTpsSetupId(const std::wstring& setup) { tpsSetupId = setup; }
    ZoPointList& GetRegionOfInterest() { return regionOfInterest; }
    const ZoPointList& GetRegionOfInterest() const { return regionOfInterest; }

    std::wstring comment;
    std::int32_t activeFlag = 1;  ///< 0 active, 2 extern
    std::int32_t layer = 0;
    std::int32_t rotation = 0;  ///< of the display
    bool hasAOR = false;
    double scale = 0.0;              ///< of the display
    mutable double pixelSize = 0.0;  ///< what GetPixelSize computed; 0 when unknown
    eZoPhototype photoType = eZoPhotoDigital;
    std::uint32_t digitizerId = 20;
    mutable ZoRegion digiRegion;           ///< extent of the stored image in pixels; a panorama computes it
    mutable std::int32_t pixelHeight = 0;  ///< what PixelRks_Lks uses; 0 when unknown
    mutable ZoRegion bikoRegion;           ///< extent of the image in mm
    ZoCamera camera;
    ZoReseauDataDesc reseauData;
    ZoReseauTrafo preTrafo;          ///< Digi to Pre
    ZoReseauTrafo mainTrafo;         ///< Pre to Biko
    ZoReseauTrafo polyInvTrafo;      ///< Biko to Pre, for a polynomial main trafo
    ZoMatrix rotAOR{3, 3};           ///< rotation of the exterior orientation
    ZoVector posAOR{0.0, 0.0, 0.0};  ///< projection centre, object coordinates
    ZoElspTrafoList elspList;
    std::uint32_t lastElspId = 0;
    std::int32_t digPictPage = 0;  ///< of an image file with several pages
    std::int32_t digPictRot = 0;   ///< quarter turns of the stored image
    ZoPosition screenPos;
    std::int32_t screenScale = 0;
    std::int32_t screenFlags = 0;
    ZoPointList imoList;
    ZoSortHelper<ZoPoint> sortHelperImo{nullptr};
    std::uint64_t imoCountCache = 0;
    ZoPointList measureList;
    ZoSortHelper<ZoPoint> sortHelperMeasure{nullptr};
    ZoPointList tempList;
    ZoAttributeList attributeList;
    std::uint32_t aktBikoId = 0;    ///< the host's
    double exposure[11] = {};       ///< the host's
    double exposureDistance = 0.0;  ///< metres
    ZoPhotoFieldOfView fieldOfView;
    double minCooDistance = 0.0;
    double maxCooDistance = 0.0;
    double meanCooDistance = 0.0;
    std::int32_t cooDistanceCount = 0;
    std::wstring tpsSetupId;  ///< setup of the total station
    std::multimap<unsigned int, unsigned int, std::greater<>> neighbourPhotos;
    std::map<unsigned int, unsigned int> commonImoByPhoto;
    ZoPointList regionOfInterest;
    ZoBikoTransform bikoTransform;
    std::int32_t lastError = 0;  ///< of CalcSip: 1 no orientation, 2 no plane or parallel to it, 3 no point
    std::uint32_t imoStatInside = 0;
    std::uint32_t imoStatOutside = 0;
    double imoStatMax = 0.0;
    double imoStatSum = 0.0;

  private:
    static const char* const gpDesc;
};
