#include "HealBlemishes.h"

#include "FaceSkin.h"
#include "FrequencyHeal.h"
#include "Picture.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

const PanelDescription& HealBlemishes::panel()
{
    static const PanelDescription panel{
        row.label,
        {{ControlKind::Apply, "b_Heal_Blemishes", "checkApply"},
         {.kind = ControlKind::Slider,
          .field = "f_Heal_Blemishes_Size",
          .control = "slider_Size",
          .label = {QT_TRANSLATE_NOOP("Effects", "Size")},
          .caption = "label_Size",
          .value = "label_Size_Value",
          .meaning = QT_TRANSLATE_NOOP("Effects", "The largest spot healed, as a share of the face's width "
                                                  "(300 is 3 %); a larger mark, such as a mole, stays")},
         {.kind = ControlKind::Slider,
          .field = "u_Heal_Blemishes_Strength",
          .control = "slider_Strength",
          .label = {QT_TRANSLATE_NOOP("Effects", "Strength")},
          .caption = "label_Strength",
          .value = "label_Strength_Value",
          .meaning = QT_TRANSLATE_NOOP("Effects", "How faint a spot may be and still be healed: at 0 only spots "
                                                  "that stand out clearly, at 100 faint ones too")},
         {ControlKind::Mode, "b_Activated_Heal_Spots", "checkEditSpots", {QT_TRANSLATE_NOOP("Effects", "Edit spots")}},
         {ControlKind::Toggle, "b_Show_Spots", "checkShowSpots", {QT_TRANSLATE_NOOP("Effects", "Show spots")}}}};
    return panel;
}

