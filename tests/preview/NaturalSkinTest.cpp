// Natural skin on the portrait enlarged, given pores (fine grain) and red
// blotches of a few percent of the face: the blotches even out, the pores
// stay, Texture scales them the right way, and nothing off the skin moves.
#include "FaceSkin.h"
#include "NaturalSkin.h"
#include "Picture.h"
#include "TestPortrait.h"

#include <opencv2/imgproc.hpp>

#include <gtest/gtest.h>

namespace {

struct Skin {
    OpenedPhoto photo;
    std::vector<cv::Point> blotches;
    double faceWidth = 0;
};

// Grain of a pixel or two over the whole picture, and soft red blotches
// 3 % of the face wide on each cheek and the chin.
Skin blotchedPortrait()
{
    Skin skin{enlargedPortrait(1024), {}, 0};
    const FaceLandmarks& p = skin.photo.facePointsRelativeToImageSize;
    skin.faceWidth = QLineF(p[0], p[16]).length();
    skin.photo.img_Basic = copied(skin.photo.img_Basic);
    cv::Mat pixels = pixelsOf(skin.photo.img_Basic), grain(pixels.size(), CV_32F), redness = cv::Mat::zeros(pixels.size(), CV_32F);
    cv::RNG(7).fill(grain, cv::RNG::NORMAL, 0, 6);
    for (QPointF at : {(p[3] + p[48]) / 2, (p[13] + p[54]) / 2, (p[8] + p[57]) / 2}) {
        skin.blotches.emplace_back(int(at.x()), int(at.y()));
        cv::circle(redness, skin.blotches.back(), int(0.015 * skin.faceWidth), 14, cv::FILLED);
    }
    cv::GaussianBlur(redness, redness, {0, 0}, 0.006 * skin.faceWidth);
    for (int y = 0; y < pixels.rows; ++y)
        for (int x = 0; x < pixels.cols; ++x) {
            cv::Vec4b& px = pixels.at<cv::Vec4b>(y, x);
            const float r = redness.at<float>(y, x), g = grain.at<float>(y, x);
            px = {cv::saturate_cast<uchar>(px[0] + g + r), cv::saturate_cast<uchar>(px[1] + g - r),
                  cv::saturate_cast<uchar>(px[2] + g - r), px[3]};
        }
    return skin;
}

// Red less green over a blotch's middle, against a ring around it.
double blotchOf(const QImage& picture, cv::Point at, double faceWidth)
{
    cv::Mat rgba = pixelsOf(picture), c[4], middle = cv::Mat::zeros(rgba.size(), CV_8U), ring = middle.clone();
    cv::split(rgba, c);
    cv::Mat red;
    cv::subtract(c[0], c[1], red, cv::noArray(), CV_32F);
    cv::circle(middle, at, int(0.008 * faceWidth), 255, cv::FILLED);
    cv::circle(ring, at, int(0.04 * faceWidth), 255, cv::FILLED);
    cv::circle(ring, at, int(0.03 * faceWidth), 0, cv::FILLED);
    return cv::mean(red, middle)[0] - cv::mean(red, ring)[0];
}

// The spread of green's grain (less its 1-pixel blur) on `where`.
double grainOf(const QImage& picture, const cv::Mat& where)
{
    cv::Mat green, smooth;
    cv::extractChannel(pixelsOf(picture), green, 1);
    green.convertTo(green, CV_32F);
    cv::GaussianBlur(green, smooth, {0, 0}, 1);
    cv::Scalar mean, spread;
    cv::meanStdDev(green - smooth, mean, spread, where);
    return spread[0];
}

} // namespace

TEST(NaturalSkin, BlotchesEvenPoresStayTextureScalesThemAndNothingOffTheSkinMoves)
{
    const Skin skin = blotchedPortrait();
    const QImage before = skin.photo.img_Basic;
    const auto evened = [&](std::uint64_t evenness, std::uint64_t texture) {
        NaturalSkin::Settings s;
        s.b_Natural_Skin = true;
        s.u_Natural_Skin_Evenness = evenness;
        s.u_Natural_Skin_Texture = texture;
        return NaturalSkin::evenedPhoto(skin.photo, s).img_Basic;
    };
    const QImage natural = evened(NaturalSkin::Settings{}.u_Natural_Skin_Evenness, 100);
    for (cv::Point at : skin.blotches)
        EXPECT_LT(blotchOf(natural, at, skin.faceWidth), 0.5 * blotchOf(before, at, skin.faceWidth))
            << "blotch at " << at.x << ", " << at.y;

    // The skin away from the blotches, past the soft edge.
    const FaceSkin face = FaceSkin::of(skin.photo, std::min(400.0, skin.faceWidth)); // as the effect reads it
    cv::Mat inner, onSkin = cv::Mat::zeros(pixelsOf(before).size(), CV_8U), reach = onSkin.clone();
    cv::erode(face.allowed, inner, cv::getStructuringElement(cv::MORPH_ELLIPSE, {21, 21}));
    cv::resize(inner, onSkin(face.area), face.area.size(), 0, 0, cv::INTER_NEAREST);
    for (cv::Point at : skin.blotches)
        cv::circle(onSkin, at, int(0.05 * skin.faceWidth), 0, cv::FILLED);
    const double pores = grainOf(before, onSkin);
    EXPECT_NEAR(grainOf(natural, onSkin), pores, 0.1 * pores) << "the pores stay";
    EXPECT_LT(grainOf(evened(0, 0), onSkin), 0.5 * pores) << "Texture 0 softens them";
    EXPECT_GT(grainOf(evened(0, 200), onSkin), 1.5 * pores) << "Texture 200 brings them out";

    cv::resize(face.allowed, reach(face.area), face.area.size(), 0, 0, cv::INTER_NEAREST);
    cv::dilate(reach, reach, cv::getStructuringElement(cv::MORPH_ELLIPSE, {7, 7}));
    cv::Mat moved;
    cv::transform(pixelsOf(natural) != pixelsOf(before), moved, cv::Matx14f(1, 1, 1, 1));
    EXPECT_EQ(cv::countNonZero((moved > 0) & ~reach), 0) << "off the skin every pixel stays";
    EXPECT_EQ(evened(0, 100), before) << "Evenness 0 and Texture 100 change nothing";
}
