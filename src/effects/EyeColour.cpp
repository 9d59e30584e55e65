#include "EyeColour.h"

#include "FilterPrimitives.h"
#include "ImageSpace.h"
#include "Picture.h"

const PanelDescription& EyeColour::panel()
{
    static const PanelDescription panel{
        "IDD_COLOR_EYES",
        {{ControlKind::Apply, "b_Color_Eyes", "checkApply"},
         {ControlKind::Colour, "color_Color_Eyes", "colorwellColor", {"IDD_COLOR"}, "labelColor"},
         {ControlKind::Slider, "f_Color_Eyes_Transparency", "slider_Transparency", {"IDD_TRANSPARENCY"},
          "labelTransparency", "labelTransparencyValue"}}};
    return panel;
}

namespace {

const EyeColour::Eyes& eyesOf(EffectPass& pass, EyeColour::Memos& memos)
{
    const OpenedPhoto& photo = *pass.photo;
    const FaceRegions& r = photo.regions;
    return memos.eyes.get(pass.photoKey(), [&](EyeColour::Eyes& eyes) {
        eyes.left = RegionImages::eye(photo.img_Basic, photo.imgSize, r.path_Inside_Eye_Left, r.rect_Eye_Left);
        eyes.right = RegionImages::eye(photo.img_Basic, photo.imgSize, r.path_Inside_Eye_Right, r.rect_Eye_Right);
    });
}

// The eye's area of the working picture with the parts that are bright in
// its grey version (marked green) given the eye's own colour.
QImage eyeWithBrightPartsRestored(const QImage& working, const RegionImages::Eye& eye, const QRectF& rect,
                                  double height)
{
    if (eye.blackWhite.isNull())
        return {};
    QImage area = makePicture(eye.blackWhite.size());
    QPainter(&area).drawImage(QRectF(QPointF(0, 0), QSizeF(area.size())), working, flipped(rect, height));
    return imageReplaceGreenWithOriginal(imageReplaceWhiteWithTransparent(eye.blackWhite), area, eye.colored);
}

} // namespace

void EyeColour::paintColour(EffectPass& pass, const Settings& s, Memos& memos)
{
    const FaceRegions& r = pass.photo->regions;
    const Eyes& eyes = eyesOf(pass, memos);
    ImagePainter p(pass);
    p.drawInto(r.rect_Eye_Left, eyes.left.blackWhite);
    p.drawInto(r.rect_Eye_Right, eyes.right.blackWhite);
    const QColor colour = colourOf(s.color_Color_Eyes, s.f_Color_Eyes_Transparency);
    p.fillImagePath(r.path_Inside_Eye_Left, colour);
    p.fillImagePath(r.path_Inside_Eye_Right, colour);
}

void EyeColour::finish(EffectPass& pass, const Settings&, Memos& memos)
{
    const double height = pass.height();
    const FaceRegions& r = pass.photo->regions;
    const Eyes& eyes = eyesOf(pass, memos);
    const QImage left = eyeWithBrightPartsRestored(pass.working, eyes.left, r.rect_Eye_Left, height);
    const QImage right = eyeWithBrightPartsRestored(pass.working, eyes.right, r.rect_Eye_Right, height);
    ImagePainter p(pass);
    p.drawInto(r.rect_Eye_Left, left);
    p.drawInto(r.rect_Eye_Right, right);
}