namespace {

// Spots are looked for on the face brought to this width: the same face
// gives the same spots from a 1 MP and a 64 MP photo, and the search costs
// the same at any size.
constexpr double kWorkingWidth = 400;

// A robust spread of the values where `mask` is set: 1.4826 × their median
// distance from 0 (the values are differences from a local median).
double spreadOf(const cv::Mat& values, const cv::Mat& mask)
{
    std::vector<float> all;
    for (int y = 0; y < values.rows; ++y)
        for (int x = 0; x < values.cols; ++x)
            if (mask.at<uchar>(y, x))
                all.push_back(std::abs(values.at<float>(y, x)));
    if (all.empty())
        return 1;
    std::nth_element(all.begin(), all.begin() + std::ptrdiff_t(all.size() / 2), all.end());
    return std::max(1.4826 * all[all.size() / 2], 0.5);
}

// How far each pixel stands out of the skin around it in units of that
// skin's own variation, and where the skin is busy (hair, stubble).
struct Contrast {
    cv::Mat score; // max of darker, lighter and redder, each over its local spread
    cv::Mat busy;  // 255 where the skin's variation is well above the face's
};

// `channel` less its median over the spot size, and its local spread.
void residual(const cv::Mat& channel, int window, const cv::Mat& allowed, cv::Mat& difference, cv::Mat& spread,
              double& faceSpread)
{
    cv::Mat bytes, median;
    channel.convertTo(bytes, CV_8U);
    cv::medianBlur(bytes, median, window | 1);
    median.convertTo(median, CV_32F);
    difference = channel - median;
    faceSpread = spreadOf(difference, allowed);
    const double cap = 9 * faceSpread * faceSpread;
    cv::Mat squared = difference.mul(difference), weight;
    cv::min(squared, cap, squared);
    allowed.convertTo(weight, CV_32F, 1.0 / 255);
    cv::Mat sum, count;
    const cv::Size box(4 * window + 1, 4 * window + 1);
    cv::boxFilter(squared.mul(weight), sum, CV_32F, box);
    cv::boxFilter(weight, count, CV_32F, box);
    cv::sqrt(sum / cv::max(count, 1e-3), spread);
    spread = cv::max(spread, std::max(0.5 * faceSpread, 1.0));
}

Contrast contrastOf(const FaceSkin& face, int spotWidth)
{
    cv::Mat rgb;
    face.rgb.convertTo(rgb, CV_32F);
    cv::Mat c[3];
    cv::split(rgb, c);
    const cv::Mat luma = 0.2126f * c[0] + 0.7152f * c[1] + 0.0722f * c[2];
    const cv::Mat redness = c[0] - 0.5f * (c[1] + c[2]) + 128.0f;
    cv::Mat dL, sL, dA, sA;
    double faceL = 1, faceA = 1;
    residual(luma, 2 * spotWidth + 1, face.allowed, dL, sL, faceL);
    residual(redness, 2 * spotWidth + 1, face.allowed, dA, sA, faceA);
    // A spot differs from the skin by a few levels at least, whatever the
    // skin's own calm.
    cv::Mat darker = cv::max(-dL, 0.0f), lighter = cv::max(dL, 0.0f), redder = cv::max(dA, 0.0f);
    darker.setTo(0, darker < 3), lighter.setTo(0, lighter < 3), redder.setTo(0, redder < 4);
    Contrast contrast;
    const cv::Mat darkerScore = darker / sL, lighterScore = lighter / sL, redderScore = redder / sA;
    contrast.score = cv::max(cv::max(darkerScore, lighterScore), redderScore);
    contrast.score.setTo(0, face.allowed == 0);
    contrast.busy = sL > 2.5 * faceL;
    return contrast;
}

// Spots where the score reaches `threshold`, grown over half of it, no wider
// than `widest`, on clear skin: a spot among many others is texture
// (freckles, pores, stubble) and stays.
std::vector<cv::Vec3d> spotsAt(const Contrast& contrast, double threshold, double widest)
{
    cv::Mat labels, stats, centroids;
    const int count =
        cv::connectedComponentsWithStats(contrast.score >= threshold / 2, labels, stats, centroids, 8, CV_32S);
    std::vector<float> peak(size_t(count), 0.0f);
    for (int y = 0; y < labels.rows; ++y)
        for (int x = 0; x < labels.cols; ++x)
            peak[size_t(labels.at<int>(y, x))] = std::max(peak[size_t(labels.at<int>(y, x))], contrast.score.at<float>(y, x));
    std::vector<cv::Vec3d> spots; // x, y, diameter in working pixels
    for (int k = 1; k < count; ++k) {
        const double width = 2 * std::sqrt(stats.at<int>(k, cv::CC_STAT_AREA) / std::numbers::pi);
        const cv::Point2d at(centroids.at<double>(k, 0), centroids.at<double>(k, 1));
        if (peak[size_t(k)] < threshold || width > widest || contrast.busy.at<uchar>(cv::Point(at)))
            continue;
        int neighbours = 0;
        for (int other = 1; other < count; ++other)
            neighbours += other != k && cv::norm(at - cv::Point2d(centroids.at<double>(other, 0),
                                                                  centroids.at<double>(other, 1))) < 2 * widest;
        if (neighbours < 4)
            spots.push_back({at.x, at.y, std::max(width, 1.5)});
    }
    return spots;
}

// The healed area of a spot: beyond the spot's own soft edge, and the width
// over which the healing fades into the skin around it.
double healedRadius(double radius) { return 1.5 * radius + 1; }
double fadeWidth(double radius) { return std::max(1.0, 0.6 * healedRadius(radius)); }

// Whether a spot's healed and faded area lies on healable skin.
bool clearOfFeatures(const FaceSkin& face, QPointF centre, double radius)
{
    const double reach = healedRadius(radius) + fadeWidth(radius);
    for (int k = 0; k < 16; ++k) {
        const double angle = k * std::numbers::pi / 8;
        if (!face.allows(centre + reach * QPointF(std::cos(angle), std::sin(angle))))
            return false;
    }
    return face.allows(centre);
}

// One search of a photo for spots with one Size and Strength.
struct Search {
    FaceSkin face;
    Contrast contrast;
    double widest = 0; // the largest spot, in working pixels

    Search(const OpenedPhoto& photo, const HealBlemishes::Settings& s)
        : face(FaceSkin::of(photo, kWorkingWidth))
        , widest(std::max(2.0, double(s.f_Heal_Blemishes_Size) * kWorkingWidth / 100))
    {
        if (!face.isEmpty())
            contrast = contrastOf(face, int(std::ceil(widest)));
    }

    // The radius of a spot clicked, in photo pixels.
    double clickedRadius() const { return widest / face.scale / 2; }

    // The spots found, but those kept, in photo pixels.
    std::vector<HealBlemishes::Spot> found(const OpenedPhoto& photo, const HealBlemishes::Settings& s,
                                           const PointList& keptSpots) const
    {
        const double threshold = 7 - 4 * double(std::min<std::uint64_t>(s.u_Heal_Blemishes_Strength, 100)) / 100;
        std::vector<HealBlemishes::Spot> spots;
        for (const cv::Vec3d& w : spotsAt(contrast, threshold, widest)) {
            const HealBlemishes::Spot spot{QPointF(face.area.x + (w[0] + 0.5) / face.scale - 0.5,
                                                   face.area.y + (w[1] + 0.5) / face.scale - 0.5),
                                           w[2] / 2 / face.scale};
            const auto kept = std::find_if(keptSpots.begin(), keptSpots.end(), [&](QPointF p) {
                return QLineF(photo.pixelAtOpenedPercent(p), spot.centre).length() <= clickedRadius() + spot.radius;
            });
            if (kept == keptSpots.end() && clearOfFeatures(face, spot.centre, spot.radius))
                spots.push_back(spot);
        }
        return spots;
    }

