// A real block of 40 photos from ZORV_TEST_DATA: calibration, orientations, object points and their measurements.

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <map>
#include <numeric>
#include <sstream>
#include <vector>

#include <gtest/gtest.h>

#include "zorv/math/line3d.h"
#include "zorv/photo/auto/library_camera.h"
#include "zorv/photo/photo_list.h"

namespace {

const std::filesystem::path kFolder = std::filesystem::path(ZORV_TEST_DATA) / "photogrammetry" / "statue_simple_radial";

struct Measurement {
    ZoPhoto* photo;
    double column;  // from the left edge of the image
    double row;     // from its upper edge
};

struct ObjectPoint {
    ZoPoint3d position;
    std::vector<Measurement> measurements;
};

/// The next line that is no comment.
bool NextLine(std::ifstream& file, std::istringstream& line) {
    std::string text;
    while (std::getline(file, text) && text.starts_with('#')) {
    }
    line = std::istringstream(text);
    return static_cast<bool>(file);
}

class StatueDataset : public testing::Test {
  protected:
    void SetUp() override {
        if (!std::filesystem::exists(kFolder / "images.txt")) GTEST_SKIP() << "no data in " << kFolder;
        ReadObjectPoints();
        ReadCamera();
        ReadPhotos();
        ASSERT_EQ(photos.Count(), 40);
        ASSERT_EQ(objects.size(), 1816u);
    }

    void ReadObjectPoints() {
        std::ifstream file(kFolder / "points3D.txt");
        std::istringstream line;
        while (NextLine(file, line)) {
            unsigned int id = 0;
            double x = 0, y = 0, z = 0;
            line >> id >> x >> y >> z;
            objects[id].position = ZoPoint3d(x, y, z);
        }
    }

    void ReadCamera() {
        std::ifstream file(kFolder / "cameras.txt");
        std::istringstream line;
        ASSERT_TRUE(NextLine(file, line));
        std::string model;
        std::uint64_t width = 0, height = 0;
        line >> camera.id >> model >> width >> height;
        ASSERT_EQ(model, "SIMPLE_RADIAL");
        camera.SetModel(ZorvLibAuto::Camera::eCamModelPinholeSimpleRadial, 1.0, width, height);
        for (double& parameter : camera.params)
            line >> parameter;
        ASSERT_TRUE(line);
    }

    /// Their pixels have the origin at the upper left corner of the upper left pixel, which is where Flipped Digi has
    /// it. Their camera frame has y down and z forwards: y and z change their signs.
    void ReadPhotos() {
        std::ifstream file(kFolder / "images.txt");
        std::istringstream line;
        while (NextLine(file, line)) {
            unsigned int id = 0;
            double w = 0, x = 0, y = 0, z = 0, t[3] = {};
            line >> id >> w >> x >> y >> z >> t[0] >> t[1] >> t[2];
            const double length = std::sqrt(w * w + x * x + y * y + z * z);  // 1 but for the digits in the file
            for (double* part : {&w, &x, &y, &z})
                *part /= length;
            const double cameraFromObject[3][3] = {{1 - 2 * (y * y + z * z), 2 * (x * y - w * z), 2 * (x * z + w * y)},
                                                   {2 * (x * y + w * z), 1 - 2 * (x * x + z * z), 2 * (y * z - w * x)},
                                                   {2 * (x * z - w * y), 2 * (y * z + w * x), 1 - 2 * (x * x + y * y)}};
            ZoMatrix rotation(3, 3);
            ZoVector position(3);
            for (int i = 0; i < 3; ++i) {
                for (int j = 0; j < 3; ++j) {
                    rotation[i + 1][j + 1] = (j == 0 ? 1 : -1) * cameraFromObject[j][i];
                    position[i + 1] -= cameraFromObject[j][i] * t[j];
                }
            }
            auto photo = std::make_unique<ZoPhoto>(id);
            const auto width = static_cast<double>(camera.width);
            const auto height = static_cast<double>(camera.height);
            photo->SetPixelRegion(ZoRegion(0, 0, width, height));
            photo->preTrafo.Set(-width / 2 * kPixel, kPixel, -height / 2 * kPixel, 0.0);
            photo->SetCamera(&camera);
            photo->SetRotAOR(rotation);
            photo->SetPosAOR(position);
            photo->SetHasAOR(true);
            photo->SetActiveFlag(ZoPhoto::kActive);
            photo->SetBikoTransform(eDigiToImage, true);
            ASSERT_TRUE(NextLine(file, line));
            ReadMeasurements(line, *photo);
            photos.Add(photo.release());
        }
    }

