// How the healing of blemishes does on real faces labelled by hand: spots
// healed, marks kept, texture kept inside healed areas and change outside
// every spot, per photo and in total, for the photos tuned on and those held
// back, at several Strengths. The photos stay outside the project; the
// labels (bench/data/blemish-labels.json) name them relative to a folder
// given on the command line.
//
//   measure_blemishes SHARED [--labels FILE] [--strengths 0,25,50,75,100] [--only NAME]
//                            [--marks] [--crops FOLDER]

#include "Compositor.h"
#include "FaceSkin.h"
#include "HealBlemishes.h"
#include "ImageSpace.h"
#include "OpenedPhoto.h"
#include "PhotoDecoder.h"
#include "Picture.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPainter>

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cstdio>

namespace {

struct Label {
    QPointF at; // photo pixels, y down
    QString kind;
    bool heal() const { return kind != "mole" && kind != "freckle"; }
};

struct Photo {
    QString file;
    bool heldBack = false;
    std::vector<Label> labels;
};

std::vector<Photo> readLabels(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(path));
    std::vector<Photo> photos;
    for (const QJsonValue p : QJsonDocument::fromJson(file.readAll())["photos"].toArray()) {
        Photo photo{p["file"].toString(), p["held_back"].toBool(), {}};
        for (const QJsonValue l : p["labels"].toArray())
            photo.labels.push_back({QPointF(l["at"][0].toDouble(), l["at"][1].toDouble()), l["kind"].toString()});
        photos.push_back(photo);
    }
    return photos;
}

// L*, a* of a picture as float planes.
struct Planes {
    cv::Mat L, a;
};

Planes planesOf(const QImage& picture)
{
    const QImage rgb = picture.convertToFormat(QImage::Format_RGB888);
    cv::Mat view(rgb.height(), rgb.width(), CV_8UC3, const_cast<uchar*>(rgb.constBits()), size_t(rgb.bytesPerLine()));
    cv::Mat unit, lab;
    view.convertTo(unit, CV_32F, 1.0 / 255);
    cv::cvtColor(unit, lab, cv::COLOR_RGB2Lab);
    cv::Mat c[3];
    cv::split(lab, c);
    return {c[0], c[1]};
}

double median(std::vector<float> v)
{
    if (v.empty())
        return 0;
    std::nth_element(v.begin(), v.begin() + std::ptrdiff_t(v.size() / 2), v.end());
    return v[v.size() / 2];
}

// How far the disc of radius r at `at` stands out of the ring of skin from
// 2 r to 3.5 r around it, in units of that ring's own variation: darker,
// lighter or redder, whichever the most.
double contrastAt(const Planes& p, QPointF at, double r)
{
    std::vector<float> ringL, ringA;
    double discL = 0, discA = 0, n = 0;
    const int reach = int(std::ceil(3.5 * r));
    for (int y = int(at.y()) - reach; y <= int(at.y()) + reach; ++y)
        for (int x = int(at.x()) - reach; x <= int(at.x()) + reach; ++x) {
            if (x < 0 || y < 0 || x >= p.L.cols || y >= p.L.rows)
                continue;
            const double d = std::hypot(x - at.x(), y - at.y());
            if (d <= r)
                discL += p.L.at<float>(y, x), discA += p.a.at<float>(y, x), n += 1;
            else if (d >= 2 * r && d <= 3.5 * r)
                ringL.push_back(p.L.at<float>(y, x)), ringA.push_back(p.a.at<float>(y, x));
        }
    if (n == 0 || ringL.size() < 8)
        return 0;
    const double mL = median(ringL), mA = median(ringA);
    std::vector<float> devL, devA;
    for (size_t i = 0; i < ringL.size(); ++i)
        devL.push_back(std::abs(ringL[i] - float(mL))), devA.push_back(std::abs(ringA[i] - float(mA)));
    const double sL = std::max(1.4826 * median(devL), 0.5), sA = std::max(1.4826 * median(devA), 0.5);
    return std::max(std::abs(discL / n - mL) / sL, (discA / n - mA) / sA);
}

