#include "WidenEyes.h"

#include "RegionImages.h"
#include "SinglePrecision.h"

const PanelDescription& WidenEyes::panel()
{
    static const PanelDescription panel{
        "IDD_WIDEN_EYES",
        {{ControlKind::Apply, "b_Widen_Eyes", "checkApply"},
         {ControlKind::Slider, "u_Widen_Eyes_Level", "slider_Level", {"IDD_LEVEL"}, "labelLevel", "labelLevelValue"}}};
    return panel;
}

namespace {

// The height comes from the unstretched width through the aspect, so it
// stays the height up to rounding.
QRectF widenedRect(const QRectF& r, std::uint64_t level)
{
    const double f = single(1.0 + double(level) / 100.0);
    const double aspect = single(r.width() / r.height());
    const double width = r.width() * f, height = r.width() / aspect;
    return {r.x() - (width - r.width()) * 0.5, r.y() - (height - r.height()) * 0.5, width, height};
}

} // namespace

void WidenEyes::widen(EffectPass& pass, const Settings& s)
{
    const double height = pass.height();
    const QRectF left = pass.photo->regions.rect_Full_Eye_Left, right = pass.photo->regions.rect_Full_Eye_Right;
    const QImage leftEye = cutOut(pass.working, left, height), rightEye = cutOut(pass.working, right, height);
    ImagePainter p(pass);
    p.drawInto(widenedRect(left, s.u_Widen_Eyes_Level), leftEye);
    p.drawInto(widenedRect(right, s.u_Widen_Eyes_Level), rightEye);
}
