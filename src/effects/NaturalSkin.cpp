#include "NaturalSkin.h"

#include "BlemishMap.h"
#include "Picture.h"
#include "SkinBands.h"

#include <QPainter>

#include <opencv2/imgproc.hpp>

const PanelDescription& NaturalSkin::panel()
{
    static const PanelDescription panel{
        row.label,
        {{ControlKind::Apply, "b_Natural_Skin", "checkApply"},
         {.kind = ControlKind::Slider,
          .field = "u_Natural_Skin_Evenness",
          .control = "slider_Evenness",
          .label = {QT_TRANSLATE_NOOP("Effects", "Evenness")},
          .caption = "label_Evenness",
          .value = "label_Evenness_Value",
          .meaning = QT_TRANSLATE_NOOP("Effects", "How much of the skin's blotches, redness and small shadows is "
                                                  "evened, in percent; the light that shapes the face stays"),
          .unit = "%"},
         {.kind = ControlKind::Slider,
          .field = "u_Natural_Skin_Texture",
          .control = "slider_Texture",
          .label = {QT_TRANSLATE_NOOP("Effects", "Texture")},
          .caption = "label_Texture",
          .value = "label_Texture_Value",
          .meaning = QT_TRANSLATE_NOOP("Effects", "The skin's pores and fine texture, in percent of what they are: "
                                                  "100 keeps them, less softens them, more brings them out"),
          .unit = "%"},
         {.kind = ControlKind::Slider,
          .field = "f_Natural_Skin_Detail_Size",
          .control = "slider_Detail_Size",
          .label = {QT_TRANSLATE_NOOP("Effects", "Detail size")},
          .caption = "label_Detail_Size",
          .value = "label_Detail_Size_Value",
          .meaning = QT_TRANSLATE_NOOP("Effects", "The size below which detail counts as texture, in percent of "
                                                  "the face's width"),
          .unit = "%"},
         {ControlKind::Mode, "b_Activated_Add_Skin", "checkAddSkin", {QT_TRANSLATE_NOOP("Effects", "Add skin")}},
         {ControlKind::Mode, "b_Activated_Remove_Skin", "checkRemoveSkin", {QT_TRANSLATE_NOOP("Effects", "Remove skin")}},
         {.kind = ControlKind::Slider,
          .field = "f_Natural_Skin_Brush_Size",
          .control = "slider_Brush_Size",
          .label = {QT_TRANSLATE_NOOP("Effects", "Brush size")},
          .caption = "label_Brush_Size",
          .value = "label_Brush_Size_Value",
          .meaning = QT_TRANSLATE_NOOP("Effects", "The width of the skin brushes, in percent of the face's width"),
          .unit = "%"},
         {.kind = ControlKind::Slider,
          .field = "u_Natural_Skin_Brush_Softness",
          .control = "slider_Brush_Softness",
          .label = {QT_TRANSLATE_NOOP("Effects", "Softness")},
          .caption = "label_Brush_Softness",
          .value = "label_Brush_Softness_Value",
          .meaning = QT_TRANSLATE_NOOP("Effects", "How softly a brush stroke's edge fades, in percent of its radius"),
          .unit = "%"},
         {ControlKind::Toggle, "b_Show_Skin_Mask", "checkShowSkinMask", {QT_TRANSLATE_NOOP("Effects", "Show mask")}}}};
    return panel;
}