// The hand's point moved to where the mark stands out most, within `reach`.
QPointF snapped(const Planes& p, QPointF at, double reach, double r)
{
    QPointF best = at;
    double strongest = -1;
    for (double dy = -reach; dy <= reach; dy += 1)
        for (double dx = -reach; dx <= reach; dx += 1) {
            if (dx * dx + dy * dy > reach * reach)
                continue;
            const double c = contrastAt(p, at + QPointF(dx, dy), r);
            if (c > strongest)
                strongest = c, best = at + QPointF(dx, dy);
        }
    return best;
}

struct Tally {
    int spots = 0, healed = 0, marks = 0, kept = 0, moles = 0, molesKept = 0;
    double textureBefore = 0, textureAfter = 0, changedOutside = 0, faceArea = 0;
    void add(const Tally& t)
    {
        spots += t.spots, healed += t.healed, marks += t.marks, kept += t.kept;
        moles += t.moles, molesKept += t.molesKept;
        textureBefore += t.textureBefore, textureAfter += t.textureAfter;
        changedOutside += t.changedOutside, faceArea += t.faceArea;
    }
    QString row(const QString& name) const
    {
        return QString("%1 %2/%3 %4% | kept %5/%6 (moles %9/%10) | texture %7 | changed outside %8%")
            .arg(name, -20)
            .arg(healed, 3)
            .arg(spots, -3)
            .arg(spots ? 100.0 * healed / spots : 0.0, 5, 'f', 1)
            .arg(kept, 2)
            .arg(marks, -2)
            .arg(textureBefore > 0 ? textureAfter / textureBefore : 1.0, 4, 'f', 2)
            .arg(faceArea > 0 ? 100 * changedOutside / faceArea : 0.0, 5, 'f', 2)
            .arg(molesKept)
            .arg(moles);
    }
};

// Fine texture (L* less its blur at `sigma`) energy where `where` is set.
double textureEnergy(const cv::Mat& L, const cv::Mat& where, double sigma)
{
    cv::Mat smooth;
    cv::GaussianBlur(L, smooth, cv::Size(), sigma);
    const cv::Mat grain = L - smooth;
    return cv::mean(grain.mul(grain), where)[0] * cv::countNonZero(where);
}

struct Measured {
    OpenedPhoto photo;
    Planes before;
    std::vector<Label> labels; // snapped
    double faceWidth = 0;
    cv::Rect face;
};

Tally measure(const Measured& m, const QImage& after, double r)
{
    Tally t;
    const Planes healed = planesOf(after);
    for (const Label& label : m.labels) {
        const double was = contrastAt(m.before, label.at, r), is = contrastAt(healed, label.at, r);
        if (label.heal()) {
            t.spots += 1;
            t.healed += is < 1;
        } else {
            t.marks += 1;
            t.kept += is >= 0.7 * was;
            if (label.kind == "mole")
                t.moles += 1, t.molesKept += is >= 0.7 * was;
        }
    }
    cv::Mat diff, changed;
    cv::absdiff(m.before.L, healed.L, diff);
    changed = diff > 2.0;
    cv::Mat outside = changed.clone();
    for (const Label& label : m.labels)
        if (label.heal())
            cv::circle(outside, cv::Point(label.at.x(), label.at.y()), int(0.03 * m.faceWidth), 0, cv::FILLED);
    t.changedOutside = cv::countNonZero(outside(m.face));
    t.faceArea = m.face.area();
    // The grain inside what changed against the grain of the unchanged skin
    // just around it: 1 is skin as textured as its neighbours, 0 a flat patch.
    const double sigma = std::max(1.0, 0.002 * m.faceWidth);
    const int around = std::max(3, int(0.02 * m.faceWidth)) | 1;
    cv::Mat ring;
    cv::dilate(changed, ring, cv::getStructuringElement(cv::MORPH_ELLIPSE, {around, around}));
    ring &= ~changed;
    const double changedShare = double(cv::countNonZero(changed)), ringShare = double(cv::countNonZero(ring));
    t.textureBefore = changedShare > 0 ? textureEnergy(m.before.L, ring, sigma) / ringShare * changedShare : 0;
    t.textureAfter = textureEnergy(healed.L, changed, sigma);
    return t;
}

