#include "TeethWhitening.h"

#include "FilterPrimitives.h"
#include "RegionImages.h"

const PanelDescription& TeethWhitening::panel()
{
    static const PanelDescription panel{"IDD_WHITE_TEETH", {{ControlKind::Apply, "b_Whiten_Teeth", "checkApply"}}};
    return panel;
}

void TeethWhitening::restoreMouthInterior(EffectPass& pass, const Settings& s, Memos& memos)
{
    const OpenedPhoto& photo = *pass.photo;
    const FaceRegions& r = photo.regions;
    if (r.rect_Inside_Mouth.height() <= 0)
        return;
    const QImage& cut = memos.mouth.get(pass.photoKey(), [&](QImage& made) {
        made = RegionImages::insideMouthCut(photo.img_Basic, photo.imgSize, r);
    });
    ImagePainter(pass).drawInto(r.rect_Inside_Mouth, s.b_Whiten_Teeth ? Whiten_Teeth(cut) : cut);
}
