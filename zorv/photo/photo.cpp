// Making, copying and small questions; the duties of a photo have sources of their own.

#include "zorv/photo/photo.h"

#include <algorithm>
#include <memory>

#include "zorv/core/alphanumeric_id.h"
#include "zorv/core/number_cast.h"
#include "zorv/core/path_tools.h"
#include "zorv/core/string_tools.h"
#include "zorv/photo/region_of_interest.h"

const char* const ZoPhoto::gpDesc = "ZoPhoto";

ZoPhoto::ZoPhoto(unsigned int number) : TZoFlagNode<ZoPhoto>(number) {
    for (ZoReseauTrafo* trafo : {&preTrafo, &mainTrafo, &polyInvTrafo})
        trafo->SetIdent();
    rotAOR.SetIdent();
    Init();
}

ZoPhoto::ZoPhoto(unsigned int number, const std::wstring& fileName) : ZoPhoto(number) {
    name = fileName;
}

ZoPhoto::ZoPhoto(ZoReaderObject* object) : ZoPhoto(0u) {
    Read(object);
}

ZoPhoto::ZoPhoto(CZipWrapper* archive) : ZoPhoto(0u) {
    ReadV9(archive);
}

ZoPhoto::ZoPhoto(const ZoPhoto& other) : ZoPhoto(0u) {
    *this = other;
    flags = other.flags;
}

ZoPhoto::~ZoPhoto() {
    imoList.Destroy();
    measureList.Destroy();
    elspList.Destroy();
    attributeList.Destroy();
}

void ZoPhoto::Init() {
    comment.clear();
    activeFlag = 1;
    layer = 0;
    rotation = 0;
    hasAOR = false;
    scale = 0.0;
    pixelSize = 0.0;
    photoType = eZoPhotoDigital;
    digitizerId = 20;
    pixelHeight = 0;
    posAOR.Clear();
    lastElspId = 0;
    digPictPage = 0;
    digPictRot = 0;
    screenPos.init();
    screenScale = 0;
    screenFlags = 0;
    imoCountCache = 0;
    aktBikoId = 0;
    std::fill(std::begin(exposure), std::end(exposure), 0.0);
    exposureDistance = 0.0;
    fieldOfView.valid = false;
    minCooDistance = maxCooDistance = meanCooDistance = 0.0;
    cooDistanceCount = 0;
    tpsSetupId.clear();
    regionOfInterest.SetMask(zorv::detail::kRegionOfInterestColumns);
    lastError = 0;
    ResetImoStat();
}

ZoPhoto& ZoPhoto::operator=(const ZoPhoto& other) {
    if (this == &other) return *this;
    measureList.Destroy();
    elspList.Destroy();
    attributeList.Destroy();
    imoList.Destroy();
    sortHelperImo = sortHelperMeasure = ZoSortHelper<ZoPoint>(nullptr);
    Init();
    ZoObject::operator=(other);
    comment = other.comment;
    rotation = other.rotation;
    activeFlag = other.activeFlag;
    layer = other.layer;
    scale = other.scale;
    hasAOR = other.hasAOR;
    digiRegion = other.digiRegion;
    pixelHeight = other.pixelHeight;
    bikoRegion = other.bikoRegion;
    rotAOR = other.rotAOR;
    posAOR = other.posAOR;
    reseauData = other.reseauData;
    preTrafo = other.preTrafo;
    mainTrafo = other.mainTrafo;
    polyInvTrafo = other.polyInvTrafo;
    camera.DeleteCamPair();
    camera = other.camera;
    camera.CreateLibAutoCam(this, false);
    photoType = other.photoType;
    digitizerId = other.digitizerId;
    screenPos = other.screenPos;
    digPictPage = other.digPictPage;
    digPictRot = other.digPictRot;
    screenScale = other.screenScale;
    screenFlags = other.screenFlags;
    lastElspId = other.lastElspId;
    pixelSize = other.pixelSize;
    imoCountCache = other.imoCountCache;
    std::copy(std::begin(other.exposure), std::end(other.exposure), exposure);
    exposureDistance = other.exposureDistance;
    fieldOfView = other.fieldOfView;
    minCooDistance = other.minCooDistance;
    maxCooDistance = other.maxCooDistance;
    meanCooDistance = other.meanCooDistance;
    cooDistanceCount = other.cooDistanceCount;
    tpsSetupId = other.tpsSetupId;
    imoStatInside = other.imoStatInside;
    imoStatOutside = other.imoStatOutside;
    imoStatMax = other.imoStatMax;
    imoStatSum = other.imoStatSum;
    return *this;
}