    void ReadMeasurements(std::istringstream& line, ZoPhoto& photo) {
        double column = 0, row = 0;
        long id = 0;
        while (line >> column >> row >> id) {
            if (id >= 0) objects.at(static_cast<unsigned int>(id)).measurements.push_back({&photo, column, row});
        }
    }

    static ZoLine3d Ray(const Measurement& measurement) {
        ZoLine3d ray;
        measurement.photo->SetRayStart(ray);
        measurement.photo->CalcRayDirection(ray, measurement.column, measurement.row);
        return ray;
    }

    /// Calls `use` for every measurement.
    template <class Use>
    void ForAll(Use use) {
        for (const auto& [id, object] : objects) {
            for (const Measurement& measurement : object.measurements)
                use(object.position, measurement);
        }
    }

    static constexpr double kPixel = 0.005;  // mm; theirs is not known, and any will do
    ZorvLibAuto::Camera camera;
    ZoPhotoList photos;
    std::map<unsigned int, ObjectPoint> objects;
};

double Quantile(std::vector<double>& sorted, double part) {
    std::sort(sorted.begin(), sorted.end());
    return sorted.at(static_cast<std::size_t>(part * static_cast<double>(sorted.size() - 1)));
}

// The figures come with the dataset and were worked out with its own equations.
TEST_F(StatueDataset, ReprojectionErrorIsTheDatasetsOwn) {
    std::vector<double> errors;
    ForAll([&](const ZoPoint3d& object, const Measurement& measured) {
        ZoPoint3d pixel = object;
        EXPECT_TRUE(ZoBikoTransform(measured.photo, eObjectToDigi, true).Transform(pixel));
        errors.push_back(std::hypot(pixel.x() - measured.column, pixel.y() - measured.row));
        EXPECT_TRUE(measured.photo->IsInPhotoView(ZoPoint(0, object.x(), object.y(), object.z(), 0), true));
    });
    ASSERT_EQ(errors.size(), 7760u);
    const double mean = std::accumulate(errors.begin(), errors.end(), 0.0) / static_cast<double>(errors.size());
    constexpr double kPrinted = 0.005;  // pixels, half of the last digit
    EXPECT_NEAR(Quantile(errors, 0.5), 1.05, kPrinted);
    EXPECT_NEAR(mean, 1.22, kPrinted);
    EXPECT_NEAR(Quantile(errors, 0.95), 2.80, kPrinted);
    EXPECT_NEAR(errors.back(), 3.90, kPrinted);
}

TEST_F(StatueDataset, RaysPassTheirPointsByTheErrorOfThePixel) {
    std::vector<double> misses;  // of the object point, as the angle of a pixel
    ForAll([&](const ZoPoint3d& object, const Measurement& measured) {
        const ZoLine3d ray = Ray(measured);
        misses.push_back(ray.getNormDistance(object) / ray.start.Distance(object) * camera.GetFocalLength());
    });
    // Off the axis a pixel is a smaller angle: by up to cos^2 of the field angle of 17 degrees, and it grows by the
    // distortion's slope, 3 * 0.68 * tan^2 at most.
    EXPECT_NEAR(Quantile(misses, 0.5), 1.05, 0.05);
    EXPECT_LT(misses.back(), 3.90 * 1.1);
}

}  // namespace
