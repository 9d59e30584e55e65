#include "LipColour.h"

#include "RegionImages.h"

const PanelDescription& LipColour::panel()
{
    static const PanelDescription panel{
        "IDD_COLOR_LIPS",
        {{ControlKind::Apply, "b_Color_Lips", "checkApply"},
         {ControlKind::Colour, "color_Color_Lips", "colorwellColor", {"IDD_COLOR"}, "labelColor"},
         {ControlKind::Slider, "f_Color_Lips_Transparency", "slider_Transparency", {"IDD_TRANSPARENCY"},
          "labelTransparency", "labelTransparencyValue"}}};
    return panel;
}

void LipColour::paintMask(EffectPass& pass, const Settings&, Memos& memos)
{
    const OpenedPhoto& photo = *pass.photo;
    const QImage& grey = memos.greyLips.get(pass.photoKey(), [&](QImage& made) {
        made = RegionImages::lipsBlackWhite(photo.img_Basic, photo.imgSize, photo.regions);
    });
    ImagePainter(pass).drawInto(photo.regions.rect_Lips, grey);
}

void LipColour::paintColour(EffectPass& pass, const Settings& s)
{
    ImagePainter(pass).fillImagePath(pass.photo->regions.path_Lips,
                                     colourOf(s.color_Color_Lips, s.f_Color_Lips_Transparency));
}
