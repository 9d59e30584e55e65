#include "EyeShadow.h"

#include "ImageSpace.h"

const PanelDescription& EyeShadow::panel()
{
    static const PanelDescription panel{
        "IDD_EYELID",
        {{ControlKind::Apply, "b_Eye_Eyeshadow", "checkApply"},
         {ControlKind::Colour, "color_Eyeshadow", "colorwellColor", {"IDD_COLOR"}, "labelColor"},
         {ControlKind::Slider, "f_Color_Eyeshadow_Transparency", "slider_Transparency", {"IDD_TRANSPARENCY"},
          "labelTransparency", "labelTransparencyValue"},
         {ControlKind::Slider, "f_Eyeshadow_Blur_Level", "slider_Blur", {"IDD_BLUR"}, "label_Blur", "label_Blur_Value"}}};
    return panel;
}

void EyeShadow::paint(EffectPass& pass, const Settings& s)
{
    const QPainterPath left = flipped(pass.photo->regions.path_Eye_Lid_Left, pass.height());
    const QPainterPath right = flipped(pass.photo->regions.path_Eye_Lid_Right, pass.height());
    const QColor colour = colourOf(s.color_Eyeshadow, s.f_Color_Eyeshadow_Transparency);
    blurredLayerOver(pass, left.boundingRect() | right.boundingRect(), pass.scaled(s.f_Eyeshadow_Blur_Level), 0,
                     [&](QPainter& layer) {
                         layer.fillPath(left, colour);
                         layer.fillPath(right, colour);
                     });
}
