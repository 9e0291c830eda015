#include "samples.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>

#include <unistd.h>
#include <zorv/zorv.h>

namespace {

std::string TextOf(const std::function<void(std::ostream&)>& write) {
    std::ostringstream stream;
    ZoWriterReset();
    write(stream);
    return stream.str();
}

/// A folder that goes with it.
class Scratch {
  public:
    Scratch() {
        static int count = 0;
        path = std::filesystem::temp_directory_path() /
               ("format-samples-" + std::to_string(::getpid()) + '-' + std::to_string(++count));
        std::filesystem::create_directories(path);
    }
    ~Scratch() { std::filesystem::remove_all(path); }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    std::wstring Name(const char* file) const { return (path / file).wstring(); }
    std::wstring Write(const char* file, const std::string& bytes) const {
        std::ofstream(path / file, std::ios::binary) << bytes;
        return Name(file);
    }

    std::filesystem::path path;
};

std::string FileOf(const std::function<void(const std::wstring&)>& write) {
    const Scratch folder;
    write(folder.Name("sample"));
    std::ifstream file(folder.path / "sample", std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The block of a record, as a project holds it.
template <class Record>
std::string BlockOf(const char* keyword, const Record& record) {
    return TextOf([&](std::ostream& out) {
        out << s12 << keyword << w4 << ZoBeginBlockNL;
        record.Write(out) << ZoEndBlockNL << Zoendl;
    });
}

/// Sixteen bytes a line behind their offset, text at the end, `*` for lines that repeat the one before.
std::string HexDump(const std::string& bytes) {
    std::string dump;
    char field[24];
    for (std::size_t at = 0; at < bytes.size(); at += 16) {
        const std::string line = bytes.substr(at, 16);
        if (at > 0 && line == bytes.substr(at - 16, 16)) {
            if (!dump.ends_with("*\n")) dump += "*\n";
            continue;
        }
        std::snprintf(field, sizeof field, "%08zx ", at);
        dump += field;
        std::string text;
        for (std::size_t i = 0; i < 16; ++i) {
            if (i == 8) dump += ' ';
            if (i >= line.size()) {
                dump += "   ";
                continue;
            }
            std::snprintf(field, sizeof field, " %02x", static_cast<unsigned char>(line[i]));
            dump += field;
            text += line[i] >= ' ' && line[i] <= '~' ? line[i] : '.';
        }
        dump.append("  |").append(text).append("|\n");
    }
    std::snprintf(field, sizeof field, "%08zx\n", bytes.size());
    return dump + field;
}

std::string BytesOf(const std::string& dump) {
    std::string bytes;
    std::istringstream lines(dump);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream digits(line.substr(8, 52));
        for (int byte = 0; digits >> std::hex >> byte;)
            bytes += static_cast<char>(byte);
    }
    return bytes;
}

ZoPointList TwoPoints() {
    ZoPointList points;
    points.Add(ZoPoint(17, 1012.345, 2034.5, 99.125, 3))->SetName(L"Pier");
    points.Add(ZoPoint(18, 5.0, 6.25, 7.0, 0));
    return points;
}

const eZoPointRWMask kCoo[] = {eZoRWId, eZoRWName, eZoRWCode, eZoRWX, eZoRWY, eZoRWZ, eZoRWEnd};

std::string CooOf(ZoPointList points) {
    return FileOf([&](const std::wstring& file) { points.WriteFile(file, kCoo); });
}

ZoCamera Camera(std::uint32_t mode) {
    ZoCamera camera(7, 18.2, 0.11, -0.07, -1.5e-4, 2.5e-7, 9.0, "wide angle");
    camera.mode = mode;
    return camera;
}

std::string CamerasOf(std::uint32_t mode, bool gentri) {
    ZoCameraList cameras;
    cameras.Add(Camera(mode));
    return FileOf([&](const std::wstring& file) { cameras.WriteFile(file, gentri); });
}

std::string ObservationsOf(bool gentri) {
    ZoBundleAOBList list;
    list.Destroy();
    ZoBundleAOB record;
    list.Add(record);
    record.SetActive(true);
    record.SetId1(1001);
    record.SetId2(1002);
    record.SetValue(12.345);
    list.Add(record);
    return FileOf([&](const std::wstring& file) { list.WriteFile(file, gentri); });
}

ZoElspTrafo Rectification() {
    ZoElspTrafo trafo;
    trafo.SetId(2);
    trafo.SetName(L"Wall");
    trafo.SetActive(true);
    trafo.elspMat.SetIdent();
    trafo.transMat.SetIdent();
    for (unsigned int id : {1, 2, 3})
        trafo.bikoList.AddPoint(ZoPoint(id, id * 1.5, 4.0 - id * id, 0.0, 0));
    for (unsigned int id : {1, 2, 3})
        trafo.region.AddPoint(ZoPoint(id, id * 5.0, id * id * 2.0, 0.0, 0));
    ZoElspDefLine line(1, 2);
    line.SetId(1);
    line.xAxis = 1;
    line.distance = 1.5;
    trafo.parallelDef.lines.Add(line);
    line = ZoElspDefLine(2, 3);
    line.SetId(2);
    trafo.parallelDef.lines.Add(line);
    trafo.parallelDef.constraints.Add({1, 2, ZoElspDefLineConstraint::ConstraintPerpendicular, 0.0});
    return trafo;
}

std::string PhotoText() {
    ZoPhoto photo(9, L"images/img_0009.jpg");
    photo.comment = L"north side";
    photo.activeFlag = ZoPhoto::kActive;
    photo.digiRegion = ZoRegion(0.0, 0.0, 6000.0, 4000.0);
    photo.camera = Camera(0);
    photo.preTrafo.Set(-18.0, 0.006, -12.0, 0.0);
    photo.mainTrafo.SetIdent();
    photo.SetPosAOR(10.0, 20.0, 30.0);
    photo.SetHasAOR(true);
    return BlockOf("PHOTO", photo);
}

std::string OrthophotoText() {
    ZoOrthoPhoto photo(11);
    photo.SetName(L"wall.tif");
    photo.comment = L"1 mm";
    photo.digiRegion = ZoRegion(0.0, 0.0, 2000.0, 1000.0);
    photo.orthoRegion = ZoRegion(0.0, 0.0, 2.0, 1.0);
    ZoElspPlaneInfo part;
    part.photoObject.SetId(9);
    part.elspObject.SetId(2);
    photo.planeInfos.Add(part);
    return BlockOf("ORTHOPHOTO", photo);
}

std::string PanoramaText() {
    ZoPhotoVivaPano panorama(9, L"mosaic");
    panorama.tileSizeX = 640;
    panorama.tileSizeY = 480;
    panorama.frame = 10;
    panorama.photoIdTable.table.Set(3, 2);
    for (unsigned int i = 0; i < 6; ++i)
        panorama.photoIdTable.table.data[i] = 101 + i;
    return BlockOf("PANO", panorama);
}

ZoReseauFile Reseau(bool digital) {
    ZoReseauFile reseau;
    if (!digital) {
        reseau.GenerateDummyData();
        reseau.comment = L"nine crosses";
        return reseau;
    }
    reseau.CreateDigitalFormat(6000, 4000, 36.0, 24.0);
    reseau.name = L"Camera 7";
    reseau.comment = L"full frame";
    return reseau;
}

ZoScanPoint3d ScanPoint() {
    ZoScanPoint3d point(10.5, -20.25, 1.125, 0);
    point.SetRed(200);
    point.SetGreen(150);
    point.SetBlue(100);
    point.SetIntensity(128);
    return point;
}

/// Points as lines of text, all forms of the first point or each in columns.
std::string LinesOf(const ZoScanPointVector& points, bool allForms) {
    return FileOf([&](const std::wstring& name) {
        std::FILE* file = std::fopen(wstring2string(name).c_str(), "wb");
        for (const ZoScanPoint3d& point : points) {
            point.WriteAscii(file, true, false);
            if (!allForms) continue;
            point.WriteAscii(file, false, false);
            point.WriteAscii(file, false, true);
        }
        std::fclose(file);
    });
}

std::string CloudFile() {
    ZoPointCloudContainer clouds;
    ZoPointCloud* cloud = clouds.AddCloud();
    cloud->SetName(L"Hall");
    cloud->scanInfo.timeStart = 1700000000;
    cloud->AddPoint(ScanPoint());
    return HexDump(FileOf([&](const std::wstring& file) { clouds.Write(file); }));
}

std::string Imported(const std::string& bytes,
                     bool (ZoPointCloudContainer::*read)(const std::wstring&, ZoPointCloudReadResult&)) {
    const Scratch folder;
    ZoPointCloudContainer clouds;
    ZoPointCloudReadResult result;
    (clouds.*read)(folder.Write("cloud", bytes), result);
    return result.clouds.empty() ? "" : LinesOf(result.clouds.front()->points, false);
}

/// The bytes of an item as they lie in an archive, with the seal.
std::string SealedItem() {
    struct Project : CZipWrapper {
        void WriteItem() override { TwoPoints().WriteV9(this); }
    };
    const Scratch folder;
    Project written;
    written.SzOpen(folder.Name("project.zip"), true);
    written.SzAdd(L"Points");
    written.SzClose();
    Project read;
    read.SzOpen(folder.Name("project.zip"), false);
    ZIPENTRY entry;
    const void* item = read.UnzipItem(0, &entry);
    return HexDump({static_cast<const char*>(item), entry.unc_size});
}

std::string TableRows(const std::string& input) {
    const Scratch folder;
    const ZoReadGenericTableFile table(folder.Write("table.csv", input));
    std::string text;
    for (const auto& row : table.GetRows()) {
        for (const std::string& cell : row)
            text += '[' + cell + ']';
        text += '\n';
    }
    return text;
}

/// Of a package whose items are told in lines: name, blank, content.
std::string DistoFiles(const std::string& input) {
    const Scratch folder;
    const std::filesystem::path before = std::filesystem::current_path();
    const HZIP zip = CreateZip(folder.Name("hall.cmi").c_str(), nullptr);
    std::istringstream lines(input);
    for (std::string name, bytes; lines >> name && std::getline(lines >> std::ws, bytes);)
        ZipAdd(zip, string2wstring(name).c_str(), bytes.data(), static_cast<unsigned int>(bytes.size()));
    CloseZipZ(zip);
    const ZoLeicaDistoBlk3dCmiUnzipper package(folder.Name("hall.cmi"));
    std::filesystem::current_path(before);
    std::set<std::string> files{"name: " + wstring2string(package.GetName())};
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path))
        if (entry.is_regular_file()) files.insert(entry.path().lexically_relative(folder.path).string());
    std::string text;
    for (const std::string& file : files)
        text += file + '\n';
    return text;
}