namespace {

// The skin is parted on the face brought down to this width: the same face
// evens the same from a 12 MP and a 64 MP photo, at the same cost. A
// smaller face is parted as it is: brought up, its finest band would be
// finer than a pixel of the photo.
constexpr double kWorkingWidth = 400;

// Above this, in percent of the face's width, detail is the face's shape
// and light: a Gaussian this wide spans about 6 % of the face, and the
// shading of the nose, the cheekbones and the jaw is wider.
constexpr double kCoarse = 2.5;

// The skin's edge fades over this, in percent of the face's width: within
// the margin the skin keeps from the features, so they stay to the bit.
constexpr double kSoftEdge = 0.4;

// The largest mark judged for what it is (a mole, a freckle), in percent
// of the face's width: as the healing judges them by default.
constexpr double kMarkSize = 3;

double workingPixels(double percentOfFace, const FaceSkin& skin) { return percentOfFace * skin.workingWidth / 100; }

double workingWidthFor(const OpenedPhoto& photo)
{
    const FaceLandmarks& p = photo.facePointsRelativeToImageSize;
    return p.size() < kLandmarkCount ? kWorkingWidth : std::min(kWorkingWidth, QLineF(p[0], p[16]).length());
}

// The strokes of one brush at the working scale: 1 under them, their edge
// fading over Softness of their radius.
cv::Mat brushed(const OpenedPhoto& photo, const FaceSkin& skin, const QList<PointList>& strokes,
                const NaturalSkin::Settings& s)
{
    cv::Mat painted = cv::Mat::zeros(skin.allowed.size(), CV_32F);
    if (strokes.isEmpty())
        return painted;
    const double radius = workingPixels(s.f_Natural_Skin_Brush_Size, skin) / 2;
    const auto working = [&](QPointF percent) {
        const QPointF at = photo.pixelAtOpenedPercent(percent);
        return cv::Point2d((at.x() - skin.area.x) * skin.scale, (at.y() - skin.area.y) * skin.scale);
    };
    for (const PointList& stroke : strokes)
        for (qsizetype i = 0; i < stroke.size(); ++i)
            cv::line(painted, working(stroke[i]), working(stroke[std::max<qsizetype>(i - 1, 0)]), 1.0,
                     std::max(1, int(std::lround(2 * radius))), cv::LINE_AA);
    if (const double soft = double(s.u_Natural_Skin_Brush_Softness) / 100 * radius / 2; soft > 0.3)
        cv::GaussianBlur(painted, painted, {0, 0}, soft);
    return painted;
}

// Where the added strokes reach, photo pixels.
QRect addedOver(const OpenedPhoto& photo, const NaturalSkin::Settings& s, const PhotoEdits& edits)
{
    const FaceLandmarks& p = photo.facePointsRelativeToImageSize;
    if (p.size() < kLandmarkCount)
        return {};
    const double radius = s.f_Natural_Skin_Brush_Size / 100 * QLineF(p[0], p[16]).length() / 2 + 1;
    QRectF over;
    for (const PointList& stroke : edits.array_Skin_Added_Strokes)
        for (QPointF percent : stroke)
            over |= QRectF(photo.pixelAtOpenedPercent(percent) - QPointF(radius, radius), QSizeF(2 * radius, 2 * radius));
    return over.toAlignedRect();
}

NaturalSkin::Skin skinOf(const OpenedPhoto& photo, const NaturalSkin::Settings& s, const PhotoEdits& edits)
{
    NaturalSkin::Skin skin{FaceSkin::of(photo, workingWidthFor(photo), addedOver(photo, s, edits)), {}, {}, {}};
    if (skin.face.isEmpty())
        return skin;
    skin.added = brushed(photo, skin.face, edits.array_Skin_Added_Strokes, s);
    skin.removed = brushed(photo, skin.face, edits.array_Skin_Removed_Strokes, s);
    skin.face.allowed = (skin.face.allowed | (skin.added > 0.5f)) & ~(skin.removed > 0.5f);
    // Moles, freckles and a dark brown mark wider than a spot (a large mole,
    // a birthmark) stay as they are and take no part in the skin's bands (a
    // dark mole would leave a light halo evened dark around it); the skin
    // around them is evened, the soft edge kept off them. Blotches, however
    // wide, are evened.
    skin.kept = BlemishMap::of(skin.face, workingPixels(kMarkSize, skin.face)).areaOf([](const BlemishMark& m) {
        return m.isKeptAsItIs() || (m.kind == BlemishMark::Kind::Large && m.darker >= 8 && m.redder <= m.darker && m.elongation < 2);
    });
    return skin;
}

NaturalSkin::Band bandOf(const NaturalSkin::Skin& found, const NaturalSkin::Settings& s)
{
    NaturalSkin::Band band{found.face, {}, {}};
    if (band.skin.isEmpty())
        return band;
    const double soft = workingPixels(kSoftEdge, band.skin);
    const cv::Mat skin = band.skin.allowed & ~found.kept;
    // Detail finer than a pixel is all texture.
    const double fine = std::max(1.0, workingPixels(s.f_Natural_Skin_Detail_Size, band.skin));
    band.medium = mediumBandOf(band.skin.rgb, skin, fine, workingPixels(kCoarse, band.skin));
    // What is finer than Detail size in it is texture's: left out.
    cv::GaussianBlur(band.medium, band.medium, {0, 0}, 0.7 * fine);
    // The soft edge lies within the skin: beyond it, nothing changes but
    // what a brush added, by its own soft edge.
    const int clear = 2 * int(std::ceil(2 * soft)) + 1;
    cv::Mat apart, inner;
    cv::dilate(found.kept, apart, cv::getStructuringElement(cv::MORPH_ELLIPSE, {clear, clear}));
    cv::erode(band.skin.allowed & ~apart, inner, cv::getStructuringElement(cv::MORPH_ELLIPSE, {clear, clear}));
    inner.convertTo(band.weight, CV_32F, 1.0 / 255);
    cv::GaussianBlur(band.weight, band.weight, {0, 0}, soft);
    band.weight.setTo(0, ~skin);
    band.weight = cv::max(band.weight, found.added).mul(1 - found.removed);
    band.weight.setTo(0, (band.weight < 1e-3f) | found.kept);
    return band;
}

NaturalSkin::Band bandOf(const OpenedPhoto& photo, const NaturalSkin::Settings& s, const PhotoEdits& edits)
{
    return bandOf(skinOf(photo, s, edits), s);
}

NaturalSkin::BandKey bandKeyOf(qint64 photo, const NaturalSkin::Settings& s, const PhotoEdits& edits)
{
    const bool brushed = !edits.array_Skin_Added_Strokes.isEmpty() || !edits.array_Skin_Removed_Strokes.isEmpty();
    return {{photo, brushed ? s.f_Natural_Skin_Brush_Size : 0, brushed ? s.u_Natural_Skin_Brush_Softness : 0,
             edits.array_Skin_Added_Strokes, edits.array_Skin_Removed_Strokes},
            s.f_Natural_Skin_Detail_Size};
}

OpenedPhoto evenedWith(const OpenedPhoto& photo, const NaturalSkin::Band& band, const NaturalSkin::Settings& s)
{
    OpenedPhoto evened = photo;
    if (band.skin.isEmpty() || (s.u_Natural_Skin_Evenness == 0 && s.u_Natural_Skin_Texture == 100))
        return evened;
    evened.img_Basic = copied(toPicture(photo.img_Basic));
    const cv::Rect& a = band.skin.area;
    const double fine = std::max(1.0, workingPixels(s.f_Natural_Skin_Detail_Size, band.skin)) / band.skin.scale;
    applySkinChange(evened.img_Basic, QRect(a.x, a.y, a.width, a.height),
                    band.medium * -(double(s.u_Natural_Skin_Evenness) / 100), band.weight, fine,
                    double(s.u_Natural_Skin_Texture) / 100);
    return evened;
}

} // namespace