std::optional<Measured> open(const QString& path, const std::vector<Label>& labels)
{
    OpenResult opened = analysePhoto(path, decodePhoto(path));
    if (opened.outcome != OpenResult::Opened) {
        std::printf("%s: %s\n", qPrintable(path), qPrintable(opened.message));
        return std::nullopt;
    }
    Measured m{std::move(opened.photo), {}, {}, 0, {}};
    const FaceLandmarks& p = m.photo.facePointsRelativeToImageSize;
    m.faceWidth = QLineF(p[0], p[16]).length();
    m.before = planesOf(m.photo.img_Basic);
    const QRect face = flipped(m.photo.regions.rect_Face_Skin, m.photo.imgSize.height()).toAlignedRect()
                       & m.photo.img_Basic.rect();
    m.face = cv::Rect(face.x(), face.y(), face.width(), face.height());
    const double r = 0.006 * m.faceWidth;
    for (const Label& label : labels)
        m.labels.push_back({snapped(m.before, label.at, 0.012 * m.faceWidth, r), label.kind});
    return m;
}

const char* kindName(BlemishMark::Kind kind)
{
    constexpr const char* names[] = {"spot", "mole", "freckle", "line", "busy", "large"};
    return names[int(kind)];
}

// How the labels of each kind were judged, over every photo.
std::map<QString, std::map<QString, int>> judgedAs;

// For each label, the mark found under it and what was judged of it.
void printMarks(const Measured& m, const EditingState& s)
{
    const auto judged = HealBlemishes::judgedMarks(m.photo, s);
    const FaceSkin skin = FaceSkin::of(m.photo, 400);
    const HealBlemishes::Outcome outcome = HealBlemishes::outcomeOf(m.photo, s, PhotoEdits::of(m.photo.regions));
    Compositor compositor;
    const Planes after = planesOf(compositor.compose(m.photo, PhotoEdits::of(m.photo.regions), s));
    for (const Label& label : m.labels) {
        const HealBlemishes::Judged* nearest = nullptr;
        double distance = 0.015 * m.faceWidth;
        for (const auto& j : judged)
            if (const double d = QLineF(j.spot.centre, label.at).length() - j.spot.radius; d < distance)
                distance = d, nearest = &j;
        const double c = contrastAt(m.before, label.at, 0.006 * m.faceWidth);
        const double a = contrastAt(after, label.at, 0.006 * m.faceWidth);
        ++judgedAs[label.heal() ? "heal" : "keep"][nearest ? kindName(nearest->mark.kind) : "none"];
        if (!nearest) {
            std::printf("  %-8s %5.0f,%-5.0f c%4.1f>%4.1f  -- nothing found%s\n", qPrintable(label.kind), label.at.x(),
                        label.at.y(), c, a, skin.allows(label.at) ? "" : " (not on the skin)");
            continue;
        }
        const BlemishMark& k = nearest->mark;
        std::printf("  %-8s %5.0f,%-5.0f c%4.1f>%4.1f  %-7s peak %5.1f d %4.1f dark %5.1f red %5.1f yel %5.1f el %3.1f "
                    "alike %d sharp %4.2f%s\n",
                    qPrintable(label.kind), label.at.x(), label.at.y(), c, a, kindName(k.kind), k.peak, k.diameter,
                    k.darker, k.redder, k.yellower, k.elongation, k.alike, k.sharpness,
                    std::ranges::any_of(outcome.healed, [&](const auto& h) {
                        return QLineF(h.centre, nearest->spot.centre).length() < 1;
                    }) ? " healed" : "");
    }
}