std::string GsiPoints(const std::string& input) {
    const Scratch folder;
    ZoPointList points;
    points.ReadGsiFile(folder.Write("survey.gsi", input), true, eZoUnitM);
    return CooOf(points);
}

std::string LogText() {
    ZoPointList images;
    images.Add(ZoPoint(0, 4.5, -2.25, 0.0, 0))->photoId = 9;
    images.Add(ZoPoint(0, -1.5, 3.0, 0.0, 0))->photoId = 10;
    ZoLogItem item(ZoPoint(0, 10.0, 20.0, 30.0, 0), &images, static_cast<eZoMeasureMode>(2), 5);
    item.point.SetId(1700000000);
    return FileOf([&](const std::wstring& file) {
        ZoLogItemList log;
        log.SetFilename(file);
        log.AddItem(item);
    });
}

std::string LocalSystemText() {
    ZoLokalSystemDef system;
    system.id0 = 1;
    system.id1 = 2;
    system.id2 = 3;
    system.id3 = 1;
    system.x = 100.0;
    system.scale[0] = {1, 2, 12.5};
    return TextOf([&](std::ostream& out) { system.Write(out); });
}

std::string PlaneFile() {
    ZoPlaneList planes;
    ZoPlane plane;
    plane.SetId(1);
    plane.SetName(L"Wall");
    plane.C() = 1.0;
    plane.D() = -2.5;
    planes.Add(plane);
    return FileOf([&](const std::wstring& file) { planes.WriteFile(file); });
}

