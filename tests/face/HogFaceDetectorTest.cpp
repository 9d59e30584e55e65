#include "FastPaths.h"
#include "DLibWrapper.h"
#include "FaceFixtures.h"
#include "HogFaceDetector.h"


#include <dlib/image_processing.h>
#include <dlib/image_processing/frontal_face_detector.h>
#include <dlib/opencv/cv_image.h>

#include <opencv2/core.hpp>

#include <gtest/gtest.h>

#include <cstring>
#include <sstream>

namespace {

struct Rgb {
    QImage bytes;
    cv::Mat mat;
    RgbPixels pixels;

    explicit Rgb(const QImage& picture)
        : bytes(picture.convertToFormat(QImage::Format_RGB888))
        , mat(bytes.height(), bytes.width(), CV_8UC3, bytes.bits(), size_t(bytes.bytesPerLine()))
        , pixels{bytes.constBits(), bytes.width(), bytes.height(), size_t(bytes.bytesPerLine())}
    {
    }
};

// dlib's detector as shipped, called as the program called it before.
std::vector<HogDetection> stockDetection(const Rgb& photo, double adjustThreshold)
{
    dlib::frontal_face_detector stock = dlib::get_frontal_face_detector();
    std::vector<dlib::rect_detection> found;
    stock(dlib::cv_image<dlib::rgb_pixel>(photo.mat), found, adjustThreshold);
    std::vector<HogDetection> result;
    for (const dlib::rect_detection& d : found)
        result.push_back({d.detection_confidence, d.weight_index, d.rect.left(), d.rect.top(), d.rect.right(),
                          d.rect.bottom()});
    return result;
}

std::string described(const std::vector<HogDetection>& found)
{
    std::ostringstream text;
    for (const HogDetection& d : found)
        text << "[" << d.left << " " << d.top << " " << d.right << " " << d.bottom << " filter " << d.filter << " "
             << d.confidence << "] ";
    return text.str();
}

const dlib::frontal_face_detector& detector()
{
    static const dlib::frontal_face_detector frontal = dlib::get_frontal_face_detector();
    return frontal;
}


} // namespace

// A camera-sized photo has many pyramid levels, made on one core while the
// other scans them: a level's picture must outlive both its scan and the
// making of the next level from it. Three tries, as a fault there is one of
// timing.
TEST(HogFaceDetector, ACameraSizedPhotoHasItsOneFaceFoundEveryTime)
{
    const Rgb photo(portraitHead().scaled(4000, 2656, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    for (int run = 0; run < 3; ++run)
        EXPECT_EQ(detectFaces(detector(), photo.pixels, 0.0).size(), 1u) << "run " << run;
}

// With the threshold lowered, dozens of weak boxes on many levels and all
// five filters go through the sorting and the overlap suppression: the
// order and every confidence must be dlib's.
TEST(HogFaceDetector, FindsExactlyWhatStockDlibFindsInItsOrder)
{
    const QImage pictures[] = {portraitPicture(), twoPortraits(), portraitPicture().mirrored(true, false),
                               QImage(testDataPath("portrait.png")).scaled(300, 220)};
    for (const QImage& picture : pictures) {
        const Rgb photo(picture);
        for (const double adjust : {0.0, -0.6}) {
            const std::vector<HogDetection> stock = stockDetection(photo, adjust);
            EXPECT_EQ(detectFaces(detector(), photo.pixels, adjust), stock) << described(stock);
        }
    }
}

// (1 + 2^-12)² rounds to 1 + 2^-11 before the add, so two roundings give 0
// where a fused multiply-add gives 2^-24.
TEST(HogFaceDetector, ReplicasAreBuiltWithoutFusedMultiplyAdds)
{
    if (!__builtin_cpu_supports("fma"))
        GTEST_SKIP() << "this processor has no fused multiply-add to tempt the compiler";
    volatile float a = 1.0f + 1.0f / 4096, c = -(1.0f + 1.0f / 2048);
    EXPECT_EQ(replicaMultiplyAdd(a, a, c), 0.0f) << "the replicas' files need -ffp-contract=off";
}
