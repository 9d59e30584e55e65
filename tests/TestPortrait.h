#pragma once

#include "OpenedPhoto.h"
#include "Picture.h"

#include <opencv2/core.hpp>

#include <gtest/gtest.h>

#include <memory>

// The test portrait opened and analysed once per test program.
inline const OpenedPhoto& portrait()
{
    static const OpenResult opened = openAndAnalyse(QString(BELLAVENOR_TEST_DATA) + "/portrait.png");
    EXPECT_EQ(opened.outcome, OpenResult::Opened) << opened.message.toStdString();
    return opened.photo;
}

// The middle of the portrait's cheek on the left of the picture, in percent
// of the photo with y from the top: clear skin, where a spot clicked heals.
inline QPointF cheekPercent()
{
    const FaceLandmarks& p = portrait().facePointsRelativeToImageSize;
    const QPointF cheek = (p[2] + p[31]) / 2;
    return {100 * cheek.x() / portrait().imgSize.width(), 100 * cheek.y() / portrait().imgSize.height()};
}

// The portrait enlarged to `side` pixels, its landmarks with it (no second
// detection), its regions made from them.
inline OpenedPhoto enlargedPortrait(int side)
{
    const OpenedPhoto& small = portrait();
    OpenedPhoto large;
    large.img_Basic = toPicture(small.img_Basic.scaled(side, side, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    large.imgSize = QSizeF(side, side);
    for (const QPointF& landmark : small.facePointsRelativeToImageSize)
        large.facePointsRelativeToImageSize.append(landmark * side / small.imgSize.width());
    deriveRegions(large);
    return large;
}

// A picture's pixels as an OpenCV matrix, sharing its memory.
inline cv::Mat pixelsOf(const QImage& picture)
{
    return cv::Mat(picture.height(), picture.width(), CV_8UC4, const_cast<uchar*>(picture.constBits()),
                   size_t(picture.bytesPerLine()));
}