    // And the spots clicked to heal.
    std::vector<HealBlemishes::Spot> healed(const OpenedPhoto& photo, const HealBlemishes::Settings& s,
                                            const PhotoEdits& edits) const
    {
        if (face.isEmpty())
            return {};
        std::vector<HealBlemishes::Spot> spots = found(photo, s, edits.array_Kept_Spots);
        for (QPointF percent : edits.array_Healed_Spots)
            spots.push_back({photo.pixelAtOpenedPercent(percent), clickedRadius()});
        return spots;
    }
};

// The skin a spot is healed with: a patch at about twice its healed reach,
// in the direction where the skin is calmest — its strongest spot first, so
// that no neighbouring spot is copied in as texture.
std::optional<QPointF> sourceFor(const FaceSkin& face, const cv::Mat& score, QPointF centre, double radius, QSize size)
{
    const double reach = healedRadius(radius) + fadeWidth(radius), away = 2.2 * reach;
    std::optional<QPointF> best;
    double calmest = 1e300;
    for (int k = 0; k < 8; ++k) {
        const QPointF at = centre + away * QPointF(std::cos(k * std::numbers::pi / 4), std::sin(k * std::numbers::pi / 4));
        if (!QRectF(QPointF(0, 0), QSizeF(size)).adjusted(reach + 4, reach + 4, -reach - 4, -reach - 4).contains(at)
            || !clearOfFeatures(face, at, radius))
            continue;
        const cv::Point w(int((at.x() - face.area.x) * face.scale), int((at.y() - face.area.y) * face.scale));
        const int r = std::max(1, int(reach * face.scale));
        const cv::Rect box = cv::Rect(w.x - r, w.y - r, 2 * r + 1, 2 * r + 1) & cv::Rect(0, 0, score.cols, score.rows);
        double peak = 1e300;
        if (box.area() > 0)
            cv::minMaxLoc(score(box), nullptr, &peak);
        const double restless = box.area() > 0 ? peak + cv::mean(score(box))[0] : 1e300;
        if (restless < calmest)
            calmest = restless, best = at;
    }
    return best;
}

// A stroke healed at once, as wide as a click heals, its texture from the
// skin beside it: the stroke moved across its own direction, to the side
// clear of the features.
void healStroke(QImage& picture, const FaceSkin& face, const OpenedPhoto& photo, const PointList& stroke, double radius)
{
    std::vector<cv::Point> path;
    for (QPointF percent : stroke) {
        const QPointF at = photo.pixelAtOpenedPercent(percent);
        path.emplace_back(int(std::lround(at.x())), int(std::lround(at.y())));
    }
    const double half = healedRadius(radius), fade = fadeWidth(radius);
    const cv::Rect bounds = cv::boundingRect(path);
    const int pad = int(std::ceil(half)) + 1;
    const cv::Point origin(bounds.x - pad, bounds.y - pad);
    cv::Mat mask = cv::Mat::zeros(bounds.height + 2 * pad, bounds.width + 2 * pad, CV_8U);
    std::vector<cv::Point> shifted;
    for (const cv::Point& at : path) {
        shifted.push_back(at - origin);
        cv::circle(mask, at - origin, int(std::ceil(half)), 255, cv::FILLED);
    }
    cv::polylines(mask, shifted, false, 255, 2 * int(std::ceil(half)) + 1);
    const QPointF along = QPointF(path.back().x - path.front().x, path.back().y - path.front().y);
    const double length = std::max(1.0, QLineF(QPointF(0, 0), along).length());
    const QPointF across = QPointF(-along.y(), along.x()) / length * 2.2 * (half + fade);
    std::optional<QPoint> source;
    for (const QPointF side : {across, -across})
        if (!source && std::ranges::all_of(path, [&](const cv::Point& at) { return face.allows(QPointF(at.x, at.y) + side); }))
            source = side.toPoint();
    healArea(picture, mask, QPoint(origin.x, origin.y), fade, std::max(1.0, half / 2), source,
             [&](QPointF at) { return face.allows(at); });
}

OpenedPhoto healedPhoto(const OpenedPhoto& photo, const HealBlemishes::Settings& s, const PhotoEdits& edits)
{
    OpenedPhoto healed = photo;
    const Search search(photo, s);
    const std::vector<HealBlemishes::Spot> spots = search.healed(photo, s, edits);
    const bool strokes = !search.face.isEmpty() && !edits.array_Heal_Strokes.isEmpty();
    if (spots.empty() && !strokes)
        return healed;
    healed.img_Basic = copied(toPicture(photo.img_Basic));
    for (const HealBlemishes::Spot& spot : spots)
        healDisc(healed.img_Basic, spot.centre, healedRadius(spot.radius), fadeWidth(spot.radius),
                 sourceFor(search.face, search.contrast.score, spot.centre, spot.radius, healed.img_Basic.size()),
                 [&](QPointF at) { return search.face.allows(at); });
    if (strokes)
        for (const PointList& stroke : edits.array_Heal_Strokes)
            healStroke(healed.img_Basic, search.face, photo, stroke, search.clickedRadius());
    return healed;
}

} // namespace

