#include "Compositor.h"
#include "ImageSpace.h"
#include "Picture.h"
#include "RandomSettings.h"
#include "TestPortrait.h"
#include "View_Picture.h"
#include "ViewProxy.h"

#include <QPainter>
#include <QTest>

#include <opencv2/imgproc.hpp>

#include <gtest/gtest.h>

namespace {

// The portrait four times enlarged, its landmarks with it: a photo large
// enough for the preview to show interactive frames, made without a second
// detection.
std::shared_ptr<const OpenedPhoto> largePortrait()
{
    static const auto photo = [] {
        auto large = std::make_shared<OpenedPhoto>();
        const OpenedPhoto& small = portrait();
        large->img_Basic = toPicture(small.img_Basic.scaled(2048, 2048, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
        large->imgSize = QSizeF(2048, 2048);
        for (const QPointF& landmark : small.facePointsRelativeToImageSize)
            large->facePointsRelativeToImageSize.append(landmark * 4);
        deriveRegions(*large);
        return large;
    }();
    return photo;
}

cv::Mat pixelsOf(const QImage& picture)
{
    return cv::Mat(picture.height(), picture.width(), CV_8UC4, const_cast<uchar*>(picture.constBits()),
                   size_t(picture.bytesPerLine()));
}

// Where `b` differs from `a` by more than a level in some channel.
cv::Mat changedPixels(const QImage& a, const QImage& b)
{
    cv::Mat difference, channels[4];
    cv::absdiff(pixelsOf(a), pixelsOf(b), difference);
    cv::split(difference, channels);
    const cv::Mat most = cv::max(cv::max(channels[0], channels[1]), channels[2]);
    return most > 1;
}

// Mean difference in levels over the colour channels where `where` is set.
double meanDifference(const QImage& a, const QImage& b, const cv::Mat& where)
{
    cv::Mat difference;
    cv::absdiff(pixelsOf(a), pixelsOf(b), difference);
    const cv::Scalar mean = cv::mean(difference, where);
    return (mean[0] + mean[1] + mean[2]) / 3;
}

QImage shrunk(const QImage& picture, QSize size)
{
    QImage small = makePicture(size);
    cv::Mat to = pixelsOf(small);
    cv::resize(pixelsOf(picture), to, to.size(), 0, 0, cv::INTER_AREA);
    return small;
}

EditingState only(bool EditingState::*effect)
{
    EditingState state = randomSettings(11);
    state.forEachField([](const char* name, auto& value) {
        if constexpr (std::is_same_v<std::decay_t<decltype(value)>, bool>)
            if (QByteArray(name).startsWith("b_"))
                value = false;
    });
    state.*effect = true;
    return state;
}

} // namespace

// The frame a moving control shows, at half the photo's size, against the
// full picture shrunk by averaging: where the effect changes the picture,
// the mean difference stays under a quarter of the effect's own change
// (measured: eye colour 21 %, which thresholds whole pixels; the others at
// most 9 %).
TEST(LiveFrames, AFrameLooksLikeTheFullPictureShrunk)
{
    const OpenedPhoto& photo = *largePortrait();
    const ProxyFrame frame = proxyFrameFor(QSize(2048, 2048), QRectF(0, 0, 2048, 2048), 0.5);
    ASSERT_EQ(frame.size, QSize(1024, 1024));
    const OpenedPhoto proxy = proxyPhoto(photo, frame);
    const Reshaping reshaping = Reshaping::of(photo.regions);
    const QImage untouched = shrunk(Compositor().compose(photo, reshaping, EditingState()), frame.size);
    using S = EditingState;
    for (bool S::*effect : {&S::b_Face_Skin_Smooth, &S::b_Remove_Wrinkles, &S::b_Color_Eyes, &S::b_Widen_Eyes,
                            &S::b_Eye_Eyeshadow, &S::b_Eyes_Darken, &S::b_Apply_Cheeks, &S::b_Color_Lips,
                            &S::b_Whiten_Teeth}) {
        const EditingState state = only(effect);
        const QImage full = shrunk(Compositor().compose(photo, reshaping, state), frame.size);
        const QImage framed = Compositor().compose(proxy, proxyReshaping(reshaping, photo.imgSize, frame), state,
                                                   frame.photoPixelsPerPixel());
        const cv::Mat acts = changedPixels(full, untouched);
        const double off = meanDifference(full, framed, acts), effectItself = meanDifference(full, untouched, acts);
        EXPECT_LT(off, effectItself / 4) << nameOfSwitch(effect);
    }
}
