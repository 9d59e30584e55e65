#include "WrinkleRemoval.h"

#include "FilterPrimitives.h"
#include "RegionImages.h"

const PanelDescription& WrinkleRemoval::panel()
{
    static const PanelDescription panel{
        "IDD_WRINKLE_REMOVER",
        {{ControlKind::Apply, "b_Remove_Wrinkles", "checkApply"},
         {ControlKind::Slider, "u_Remove_Wrinkles_Level", "slider_Level", {"IDD_LEVEL"}, "labelLevel", "labelLevelValue"}}};
    return panel;
}

void WrinkleRemoval::removeWrinkles(EffectPass& pass, const Settings& s, Memos& memos)
{
    const OpenedPhoto& photo = *pass.photo;
    const QImage& cut = memos.skinCut.get(pass.photoKey(), [&](QImage& made) {
        made = RegionImages::faceSkinCut(photo.img_Basic, photo.imgSize, photo.regions);
    });
    const std::uint64_t level = s.u_Remove_Wrinkles_Level;
    const QImage& skin = memos.wrinkleFreeSkin.get(
        {cut.cacheKey(), level}, [&](QImage& blurred) { gaussianBlurCropped(cut, blurred, pass.scaled(float(level))); });
    ImagePainter(pass).drawInto(photo.regions.rect_Face_Skin, skin);
}