std::vector<HealBlemishes::Spot> HealBlemishes::spotsOf(const OpenedPhoto& photo, const Settings& s,
                                                        const PhotoEdits& edits)
{
    return Search(photo, s).healed(photo, s, edits);
}

double HealBlemishes::brushRadius(const OpenedPhoto& photo, const Settings& s)
{
    const FaceLandmarks& p = photo.facePointsRelativeToImageSize;
    if (p.size() < kLandmarkCount)
        return 0;
    const double faceWidth = QLineF(p[0], p[16]).length();
    return std::max(2.0, double(s.f_Heal_Blemishes_Size) * kWorkingWidth / 100) * faceWidth / kWorkingWidth / 2;
}

HealBlemishes::Outcome HealBlemishes::outcomeOf(const OpenedPhoto& photo, const Settings& s, const PhotoEdits& edits)
{
    const Search search(photo, s);
    Outcome outcome{search.healed(photo, s, edits), {}};
    if (!search.face.isEmpty())
        for (QPointF percent : edits.array_Kept_Spots)
            outcome.kept.push_back({photo.pixelAtOpenedPercent(percent), search.clickedRadius()});
    return outcome;
}

const char* HealBlemishes::click(const OpenedPhoto& photo, const Settings& s, PhotoEdits& edits, QPointF percent)
{
    const Search search(photo, s);
    if (search.face.isEmpty())
        return nullptr;
    const QPointF at = photo.pixelAtOpenedPercent(percent);
    const double size = search.clickedRadius();
    PointList& healed = edits.array_Healed_Spots;
    for (qsizetype i = 0; i < healed.size(); ++i)
        if (QLineF(photo.pixelAtOpenedPercent(healed[i]), at).length() <= size) {
            healed.removeAt(i);
            return kKeepSpot;
        }
    for (const Spot& spot : search.found(photo, s, edits.array_Kept_Spots))
        if (QLineF(spot.centre, at).length() <= std::max(spot.radius, size)) {
            edits.array_Kept_Spots.append(percent);
            return kKeepSpot;
        }
    healed.append(percent);
    return kHealSpot;
}

void HealBlemishes::heal(EffectPass& pass, const Settings& s, Memos& memos)
{
    const OpenedPhoto& photo = *pass.photo;
    const PhotoEdits& edits = pass.photoEdits;
    const Key key{pass.photoKey(),          s.f_Heal_Blemishes_Size, s.u_Heal_Blemishes_Strength,
                  edits.array_Healed_Spots, edits.array_Kept_Spots,  edits.array_Heal_Strokes};
    pass.photo = &memos.healed.get(key, [&](OpenedPhoto& healed) { healed = healedPhoto(photo, s, edits); });
}

namespace {

class SpotTool final : public PhotoTool {
public:
    explicit SpotTool(HealBlemishes::Settings& s)
        : s_(s)
    {
    }

    bool isOn() const override { return s_.b_Activated_Heal_Spots; }

    void press(const ToolPointer& at, ToolTarget&) override
    {
        pressedAt_ = at.view;
        stroke_ = {topDown(at.percent)};
    }

    // A press that moves 5 view pixels or more is a stroke: it heals along
    // its path, drawn over the preview until it is let go.
    void drag(const ToolPointer& at, ToolTarget& target) override
    {
        if (!pressedAt_ || (stroke_.size() < 2 && QLineF(*pressedAt_, at.view).length() < 5))
            return;
        stroke_.append(topDown(at.percent));
        target.overlayChanged();
    }

