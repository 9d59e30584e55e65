#include "HealBlemishes.h"

#include "BlemishMap.h"
#include "FaceSkin.h"
#include "FrequencyHeal.h"
#include "Picture.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <map>
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
          .meaning = QT_TRANSLATE_NOOP("Effects", "The largest spot healed, in percent of the face's width; "
                                                  "a larger mark, such as a mole, stays"),
          .unit = "%"},
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

// The largest spot, in working pixels, for a Size in percent of the face.
double widestAt(float size) { return std::max(2.0, double(size) * kWorkingWidth / 100); }

// The healed area of a spot: beyond the spot's own soft edge, and the width
// over which the healing fades into the skin around it.
double healedRadius(double radius) { return 2 * radius + 1; }
double fadeWidth(double radius) { return std::max(1.0, 0.6 * healedRadius(radius)); }

// The skin's own grain, in working pixels: a mark healed under its own
// texture keeps only what is finer (its pores), not its spots.
constexpr double kGrain = 0.7;

// Whether a disc lies on healable skin (a heal's fade may reach into the
// margin the skin keeps from the features and the face's edge).
bool clearOfFeatures(const FaceSkin& face, QPointF centre, double reach)
{
    for (int k = 0; k < 16; ++k) {
        const double angle = k * std::numbers::pi / 8;
        if (!face.allows(centre + reach * QPointF(std::cos(angle), std::sin(angle))))
            return false;
    }
    return face.allows(centre);
}

} // namespace

// The face's skin and every mark on it for one Size: what Strength, the
// clicks and the kept marks only choose from.
struct HealBlemishes::Search {
    FaceSkin face;
    BlemishMap map;
    double widest = 0; // the largest spot, in working pixels

    cv::Mat kept;      // 255 over the marks kept for what they are (moles, freckles), a little wider

    Search(const OpenedPhoto& photo, float size)
        : face(FaceSkin::of(photo, kWorkingWidth))
        , map(BlemishMap::of(face, widestAt(size)))
        , widest(widestAt(size))
    {
        if (face.isEmpty())
            return;
        kept = map.areaOf([](const BlemishMark& mark) { return mark.isKeptAsItIs(); });
    }

    // Where healing a spot may change the photo: the skin, but a mark kept
    // for what it is, however near a spot.
    bool healable(QPointF photoPoint) const { return face.allows(photoPoint) && !kept.at<uchar>(working(photoPoint)); }

    // Whether a photo pixel stands out of the skin around it.
    bool standsOut(QPointF photoPoint) const
    {
        const cv::Point w = working(photoPoint);
        return w.inside(cv::Rect(0, 0, map.contrast.cols, map.contrast.rows))
               && map.contrast.at<float>(w) >= BlemishMap::kEdge;
    }

    // Where a heal may change the photo: one clicked or a stroke whatever it
    // covers on the skin, one found sparing the marks kept.
    std::function<bool(QPointF)> allowsFor(const HealBlemishes::Spot& spot) const
    {
        if (!spot.area)
            return [this](QPointF at) { return face.allows(at); };
        return [this](QPointF at) { return healable(at); };
    }

    cv::Point working(QPointF photoPoint) const
    {
        return {int(std::floor((photoPoint.x() - face.area.x) * face.scale)),
                int(std::floor((photoPoint.y() - face.area.y) * face.scale))};
    }

    QPointF inPhoto(cv::Point2d working) const
    {
        return {face.area.x + (working.x + 0.5) / face.scale - 0.5, face.area.y + (working.y + 0.5) / face.scale - 0.5};
    }

    // A mark where it lies on the photo, as a spot of its size, its area and group.
    HealBlemishes::Spot spotOf(const BlemishMark& mark) const
    {
        return {inPhoto(mark.centre), std::max(mark.diameter, 1.5) / 2 / face.scale, mark.label, mark.group};
    }

    // Whether a found spot is touching spots seen as one mark wider than Size.
    bool isWide(const HealBlemishes::Spot& spot) const { return 2 * spot.radius * face.scale > widest; }

    // The fade of an area of spots healed at once: over half of Size, as the
    // skin's shade under a wide area may differ from that beside it.
    double areaFade(double typical) const { return std::max(fadeWidth(typical), widest / face.scale / 2); }

    // The radius of a spot clicked, in photo pixels.
    double clickedRadius() const { return widest / face.scale / 2; }