void NaturalSkin::even(EffectPass& pass, const Settings& s, Memos& memos)
{
    const OpenedPhoto& photo = *pass.photo;
    const BandKey bandKey = bandKeyOf(pass.photoKey(), s, pass.photoEdits);
    const Band& band = memos.band.get(bandKey, [&](Band& made) {
        made = bandOf(memos.skin.get(bandKey.skin, [&](Skin& found) { found = skinOf(photo, s, pass.photoEdits); }), s);
    });
    const Key key{bandKey, s.u_Natural_Skin_Evenness, s.u_Natural_Skin_Texture};
    pass.photo = &memos.evened.get(key, [&](OpenedPhoto& evened) { evened = evenedWith(photo, band, s); });
}

OpenedPhoto NaturalSkin::evenedPhoto(const OpenedPhoto& photo, const Settings& s, const PhotoEdits& edits)
{
    return evenedWith(photo, bandOf(photo, s, edits), s);
}

NaturalSkin::Mask NaturalSkin::maskOf(const OpenedPhoto& photo, const Settings& s, const PhotoEdits& edits)
{
    Band band = bandOf(photo, s, edits);
    return {std::move(band.weight), band.skin.area};
}

namespace {

class SkinBrushTool final : public PhotoTool {
public:
    explicit SkinBrushTool(NaturalSkin::Settings& s)
        : s_(s)
    {
    }

    bool isOn() const override { return s_.b_Activated_Add_Skin || s_.b_Activated_Remove_Skin; }

