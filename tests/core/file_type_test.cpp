#include "zorv/core/file_type.h"

#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>

namespace {

TEST(FileType, FirstTokenDecidesWhereTheTypeHasARule) {
    const TempFolder folder;
    struct Row {
        std::string name, content;
        eZorvFiletype byExtension, validated;
    };
    for (const Row& row : {
             Row{"a.coo", "; points\n 17 1 2.5 3 4\n", eZorvFileCoo, eZorvFileCoo},
             Row{"b.CoO2", "-3", eZorvFileCoo2, eZorvFileCoo2},
             Row{"c.coo", "", eZorvFileCoo, eZorvFileCoo},
             Row{"d.coo", "; nothing but a comment\n", eZorvFileCoo, eZorvFileCoo},
             Row{"e.coo", "POINTS 1", eZorvFileCoo, eZorvFileNone},
             Row{"f.imo", "1.5", eZorvFileImo, eZorvFileNone},
             Row{"g.pro", "PROJECT {", eZorvFilePro, eZorvFilePro},
             Row{"h.atimo", "{", eZorvFileAtimo, eZorvFileNone},
             Row{"i.sip", "{ 1", eZorvFileSip, eZorvFileSip},
             Row{"j.dres", "{", eZorvFileDres, eZorvFileDres},
             Row{"k.res", "\"name\" 1", eZorvFileRes, eZorvFileRes},
             Row{"l.res", "\"open", eZorvFileRes, eZorvFileNone},
             Row{"m.aor", "\x01\xff 1", eZorvFileAor, eZorvFileNone},
             Row{"n.log", "", eZorvFileLog, eZorvFileNone},
             Row{"o.zip", "PK", eZorvFileZip, eZorvFileNone},
             Row{"Höhe €.AOB", "5", eZorvFileAob, eZorvFileAob},
             Row{"q.pixelimo", "1", eZorvFilePixelImo, eZorvFileNone},
         }) {
        const ZoDetectZorvFiles detected(folder.Write(row.name, row.content));
        EXPECT_EQ(detected.DetectByExtension(), row.byExtension) << row.name;
        EXPECT_EQ(detected.IsValidZorvFile(), row.validated) << row.name;
    }
}

TEST(FileType, SomeTypesAreValidByTheirNameAlone) {
    for (const wchar_t* extension : {L"ProX", L"autopt", L"korrel", L"ply", L"pts", L"xyz", L"las", L"laz", L"e57",
                                     L"zoptc", L"gsi", L"xml", L"txt", L"csv", L"cmi", L"jpg"}) {
        const ZoDetectZorvFiles detected((std::wstring(L"no\\such\\file.") + extension).c_str());
        EXPECT_EQ(GetZoExtension(detected.IsValidZorvFile()), std::wstring(L".") + extension);
        EXPECT_EQ(detected.byExtension, detected.validated);
    }
    EXPECT_EQ(GetZoExtension(eZorvFileZoptc), L".zoptc");
    EXPECT_EQ(GetZoExtension(eZorvFileNone), L"");
    EXPECT_EQ(GetZoExtension(static_cast<eZorvFiletype>(-1)), L"");
}

TEST(FileType, UnknownAndMissingFilesAreNoType) {
    const TempFolder folder;
    ZoDetectZorvFiles detected(folder.Name("missing.coo"));
    EXPECT_EQ(std::tuple(detected.byExtension, detected.validated), std::tuple(eZorvFileCoo, eZorvFileNone));
    for (const wchar_t* name : {L"README", L"a.b\\c", L"x.docx", L"x.", L""}) {
        detected.Detector(folder.Write("a.csv", ""));
        EXPECT_EQ(detected.validated, eZorvFileCsv);
        detected.Detector(name);
        EXPECT_EQ(std::tuple(detected.byExtension, detected.validated), std::tuple(eZorvFileNone, eZorvFileNone));
    }
    std::filesystem::create_directory(folder.path / "folder.coo");
    detected.Detector(folder.Name("folder.coo"));
    EXPECT_EQ(detected.validated, eZorvFileNone);
}

}  // namespace