std::string Manipulators(const std::string&) {
    return TextOf([](std::ostream& out) {
        out << s12 << "LAYER" << w4 << 3 << Zoendl << s12 << "EDGES" << ZoBeginBlockNL << p16;
        out << w4 << 1 << w16 << 0.1 << w16 << 1e-20 << Zoendl << w4 << 2 << w16 << 12345678.5 << w16 << -1.0;
        out << ZoEndBlockNL << Zoendl << ZoComment << "the end" << Zoendl;
    });
}

std::string HtmlPage() {
    const HtmlLib html;
    const std::string body = HtmlLib::Font_h1("Survey") + html.Table({{"Point", "x [m]"}, {"17", "1012.345"}}, true);
    return FileOf([&](const std::wstring& file) { HtmlLib::WriteHTMLFile(file, html.Header("Survey"), body); });
}

std::string ReseauText() {
    return TextOf([](std::ostream& out) { Reseau(false).Write(ZoReseauFile::WriteHeaderComment(out)); });
}

std::string DigitalReseaus() {
    ZoReseaufileList list;
    list.Add(Reseau(true));
    return FileOf([&](const std::wstring& file) { list.WriteDigitalCameraFormat(file); });
}

std::string TrafoText() {
    ZoTrafo2d trafo;
    trafo.Set(-18.0, 0.006, 0.0, 12.0, 0.0, -0.006);
    return BlockOf("PRERESTRAFO", trafo);
}

}  // namespace

