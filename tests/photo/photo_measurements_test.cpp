#include <gtest/gtest.h>

#include "zorv/photo/photo.h"
#include "zorv/photo/photo_list.h"

namespace {

/// Half a mm to the pixel, the principal point at (1, 2) mm.
void SetUpCamera(ZoPhoto& photo) {
    photo.mainTrafo.Set(0, 0.5, 0, 0);
    photo.camera = ZoCamera(3, 10.0, 1.0, 2.0, 0.0, 0.0, 0.0, "");
}

std::string Text(const ZoPointList& list) {
    std::string text;
    for (const ZoPoint* point = list.First(); point; point = point->NextConst())
        text += std::to_string(point->GetId()) + ':' + std::to_string(static_cast<int>(point->x)) + ',' +
                std::to_string(static_cast<int>(point->y)) + ' ';
    return text;
}

TEST(PhotoMeasurements, ComeInConverted) {
    ZoPhoto photo(7);
    SetUpCamera(photo);
    ZoPoint* const given = std::make_unique<ZoPoint>(1, 20, 40, 0, 0).release();
    EXPECT_EQ(photo.AddImo(given, eDigiToBiko), given);
    EXPECT_EQ(given->photoId, 7u);
    photo.AddImoFast(ZoPoint(1, 2, 4, 0, 0), eDigiToBiko);
    EXPECT_EQ(Text(photo.imoList), "1:10,20 1:1,2 ");
    photo.DestroyImo();
    photo.AddImo(ZoPoint(1, 20, 40, 0, 0), eDigiToBiko);
    photo.AddImo(ZoPoint(1, 22, 44, 0, 0), eDigiToBiko);
    EXPECT_EQ(Text(photo.imoList), "1:11,22 ") << "in the place of the first";
    EXPECT_EQ(photo.GetFreeBikoId(), ZoPhoto(1).GetFreeBikoId()) << "only the Measure list counts";
    photo.AddMeasure(ZoPoint(1, 20, 40, 0, 0), eDigiToImage);
    photo.AddMeasure(ZoPoint(2, 20, 40, 0, 0), static_cast<eConvertBikoMode>(0));
    EXPECT_EQ(Text(photo.measureList), "1:9,18 2:20,40 ");
    EXPECT_EQ(photo.GetFreeBikoId(), 3u);
    photo.ConvertMeasure(eDigiToBiko);
    EXPECT_EQ(Text(photo.measureList), "1:4,9 2:10,20 ");
    EXPECT_EQ(photo.AddImo(nullptr, eDigiToBiko), nullptr);
}

TEST(PhotoMeasurements, GoBetweenTheLists) {
    ZoPhoto photo(7);
    SetUpCamera(photo);
    for (const unsigned int id : {1u, 2u, 3u})
        photo.imoList.Add(ZoPoint(id, 10.0 * id, 20, 0, 0));
    photo.CopyImoToMeasure(2, eBikoToImage);
    photo.MoveImoToMeasure(3, eBikoToImage);
    photo.MoveImoToMeasure(99, eBikoToImage);
    EXPECT_EQ(Text(photo.imoList), "1:10,20 2:20,20 ");
    EXPECT_EQ(Text(photo.measureList), "2:19,18 3:29,18 ");
    photo.MoveMeasureToImo(3, eDigiToBiko);
    photo.CopyMeasureToImo(99, eDigiToBiko);
    EXPECT_EQ(Text(photo.imoList), "1:10,20 2:20,20 3:14,9 ");

    const std::set<unsigned int> chosen = {1, 3, 8};
    EXPECT_EQ(photo.CopyImoToMeasure(false, &chosen), 2);
    EXPECT_EQ(Text(photo.measureList), "2:19,18 1:10,20 3:14,9 ");
    EXPECT_EQ(photo.CopyImoToMeasure(true, nullptr), 3);
    EXPECT_EQ(Text(photo.measureList), Text(photo.imoList));
    EXPECT_EQ(photo.LastMeasure()->spare2, reinterpret_cast<std::uintptr_t>(photo.LastImo()));

    photo.SetMeasureSorted();
    photo.SetImoSorted();
    photo.SetPhotoIdToImoList();
    EXPECT_EQ(photo.FindSortedImo(2), photo.FindImo(2));
    EXPECT_EQ(photo.FindSortedImo(2)->photoId, 7u);
    EXPECT_EQ(photo.FindSortedImo(2)->spare1, reinterpret_cast<std::uintptr_t>(&photo));
    EXPECT_EQ(photo.FindSortedMeasure(9), nullptr);
    photo = ZoPhoto(8);
    EXPECT_EQ(photo.CountImo() + photo.CountMeasure(), 0);
    EXPECT_EQ(photo.FindSortedImo(2), nullptr) << "the view goes with its points";
}

TEST(PhotoMeasurements, ResidualsAreCounted) {
    ZoPhoto photo(1);
    SetUpCamera(photo);
    const double residuals[][2] = {{0.3, 0.4}, {0.6, 0.8}, {0, -2}};
    for (const auto& [x, y] : residuals) {
        ZoPoint* const point = photo.imoList.Add(ZoPoint());
        point->residualX = x;
        point->residualY = y;
    }
    photo.UpdateImoStat(9, 9, 1);
    photo.UpdateImoStatFromImoList(2.0);  // pixels, of half a mm
    EXPECT_EQ(photo.GetImoStatInside(), 1u) << "strictly less than 1 mm";
    EXPECT_EQ(photo.GetImoStatOutside(), 2u);
    EXPECT_DOUBLE_EQ(photo.GetImoStatSum(), 3.5);
    EXPECT_EQ(photo.GetImoStatMax(), 2.0);
    photo.SetImoCountCache();
    EXPECT_EQ(photo.GetImoCountCache(), 3u);
    photo.UpdateImoStatFromList(nullptr, 1.0);
    EXPECT_EQ(photo.GetImoStatOutside() + photo.GetImoStatSum() + photo.GetImoStatMax(), 0);

    photo.GetCommonImoByPhoto() = {{11, 5}, {12, 50}, {13, 7}};
    photo.CreateNeighbourPhotosMapFromCommonImo();
    std::string order;
    for (const auto& [common, id] : photo.GetNeighbourPhotos())
        order += std::to_string(id) + ' ';
    EXPECT_EQ(order, "12 13 11 ");
}

TEST(PhotoMeasurements, RectificationsAreFoundByPlaceAndState) {
    ZoPhoto photo(1);
    photo.IncLastElspId(4);
    ZoElspTrafo left;
    for (const auto& [x, y] : {std::pair{0, 0}, std::pair{10, 0}, std::pair{10, 10}, std::pair{0, 10}})
        left.region.AddPoint(ZoPoint(0, x, y, 0, 0));
    ZoElspTrafo* const first = photo.AddElspTrafo(left, true);
    ZoElspTrafo* const everywhere = photo.AddElspTrafo(ZoElspTrafo(), true);
    EXPECT_EQ(first->GetId() * 10 + everywhere->GetId(), 56u);
    first->SetActive(true);
    everywhere->SetActive(false);
    ZoPoint inside(0, 5, 5, 0, 0), outside(0, 50, 5, 0, 0);
    EXPECT_EQ(photo.GetElspTrafo(&inside, nullptr, false), first);
    EXPECT_EQ(photo.GetElspTrafo(&inside, first, false), everywhere);
    EXPECT_EQ(photo.GetElspTrafo(&inside, first, true), nullptr);
    EXPECT_EQ(photo.GetElspTrafo(&outside, nullptr, false), everywhere);
    EXPECT_EQ(photo.CountElspTrafo(&inside, false), 2);
    EXPECT_EQ(photo.CountElspTrafo(&outside, true), 0);
    delete photo.SubtractElspTrafo(6);
    EXPECT_EQ(photo.AddElspTrafo(left, true)->GetId(), 7u) << "a number is not given twice";
}

}  // namespace