// The face before and after, side by side, and each labelled spot ringed
// green where it was healed, red where not; each kept mark blue or red.
void writeCrops(const Measured& m, const QImage& after, const QString& folder, const QString& name)
{
    const QRect box(m.face.x, m.face.y, m.face.width, m.face.height);
    const Planes healed = planesOf(after);
    QImage sheet(2 * box.width(), box.height(), QImage::Format_RGB32);
    QPainter painter(&sheet);
    painter.drawImage(0, 0, m.photo.img_Basic.copy(box));
    painter.drawImage(box.width(), 0, after.copy(box));
    painter.setRenderHint(QPainter::Antialiasing);
    const double r = 0.006 * m.faceWidth;
    for (const Label& label : m.labels) {
        const double was = contrastAt(m.before, label.at, r), is = contrastAt(healed, label.at, r);
        const bool good = label.heal() ? is < 1 : is >= 0.7 * was;
        painter.setPen(QPen(good ? (label.heal() ? Qt::green : Qt::cyan) : Qt::red, 1.5));
        painter.drawEllipse(label.at - QPointF(box.topLeft()), 3 * r, 3 * r);
    }
    painter.end();
    sheet.save(folder + "/" + name + ".png");
    std::printf("  sheet %s: the face from %d,%d\n", qPrintable(name), box.x(), box.y());
    const FaceSkin skin = FaceSkin::of(m.photo, 400);
    QImage mask(skin.allowed.data, skin.allowed.cols, skin.allowed.rows, int(skin.allowed.step), QImage::Format_Grayscale8);
    mask.save(folder + "/" + name + "-skin.png");
    std::printf("  skin area %d,%d %dx%d\n", skin.area.x, skin.area.y, skin.area.width, skin.area.height);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QCommandLineParser parser;
    parser.addPositionalArgument("shared", "the folder the labels' paths start from");
    parser.addOption({"labels", "labels file", "file", QString(BELLAVENOR_SOURCE_DIR "/bench/data/blemish-labels.json")});
    parser.addOption({"strengths", "Strengths to measure at", "list", "0,25,50,75,100"});
    parser.addOption({"only", "only this photo", "name"});
    parser.addOption({"marks", "print what was found under each label"});
    parser.addOption({"crops", "write before and after crops at the default Strength", "folder"});
    parser.process(app);
    if (parser.positionalArguments().size() != 1)
        parser.showHelp(64);
    const QDir shared(parser.positionalArguments().first());
    std::vector<int> strengths;
    for (const QString& s : parser.value("strengths").split(','))
        strengths.push_back(s.toInt());
    std::map<std::pair<bool, int>, Tally> totals;
    for (const Photo& photo : readLabels(parser.value("labels"))) {
        const QString name = QFileInfo(photo.file).baseName();
        if (parser.isSet("only") && name != parser.value("only"))
            continue;
        const std::optional<Measured> m = open(shared.filePath(photo.file), photo.labels);
        if (!m)
            continue;
        std::printf("%s%s\n", qPrintable(name), photo.heldBack ? " (held back)" : "");
        EditingState state;
        state.b_Heal_Blemishes = true;
        if (parser.isSet("marks")) {
            state.u_Heal_Blemishes_Strength = std::uint64_t(strengths.back());
            printMarks(*m, state);
        }
        const PhotoEdits edits = PhotoEdits::of(m->photo.regions);
        for (int strength : strengths) {
            state.u_Heal_Blemishes_Strength = std::uint64_t(strength);
            Compositor compositor;
            const QImage after = compositor.compose(m->photo, edits, state);
            const Tally t = measure(*m, after, 0.006 * m->faceWidth);
            totals[{photo.heldBack, strength}].add(t);
            std::printf("  %s\n", qPrintable(t.row(QString("Strength %1").arg(strength))));
            if (parser.isSet("crops") && strength == 50)
                writeCrops(*m, after, parser.value("crops"), name);
        }
    }
    for (const auto& [what, kinds] : judgedAs) {
        std::printf("labels to %s judged:", qPrintable(what));
        for (const auto& [kind, n] : kinds)
            std::printf(" %s %d", qPrintable(kind), n);
        std::printf("\n");
    }
    for (const auto& [key, tally] : totals)
        std::printf("%s\n", qPrintable(tally.row(QString("%1 S%2").arg(key.first ? "held back" : "tuned").arg(key.second))));
    return 0;
}
