// The text form of a photo: one block of keywords.

#include <algorithm>
#include <cstdint>
#include <ostream>

#include "zorv/core/block_keywords.h"
#include "zorv/core/block_writer.h"
#include "zorv/core/number_format.h"
#include "zorv/core/string_tools.h"
#include "zorv/photo/photo.h"
#include "zorv/photo/photo_geometry.h"
#include "zorv/photo/region_of_interest.h"

namespace {

using zorv::detail::BlockKeywords;
using zorv::detail::BlockWriter;

/// Page and rotation of the image file as the fields 2 and 3 of a text in an older spelling; the page counted from 0.
void TakeUserData(const std::string& text, std::int32_t& page, std::int32_t& turn) {
    constexpr int kOldThreeQuarters = 3;
    const std::vector<std::string> fields = StringSplit(text, ";");
    if (fields.size() < 3) return;
    page = std::min(zorv::detail::ParseInt(fields[1]), INT32_MAX - 1) + 1;
    turn = zorv::detail::ParseInt(fields[2]);
    if (turn == kOldThreeQuarters) turn = 0;
}

}  // namespace

int ZoPhoto::Read(ZoReaderObject* object) {
    bool checkActive = false;
    std::string userData;
    rotAOR.SetIdent();
    regionOfInterest.SetMask(zorv::detail::kRegionOfInterestColumns);

    BlockKeywords keywords(object);
    keywords.Call("PHOTOID", [this](ZoReaderObject* value) { ZoObject::Read(value); })
        .Value("COMMENT", &comment)
        .Call("USERDATA",
              [this](ZoReaderObject* value) {
                  TakeUserData(value->GetReader()->GetParser().GetTokenString(), digPictPage, digPictRot);
              })
        .Value("DIGITALPAGE", &digPictPage)
        .Value("DIGITALROT", &digPictRot)
        .Call("TYPE",
              [this](ZoReaderObject* value) {
                  ZoParser& parser = value->GetReader()->GetParser();
                  photoType = static_cast<eZoPhototype>(parser.GetTokenInt());
                  value->ParseForToken();
                  digitizerId = static_cast<std::uint32_t>(parser.GetTokenInt());
              })
        .Enumerator("DIGITAL", photoType)
        .Value("DIGITIZERID", &digitizerId)
        .Value("CHECKACTIVE", &checkActive)
        .Value("STATE", &activeFlag)
        .Value("ROTATION", &rotation)
        .Value("SCALE", &scale)
        .Value("ORIENTED", &hasAOR)
        .Record("DIGIREGION", digiRegion)
        .Shaped("AORM", rotAOR)
        .Shaped("AORV", posAOR)
        .Value("TPS_SETUP_ID", &tpsSetupId)
        .Record("CAMERA", camera)
        .Call("CAMDATA", [this](ZoReaderObject* value) { camera.ReadFullData(value); })
        .Call("PRERESEAU", [this](ZoReaderObject* value) { preTrafo.ReadV50(value); })
        .Call("MAINRESEAU", [this](ZoReaderObject* value) { mainTrafo.ReadV50(value); })
        .Call("POLYRESINV", [this](ZoReaderObject* value) { polyInvTrafo.ReadV50(value); })
        .Value("RESEAUFILE", &reseauData.name)
        .Value("RESEAUSUBID", &reseauData.id)
        .Record("PRERESTRAFO", preTrafo)
        .Record("MAINRESTRAFO", mainTrafo)
        .Record("POLYRESINVTRAFO", polyInvTrafo)
        .Call("ELSPTRAFO", [this](ZoReaderObject* value) { elspList.AddTrafoV50(value); })
        .Call("ELSPPLANE", [this](ZoReaderObject* value) { elspList.AddTrafo(value); })
        .Value("LASTELSPID", &lastElspId)
        .Record("SCREENPOS", screenPos)
        .Value("SCREENSIZE", &screenScale)
        .Value("SCREENFLAGS", &screenFlags)
        .Record("REGOI", regionOfInterest);
    keywords.Process();

    if (checkActive) SetFlag(kCheckActive);
    if (!preTrafo.GetName().empty()) {
        // The older form keeps the reseau's name there, and the label of an analogue photo as the photo's name.
        reseauData.name = preTrafo.GetName();
        if (IsAnalog()) {
            comment = name;
            name.clear();
        }
    }
    pixelHeight = 0;
    fieldOfView.valid = false;
    zorv::detail::GiveReach(*this);
    return 1;
}

std::ostream& ZoPhoto::Write(std::ostream& stream) const {
    BlockWriter out(stream);
    out.Block("PHOTOID", [this](std::ostream& block) { ZoObject::Write(block); });
    out.Value("COMMENT", comment);
    out.Value("DIGITALPAGE", digPictPage);
    out.Value("DIGITALROT", digPictRot);
    out.Value("DIGITAL", static_cast<std::int32_t>(photoType));
    out.Value("DIGITIZERID", digitizerId);
    out.Value("CHECKACTIVE", IsFlagSet(kCheckActive) != 0);
    out.Value("STATE", activeFlag);
    out.Value("ROTATION", rotation);
    out.Value("SCALE", scale);
    out.Value("ORIENTED", hasAOR);
    out.Record("DIGIREGION", digiRegion);
    out.Record("AORM", rotAOR);
    out.Record("AORV", posAOR);
    out.Value("TPS_SETUP_ID", tpsSetupId);
    out.Block("CAMDATA", [this](std::ostream& block) { camera.WriteFullData(block, true); });
    out.Value("RESEAUFILE", reseauData.name);
    out.Value("RESEAUSUBID", reseauData.id);
    out.Record("PRERESTRAFO", preTrafo);
    out.Record("MAINRESTRAFO", mainTrafo);
    out.Record("POLYRESINVTRAFO", polyInvTrafo);
    for (const ZoElspTrafo* each = elspList.First(); each; each = each->NextConst())
        out.Record("ELSPPLANE", *each);
    out.Value("LASTELSPID", lastElspId);
    out.Record("SCREENPOS", screenPos);
    out.Value("SCREENSIZE", screenScale);
    out.Value("SCREENFLAGS", screenFlags);
    if (regionOfInterest.First()) out.Record("REGOI", regionOfInterest);
    return stream;
}
