// The two text forms of a reseau.

#include <ostream>
#include <string_view>

#include "zorv/core/block_keywords.h"
#include "zorv/core/number_format.h"
#include "zorv/core/path_tools.h"
#include "zorv/core/reader.h"
#include "zorv/core/record_text.h"
#include "zorv/core/text_writer.h"
#include "zorv/math/polygon.h"
#include "zorv/photo/reseau_file.h"

namespace {

using zorv::detail::FieldWidth;
using zorv::detail::FiniteOrZero;
using zorv::detail::ReadInBraces;

constexpr int kTextWidth = 14;
constexpr int kSizePrecision = 6;

constexpr std::string_view kHeader =
    "; \n"
    "; ZORVSCOPE 10 Version 9.050 Reseau File\n"
    "; \n"
    "; File Format:\n"
    "; \"Infotext\"         ... Commenttext displayed in a graphical view\n"
    "; { x1, y1, x2, y2 } ... Size of Photo in Bikos [mm]\n"
    "; { x1, y1, x2, y2 } ... Pos. and size of Commenttext\n"
    "; { Id, x, y, Code } ... List of Reseaucrosses\n"
    ";             Code  Description\n"
    ";              0 .. Small Reseaucross\n"
    ";              1 .. Big Reseaucross\n"
    ";              2 .. Not really a cross, a Corner of the Picture\n"
    "; \n"
    "\n";

const TZoFormatTable<eZoPointRWMask>& MarkColumns() {
    static const eZoPointRWMask kinds[] = {eZoRWId, eZoRWX, eZoRWY, eZoRWCodeNumber, eZoRWEnd};
    static const TZoFormatTable<eZoPointRWMask> table(kinds);
    return table;
}

}  // namespace

int ZoReseauFile::ReadFile(const std::wstring& fileName) {
    name = ZoGetFilename(fileName);
    ZoReader reader(fileName);
    reader.RegisterObject(ZoReaderObject(Link(this, &ZoReseauFile::Read)));
    reader.DoProcess(false);
    reader.LogErrorsToApplicationLogger();
    return 1;
}

long ZoReseauFile::Read(ZoReaderObject* object) {
    ZoStreamParser in = object->GetStreamParser();
    in >> comment;
    ReadInBraces(object, [&] { photoRegion.Read(object); });
    ReadInBraces(object, [&] { boxRegion.Read(object); });
    valid = true;
    try {
        while (true) {
            ReadInBraces(object, [&] { crossList.Add(ZoPoint(object, MarkColumns())); });
        }
    } catch (const ZoParserStatus& status) {
        if (status.status != eZoParserStatusEof) throw;
    }
    return 1;
}

std::ostream& ZoReseauFile::WriteHeaderComment(std::ostream& stream) {
    return stream << kHeader;
}

std::ostream& ZoReseauFile::Write(std::ostream& stream) const {
    zorv::detail::RecordText text;
    text.Quoted(comment).WriteTo(stream);
    stream << Zoendl << ZoBeginBlock;
    photoRegion.Write(stream) << ZoEndBlock << Zoendl << ZoBeginBlock;
    boxRegion.Write(stream) << ZoEndBlock << '\n' << Zoendl;
    for (const ZoPoint* mark = crossList.First(); mark; mark = mark->NextConst()) {
        stream << ZoBeginBlock;
        mark->Write(stream, MarkColumns()) << ZoEndBlock << '\n';
    }
    return stream;
}

long ZoReseauFile::ReadDigitalCameraFormat(ZoReaderObject* object) {
    std::wstring readName;
    unsigned int readSubId = 0;
    std::wstring readComment;
    int pixelWidth = 0;
    int pixelHeight = 0;
    double width = 0.0;
    double height = 0.0;
    zorv::detail::TakeBlockBegin(object);
    ZoStreamParser in = object->GetStreamParser();
    in >> readName >> readSubId >> readComment >> pixelWidth >> pixelHeight >> width >> height;
    name = readName;
    subId = readSubId;
    comment = readComment;
    CreateDigitalFormat(pixelWidth, pixelHeight, width, height);
    return 1;
}

std::ostream& ZoReseauFile::WriteDigitalCameraFormat(std::ostream& stream) const {
    if (crossList.Count() != kDigitalMarks) return stream;
    const ZoPolygon outline(&crossList, ZOPolygon2d);
    zorv::detail::RecordText quoted;
    zorv::detail::RecordText line;
    line.Text("{ ").Left(kTextWidth, quoted.Quoted(name).View()).Char(' ').Field(FieldWidth::w4, subId).Char(' ');
    quoted.Clear();
    line.Left(kTextWidth, quoted.Quoted(comment).View()).Char(' ');
    line.Field(FieldWidth::w6, exifPixelWidth).Char(' ').Field(FieldWidth::w6, exifPixelHeight).Char(' ');
    line.Field(FieldWidth::w6, FiniteOrZero(outline.Width()), kSizePrecision).Char(' ');
    line.Field(FieldWidth::w6, FiniteOrZero(outline.Height()), kSizePrecision).Text("  }\n").WriteTo(stream);
    return stream;
}
