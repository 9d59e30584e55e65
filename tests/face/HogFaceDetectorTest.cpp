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

// Noise of the given size, as an RGB picture.
QImage noise(int width, int height)
{
    QImage picture(width, height, QImage::Format_RGB888);
    cv::Mat bytes(height, width * 3, CV_8UC1, picture.bits(), size_t(picture.bytesPerLine()));
    cv::randu(bytes, 0, 256);
    return picture;
}

} // namespace

// Sizes around every edge case of dlib's resize: one pixel, fewer columns
// than its four-column step, widths where the last step is cut short; the
// vector path and the scalar one (taken without AVX2) each.
TEST(HogFaceDetector, PyramidLevelIsDlibsToTheByte)
{
    struct Paths {
        explicit Paths(bool fast) { setFastPaths(fast); }
        ~Paths() { setFastPaths(true); }
    };
    const QImage pictures[] = {noise(1, 1),     noise(2, 3),     noise(5, 7),       noise(13, 4),
                               noise(64, 48),   noise(333, 211), noise(1001, 757),  portraitPicture().convertToFormat(QImage::Format_RGB888),
                               noise(96, 1600)};
    for (const bool fast : {true, false})
    for (const QImage& picture : pictures) {
        const Paths paths(fast);
        const cv::Mat mat(picture.height(), picture.width(), CV_8UC3, const_cast<uchar*>(picture.constBits()),
                          size_t(picture.bytesPerLine()));
        dlib::array2d<dlib::rgb_pixel> stock, ours;
        dlib::pyramid_down<6>()(dlib::cv_image<dlib::rgb_pixel>(mat), stock);
        pyramidDown({picture.constBits(), picture.width(), picture.height(), size_t(picture.bytesPerLine())}, ours);
        ASSERT_EQ(ours.nr(), stock.nr()) << picture.width() << "x" << picture.height();
        ASSERT_EQ(ours.nc(), stock.nc()) << picture.width() << "x" << picture.height();
        long differing = 0;
        for (long r = 0; r < stock.nr(); ++r)
            for (long c = 0; c < stock.nc(); ++c)
                differing += stock[r][c] != ours[r][c];
        EXPECT_EQ(differing, 0) << picture.width() << "x" << picture.height() << (fast ? ", vectors" : ", scalar");
    }
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