    void press(const ToolPointer& at, ToolTarget& target) override
    {
        stroke_ = {at.percentFromTop()};
        target.overlayChanged();
    }

    void drag(const ToolPointer& at, ToolTarget& target) override
    {
        if (stroke_.isEmpty())
            return;
        stroke_.append(at.percentFromTop());
        target.overlayChanged();
    }

    void release(const ToolPointer&, ToolTarget& target) override
    {
        const PointList stroke = std::exchange(stroke_, {});
        if (stroke.isEmpty())
            return;
        PhotoEdits& edits = target.photoEdits();
        (s_.b_Activated_Add_Skin ? edits.array_Skin_Added_Strokes : edits.array_Skin_Removed_Strokes).append(stroke);
        target.photoEdited(QCoreApplication::translate(
            "EditHistory", s_.b_Activated_Add_Skin ? NaturalSkin::kAddSkin : NaturalSkin::kRemoveSkin));
    }

    std::optional<QCursor> hover(const ToolPointer&, const ToolTarget&) override { return QCursor(Qt::CrossCursor); }

    QString hint() const override
    {
        return s_.b_Activated_Add_Skin
                   ? QCoreApplication::translate("Effects", "Paint over skin the effect missed to add it")
                   : QCoreApplication::translate("Effects", "Paint over what is not skin to take it away");
    }

    // The stroke under way, as wide as the brush; and with "Show mask" the
    // skin the effect changes tinted by how much.
    void paintOverlay(QPainter& painter, const QTransform& toView, const ToolTarget& target) override
    {
        const OpenedPhoto& photo = target.openedPhoto();
        if (s_.b_Natural_Skin && s_.b_Show_Skin_Mask) {
            painter.save();
            painter.setTransform(toView, true);
            for (const auto& [tint, area] : tintsOn(target))
                painter.drawImage(QRectF(area), tint);
            painter.restore();
        }
        const FaceLandmarks& p = photo.facePointsRelativeToImageSize;
        if (p.size() >= kLandmarkCount)
            paintStrokeUnderWay(painter, toView, photo, stroke_, s_.f_Natural_Skin_Brush_Size / 100 * QLineF(p[0], p[16]).length(),
                                s_.b_Activated_Add_Skin ? QColor(40, 230, 120, 110) : QColor(230, 60, 60, 110));
    }

private:

    // The mask of each face retouched as a tint over its area, made again
    // only when the photo, the settings or the strokes changed.
    using Tints = std::vector<std::pair<QImage, QRect>>;
    const Tints& tintsOn(const ToolTarget& target)
    {
        const OpenedPhoto& photo = target.openedPhoto();
        const PhotoEdits& edits = target.photoEdits();
        const NaturalSkin::BandKey key = bandKeyOf(photo.img_Basic.cacheKey(), s_, edits);
        return tints_.get({key, edits.facesLeftOut}, [&](Tints& tints) {
            tints.clear();
            for (int face = 0; face < photo.faceCount(); ++face)
                if (!edits.facesLeftOut.contains(face))
                    tints.push_back(tintOf(NaturalSkin::maskOf(photo.asFace(face), s_, edits.ofFace(photo, face))));
        });
    }

    static std::pair<QImage, QRect> tintOf(const NaturalSkin::Mask& mask)
    {
        QImage tint(mask.weight.cols, mask.weight.rows, QImage::Format_ARGB32_Premultiplied);
        for (int y = 0; y < tint.height(); ++y)
            for (int x = 0; x < tint.width(); ++x)
                tint.setPixelColor(x, y, QColor(255, 40, 160, int(110 * mask.weight.at<float>(y, x))));
        return {tint, QRect(mask.area.x, mask.area.y, mask.area.width, mask.area.height)};
    }

    struct TintKey {
        NaturalSkin::BandKey band;
        QList<int> leftOut;
        bool operator==(const TintKey&) const = default;
    };

    NaturalSkin::Settings& s_;
    PointList stroke_; // percent of the photo, y from the top
    Memo<TintKey, Tints> tints_;
};

} // namespace

void NaturalSkin::addTools(Settings& s, std::vector<std::unique_ptr<PhotoTool>>& tools)
{
    tools.push_back(std::make_unique<SkinBrushTool>(s));
}
