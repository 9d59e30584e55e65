#include "NaturalSkin.h"

#include "BlemishMap.h"
#include "Picture.h"
#include "SkinBands.h"

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
          .unit = "%"}}};
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

NaturalSkin::Band bandOf(const OpenedPhoto& photo, float detailSize)
{
    NaturalSkin::Band band{FaceSkin::of(photo, workingWidthFor(photo)), {}, {}};
    if (band.skin.isEmpty())
        return band;
    // Moles, freckles and a dark brown mark wider than a spot (a large mole,
    // a birthmark) stay as they are and take no part in the skin's bands (a
    // dark mole would leave a light halo evened dark around it); the skin
    // around them is evened, the soft edge kept off them. Blotches, however
    // wide, are evened.
    const double soft = workingPixels(kSoftEdge, band.skin);
    cv::Mat kept = BlemishMap::of(band.skin, workingPixels(kMarkSize, band.skin)).areaOf([](const BlemishMark& m) {
        return m.isKeptAsItIs() || (m.kind == BlemishMark::Kind::Large && m.darker >= 8 && m.redder <= m.darker && m.elongation < 2);
    });
    cv::Mat apart;
    const cv::Mat skin = band.skin.allowed & ~kept;
    // Detail finer than a pixel is all texture.
    const double fine = std::max(1.0, workingPixels(detailSize, band.skin));
    band.medium = mediumBandOf(band.skin.rgb, skin, fine, workingPixels(kCoarse, band.skin));
    // What is finer than Detail size in it is texture's: left out.
    cv::GaussianBlur(band.medium, band.medium, {0, 0}, 0.7 * fine);
    // The soft edge lies within the skin: beyond it, nothing changes.
    const int clear = 2 * int(std::ceil(2 * soft)) + 1;
    cv::dilate(kept, apart, cv::getStructuringElement(cv::MORPH_ELLIPSE, {clear, clear}));
    cv::Mat inner;
    cv::erode(band.skin.allowed & ~apart, inner, cv::getStructuringElement(cv::MORPH_ELLIPSE, {clear, clear}));
    inner.convertTo(band.weight, CV_32F, 1.0 / 255);
    cv::GaussianBlur(band.weight, band.weight, {0, 0}, soft);
    band.weight.setTo(0, ~skin | (band.weight < 1e-3f));
    return band;
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
    const Band& band = memos.band.get({pass.photoKey(), s.f_Natural_Skin_Detail_Size},
                                      [&](Band& made) { made = bandOf(photo, s.f_Natural_Skin_Detail_Size); });
    const Key key{pass.photoKey(), s.u_Natural_Skin_Evenness, s.u_Natural_Skin_Texture, s.f_Natural_Skin_Detail_Size};
    pass.photo = &memos.evened.get(key, [&](OpenedPhoto& evened) { evened = evenedWith(photo, band, s); });
}

OpenedPhoto NaturalSkin::evenedPhoto(const OpenedPhoto& photo, const Settings& s)
{
    return evenedWith(photo, bandOf(photo, s.f_Natural_Skin_Detail_Size), s);
}
