#pragma once

#include "OpenedPhoto.h"

#include <gtest/gtest.h>

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