int ZoPhoto::Compare(const ZoBaseListnode* other) const {
    return TZoFlagNode<ZoPhoto>::Compare(other);
}

int ZoPhoto::Compare(const ZoListnode* other) const {
    return TZoFlagNode<ZoPhoto>::Compare(other);
}

int ZoPhoto::Compare(ZoListnode* other) const {
    return other ? static_cast<int>(id - other->GetId()) : 0;
}

ZoPhoto* ZoPhoto::cast(const ZoObject* object) {
    return const_cast<ZoPhoto*>(static_cast<const ZoPhoto*>(object));
}

bool ZoPhoto::ExistFile() const {
    return ZoExistFile(name);
}

double ZoPhoto::ExposureDistanceCCD() const {
    const ZoRegion& region = GetBikoRegion();
    return ExposureDistance_mm() / std::max(region.Width(), region.Height());
}

int ZoPhoto::ExposureDistaceCCD_Group() const {
    constexpr double kGroupsOfUnit = 4;
    return zorv::detail::SaturatedInt(ExposureDistanceCCD() * kGroupsOfUnit);
}

std::wstring ZoPhoto::GuiString(const ZoPhoto* photo, bool markOriented) {
    if (!photo) return L"??";
    const bool byComment = photo->IsAnalog() && !photo->IsOrthoPhoto() && !photo->IsVivaPanorama();
    const std::wstring text = std::to_wstring(photo->id) + L" - " + (byComment ? photo->comment : photo->name);
    return markOriented && photo->hasAOR ? L":: " + text : text;
}

unsigned int ZoPhoto::SuggestIdFromFilename(const wchar_t* fileName, bool limit) {
    constexpr unsigned int kTooLarge = 1073741824;
    if (!fileName) return 0;
    std::uint64_t number = 0;
    for (const wchar_t c : ZoGetFilename(fileName)) {
        if (c < L'0' || c > L'9') continue;
        number = std::min<std::uint64_t>(number * 10 + static_cast<unsigned>(c - L'0'), INT32_MAX);
    }
    if (limit && (number == 0 || number >= kTooLarge)) return 1;
    return static_cast<unsigned int>(number);
}

ZoElspTrafo* ZoPhoto::AddElspTrafo(ZoElspTrafo* rectification, bool newId) {
    if (rectification && newId) {
        lastElspId = elspList.GetFreeId(lastElspId + 1);
        rectification->SetId(lastElspId);
    }
    return elspList.Add(rectification);
}

ZoElspTrafo* ZoPhoto::AddElspTrafo(const ZoElspTrafo& rectification, bool newId) {
    return AddElspTrafo(std::make_unique<ZoElspTrafo>(rectification).release(), newId);
}

ZoElspTrafo* ZoPhoto::GetElspTrafo(ZoPoint* point, ZoElspTrafo* after, bool activeOnly) const {
    ZoElspTrafo* each = after ? after->Next() : elspList.First();
    for (; each; each = each->Next()) {
        if ((!each->HasRegion() || each->Overlap(point)) && (!activeOnly || each->IsActive())) return each;
    }
    return nullptr;
}

int ZoPhoto::CountElspTrafo(ZoPoint* point, bool activeOnly) const {
    int count = 0;
    for (ZoElspTrafo* each = GetElspTrafo(point, nullptr, activeOnly); each;
         each = GetElspTrafo(point, each, activeOnly))
        ++count;
    return count;
}

ZoAttribute* ZoPhoto::FindAttribute(const std::wstring& attributeName) const {
    return attributeList.Find(attributeName, false);
}

ZoAttribute* ZoPhoto::SubtractAttribute(const std::wstring& attributeName) {
    return attributeList.Subtract(FindAttribute(attributeName));
}

void ZoPhoto::DelAttribute(const std::wstring& attributeName) {
    delete SubtractAttribute(attributeName);
}

void ZoPhoto::DelAttribute(ZoAttribute* attribute) {
    delete SubtractAttribute(attribute);
}