    void release(const ToolPointer& at, ToolTarget& target) override
    {
        const std::optional<QPointF> pressed = std::exchange(pressedAt_, std::nullopt);
        const PointList stroke = std::exchange(stroke_, {});
        if (stroke.size() >= 2) {
            target.photoEdits().array_Heal_Strokes.append(stroke);
            target.photoEdited(QCoreApplication::translate("EditHistory", HealBlemishes::kHealStroke));
            return;
        }
        const QPointF p = at.percent;
        if (!pressed || QLineF(*pressed, at.view).length() >= 5 || p.x() < 0 || p.x() > 100 || p.y() < 0 || p.y() > 100)
            return;
        if (const char* step = HealBlemishes::click(target.openedPhoto(), s_, target.photoEdits(), topDown(p)))
            target.photoEdited(QCoreApplication::translate("EditHistory", step));
    }

    std::optional<QCursor> hover(const ToolPointer&, const ToolTarget&) override { return QCursor(Qt::CrossCursor); }

    QString hint() const override
    {
        return QCoreApplication::translate("Effects",
                                           "Click a spot to heal it, a healed spot to keep it; drag to heal along a line");
    }

    // "Show spots": each healed spot ringed green where it is healed, each
    // mark kept ringed orange and dashed.
    void paintOverlay(QPainter& painter, const QTransform& toView, const ToolTarget& target) override
    {
        paintStroke(painter, toView, target);
        if (!shown())
            return;
        const HealBlemishes::Outcome& found = outcomeOn(target);
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setBrush(Qt::NoBrush);
        const auto ring = [&](const HealBlemishes::Spot& spot) {
            const double r = std::max(3.0, (1.5 * spot.radius + 1) * toView.m11());
            painter.drawEllipse(toView.map(spot.centre), r, r);
        };
        painter.setPen(QPen(QColor(40, 230, 120), 1.5));
        std::ranges::for_each(found.healed, ring);
        painter.setPen(QPen(QColor(255, 165, 0), 1.5, Qt::DashLine));
        std::ranges::for_each(found.kept, ring);
        painter.restore();
    }

    QString overlayNote(const ToolTarget& target) override
    {
        if (!shown())
            return {};
        const HealBlemishes::Outcome& found = outcomeOn(target);
        const auto count = [](std::size_t n, const char* one, const char* many) {
            return n == 1 ? QCoreApplication::translate("Effects", one)
                          : QCoreApplication::translate("Effects", many).arg(n);
        };
        return count(found.healed.size(), "1 spot healed", "%1 spots healed") + ", "
               + count(found.kept.size(), "1 mark kept", "%1 marks kept");
    }

private:
    bool shown() const { return s_.b_Heal_Blemishes && s_.b_Show_Spots; }
    static QPointF topDown(QPointF percent) { return {percent.x(), 100 - percent.y()}; }

    // The stroke under way, as wide as it heals.
    void paintStroke(QPainter& painter, const QTransform& toView, const ToolTarget& target) const
    {
        if (stroke_.size() < 2)
            return;
        const OpenedPhoto& photo = target.openedPhoto();
        QPolygonF path;
        for (QPointF percent : stroke_)
            path << toView.map(photo.pixelAtOpenedPercent(percent));
        const double width = 2 * HealBlemishes::brushRadius(photo, s_) * toView.m11();
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(QColor(40, 230, 120, 110), std::max(2.0, width), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPolyline(path);
        painter.restore();
    }

    // Found again only when the photo, the settings or the clicks changed.
    const HealBlemishes::Outcome& outcomeOn(const ToolTarget& target)
    {
        const OpenedPhoto& photo = target.openedPhoto();
        const PhotoEdits& edits = target.photoEdits();
        const HealBlemishes::Key key{photo.img_Basic.cacheKey(), s_.f_Heal_Blemishes_Size,
                                     s_.u_Heal_Blemishes_Strength, edits.array_Healed_Spots, edits.array_Kept_Spots, {}};
        return outcome_.get(key, [&](HealBlemishes::Outcome& made) { made = HealBlemishes::outcomeOf(photo, s_, edits); });
    }

    HealBlemishes::Settings& s_;
    std::optional<QPointF> pressedAt_; // view pixels, y down
    PointList stroke_;                 // percent of the photo, y from the top
    Memo<HealBlemishes::Key, HealBlemishes::Outcome> outcome_;
};

} // namespace

void HealBlemishes::addTools(Settings& s, std::vector<std::unique_ptr<PhotoTool>>& tools)
{
    tools.push_back(std::make_unique<SpotTool>(s));
}
