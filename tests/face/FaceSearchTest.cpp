// Taking a face the one-face open refuses: every face of a group photo,
// a face turned or small, each with the landmarks of that face.
#include "DLibWrapper.h"
#include "DataFolder.h"
#include "FaceFixtures.h"
#include "FaceSearch.h"

#include <dlib/image_processing.h>
#include <dlib/opencv/cv_image.h>

#include <opencv2/core.hpp>

#include <QTransform>

#include <set>

#include <gtest/gtest.h>

namespace {

// The head's landmarks, found alone.
const FaceLandmarks& headLandmarks()
{
    static const FaceLandmarks landmarks = DLibWrapper::Detect_Facial_Points(portraitHead()).landmarks;
    return landmarks;
}

// The mean distance of `landmarks` from the head's moved by `placement`,
// in parts of the face's width there.
double offFromHead(const FaceLandmarks& landmarks, const QTransform& placement)
{
    const FaceLandmarks& head = headLandmarks();
    double sum = 0;
    for (int i = 0; i < kLandmarkCount; ++i)
        sum += QLineF(landmarks[i], placement.map(head[i])).length();
    return sum / kLandmarkCount / QLineF(placement.map(head[0]), placement.map(head[16])).length();
}

OpenResult refusedWith(const QImage& picture, const std::vector<QRect>& faces)
{
    OpenResult refused;
    refused.outcome = faces.empty() ? OpenResult::NoFace : OpenResult::SeveralFaces;
    refused.photo.img_Basic = picture;
    refused.photo.imgSize = picture.size();
    refused.faces = faces;
    return refused;
}

// What stock dlib's predictor gives in `box`.
FaceLandmarks stockLandmarks(const QImage& picture, const QRect& box)
{
    static const dlib::shape_predictor predictor = [] {
        dlib::shape_predictor model;
        dlib::deserialize(QFile::encodeName(DLibWrapper::modelPath()).toStdString()) >> model;
        return model;
    }();
    const QImage rgb = picture.convertToFormat(QImage::Format_RGB888);
    const cv::Mat pixels(rgb.height(), rgb.width(), CV_8UC3, const_cast<uchar*>(rgb.constBits()), size_t(rgb.bytesPerLine()));
    const dlib::full_object_detection shape
        = predictor(dlib::cv_image<dlib::rgb_pixel>(pixels), dlib::rectangle(box.left(), box.top(), box.right(), box.bottom()));
    FaceLandmarks points;
    for (unsigned long i = 0; i < shape.num_parts(); ++i)
        points.append(QPointF(double(shape.part(i).x()), double(shape.part(i).y())));
    return points;
}

} // namespace

// Two and three heads of different sizes: the faces come largest first,
// each taken gives its own head's landmarks, equal to stock dlib's in the
// same box.
TEST(FaceSearch, EveryFaceOfAGroupCanBeTakenLargestFirstWithItsOwnLandmarks)
{
    for (const HeadsFixture& group : {headsSideBySide({1.0, 1.5}), headsSideBySide({1.25, 1.0, 1.5})}) {
        const DetectionResult found = DLibWrapper::Detect_Facial_Points(group.picture);
        ASSERT_EQ(found.code, 2) << "several faces stay a refusal";
        ASSERT_EQ(found.faces.size(), group.heads.size());
        std::set<int> taken;
        for (std::size_t k = 0; k < found.faces.size(); ++k) {
            const FaceFrame frame = framesOf(found.faces)[k];
            EXPECT_GE(found.faces[k == 0 ? 0 : k - 1].width(), frame.box.width()) << "largest first";
            const OpenResult opened = openWithFace(refusedWith(group.picture, found.faces), frame);
            ASSERT_EQ(opened.outcome, OpenResult::Opened) << opened.message.toStdString();
            const FaceLandmarks& landmarks = opened.photo.facePointsRelativeToImageSize;
            EXPECT_EQ(landmarks, stockLandmarks(group.picture, frame.box));
            const auto nearest = std::ranges::min_element(group.heads, {}, [&](const QTransform& t) { return offFromHead(landmarks, t); });
            EXPECT_LT(offFromHead(landmarks, *nearest), 0.03) << "face " << k + 1;
            taken.insert(int(nearest - group.heads.begin()));
        }
        EXPECT_EQ(taken.size(), group.heads.size()) << "each head once";
    }
}

