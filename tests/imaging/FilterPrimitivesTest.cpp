#include "FilterPrimitives.h"
#include "Picture.h"

#include <QPainter>

#include <opencv2/imgproc.hpp>

#include <gtest/gtest.h>

namespace {

using Bytes = std::array<uchar, 4>;

Bytes bytesAt(const QImage& picture, int x, int y)
{
    const uchar* p = picture.constScanLine(y) + 4 * x;
    return {p[0], p[1], p[2], p[3]};
}

void setBytes(QImage& picture, int x, int y, Bytes bytes)
{
    std::copy(bytes.begin(), bytes.end(), picture.scanLine(y) + 4 * x);
}

QImage opaque(QSize size, QColor colour)
{
    QImage picture = makePicture(size);
    picture.fill(colour);
    return picture;
}

QImage colourfulPicture()
{
    QImage picture = makePicture({64, 48});
    QPainter painter(&picture);
    QLinearGradient gradient(0, 0, 64, 48);
    gradient.setColorAt(0, QColor(200, 40, 30));
    gradient.setColorAt(0.5, QColor(30, 180, 60));
    gradient.setColorAt(1, QColor(20, 50, 220));
    painter.fillRect(picture.rect(), gradient);
    return picture;
}

} // namespace

// Small discs are filtered in bands on both cores: every radius must give
// the bytes of one filter over the whole padded picture.
TEST(Blurs, DiscBlurOfEveryRadiusEqualsOneFilterOverTheWholePicture)
{
    QImage noise = makePicture({301, 203});
    cv::Mat bytes(noise.height(), noise.width() * 4, CV_8UC1, noise.bits(), size_t(noise.bytesPerLine()));
    cv::randu(bytes, 0, 256);
    for (int y = 0; y < noise.height(); ++y) // premultiplied: colour within alpha
        for (uchar* p = noise.scanLine(y); p < noise.scanLine(y) + 4 * noise.width(); p += 4)
            for (int c = 0; c < 3; ++c)
                p[c] = std::min(p[c], p[3]);
    for (const float radius : {0.7f, 1.0f, 2.5f, 4.0f, 5.0f, 6.0f, 9.0f, 40.0f}) {
        const int reach = int(std::ceil(radius));
        cv::Mat disc(2 * reach + 1, 2 * reach + 1, CV_32F);
        for (int y = -reach; y <= reach; ++y)
            for (int x = -reach; x <= reach; ++x)
                disc.at<float>(y + reach, x + reach) = float(x * x + y * y) <= radius * radius ? 1.0f : 0.0f;
        disc /= cv::sum(disc)[0];
        QImage expected = makePicture(noise.size() + QSize(2 * reach, 2 * reach));
        cv::Mat padded(expected.height(), expected.width(), CV_8UC4, expected.bits(), size_t(expected.bytesPerLine()));
        cv::copyMakeBorder(cv::Mat(noise.height(), noise.width(), CV_8UC4, noise.bits(), size_t(noise.bytesPerLine())),
                           padded, reach, reach, reach, reach, cv::BORDER_CONSTANT, cv::Scalar::all(0));
        cv::filter2D(padded, padded, -1, disc, cv::Point(-1, -1), 0, cv::BORDER_CONSTANT);
        EXPECT_EQ(imageBlurCheek(noise, radius), expected) << "radius " << radius;
    }
}

TEST(TonalConversions, BlackAndWhiteWeighsRedGreenAndBlueByRec709)
{
    // ((Y - 0.5) × 1.1 + 0.5) × 2^0.7 with Y = 0.2126, 0.7152, 0.0722.
    const auto grey = [](QColor colour) { return bytesAt(imageBlackAndWhite(opaque({1, 1}, colour)), 0, 0)[0]; };
    EXPECT_EQ(grey(Qt::red), 76);
    EXPECT_EQ(grey(Qt::green), 255) << "1.197, clamped";
    EXPECT_EQ(grey(Qt::blue), 12);
    QImage halfRed = makePicture({1, 1});
    setBytes(halfRed, 0, 0, {128, 0, 0, 128});
    EXPECT_NEAR(bytesAt(imageBlackAndWhite(halfRed), 0, 0)[0], 38, 1) << "the same grey, premultiplied";
}

TEST(MaskCut, BlackKeepsWhiteRemovesGreyKeepsPart)
{
    const QImage photo = colourfulPicture();
    EXPECT_EQ(maskImage(photo, opaque(photo.size(), Qt::black)), photo);

    const QImage removed = maskImage(photo, opaque(photo.size(), Qt::white));
    ASSERT_EQ(removed.size(), photo.size());
    EXPECT_EQ(bytesAt(removed, 10, 10), (Bytes{0, 0, 0, 0}));

    const Bytes half = bytesAt(maskImage(opaque({1, 1}, QColor(200, 100, 0)), opaque({1, 1}, QColor(128, 128, 128))), 0, 0);
    EXPECT_EQ(half, (Bytes{100, 50, 0, 127}));
}

TEST(Contracts, BrokenPromiseStopsWithTheOffendingValues)
{
#ifdef BELLAVENOR_CHECK_CONTRACTS
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    QImage dst = makePicture({4, 4});
    EXPECT_DEATH(drawOver(dst, makePicture({3, 5})), "drawOver: .*src QSize\\(3, 5\\), dst QSize\\(4, 4\\)");
    EXPECT_DEATH(imageReplaceGreenWithOriginal(makePicture({2, 2}), makePicture({2, 3}), makePicture({2, 3})),
                 "marker QSize\\(2, 2\\), base QSize\\(2, 3\\)");
#else
    GTEST_SKIP() << "contracts are checked in debug builds and in scripts/sanitize.sh";
#endif
}
