#include "zorv/photo/camera_list.h"

#include <map>
#include <memory>
#include <ostream>

#include "zorv/core/block_keywords.h"
#include "zorv/core/bulk_change.h"
#include "zorv/core/debug_output.h"
#include "zorv/core/path_tools.h"
#include "zorv/core/platform/files.h"
#include "zorv/core/reader.h"
#include "zorv/core/record_text.h"
#include "zorv/core/text_writer.h"
#include "zorv/photo/camera_parameters.h"

namespace camera_key = zorv::detail::camera_key;

namespace {

constexpr char kCamera[] = "CAMERA";

/// A line of the header that explains keywords.
void WriteKeywords(std::ostream& stream, const char* lead, const std::string& keywords, const char* meaning) {
    constexpr int kLeadWidth = 7;
    constexpr int kKeywordWidth = 11;
    zorv::detail::RecordText text;
    text.Left(kLeadWidth, lead).Left(kKeywordWidth, keywords).Text(meaning).Char('\n');
    text.WriteTo(stream << ZoComment);
}

std::string Words(std::initializer_list<const char*> keywords) {
    std::string text;
    for (const char* keyword : keywords)
        text.append(text.empty() ? "" : " ").append(keyword);
    return text;
}

void WriteFullHeaderComment(std::ostream& stream) {
    using namespace camera_key;
    stream << ZoComment << '\n';
    stream << ZoComment << "ZORVSCOPE 10 Version 9.050 General Purpose Camera File\n";
    stream << ZoComment << '\n';
    WriteKeywords(stream, "Ident:", kId, "Camera Id");
    WriteKeywords(stream, "", kName, "Camera Name");
    WriteKeywords(stream, "", kMode, "Mode: 0,1,2");
    WriteKeywords(stream, "", kC, "Camera Constant");
    WriteKeywords(stream, "", kCViva, "Camera Constant Viva");
    WriteKeywords(stream, "", Words({kXh, kYh}), "Principial Point");
    WriteKeywords(stream, "", Words({kXhViva, kYhViva}), "Principial Point Viva");
    WriteKeywords(stream, "", Words({kR0, kRmax}), "Radial Symmetric Distortion, Rmax");
    WriteKeywords(stream, "", Words({kA1, kA2, kA3}), "Radial Symmetric Distortion");
    WriteKeywords(stream, "", Words({kB1, kB2}), "Affine Distortion");
    WriteKeywords(stream, "", Words({kC1, kC2}), "Tangential Distortion");
    WriteKeywords(stream, "", std::string(kK1) + ".." + kK5, "Extra Distortion and Parameters");
    stream << ZoComment << '\n' << '\n';
}

}  // namespace

int ZoCameraList::Read(const std::wstring& fileName) {
    zorv::detail::BulkChange(*this, [&] {
        const int before = Count();
        ReadFileFormatFull(fileName);
        if (Count() == before) ReadFileFormatSimple(fileName);
        TestForMultipleCameras();
    });
    return 1;
}

int ZoCameraList::ReadFileFormatFull(const std::wstring& fileName) {
    if (!ZoExistFile(fileName)) return 0;
    const int before = Count();
    ZoReader reader(fileName);
    reader.RegisterObject(ZoReaderObject(kCamera, Link(this, &ZoCameraList::ReadFormatFull)));
    reader.DoProcess(false);
    // A file in the simple form is all errors here.
    if (Count() != before) reader.LogErrorsToApplicationLogger();
    return 1;
}

int ZoCameraList::ReadFileFormatSimple(const std::wstring& fileName) {
    ZoReader reader(fileName);
    reader.RegisterObject(ZoReaderObject(Link(this, &ZoCameraList::ReadFormatSimple)));
    reader.DoProcess(false);
    reader.LogErrorsToApplicationLogger();
    return 1;
}

long ZoCameraList::ReadFormatFull(ZoReaderObject* object) {
    AddCamera(object, true);
    return 1;
}

long ZoCameraList::ReadFormatSimple(ZoReaderObject* object) {
    zorv::detail::TakeBlockBegin(object);
    AddCamera(object, false);
    return 1;
}

ZoCamera* ZoCameraList::AddCamera(ZoReaderObject* object, bool fullData) {
    return Add(std::make_unique<ZoCamera>(object, fullData).release());
}

int ZoCameraList::TestForMultipleCameras() const {
    constexpr int kTolerated = 2;
    std::map<unsigned int, int> counts;
    for (const ZoCamera* camera = First(); camera; camera = camera->NextConst())
        ++counts[camera->GetId()];
    int multiple = 0;
    for (const auto& [number, entries] : counts) {
        if (entries <= kTolerated) continue;
        ++multiple;
        ZorvBeep(1000, 100);
        dbgprintf("** ZoCameraList::TestForMultipleCameras Id %d %d Entries", static_cast<int>(number), entries);
    }
    return multiple;
}

bool ZoCameraList::ContainsOnlyGentriCams() const {
    for (const ZoCamera* camera = First(); camera; camera = camera->NextConst()) {
        if (!camera->IsOldZorv()) return false;
    }
    return true;
}

int ZoCameraList::WriteFile(const wchar_t* fileName, bool gentri) const {
    return fileName ? WriteFile(std::wstring(fileName), gentri) : 0;
}

int ZoCameraList::WriteFile(const std::wstring& fileName, bool gentri) const {
    if (!gentri && !ContainsOnlyGentriCams()) return WriteFileFormatFull(fileName);
    zorv::detail::FileReplacement file(fileName);
    WriteFile(file.Stream(), gentri);
    file.Commit();
    return 1;
}

int ZoCameraList::WriteFileFormatFull(const std::wstring& fileName) const {
    zorv::detail::FileReplacement file(fileName);
    std::ostream& stream = file.Stream();
    WriteFullHeaderComment(stream);
    for (const ZoCamera* camera = First(); camera; camera = camera->NextConst()) {
        stream << s10 << kCamera << ZoBeginBlock << ' ';
        camera->WriteFullData(stream, true) << ZoEndBlock << Zoendl;
    }
    file.Commit();
    return 1;
}

int ZoCameraList::WriteFile(std::ostream& stream, bool gentri) const {
    if (gentri) {
        for (const ZoCamera* camera = First(); camera; camera = camera->NextConst())
            camera->WriteGentriFormat(stream) << '\n';
    } else {
        WriteSimpleHeaderComment(stream);
        WriteSimpleFormat(stream);
    }
    return 1;
}

std::ostream& ZoCameraList::WriteSimpleHeaderComment(std::ostream& stream) const {
    stream << ZoComment << '\n';
    stream << ZoComment << "ZORVSCOPE 10 Version 9.050 Simple Camera File\n";
    stream << ZoComment << '\n';
    stream << ZoComment << "File Format: { Id  C  Xh  Yh  A1  A2  R0 \"Infotext\"}\n";
    return stream << ZoComment << '\n' << '\n';
}

std::ostream& ZoCameraList::WriteSimpleFormat(std::ostream& stream) const {
    for (const ZoCamera* camera = First(); camera; camera = camera->NextConst()) {
        stream << ZoBeginBlock;
        camera->Write(stream) << ZoEndBlock << Zoendl;
    }
    return stream;
}