// A face whose box runs past the photo's edge (a head cut by it) is taken
// on the part of the box inside.
TEST(FaceSearch, AFaceCutByThePhotosEdgeIsTakenOnItsBoxInside)
{
    const QImage head = portraitHead();
    const QRect found = DLibWrapper::Detect_Facial_Points(head).faces.at(0);
    const QImage cut = head.copy(found.x() + found.width() / 4, 0, head.width(), head.height());
    const QRect past = found.translated(-found.x() - found.width() / 4, 0); // starts left of the picture
    ASSERT_LT(past.left(), 0);
    const OpenResult opened = openWithFace(refusedWith(cut, {past}), FaceFrame::drawn(past));
    ASSERT_EQ(opened.outcome, OpenResult::Opened) << opened.message.toStdString();
    EXPECT_EQ(opened.photo.facePointsRelativeToImageSize, stockLandmarks(cut, past & cut.rect()));
}

// A head on its side (either way), tilted 50°, or with a face about 50
// pixels wide is no face to the detector; the wider search offers its
// frame, and taking it puts the landmarks on the face: on the photo turned
// upright for a quarter turn, on the photo as it is for a tilt.
TEST(FaceSearch, TurnedAndSmallFacesAreOfferedAFrameThatOpensOnTheFace)
{
    const QImage head = portraitHead();
    const struct {
        double degrees, scale;
        int quarterTurns; // the photo used turned back upright
    } rows[] = {{90, 1, 3}, {-90, 1, 1}, {50, 1, 0}, {-50, 1, 0}, {0, 0.55, 0}};
    for (const auto& row : rows) {
        QTransform turn;
        turn.rotate(row.degrees);
        const QImage scaled = head.scaled(head.size() * row.scale, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        const QImage fixture = row.degrees == 0 ? scaled : toPicture(scaled.transformed(turn, Qt::SmoothTransformation));
        const QTransform placement = QTransform::fromScale(row.scale, row.scale)
                                     * QImage::trueMatrix(turn, scaled.width(), scaled.height());
        SCOPED_TRACE(row.degrees + 1000 * row.scale);
        ASSERT_EQ(DLibWrapper::Detect_Facial_Points(fixture).code, 1);
        const std::vector<FaceFrame> offered = facesBeyondLimits(fixture);
        ASSERT_FALSE(offered.empty());
        EXPECT_EQ(offered[0].quarterTurns, row.quarterTurns);
        const OpenResult opened = openWithFace(refusedWith(fixture, {}), offered[0]);
        ASSERT_EQ(opened.outcome, OpenResult::Opened) << opened.message.toStdString();
        QTransform upright;
        upright.rotate(90.0 * row.quarterTurns);
        const QTransform onOpened = placement * QImage::trueMatrix(upright, fixture.width(), fixture.height());
        EXPECT_EQ(opened.photo.img_Basic.size(), row.quarterTurns ? head.size() : fixture.size());
        EXPECT_LT(offFromHead(opened.photo.facePointsRelativeToImageSize, onOpened), 0.05);
    }
}

// Only photos of up to 1.5 megapixels are searched enlarged.
TEST(FaceSearch, OnlyPhotosOfUpToOneAndAHalfMegapixelsAreSearchedEnlarged)
{
    const std::pair<QSize, bool> sizes[] = {{{512, 512}, true}, {{1500, 1000}, true}, {{1501, 1000}, false},
                                            {{1000, 1501}, false}, {{4000, 3000}, false}};
    for (const auto& [size, enlarged] : sizes)
        EXPECT_EQ(searchedEnlarged(size), enlarged) << size.width() << " x " << size.height();
}
