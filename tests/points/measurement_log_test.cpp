#include "zorv/points/measurement_log.h"

#include <ctime>

#include "tests/support/temp_folder.h"
#include "tests/support/written_text.h"
#include <gtest/gtest.h>

#include "zorv/core/reader.h"

namespace {

ZoLogItem Item(int images) {
    ZoPointList measurements;
    for (int i = 0; i < images; ++i) {
        ZoPoint image(0, 10.25 + i, 20.5 + i, 0, 0);
        image.photoId = 5u + static_cast<unsigned int>(i);
        measurements.Add(image);
    }
    ZoLogItem item(ZoPoint(1, 100.5, 200.25, 10, 0), &measurements, eZoMeasureMode(3), 17);
    item.point.id = 1700000000;
    return item;
}

const std::string kHead =
    " 1700000000                 100.5                200.25                    10                        0"
    "                        0                        0    3   17 {";

TEST(MeasurementLog, ItemsHaveOneLineOfColumns) {
    const std::string first = "          5                 10.25                  20.5";
    const std::string second = "          6                 11.25                  21.5";
    EXPECT_EQ(WrittenText(Item(2)), kHead + first + second + "}");
    EXPECT_EQ(WrittenText(Item(0)), kHead + "}");
}

TEST(MeasurementLog, ItemsAreStampedAndAppendedAsTheyCome) {
    const TempFolder folder;
    ZoLogItemList log;
    log.SetFilename(folder.Name("s.mlg"));
    const auto before = static_cast<std::uint32_t>(std::time(nullptr));
    const ZoLogItem* added = log.AddItem(ZoLogItem(ZoPoint(1, 0, 0, 0, 0), nullptr, eZoMeasureMode(2), 4294967295U));
    EXPECT_GE(added->GetPoint().id, before);
    EXPECT_LE(added->GetPoint().id, static_cast<std::uint32_t>(std::time(nullptr)));
    log.AddItem(std::make_unique<ZoLogItem>(Item(200)).release());  // longer than a line of the reader
    log.AddItem(Item(0));

    ZoLogItemList read(log);
    EXPECT_EQ(read.ReadFile(), 1);
    ASSERT_EQ(read.Count(), 6);
    EXPECT_EQ(std::tuple(read.Get(3)->GetMeasureValue(), read.Get(3)->GetMeasureMode()), std::tuple(4294967295U, 2));
    ASSERT_EQ(read.Get(4)->GetImagePoints().Count(), 200);
    EXPECT_EQ(read.Get(4)->GetImagePoints().Last()->photoId, 204u);
    EXPECT_EQ(read.Get(4)->GetImagePoints().Last()->y, 219.5);
    EXPECT_TRUE(read.Last()->GetImagePoints().IsEmpty());
    EXPECT_EQ(WrittenText(log), folder.Read("s.mlg"));

    log.SetFilename(folder.Name("none/s.mlg"));
    added = log.AddItem(Item(1));
    EXPECT_EQ(added, log.Last());
}

struct Listener : LinkHdl {
    long Hear(ZoNotifyEvent* event) {
        heard += std::to_string(event->kind);
        return 0;
    }
    std::string heard;
};

TEST(MeasurementLog, NotificationsComeBackOnEveryWayOut) {
    const TempFolder folder;
    ZoLogItemList log;
    Listener listener;
    ZoObserver observer(&log, Link(&listener, &Listener::Hear));
    // Two items and the end of the file; an item that breaks off.
    log.ReadFile(folder.Write("a.mlg", kHead + "}\n" + kHead + " 5 1 2}\n"));
    EXPECT_EQ(std::tuple(listener.heard, log.Count()), std::tuple("111", 2));
    log.ReadFile(folder.Write("b.mlg", kHead + " 5 1 x}\n" + kHead + "}\n"));
    EXPECT_EQ(std::tuple(listener.heard, log.Count()), std::tuple("1111", 2));
    EXPECT_TRUE(log.IsNotifyEnabled());
}

TEST(MeasurementLog, CoordinateFilesNumberThePointsAnew) {
    const TempFolder folder;
    ZoLogItemList log;
    EXPECT_EQ(log.GetDefaultCooFilename(), L"MLG.coo");
    EXPECT_EQ(log.WriteAsCooFile(folder.Name("e.coo"), 1), 0);
    EXPECT_TRUE(std::filesystem::exists(folder.path / "e.coo"));
    for (int i = 0; i < 3; ++i)
        log.Add(Item(0));
    EXPECT_EQ(log.WriteAsCooFile(folder.Name("a.coo"), 100), 3);
    const std::string rest = "    0                 100.5                200.25                    10";
    EXPECT_EQ(folder.Read("a.coo"), "        100" + rest + "\n        101" + rest + "\n        102" + rest);
    EXPECT_EQ(log.Last()->point.id, 1700000000u);
    EXPECT_EQ(log.WriteAsCooFile(folder.Name("none/a.coo"), 1), 0);
    log.SetFilename(folder.Name("survey.mlg"));
    EXPECT_EQ(log.GetDefaultCooFilename(), folder.Name("survey_MLG.coo"));
}

}  // namespace
