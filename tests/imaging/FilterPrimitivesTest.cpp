#include "FilterPrimitives.h"
#include "FrequencyHeal.h"
#include "Picture.h"

#include <QPainter>

#include <cmath>
#include <numeric>

#include <opencv2/imgproc.hpp>

#include <gtest/gtest.h>


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

// A healed disc carries the texture it is given fully near its edge and
// fades it out over the fade, so no hard ring shows; where the caller's
// mask says no, nothing changes.
TEST(FrequencyHeal, TheTextureFadesOutFromTheDiscsEdgeAndKeepsOutOfTheMask)
{
    QImage picture = makePicture({130, 80});
    picture.fill(QColor(150, 150, 150));
    for (int y = 0; y < 80; ++y) // noise to take the texture from, right of the disc
        for (int x = 57; x < 130; ++x)
            if ((x * 7 + y * 13) % 5 < 2)
                picture.setPixelColor(x, y, QColor(190, 190, 190));
    QPainter(&picture).fillRect(QRect(20, 20, 30, 30), QColor(150, 150, 150));
    const QImage before = picture.copy();
    healDisc(picture, {40, 40}, 10, 8, QPointF(90, 40), [](QPointF at) { return at.y() < 46; });
    const auto spread = [&](double from, double to) { // of the red over an annulus above the centre
        std::vector<int> reds;
        for (int y = 20; y < 40; ++y)
            for (int x = 20; x < 60; ++x)
                if (const double d = std::hypot(x - 40, y - 40); d >= from && d < to)
                    reds.push_back(qRed(picture.pixel(x, y)));
        const double mean = std::accumulate(reds.begin(), reds.end(), 0.0) / double(reds.size());
        return std::sqrt(std::accumulate(reds.begin(), reds.end(), 0.0, [&](double sum, int r) { return sum + (r - mean) * (r - mean); }) / double(reds.size()));
    };
    EXPECT_GT(spread(10, 12.5), 3 * spread(15.5, 18)) << "texture at the edge, nearly none at the fade's end";
    EXPECT_GT(spread(13.5, 14.5), 0.62 * spread(10, 12.5)) << "half way through the fade the grain moved in keeps its strength";
    for (int x = 20; x < 60; ++x)
        EXPECT_EQ(picture.pixel(x, 47), before.pixel(x, 47)) << "outside the mask";
}

// An area healed under its own texture parted at a fine grain loses the
// spot within it and keeps the grain around it; parted at the shading's
// scale, the spot would come back with the texture.
TEST(FrequencyHeal, OwnTextureFinerThanTheGrainKeepsThePoresNotTheSpot)
{
    cv::Mat red(90, 90, CV_32F), middle = cv::Mat::zeros(90, 90, CV_8U), around = middle.clone(), area = middle.clone();
    for (int y = 0; y < 90; ++y)
        for (int x = 0; x < 90; ++x) // pores, and a spot 60 levels deep in the middle
            red.at<float>(y, x) = 170 + ((x * 7 + y * 13) % 5 < 2 ? 12 : 0) - float(60 * std::exp(-(std::pow(x - 45, 2) + std::pow(y - 45, 2)) / 18.0));
    QImage picture = makePicture({90, 90});
    for (int y = 0; y < 90; ++y)
        for (int x = 0; x < 90; ++x)
            picture.setPixelColor(x, y, QColor::fromRgb(int(red.at<float>(y, x)), int(red.at<float>(y, x)) - 20, int(red.at<float>(y, x)) - 30));
    cv::circle(area, {45, 45}, 10, 255, cv::FILLED);
    healArea(picture, area, {0, 0}, 4, 5, QPoint(0, 0), [](QPointF) { return true; }, 1);
    cv::Mat healed(90, 90, CV_32F), grain;
    for (int y = 0; y < 90; ++y)
        for (int x = 0; x < 90; ++x)
            healed.at<float>(y, x) = float(qRed(picture.pixel(x, y)));
    cv::circle(middle, {45, 45}, 4, 255, cv::FILLED);
    cv::circle(around, {45, 45}, 30, 255, cv::FILLED);
    cv::circle(around, {45, 45}, 20, 0, cv::FILLED);
    EXPECT_LT(std::abs(cv::mean(healed, middle)[0] - cv::mean(red, around)[0]), 6) << "the spot is gone";
    cv::absdiff(healed(cv::Rect(1, 0, 89, 90)), healed(cv::Rect(0, 0, 89, 90)), grain); // neighbours' differences
    EXPECT_GT(cv::mean(grain, middle(cv::Rect(1, 0, 89, 90)))[0], 0.5 * cv::mean(grain, around(cv::Rect(1, 0, 89, 90)))[0])
        << "the pores stay";
}
