// Natural skin on the portrait enlarged, given pores (fine grain) and red
// blotches of a few percent of the face: the blotches even out, the pores
// stay, Texture scales them the right way, and nothing off the skin moves.
#include "FaceSkin.h"
#include "NaturalSkin.h"
#include "Picture.h"
#include "TestPortrait.h"

#include <opencv2/imgproc.hpp>

#include <gtest/gtest.h>

TEST(NaturalSkin, BlotchesEvenPoresStayTextureScalesThemAndNothingOffTheSkinMoves)
{
    OpenedPhoto photo = enlargedPortrait(1024);
    const FaceLandmarks& p = photo.facePointsRelativeToImageSize;
    const double w = QLineF(p[0], p[16]).length();
    photo.img_Basic = copied(photo.img_Basic);
    // Grain of a pixel or two over the picture; red blotches 3 % of the face
    // wide on the cheeks and the chin.
    cv::Mat pixels = pixelsOf(photo.img_Basic), grain(pixels.size(), CV_32F), red = cv::Mat::zeros(pixels.size(), CV_32F);
    cv::RNG(7).fill(grain, cv::RNG::NORMAL, 0, 6);
    std::vector<cv::Point> blotches;
    for (QPointF at : {(p[3] + p[48]) / 2, (p[13] + p[54]) / 2, (p[8] + p[57]) / 2})
        cv::circle(red, blotches.emplace_back(int(at.x()), int(at.y())), int(0.015 * w), 14, cv::FILLED);
    cv::GaussianBlur(red, red, {0, 0}, 0.006 * w);
    std::vector<cv::Mat> c;
    cv::split(pixels, c);
    for (size_t k = 0; k < 3; ++k) {
        c[k].convertTo(c[k], CV_32F);
        cv::Mat(c[k] + grain + (k == 0 ? red : cv::Mat(-red))).convertTo(c[k], CV_8U);
    }
    cv::merge(c, pixels);
    const QImage before = photo.img_Basic;
    const auto evened = [&](std::uint64_t evenness, std::uint64_t texture) {
        NaturalSkin::Settings s;
        s.u_Natural_Skin_Evenness = evenness, s.u_Natural_Skin_Texture = texture;
        return NaturalSkin::evenedPhoto(photo, s).img_Basic;
    };
    const auto blotchOf = [&](const QImage& picture, cv::Point at) { // red less green, middle against a ring
        cv::Mat ch[4], redness, middle = cv::Mat::zeros(pixels.size(), CV_8U), ring = middle.clone();
        cv::split(pixelsOf(picture), ch);
        cv::subtract(ch[0], ch[1], redness, cv::noArray(), CV_32F);
        cv::circle(middle, at, int(0.008 * w), 255, cv::FILLED);
        cv::circle(ring, at, int(0.04 * w), 255, cv::FILLED);
        cv::circle(ring, at, int(0.03 * w), 0, cv::FILLED);
        return cv::mean(redness, middle)[0] - cv::mean(redness, ring)[0];
    };
    const QImage natural = evened(NaturalSkin::Settings{}.u_Natural_Skin_Evenness, 100);
    for (cv::Point at : blotches)
        EXPECT_LT(blotchOf(natural, at), 0.5 * blotchOf(before, at)) << "blotch at " << at.x << ", " << at.y;

    const FaceSkin face = FaceSkin::of(photo, std::min(400.0, w)); // as the effect reads it
    const auto inPhoto = [&](int grow) { // its skin, eroded or grown by working pixels
        cv::Mat grown, placed = cv::Mat::zeros(pixels.size(), CV_8U);
        cv::morphologyEx(face.allowed, grown, grow < 0 ? cv::MORPH_ERODE : cv::MORPH_DILATE,
                         cv::getStructuringElement(cv::MORPH_ELLIPSE, {2 * std::abs(grow) + 1, 2 * std::abs(grow) + 1}));
        cv::resize(grown, placed(face.area), face.area.size(), 0, 0, cv::INTER_NEAREST);
        return placed;
    };
    cv::Mat onSkin = inPhoto(-10); // past the soft edge, away from the blotches
    for (cv::Point at : blotches)
        cv::circle(onSkin, at, int(0.05 * w), 0, cv::FILLED);
    const auto grainOf = [&](const QImage& picture) { // green less its 1-pixel blur
        cv::Mat green, smooth;
        cv::extractChannel(pixelsOf(picture), green, 1);
        green.convertTo(green, CV_32F);
        cv::GaussianBlur(green, smooth, {0, 0}, 1);
        cv::Scalar mean, spread;
        cv::meanStdDev(green - smooth, mean, spread, onSkin);
        return spread[0];
    };
    const double pores = grainOf(before);
    EXPECT_NEAR(grainOf(natural), pores, 0.1 * pores) << "the pores stay";
    EXPECT_LT(grainOf(evened(0, 0)), 0.5 * pores) << "Texture 0 softens them";
    EXPECT_GT(grainOf(evened(0, 200)), 1.5 * pores) << "Texture 200 brings them out";
    cv::Mat moved;
    cv::transform(pixelsOf(natural) != pixelsOf(before), moved, cv::Matx14f(1, 1, 1, 1));
    EXPECT_EQ(cv::countNonZero((moved > 0) & ~inPhoto(1)), 0) << "off the skin every pixel stays";
    EXPECT_EQ(evened(0, 100), before) << "Evenness 0 and Texture 100 change nothing";

    // A stroke taking skin away leaves the cheek under it as it was; one
    // adding skin over a brow evens what it covers too.
    const QPointF cheek = (p[3] + p[48]) / 2, brow = p[19];
    PhotoEdits edits;
    edits.array_Skin_Removed_Strokes = {{100 * (cheek - QPointF(0.05 * w, 0)) / 1024, 100 * (cheek + QPointF(0.05 * w, 0)) / 1024}};
    edits.array_Skin_Added_Strokes = {{100 * brow / 1024}};
    const QImage brushed = NaturalSkin::evenedPhoto(photo, NaturalSkin::Settings{}, edits).img_Basic;
    EXPECT_EQ(brushed.pixel(cheek.toPoint()), before.pixel(cheek.toPoint())) << "skin taken away";
    EXPECT_NE(natural.pixel(cheek.toPoint()), before.pixel(cheek.toPoint()));
    EXPECT_EQ(natural.pixel(brow.toPoint()), before.pixel(brow.toPoint()));
    EXPECT_NE(brushed.pixel(brow.toPoint()), before.pixel(brow.toPoint())) << "skin added";
}
