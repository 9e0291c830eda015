#include "zorv/core/disto_package.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/temp_folder.h"
#include <gtest/gtest.h>

namespace {

/// A folder that holds packages; the current directory comes back with its end.
class DistoPackage : public ::testing::Test {
  protected:
    ~DistoPackage() override { std::filesystem::current_path(before); }

    using Items = std::vector<std::pair<std::wstring, std::string>>;

    std::wstring Make(const std::string& file, const Items& items) const {
        const HZIP zip = CreateZip(folder.Name(file).c_str(), nullptr);
        for (const auto& [name, bytes] : items)
            EXPECT_EQ(ZipAdd(zip, name.c_str(), bytes.data(), static_cast<unsigned int>(bytes.size())), 0U);
        EXPECT_EQ(CloseZipZ(zip), 0U);
        return folder.Name(file);
    }

    std::ptrdiff_t CountFiles() const {
        return std::count_if(std::filesystem::recursive_directory_iterator(folder.path), {},
                             [](const auto& entry) { return entry.is_regular_file(); });
    }

    const TempFolder folder;
    const std::filesystem::path before = std::filesystem::current_path();
};

}  // namespace

TEST_F(DistoPackage, GivesStreamsAndName) {
    const std::wstring file = Make("Kirche.cmi", {{L"01/00_InputVideo/stream/stream0.mp4", "first"},
                                                  {L"00_InputVideo\\stream1.mp4", "second"},
                                                  {L"00_InputVideo/stream.mp4", "tail too short"},
                                                  {L"00_InputVideo/readme.txt", "no stream"},
                                                  {L"01_Other/stream2.mp4", "no video"},
                                                  {L"meta/DistoFile.xml",
                                                   "\xef\xbb\xbf<Disto><Other>x</Other><In><Name>B\xc3\xb6gen &amp; "
                                                   "Gew\xc3\xb6lbe</Name></In><Name>second</Name></Disto>"}});
    const ZoLeicaDistoBlk3dCmiUnzipper package(file);
    EXPECT_TRUE(package.HasDistoFile());
    EXPECT_EQ(package.GetName(), L"B\u00f6gen & Gew\u00f6lbe");
    const std::wstring target = folder.path.wstring() + L"\\ZORVSCOPE_10\\Kirche\\";
    EXPECT_EQ(package.GetExtractedFiles(),
              (std::vector<std::wstring>{target + L"stream0.mp4", target + L"stream1.mp4"}));
    EXPECT_EQ(folder.Read("ZORVSCOPE_10/Kirche/stream0.mp4"), "first");
    EXPECT_EQ(folder.Read("ZORVSCOPE_10/Kirche/stream1.mp4"), "second");
    EXPECT_EQ(CountFiles(), 3);
    EXPECT_TRUE(std::filesystem::equivalent(std::filesystem::current_path(), folder.path));

    // The same again by a relative name.
    ZoLeicaDistoBlk3dCmiUnzipper relative(L"Kirche.cmi");
    EXPECT_EQ(relative.GetExtractedFiles().size(), 2U);
}

TEST_F(DistoPackage, NamesThatLeadOutsideAreNotWritten) {
    const std::string inner = "x/00_InputVideo/stream/";
    Items items;
    for (const char* tail : {"../../../stream000.mp4", "stream/../../../../x.mp4", "stream:/secret.mp4",
                             "..\\..\\..\\stream001.mp4", "stream\\..\\..\\..\\evil.mp4", "/stream000//abs.mp4"}) {
        items.emplace_back(std::filesystem::path(inner + tail).wstring(), "bad");
    }
    items.emplace_back(L"/00_InputVideo/stream000.mp4", "absolute");
    items.emplace_back(L"C:/00_InputVideo/stream000.mp4", "with a drive");
    items.emplace_back(L"../00_InputVideo/stream000.mp4", "above");
    const ZoLeicaDistoBlk3dCmiUnzipper package(Make("evil.cmi", items));
    EXPECT_TRUE(package.GetExtractedFiles().empty());
    EXPECT_EQ(CountFiles(), 1) << "more than the package itself";
}

TEST_F(DistoPackage, BadPackagesGiveNothing) {
    ZoLeicaDistoBlk3dCmiUnzipper none(L"");
    EXPECT_FALSE(none.UnzipCmiFile());
    EXPECT_FALSE(ZoLeicaDistoBlk3dCmiUnzipper(folder.Name("missing.cmi")).UnzipCmiFile());
    EXPECT_FALSE(ZoLeicaDistoBlk3dCmiUnzipper(folder.Write("text.cmi", "no ZIP")).UnzipCmiFile());

    ZoLeicaDistoBlk3dCmiUnzipper bare(Make("bare.cmi", {{L"x", "y"}}));
    EXPECT_TRUE(bare.UnzipCmiFile() && !bare.HasDistoFile());
    EXPECT_EQ(bare.GetName(), L"");

    std::string nested;
    for (int i = 0; i < 1000000; ++i)
        nested += "<a>";
    for (const std::string& xml : {std::string(), std::string("<Name"), nested, nested + "<Name>deep</Name>"}) {
        const ZoLeicaDistoBlk3dCmiUnzipper package(Make("odd.cmi", {{L"DistoFile.xml", xml}}));
        EXPECT_TRUE(package.HasDistoFile());
        EXPECT_EQ(package.GetName(), xml.ends_with("</Name>") ? L"deep" : L"");
    }
}