const FormatWriters& GetFormatWriters() {
    static const FormatWriters writers{
        {"tagged-text", Manipulators},
        {"points", [](auto&) { return CooOf(TwoPoints()); }},
        {"measurement-log", [](auto&) { return LogText(); }},
        {"planes", [](auto&) { return PlaneFile(); }},
        {"cameras-simple", [](auto&) { return CamerasOf(0, false); }},
        {"cameras-full", [](auto&) { return CamerasOf(1, false); }},
        {"cameras-gentri", [](auto&) { return CamerasOf(0, true); }},
        {"observations", [](auto&) { return ObservationsOf(false); }},
        {"observations-gentri", [](auto&) { return ObservationsOf(true); }},
        {"reseau", [](auto&) { return ReseauText(); }},
        {"reseau-digital", [](auto&) { return DigitalReseaus(); }},
        {"planar-trafo", [](auto&) { return TrafoText(); }},
        {"local-system", [](auto&) { return LocalSystemText(); }},
        {"rectification", [](auto&) { return BlockOf("ELSPPLANE", Rectification()); }},
        {"orthophoto", [](auto&) { return OrthophotoText(); }},
        {"panorama", [](auto&) { return PanoramaText(); }},
        {"photo", [](auto&) { return PhotoText(); }},
        {"cloud", [](auto&) { return CloudFile(); }},
        {"cloud-lines", [](auto&) { return LinesOf({ScanPoint()}, true); }},
        {"pts", [](auto& input) { return Imported(input, &ZoPointCloudContainer::ReadPtsFile); }},
        {"xyz", [](auto& input) { return Imported(input, &ZoPointCloudContainer::ReadXYZFile); }},
        {"las", [](auto& input) { return Imported(BytesOf(input), &ZoPointCloudContainer::ReadLasLazFile); }},
        {"archive", [](auto&) { return SealedItem(); }},
        {"gsi", GsiPoints},
        {"table", TableRows},
        {"disto", DistoFiles},
        {"html", [](auto&) { return HtmlPage(); }},
    };
    return writers;
}
