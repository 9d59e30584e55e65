// How Natural Skin changes real faces, band by band, on the skin it finds
// (where it changes with full weight), each band read over the skin alone
// with Gaussians whose sigmas are shares of the face's width: the medium
// band's spread (blotches, between 0.4 % and 2.5 %) against before, the
// fine band's (pores, below 0.4 %) against before, the coarse shading's
// mean change (above 2.5 %, levels of L*), and the pixels changed where it
// should change nothing (off the skin's soft edge; the eyes, brows and
// lips).
//
//   measure_natural_skin PHOTO... [--evenness N] [--texture N]
//   measure_natural_skin --outlines bench/data/skin-outlines.json SHARED
//
// With --outlines, the skin it changes against the skin outlined by hand:
// the share of the outlined skin it covers and the share of what it
// changes that lies outside it.

#include "BlemishMap.h"
#include "Compositor.h"
#include "EditingState.h"
#include "ImageSpace.h"
#include "NaturalSkin.h"
#include "OpenedPhoto.h"
#include "PhotoDecoder.h"
#include "SkinBands.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPainter>

#include <opencv2/imgproc.hpp>

#include <cstdio>

namespace {

cv::Mat lightnessOf(const QImage& picture)
{
    const QImage rgb = picture.convertToFormat(QImage::Format_RGB888);
    const cv::Mat view(rgb.height(), rgb.width(), CV_8UC3, const_cast<uchar*>(rgb.constBits()), size_t(rgb.bytesPerLine()));
    cv::Mat unit, lab, L;
    view.convertTo(unit, CV_32F, 1.0 / 255);
    cv::cvtColor(unit, lab, cv::COLOR_RGB2Lab);
    cv::extractChannel(lab, L, 0);
    return L;
}

struct Bands {
    cv::Mat fine, medium, coarse;
};

// The bands read over the skin alone, as a retoucher parts them: the eyes,
// hair and background around take no part.
Bands bandsOf(const cv::Mat& L, const cv::Mat& skin, double faceWidth)
{
    cv::Mat L3, weight;
    cv::merge(std::vector<cv::Mat>{L, L, L}, L3);
    skin.convertTo(weight, CV_32F, 1.0 / 255);
    cv::Mat smooth, shape;
    cv::extractChannel(blurOver(L3, weight, std::max(1.0, 0.004 * faceWidth)), smooth, 0);
    cv::extractChannel(blurOver(L3, weight, 0.025 * faceWidth), shape, 0);
    return {L - smooth, smooth - shape, shape};
}

double spread(const cv::Mat& band, const cv::Mat& where)
{
    cv::Scalar mean, deviation;
    cv::meanStdDev(band, mean, deviation, where);
    return deviation[0];
}

// The eyes, brows and lips of the photo, 255 inside.
cv::Mat featuresOf(const OpenedPhoto& photo)
{
    QImage mask(photo.img_Basic.size(), QImage::Format_Grayscale8);
    mask.fill(0);
    QPainter painter(&mask);
    const FaceRegions& r = photo.regions;
    const double h = photo.imgSize.height();
    for (const QPainterPath* feature : {&r.path_Eye_Left, &r.path_Eye_Right, &r.path_Lips})
        painter.fillPath(flipped(*feature, h), Qt::white);
    const FaceLandmarks& p = photo.facePointsRelativeToImageSize;
    for (int i = 17; i < 26; ++i)
        if (i != 21)
            painter.setPen(QPen(Qt::white, 0.02 * QLineF(p[0], p[16]).length())), painter.drawLine(p[i], p[i + 1]);
    painter.end();
    return cv::Mat(mask.height(), mask.width(), CV_8U, mask.bits(), size_t(mask.bytesPerLine())).clone();
}

void measure(const QString& path, const NaturalSkinSettings& s)
{
    const OpenResult opened = analysePhoto(path, decodePhoto(path));
    if (opened.outcome != OpenResult::Opened) {
        std::printf("%-22s %s\n", qPrintable(QFileInfo(path).baseName()), qPrintable(opened.message));
        return;
    }
    const OpenedPhoto& photo = opened.photo;
    const FaceLandmarks& p = photo.facePointsRelativeToImageSize;
    const double faceWidth = QLineF(p[0], p[16]).length();
    const QImage evened = NaturalSkin::evenedPhoto(photo, s).img_Basic;
    const cv::Mat before = lightnessOf(photo.img_Basic), after = lightnessOf(evened);
    // Where it changes with full weight: its skin at the working scale,
    // brought to the photo.
    const FaceSkin skin = FaceSkin::of(photo, std::min(400.0, faceWidth));
    cv::Mat onSkin = cv::Mat::zeros(before.size(), CV_8U), inner;
    const int within = 2 * int(std::ceil(0.025 * skin.workingWidth)) + 1; // past the soft edge
    cv::erode(skin.allowed, inner, cv::getStructuringElement(cv::MORPH_ELLIPSE, {within, within}));
    cv::resize(inner, onSkin(skin.area), skin.area.size(), 0, 0, cv::INTER_NEAREST);
    cv::Mat skinHere = cv::Mat::zeros(before.size(), CV_8U);
    cv::resize(skin.allowed, skinHere(skin.area), skin.area.size(), 0, 0, cv::INTER_NEAREST);
    const Bands was = bandsOf(before, skinHere, faceWidth), is = bandsOf(after, skinHere, faceWidth);
    // And without the moles and freckles it keeps as they are.
    cv::Mat kept = cv::Mat::zeros(before.size(), CV_8U);
    const cv::Mat keptHere = BlemishMap::of(skin, 0.03 * skin.workingWidth).areaOf([](const BlemishMark& m) { return m.isKeptAsItIs(); });
    cv::resize(keptHere, kept(skin.area), skin.area.size(), 0, 0, cv::INTER_NEAREST);
    const cv::Mat unmarked = onSkin & ~kept;
    const double fineKept = spread(is.fine, onSkin) / spread(was.fine, onSkin);
    const double mediumLeft = spread(is.medium, onSkin) / spread(was.medium, onSkin);
    const double unmarkedLeft = spread(is.medium, unmarked) / spread(was.medium, unmarked);
    const double shape = cv::mean(cv::abs(is.coarse - was.coarse), onSkin)[0];
    cv::Mat reach = cv::Mat::zeros(before.size(), CV_8U);
    cv::dilate(skin.allowed, inner, cv::getStructuringElement(cv::MORPH_ELLIPSE, {7, 7}));
    cv::resize(inner, reach(skin.area), skin.area.size(), 0, 0, cv::INTER_NEAREST);
    const QImage a = photo.img_Basic.convertToFormat(QImage::Format_RGB32), b = evened.convertToFormat(QImage::Format_RGB32);
    const cv::Mat pa(a.height(), a.width(), CV_8UC4, const_cast<uchar*>(a.constBits()), size_t(a.bytesPerLine()));
    const cv::Mat pb(b.height(), b.width(), CV_8UC4, const_cast<uchar*>(b.constBits()), size_t(b.bytesPerLine()));
    cv::Mat differs;
    cv::transform(pa != pb, differs, cv::Matx14f(1, 1, 1, 0));
    differs = differs > 0;
    const int outside = cv::countNonZero(differs & ~reach), features = cv::countNonZero(differs & featuresOf(photo));
    std::printf("%-22s medium left %5.1f %% (%5.1f %% but moles, freckles) | fine kept %5.1f %% | shape moved %4.2f L* | changed off the skin %d, "
                "on eyes, brows, lips %d\n",
                qPrintable(QFileInfo(path).baseName()), 100 * mediumLeft, 100 * unmarkedLeft, 100 * fineKept, shape, outside, features);
}

QPolygon polygonOf(const QJsonValue& points)
{
    QPolygon polygon;
    for (const QJsonValue point : points.toArray())
        polygon << QPoint(point[0].toInt(), point[1].toInt());
    return polygon;
}

void measureMask(const QJsonObject& labelled, const QDir& shared, const NaturalSkinSettings& s)
{
    const QString path = shared.filePath(labelled["file"].toString());
    const OpenResult opened = analysePhoto(path, decodePhoto(path));
    if (opened.outcome != OpenResult::Opened)
        return;
    const QSize size = opened.photo.img_Basic.size();
    QImage outlined(size, QImage::Format_Grayscale8);
    outlined.fill(0);
    QPainter painter(&outlined);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawPolygon(polygonOf(labelled["outline"]));
    painter.setBrush(Qt::black);
    for (const QJsonValue hole : labelled["holes"].toArray())
        painter.drawPolygon(polygonOf(hole));
    painter.end();
    const cv::Mat skin = cv::Mat(size.height(), size.width(), CV_8U, outlined.bits(), size_t(outlined.bytesPerLine())) > 0;
    const NaturalSkin::Mask mask = NaturalSkin::maskOf(opened.photo, s, {});
    cv::Mat changes = cv::Mat::zeros(skin.size(), CV_8U), weight;
    cv::resize(mask.weight, weight, mask.area.size(), 0, 0, cv::INTER_LINEAR);
    changes(mask.area).setTo(255, weight > 0);
    const double covered = double(cv::countNonZero(changes & skin)) / cv::countNonZero(skin);
    const double outside = double(cv::countNonZero(changes & ~skin)) / std::max(1, cv::countNonZero(changes));
    std::printf("%-22s %-7s skin covered %5.1f %% | changed outside the skin %5.1f %%\n",
                qPrintable(QFileInfo(path).baseName()), qPrintable(labelled["tone"].toString()), 100 * covered, 100 * outside);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QCommandLineParser parser;
    parser.addPositionalArgument("photos", "photos of one face each");
    parser.addOption({"evenness", "Evenness", "percent", "80"});
    parser.addOption({"texture", "Texture", "percent", "100"});
    parser.addOption({"outlines", "skin outlined by hand, the photos' paths from the folder given", "file"});
    parser.process(app);
    NaturalSkinSettings s;
    s.b_Natural_Skin = true;
    s.u_Natural_Skin_Evenness = parser.value("evenness").toULongLong();
    s.u_Natural_Skin_Texture = parser.value("texture").toULongLong();
    if (parser.isSet("outlines")) {
        QFile file(parser.value("outlines"));
        if (!file.open(QIODevice::ReadOnly) || parser.positionalArguments().size() != 1)
            parser.showHelp(64);
        for (const QJsonValue labelled : QJsonDocument::fromJson(file.readAll())["photos"].toArray())
            measureMask(labelled.toObject(), QDir(parser.positionalArguments().first()), s);
        return 0;
    }
    for (const QString& path : parser.positionalArguments())
        measure(path, s);
    return 0;
}