    // The marks healed at this Strength, but those kept, in photo pixels.
    std::vector<HealBlemishes::Spot> found(const OpenedPhoto& photo, const HealBlemishes::Settings& s,
                                           const PointList& keptSpots) const
    {
        const double threshold = BlemishMap::thresholdFor(s.u_Heal_Blemishes_Strength);
        std::vector<HealBlemishes::Spot> spots;
        std::map<int, int> inGroup;
        for (const BlemishMark& mark : map.marks) {
            if (!mark.heals() || mark.peak < threshold)
                continue;
            const HealBlemishes::Spot spot = spotOf(mark);
            const auto kept = std::find_if(keptSpots.begin(), keptSpots.end(), [&](QPointF p) {
                return QLineF(photo.pixelAtOpenedPercent(p), spot.centre).length() <= clickedRadius() + spot.radius;
            });
            if (kept == keptSpots.end() && clearOfFeatures(face, spot.centre, spot.radius + 1)) {
                spots.push_back(spot);
                ++inGroup[mark.group];
            }
        }
        // A spot wider than Size is spots that touch: an area too.
        for (HealBlemishes::Spot& spot : spots)
            if (inGroup[spot.cluster] < 2 && !isWide(spot))
                spot.cluster = 0;
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

namespace {

// The skin a spot is healed with: a patch on the skin where nothing stands
// out (its texture is copied in: a neighbouring spot, found or too faint to
// be, would come with it), the nearest such of several rings around the
// spot, else the calmest of them.
std::optional<QPointF> sourceFor(const HealBlemishes::Search& search, QPointF centre, double radius, QSize size)
{
    const FaceSkin& face = search.face;
    const cv::Mat& contrast = search.map.contrast;
    const double reach = healedRadius(radius) + fadeWidth(radius);
    const QRectF inside = QRectF(QPointF(0, 0), QSizeF(size)).adjusted(reach + 4, reach + 4, -reach - 4, -reach - 4);
    const int r = std::max(1, int(reach * face.scale));
    std::optional<QPointF> best;
    double calmest = 1e300;
    for (double away : {1.6 * reach, 2.2 * reach, 3.0 * reach})
        for (int k = 0; k < 16; ++k) {
            const double angle = k * std::numbers::pi / 8;
            const QPointF at = centre + away * QPointF(std::cos(angle), std::sin(angle));
            const cv::Point w(int((at.x() - face.area.x) * face.scale), int((at.y() - face.area.y) * face.scale));
            const cv::Rect box = cv::Rect(w.x - r, w.y - r, 2 * r + 1, 2 * r + 1);
            // On the skin: the patch inside the face's working picture, nine tenths of it skin.
            if (!inside.contains(at) || (box & cv::Rect(0, 0, contrast.cols, contrast.rows)) != box
                || cv::countNonZero(face.allowed(box)) < 0.9 * box.area())
                continue;
            double restless = 0;
            cv::minMaxLoc(contrast(box), nullptr, &restless, nullptr, nullptr, face.allowed(box));
            if (restless < BlemishMap::kEdge)
                return at;
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

// Where a found spot heals, in photo pixels: a disc out to its diameter;
// for touching spots seen as one wider mark, its own area a quarter of Size
// wider (a disc that wide would wash out the skin between them).
QRect healedBounds(const HealBlemishes::Search& search, const HealBlemishes::Spot& spot)
{
    if (!search.isWide(spot)) {
        const double r = healedRadius(spot.radius);
        return QRectF(spot.centre - QPointF(r, r), QSizeF(2 * r, 2 * r)).toAlignedRect();
    }
    const cv::Rect working = cv::boundingRect(search.map.areas == spot.area);
    const double grow = search.widest / 4 + 1;
    const QPointF from = search.inPhoto(cv::Point2d(working.x - grow, working.y - grow));
    const QPointF to = search.inPhoto(cv::Point2d(working.br().x + grow, working.br().y + grow));
    return QRectF(from, to).toAlignedRect();
}

void paintHealed(cv::Mat& mask, QPoint origin, const HealBlemishes::Search& search, const HealBlemishes::Spot& spot)
{
    if (!search.isWide(spot)) {
        const double core = spot.radius + 1, reach = healedRadius(spot.radius);
        for (int y = 0; y < mask.rows; ++y)
            for (int x = 0; x < mask.cols; ++x) {
                const QPointF at(origin.x() + x, origin.y() + y);
                const double d = QLineF(at, spot.centre).length();
                if (d <= core || (d <= reach && search.standsOut(at)))
                    mask.at<uchar>(y, x) = 255;
            }
        return;
    }
    const FaceSkin& face = search.face;
    const int grow = int(search.widest / 4) + 1;
    cv::Mat working;
    cv::dilate(search.map.areas == spot.area, working,
               cv::getStructuringElement(cv::MORPH_ELLIPSE, {2 * grow + 1, 2 * grow + 1}));
    for (int y = 0; y < mask.rows; ++y)
        for (int x = 0; x < mask.cols; ++x) {
            const cv::Point w(int(std::floor((origin.x() + x - face.area.x) * face.scale)),
                              int(std::floor((origin.y() + y - face.area.y) * face.scale)));
            if (w.inside(cv::Rect(0, 0, working.cols, working.rows)) && working.at<uchar>(w))
                mask.at<uchar>(y, x) = 255;
        }
}

// A spot healed: one clicked (it names no area) as a disc over whatever it
// covers; one found over its own extent — what stands out of the skin
// within its healed disc, its halo with it — sparing the marks kept around.
void healSpot(QImage& picture, const HealBlemishes::Search& search, const HealBlemishes::Spot& spot)
{
    const std::optional<QPointF> source = sourceFor(search, spot.centre, spot.radius, picture.size());
    if (!spot.area) {
        healDisc(picture, spot.centre, healedRadius(spot.radius), fadeWidth(spot.radius), source,
                 search.allowsFor(spot));
        return;
    }
    const QRect box = healedBounds(search, spot).adjusted(-1, -1, 1, 1);
    cv::Mat mask = cv::Mat::zeros(box.height(), box.width(), CV_8U);
    paintHealed(mask, box.topLeft(), search, spot);
    const std::optional<QPoint> offset = source ? std::optional((*source - spot.centre).toPoint()) : std::nullopt;
    healArea(picture, mask, box.topLeft(), fadeWidth(spot.radius), std::max(1.0, healedRadius(spot.radius) / 2), offset,
             search.allowsFor(spot));
}

// Touching spots seen as one wider mark, healed alone: the new shading under
// its own texture.
void healWide(QImage& picture, const HealBlemishes::Search& search, const HealBlemishes::Spot& spot, double typical)
{
    const QRect box = healedBounds(search, spot).adjusted(-1, -1, 1, 1);
    cv::Mat mask = cv::Mat::zeros(box.height(), box.width(), CV_8U);
    paintHealed(mask, box.topLeft(), search, spot);
    healArea(picture, mask, box.topLeft(), search.areaFade(typical), std::max(1.0, healedRadius(typical) / 2), QPoint(0, 0),
             search.allowsFor(spot), std::max(1.0, kGrain / search.face.scale));
}

// Touching spots healed as one area: the union of what each would heal
// alone, its texture from skin clear of them, its shading parted from the
// texture at the scale of a typical spot (a wide blur would flatten the
// area and carry the features' colours in). A cluster wider than four
// spots, or with no clear skin near enough to take its texture from, is
// healed spot by spot instead, its wide marks keeping their own texture
// under the new shading: never a flat patch.
void healCluster(QImage& picture, const HealBlemishes::Search& search, const std::vector<HealBlemishes::Spot>& spots)
{
    QRect box;
    std::vector<double> radii;
    const double widest = search.widest / search.face.scale;
    for (const HealBlemishes::Spot& spot : spots) {
        box |= healedBounds(search, spot);
        radii.push_back(std::min(spot.radius, widest / 2));
    }
    std::ranges::nth_element(radii, radii.begin() + std::ptrdiff_t(radii.size() / 2));
    const double typical = radii[radii.size() / 2];
    box = box.adjusted(-1, -1, 1, 1);
    const QPointF centre = QRectF(box).center();
    const double radius = std::max(box.width(), box.height()) / 2.0;
    const std::optional<QPointF> source = 2 * radius * search.face.scale <= 4 * search.widest
                                              ? sourceFor(search, centre, radius, picture.size())
                                              : std::nullopt;
    if (!source) {
        for (const HealBlemishes::Spot& spot : spots)
            if (!search.isWide(spot))
                healSpot(picture, search, spot);
            else
                healWide(picture, search, spot, typical);
        return;
    }
    cv::Mat mask = cv::Mat::zeros(box.height(), box.width(), CV_8U);
    for (const HealBlemishes::Spot& spot : spots)
        paintHealed(mask, box.topLeft(), search, spot);
    healArea(picture, mask, box.topLeft(), search.areaFade(typical), std::max(1.0, healedRadius(typical) / 2),
             (*source - centre).toPoint(), search.allowsFor(spots.front()));
}

OpenedPhoto healedPhoto(const OpenedPhoto& photo, const HealBlemishes::Search& search, const HealBlemishes::Settings& s,
                        const PhotoEdits& edits)
{
    OpenedPhoto healed = photo;
    const std::vector<HealBlemishes::Spot> spots = search.healed(photo, s, edits);
    const bool strokes = !search.face.isEmpty() && !edits.array_Heal_Strokes.isEmpty();
    if (spots.empty() && !strokes)
        return healed;
    healed.img_Basic = copied(toPicture(photo.img_Basic));
    std::map<int, std::vector<HealBlemishes::Spot>> clusters;
    for (const HealBlemishes::Spot& spot : spots)
        if (spot.cluster)
            clusters[spot.cluster].push_back(spot);
        else
            healSpot(healed.img_Basic, search, spot);
    for (const auto& [cluster, together] : clusters)
        healCluster(healed.img_Basic, search, together);
    if (strokes)
        for (const PointList& stroke : edits.array_Heal_Strokes)
            healStroke(healed.img_Basic, search.face, photo, stroke, search.clickedRadius());
    return healed;
}

} // namespace

std::vector<HealBlemishes::Spot> HealBlemishes::spotsOf(const OpenedPhoto& photo, const Settings& s,
                                                        const PhotoEdits& edits)
{
    return Search(photo, s.f_Heal_Blemishes_Size).healed(photo, s, edits);
}

std::vector<HealBlemishes::Judged> HealBlemishes::judgedMarks(const OpenedPhoto& photo, const Settings& s)
{
    const Search search(photo, s.f_Heal_Blemishes_Size);
    std::vector<Judged> judged;
    for (const BlemishMark& mark : search.map.marks)
        judged.push_back({search.spotOf(mark), mark});
    return judged;
}

double HealBlemishes::brushRadius(const OpenedPhoto& photo, const Settings& s)
{
    const FaceLandmarks& p = photo.facePointsRelativeToImageSize;
    if (p.size() < kLandmarkCount)
        return 0;
    const double faceWidth = QLineF(p[0], p[16]).length();
    return widestAt(s.f_Heal_Blemishes_Size) * faceWidth / kWorkingWidth / 2;
}

namespace {

HealBlemishes::Outcome outcomeOnFace(const OpenedPhoto& photo, const HealBlemishes::Settings& s, const PhotoEdits& edits)
{
    const HealBlemishes::Search search(photo, s.f_Heal_Blemishes_Size);
    HealBlemishes::Outcome outcome{search.healed(photo, s, edits), {}};
    if (search.face.isEmpty())
        return outcome;
    const double threshold = BlemishMap::thresholdFor(s.u_Heal_Blemishes_Strength);
    for (const BlemishMark& mark : search.map.marks)
        if (mark.isKeptAsItIs() && mark.peak >= threshold)
            outcome.kept.push_back(search.spotOf(mark));
    for (QPointF percent : edits.array_Kept_Spots)
        outcome.kept.push_back({photo.pixelAtOpenedPercent(percent), search.clickedRadius()});
    return outcome;
}

} // namespace

HealBlemishes::Outcome HealBlemishes::outcomeOf(const OpenedPhoto& photo, const Settings& s, const PhotoEdits& edits)
{
    if (photo.faceCount() == 1)
        return outcomeOnFace(photo, s, edits);
    Outcome all;
    for (int face = 0; face < photo.faceCount(); ++face) {
        if (edits.facesLeftOut.contains(face))
            continue;
        Outcome one = outcomeOnFace(photo.asFace(face), s, edits.ofFace(photo, face));
        all.healed.insert(all.healed.end(), one.healed.begin(), one.healed.end());
        all.kept.insert(all.kept.end(), one.kept.begin(), one.kept.end());
    }
    return all;
}

// A click belongs to the face nearest it: that face's spots decide.
const char* HealBlemishes::click(const OpenedPhoto& opened, const Settings& s, PhotoEdits& edits, QPointF percent)
{
    const OpenedPhoto photo = opened.asFace(opened.faceAt(opened.pixelAtOpenedPercent(percent)));
    const Search search(photo, s.f_Heal_Blemishes_Size);
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
    const Search& search = *memos.search.get({key.photo, key.size}, [&](std::shared_ptr<const Search>& made) {
        made = std::make_shared<const Search>(photo, s.f_Heal_Blemishes_Size);
    });
    pass.photo = &memos.healed.get(key, [&](OpenedPhoto& healed) { healed = healedPhoto(photo, search, s, edits); });
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
        stroke_ = {at.percentFromTop()};
    }

    // A press that moves 5 view pixels or more is a stroke: it heals along
    // its path, drawn over the preview until it is let go.
    void drag(const ToolPointer& at, ToolTarget& target) override
    {
        if (!pressedAt_ || (stroke_.size() < 2 && QLineF(*pressedAt_, at.view).length() < 5))
            return;
        stroke_.append(at.percentFromTop());
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
        if (const char* step = HealBlemishes::click(target.openedPhoto(), s_, target.photoEdits(), at.percentFromTop()))
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
        if (stroke_.size() >= 2) // the stroke under way, as wide as it heals
            paintStrokeUnderWay(painter, toView, target.openedPhoto(), stroke_,
                                2 * HealBlemishes::brushRadius(target.openedPhoto(), s_), QColor(40, 230, 120, 110));
        if (!shown())
            return;
        const HealBlemishes::Outcome& found = outcomeOn(target);
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setBrush(Qt::NoBrush);
        const auto ring = [&](const HealBlemishes::Spot& spot) {
            const double r = std::max(3.0, healedRadius(spot.radius) * toView.m11());
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
