// Files as people have them: every format with either line end, a byte order mark, names of any script, and under a
// process locale that writes numbers with commas.

#include <clocale>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <locale>
#include <memory>
#include <sstream>

#include "tests/support/archive_item.h"
#include "tests/support/las_bytes.h"
#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>

#include "zorv/cloud/cloud_container.h"
#include "zorv/core/disto_package.h"
#include "zorv/core/file_type.h"
#include "zorv/core/platform/files.h"
#include "zorv/core/reader.h"
#include "zorv/core/text_writer.h"
#include "zorv/orientation/bundle_observation_list.h"
#include "zorv/photo/camera_list.h"
#include "zorv/photo/photo_list.h"
#include "zorv/photo/reseau_file_list.h"
#include "zorv/points/generic_table.h"
#include "zorv/points/measurement_log.h"
#include "zorv/rectify/plane_list.h"

namespace {

/// A folder and the beginning of a name in it.
constexpr char kOddName[] = "Fläche_測量/プロジェクト ß ";
constexpr double kEast = 512345.0625, kNorth = 6098765.03125, kHeight = -100.515625;

void Save(const std::wstring& file, const std::string& bytes) {
    std::ofstream(zorv::detail::NativePath(file), std::ios::binary) << bytes;
}

std::string Load(const std::wstring& file) {
    std::ifstream in(zorv::detail::NativePath(file), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

std::ostringstream PlainText() {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    return text;
}

using Columns = ZoPointList::Table;

Columns PointColumns() {
    static constexpr eZoPointRWMask kKinds[] = {eZoRWId, eZoRWPP, eZoRWPhoto, eZoRWX,
                                                eZoRWY,  eZoRWZ,  eZoRWVx,    eZoRWEnd};
    return Columns(kKinds);
}

ZoPointList Points() {
    ZoPointList list;
    for (unsigned int id : {7u, 1234567u}) {
        ZoPoint& point = *list.Add(ZoPoint(id, kEast, kNorth + id, kHeight, 0));
        point.photoId = 4711;
        point.vx = 0.25f;
        point.SetName(L"Größe 点");
    }
    return list;
}

std::string ReadPoints(const std::wstring& file) {
    return ArchiveBytes(ZoPointList(file, PointColumns()));
}

template <class List>
std::string ReadList(const std::wstring& file) {
    List list;
    list.ReadFile(file);
    return ArchiveBytes(list);
}

std::string ReadGsi(const std::wstring& file) {
    ZoPointList list;
    list.ReadGsiFile(file, true, eZoUnitM);
    return ArchiveBytes(list);
}

std::string ReadTable(const std::wstring& file) {
    std::string digest;
    const ZoReadGenericTableFile table(file);
    for (const auto& row : table.GetRows()) {
        for (const std::string& cell : row)
            digest += "<" + cell;
        digest += "|";
    }
    return digest;
}

ZoCameraList Cameras(unsigned int mode) {
    ZoCameraList list;
    for (unsigned int id : {3u, 4000u}) {
        ZoCamera& camera = *list.Add(ZoCamera(id, 18.25, 0.5, -0.125, 1.5e-5, 0.0, 9.0, "Weitwinkel Ü"));
        camera.mode = mode;
    }
    return list;
}

std::string ReadCameras(const std::wstring& file) {
    std::string digest;
    const ZoCameraList list(file);
    for (const ZoCamera* camera = list.First(); camera; camera = camera->NextConst())
        digest += ArchiveBytes(*camera);
    return digest;
}

void WritePlanes(const std::wstring& file) {
    ZoPlaneList list;
    for (const wchar_t* name : {L"Süd", L"床"}) {
        ZoPlane plane;
        plane.SetName(name);
        plane.A() = 0.6;
        plane.B() = -0.8;
        plane.D() = kNorth;
        list.Add(plane);
    }
    list.WriteFile(file);
}

void WriteObservations(const std::wstring& file) {
    ZoBundleAOBList list;
    list.First()->SetActive(true);
    list.First()->SetId1(1000);
    list.First()->SetValue(1234.5625);
    list.WriteFile(file, false);
}

void WriteLog(const std::wstring& file) {
    const ZoPointList images = Points();
    ZoLogItem item(*images.First(), &images, eZoMeasureMode(3), 17);
    item.point.id = 1700000000;
    ZoLogItemList log;
    log.SetFilename(file);
    for (int i = 0; i < 2; ++i)
        log.WriteItem(&item);
}

std::string ReadLog(const std::wstring& file) {
    ZoLogItemList log;
    log.ReadFile(file);
    std::ostringstream text;
    log.Write(text);
    return text.str();
}

void WriteReseau(const std::wstring& file) {
    ZoReseauFile reseau;
    reseau.SetComment(L"Platte 1½");
    reseau.GenerateDummyData();
    std::ostringstream text;
    ZoReseauFile::WriteHeaderComment(text);
    reseau.Write(text);
    Save(file, text.str());
}

void WriteDigitalReseau(const std::wstring& file) {
    ZoReseaufileList list;
    ZoReseauFile camera;
    camera.SetName(L"写真機 1");
    camera.CreateDigitalFormat(6000, 4000, 35.875, 24.0);
    list.Add(camera);
    list.WriteDigitalCameraFormat(file);
}

std::string ReadReseaus(const std::wstring& file) {
    ZoReseaufileList list;
    list.ReadReseauFile(file);
    std::string digest;
    for (const ZoReseauFile* reseau = list.First(); reseau; reseau = reseau->NextConst())
        digest += wstring2string(reseau->GetComment()) + ArchiveBytes(reseau->crossList);
    return digest;
}

void WriteProject(const std::wstring& file) {
    std::ostringstream text;
    for (unsigned int id : {12u, 1300u}) {
        ZoPhoto photo(id);
        photo.SetName(L"C:\\Büro\\写真.tif");
        photo.camera = ZoCamera(3, 24.5, 0.125, 0, 0, 1e-7, 10, "lens");
        photo.SetPosAOR(kEast, kNorth, 0.1);
        photo.preTrafo.Set(-7.5, 0.005, -5, 0.125);
        photo.SetScreenScale(1300);
        photo.AddElspTrafo(ZoElspTrafo(), true)->SetName(L"Wand ß");
        text << s10 << "PHOTO" << ZoBeginBlock << Zoendl;
        photo.Write(text) << ZoEndBlock << Zoendl;
    }
    Save(file, text.str());
}

struct Project : LinkHdl {
    long Read(ZoReaderObject* object) { return photos.AddPhoto(object); }
    ZoPhotoList photos;
};

std::string ReadProject(const std::wstring& file) {
    Project project;
    ZoReader reader(file);
    reader.RegisterObject(ZoReaderObject("PHOTO", Link(&project, &Project::Read)));
    reader.DoProcess(false);
    return ArchiveBytes(project.photos) + std::to_string(reader.GetReadErrorCount());
}

struct Archive : CZipWrapper {
    using CZipWrapper::CZipWrapper;
    void WriteItem() override { points.WriteV9(this); }
    ZoPointList points = Points();
};

void WriteArchive(const std::wstring& file) {
    Archive archive(file, true);
    archive.SzAdd(L"Pläne/点.lst");
    archive.SzClose();
}

std::string ReadArchive(const std::wstring& file) {
    Archive archive(file, false);
    archive.points.Destroy();
    if (archive.UnzipItem(L"Pläne/点.lst", nullptr)) archive.points.ReadV9(&archive);
    return ArchiveBytes(archive.points);
}

void WriteDisto(const std::wstring& file) {
    const HZIP zip = CreateZip(file.c_str(), nullptr);
    const std::string xml = "\xef\xbb\xbf<D>\r\n<Name>B\xc3\xb6gen</Name>\r\n</D>";
    ZipAdd(zip, L"DistoFile.xml", xml.data(), static_cast<unsigned int>(xml.size()));
    ZipAdd(zip, L"01/00_InputVideo/stream/stream0.mp4", "video", 5);
    CloseZipZ(zip);
}

std::string ReadDisto(const std::wstring& file) {
    const std::filesystem::path before = std::filesystem::current_path();
    const ZoLeicaDistoBlk3dCmiUnzipper package(file);
    std::filesystem::current_path(before);
    std::string digest = wstring2string(package.GetName());
    for (const std::wstring& stream : package.GetExtractedFiles())
        digest.append("<").append(Load(stream));
    return digest;
}

/// The container with the reader that hosts do not need.
struct Clouds : ZoPointCloudContainer {
    bool ReadPly(const std::wstring& file) {
        std::ifstream stream(zorv::detail::NativePath(file), std::ios::binary);
        return ObsolteReadPlyFile(stream) != nullptr;
    }
    std::string Digest() const {
        std::ostringstream text = PlainText();
        text.precision(17);
        for (const ZoPointCloud* cloud = First(); cloud; cloud = cloud->NextConst()) {
            text << cloud->noColors << '\n';
            for (const ZoScanPoint3d& p : cloud->points)
                text << p.x() << ' ' << p.y() << ' ' << p.z() << ' ' << p.color << '\n';
        }
        return text.str();
    }
    ZoPointCloudReadResult result;
};

const ZoScanPoint3d kScanPoints[] = {ZoScanPoint3d(kEast, kNorth, kHeight, 0x7f123456), ZoScanPoint3d(0.5, -2, 3, 1)};

void WriteAscii(const std::wstring& file, const std::string& head, bool colorOnly) {
    Save(file, head);
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> out(std::fopen(zorv::detail::NativePath(file).c_str(), "ab"),
                                                              &std::fclose);
    for (const ZoScanPoint3d& point : kScanPoints)
        point.WriteAscii(out.get(), false, colorOnly);
}

void WriteClouds(const std::wstring& file) {
    Clouds clouds;
    ZoPointCloud* const cloud = clouds.AddCloud(std::size_t{2}, L"Dach 屋根");
    for (const ZoScanPoint3d& point : kScanPoints)
        cloud->AddPoint(point);
    clouds.Write(file);
}

void WriteLas(const std::wstring& file) {
    std::string record(26, '\0');
    las_bytes::Put(record, 0, std::int32_t{51234506});
    las_bytes::Put(record, 20, std::uint16_t{0x1234});
    Save(file, las_bytes::Header(2, 2, 26, 2) + record + record);
}

std::string ReadCloud(const std::wstring& file, bool (Clouds::*read)(const std::wstring&)) {
    Clouds clouds;
    (clouds.*read)(file);
    return clouds.Digest();
}

template <bool (ZoPointCloudContainer::*kRead)(const std::wstring&, ZoPointCloudReadResult&)>
std::string ReadCloud(const std::wstring& file) {
    Clouds clouds;
    (clouds.*kRead)(file, clouds.result);
    return clouds.Digest();
}

std::string PlyText() {
    std::string text = "ply\nformat ascii 1.0\nelement vertex 2\n";
    for (int i = 0; i < 9; ++i)
        text += "property float p\n";
    // A line that lacks a field, and what stands behind an empty line.
    return text + "end_header\n0.5 1.25 3 9 9 9 4 5 6\n1 2 3 9 9 9 4 5 \n1 2 3 9 9 9 4 5 6\n\n1 2 3 9 9 9 4 5 6\n";
}

std::function<void(const std::wstring&)> Text(const std::string& text) {
    return [text](const std::wstring& file) { Save(file, text); };
}

struct Format {
    const char* file;
    bool isText;
    std::function<void(const std::wstring&)> write;
    std::function<std::string(const std::wstring&)> read;
};

const std::vector<Format>& Formats() {
    using Container = ZoPointCloudContainer;
    static const std::vector<Format> formats = {
        {"project.pro", true, WriteProject, ReadProject},
        {"points.coo", true, [](auto& file) { Points().WriteFile(file, PointColumns()); }, ReadPoints},
        {"log.mlg", true, WriteLog, ReadLog},
        {"survey8.gsi", true,
         Text("110001+00000123 81..00+51234506 82..00-00002000 83..00+00000500 \n"
              "110002+0000A124 81..06+00004000 83..06-00000250 \n"),
         ReadGsi},
        {"survey16.gsi", true,
         Text("*110001+0000000000000123 81..00+0000000512345062 82..00+0000006098765031 83..00-0000000000100515 \n"
              "*110002+0000000000FIRST9 81..08+0000051234506250 \n"),
         ReadGsi},
        {"table.csv", true, Text("Id;Länge,x\n1;1.5\t2\n\n点;3"), ReadTable},
        {"simple.cam", true, [](auto& file) { Cameras(0).WriteFile(file, false); }, ReadCameras},
        {"full.cam", true, [](auto& file) { Cameras(1).WriteFile(file, false); }, ReadCameras},
        {"plate.res", true, WriteReseau, ReadReseaus},
        {"cameras.dres", true, WriteDigitalReseau, ReadReseaus},
        {"planes.pln", true, WritePlanes, ReadList<ZoPlaneList>},
        {"adjustment.aob", true, WriteObservations, ReadList<ZoBundleAOBList>},
        {"cloud.pts", true, [](auto& file) { WriteAscii(file, "2\n", false); }, ReadCloud<&Container::ReadPtsFile>},
        {"no count.pts", true, [](auto& file) { WriteAscii(file, "", true); }, ReadCloud<&Container::ReadPtsFile>},
        {"cloud.xyz", true, [](auto& file) { WriteAscii(file, "", true); }, ReadCloud<&Container::ReadXYZFile>},
        {"cloud.ply", true, Text(PlyText()), [](auto& file) { return ReadCloud(file, &Clouds::ReadPly); }},
        {"cloud.las", false, WriteLas, ReadCloud<&Container::ReadLasLazFile>},
        {"cloud.zoptc", false, WriteClouds, ReadCloud<&Container::Read>},
        {"archive.zip", false, WriteArchive, ReadArchive},
        {"package.cmi", false, WriteDisto, ReadDisto},
    };
    return formats;
}

/// What is read from a file in a folder of its own, which `format` writes or which has these bytes.
std::string DigestOf(const Format& format, const std::string& prefix, const std::string* bytes = nullptr) {
    const TempFolder folder;
    const std::filesystem::path file = prefix + format.file;
    std::filesystem::create_directories(folder.path / file.parent_path());
    const std::wstring wide = folder.Name(file.native());
    bytes ? Save(wide, *bytes) : format.write(wide);
    return format.read(wide);
}

std::string Crlf(const std::string& text) {
    std::string changed;
    for (const char c : text) {
        if (c == '\n') changed += '\r';
        changed += c;
    }
    return changed;
}

TEST(FileForms, NamesLineEndsAndByteOrderMarksChangeNothing) {
    const std::string mark = "\xef\xbb\xbf";
    for (const Format& format : Formats()) {
        SCOPED_TRACE(format.file);
        const TempFolder folder;
        const std::wstring file = folder.Name(format.file);
        format.write(file);
        const std::string expected = format.read(file);
        const std::string empty;
        ASSERT_NE(expected, DigestOf(format, "", &empty)) << "nothing was read";
        EXPECT_EQ(DigestOf(format, kOddName), expected);
        if (!format.isText) continue;
        const std::string text = Load(file);
        ASSERT_EQ(text.find('\r'), text.npos);
        for (const std::string& form : {Crlf(text), mark + text, mark + Crlf(text)})
            EXPECT_EQ(DigestOf(format, "", &form), expected) << form.substr(0, 40);
        const eZorvFiletype type = ZoDetectZorvFiles(file).IsValidZorvFile();
        Save(file, mark + Crlf(text));
        EXPECT_EQ(ZoDetectZorvFiles(file).IsValidZorvFile(), type);
    }
}

/// The whole process with decimal commas.
class DecimalCommas {
  public:
    DecimalCommas() { std::locale::global(std::locale("de_DE.UTF-8")); }
    ~DecimalCommas() { std::locale::global(std::locale::classic()); }
};

TEST(FileForms, DecimalCommasOfTheProcessStayOutOfFiles) {
    if (!std::setlocale(LC_ALL, "de_DE.UTF-8")) GTEST_SKIP() << "no locale de_DE.UTF-8";
    std::setlocale(LC_ALL, "C");
    for (const Format& format : Formats()) {
        SCOPED_TRACE(format.file);
        const TempFolder folder;
        format.write(folder.Name("plain"));
        const std::string expected = DigestOf(format, "");
        const DecimalCommas german;
        EXPECT_EQ(DigestOf(format, kOddName), expected);
        EXPECT_STREQ(std::localeconv()->decimal_point, ",") << "the locale comes back";
        format.write(folder.Name("german"));
        if (format.isText) {
            EXPECT_EQ(folder.Read("german"), folder.Read("plain"));
        }
    }
}

}  // namespace
