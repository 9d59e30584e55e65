#include "CheekBlush.h"

#include "FilterPrimitives.h"
#include "ImageSpace.h"
#include "Picture.h"

#include <QRadialGradient>

#include <opencv2/core/utility.hpp>

#include <cmath>

const PanelDescription& CheekBlush::panel()
{
    static const PanelDescription panel{
        "IDD_CHEEKS",
        {{ControlKind::Apply, "b_Apply_Cheeks", "checkApply"},
         {.kind = ControlKind::Mode,
          .field = "b_Activated_Cheeks_Reposition",
          .control = "checkActivateCheekReposition",
          .label = {"IDD_EDIT_SIZE_POSITION"},
          .rests = {"btn_Pick_Color_1", "color_1", "btn_Pick_Color_1_Right", "color_1_Right", "btn_Pick_Color_2",
                    "color_2", "slider_Transparency"}},
         {ControlKind::Colour, "color_Color_Cheeks_1", "color_1", {"IDD_LEFT", "IDD_EDIT_COLOR_AROUND"}, "label_Color_1"},
         {ControlKind::Colour, "color_Color_Cheeks_1_Right", "color_1_Right", {"IDD_RIGHT", "IDD_EDIT_COLOR_AROUND"},
          "label_Color_1_Right"},
         {ControlKind::Colour, "color_Color_Cheeks_2", "color_2", {"IDD_EDIT_COLOR_MAKEUP"}, "label_Color_2"},
         {ControlKind::Slider, "f_Color_Cheeks_Transparency", "slider_Transparency", {"IDD_TRANSPARENCY"},
          "label_Transparency", "label_Transparency_Value"},
         // The blur sliders start at the blur's starting value and only write.
         {ControlKind::Slider, "f_Cheeks_Blur_Level_Left", "slider_Blur_Left", {"IDD_LEFT", "IDD_BLUR"}, "labelBlurLeft",
          "labelBlurLeftValue", true},
         {ControlKind::Slider, "f_Cheeks_Blur_Level_Right", "slider_Blur_Right", {"IDD_RIGHT", "IDD_BLUR"},
          "labelBlurRight", "labelBlurRightValue", true}}};
    return panel;
}

namespace {

constexpr int kLayerSize = 1024;

// Two circles: the outer colour on the circle of radius 510 about the
// layer's middle, the make-up colour on a circle of radius 5 at the make-up
// centre (on a layer of 1024 pixels; a smaller layer for a shrunk picture
// has all of it, blur included, in proportion). Nothing is painted beyond
// either circle.
QImage blushLayer(const CheekBlush::LayerKey& key)
{
    // The centre counts y from the top of the area; the gradient is laid out
    // in the layer's y-up image space, the picture has y down. Settings files
    // and the circle control give 0 to 100; anything else would only send
    // the gradient's focus to infinity.
    const double k = double(key.size) / kLayerSize;
    QImage layer = makePicture({key.size, key.size});
    const QPointF middle(512 * k, 512 * k);
    const QPointF inArea(std::clamp(key.centre.x(), 0.0, 100.0), std::clamp(key.centre.y(), 0.0, 100.0));
    const QPointF makeUp = flipped(QPointF(inArea.x() * key.size / 100, (100 - inArea.y()) * key.size / 100), key.size);
    {
        QPainter p(&layer);
        p.setRenderHint(QPainter::Antialiasing);
        QRadialGradient gradient(middle, 510 * k, makeUp, 5 * k);
        gradient.setColorAt(0, colourOf(key.inner, key.inner.a));
        gradient.setColorAt(1, colourOf(key.outer, key.outer.a));
        p.setPen(Qt::NoPen);
        p.setBrush(gradient);
        p.drawEllipse(middle, 510 * k, 510 * k);
        p.setCompositionMode(QPainter::CompositionMode_Clear);
        p.drawEllipse(makeUp, 5 * k, 5 * k);
    }
    return imageBlurCheek(layer, float(key.blur * k));
}

// A shrunk picture draws the blush over a few hundred pixels at most: its
// layer need not be larger than that.
int layerSize(const EffectPass& pass)
{
    return std::clamp(int(std::ceil(kLayerSize / pass.pixelScale)), 128, kLayerSize);
}

void paintAreaHandles(ImagePainter& p, const QRectF& area, const std::array<QRectF, 4>& squares)
{
    QPainterPath outline;
    outline.addRect(area);
    p.setPen(QPen(Qt::blue, 1));
    p.setBrush(Qt::NoBrush);
    p.strokeImagePath(outline);
    for (const QRectF& square : squares)
        p.fillHandle(square);
}

} // namespace

void CheekBlush::paint(EffectPass& pass, const Settings& s, Memos& memos)
{
    const int size = layerSize(pass);
    const LayerKey leftKey{s.color_Color_Cheeks_1, s.color_Color_Cheeks_2, s.pt_MakeUp_Center_Left,
                           s.f_Cheeks_Blur_Level_Left, size};
    const LayerKey rightKey{s.color_Color_Cheeks_1_Right, s.color_Color_Cheeks_2, s.pt_MakeUp_Center_Right,
                            s.f_Cheeks_Blur_Level_Right, size};
    // The two layers are independent: when both are new each side is made on
    // its own core; one alone spreads its blur over both.
    const QImage* layers[2] = {};
    const auto makeSides = [&](const cv::Range& sides) {
        for (int side = sides.start; side < sides.end; ++side) {
            const LayerKey& key = side == 0 ? leftKey : rightKey;
            Memo<LayerKey>& memo = side == 0 ? memos.left : memos.right;
            layers[side] = &memo.get(key, [&](QImage& layer) { layer = blushLayer(key); });
        }
    };
    if (memos.left.holds(leftKey) || memos.right.holds(rightKey))
        makeSides(cv::Range(0, 2));
    else
        cv::parallel_for_(cv::Range(0, 2), makeSides);
    // Each side is finished, handles included, before the next is laid over
    // it: where the areas overlap, the right blush covers the left handles.
    ImagePainter p(pass);
    const double opacity = std::clamp(1.0 - double(s.f_Color_Cheeks_Transparency), 0.0, 1.0);
    const auto finishSide = [&](const QImage& blush, const QRectF& area, const std::array<QRectF, 4>& squares) {
        p.setOpacity(opacity);
        p.drawInto(area, blush);
        p.setOpacity(1);
        if (s.b_Activated_Cheeks_Reposition)
            paintAreaHandles(p, area, squares);
    };
    const Handles& h = pass.handles;
    finishSide(*layers[0], pass.reshaping.rect_Cheek_Left_Area_To_Paint, h.rectPointLeft);
    finishSide(*layers[1], pass.reshaping.rect_Cheek_Right_Area_To_Paint, h.rectPointRight);
}

const char* CheekBlush::takePickedColour(Settings& s, const RgbaColor& colour)
{
    const std::pair<RgbaColor*, const char*> fields[] = {{&s.color_Color_Cheeks_1, "color_Color_Cheeks_1"},
                                                         {&s.color_Color_Cheeks_2, "color_Color_Cheeks_2"},
                                                         {&s.color_Color_Cheeks_1_Right, "color_Color_Cheeks_1_Right"}};
    s.b_Cheeks_Picking_Color = false;
    if (s.i_Picking_Color_Index < 1 || s.i_Picking_Color_Index > 3)
        return nullptr;
    *fields[s.i_Picking_Color_Index - 1].first = colour;
    return fields[s.i_Picking_Color_Index - 1].second;
}

void CheekBlush::handles(const Reshaping& reshaping, const Settings& s, QSizeF imgSize, Handles& h)
{
    if (!s.b_Apply_Cheeks || !s.b_Activated_Cheeks_Reposition)
        return;
    const auto side = [&](const QRectF& area, std::array<QPointF, 4>& percent, std::array<QRectF, 4>& squares) {
        const std::array<QPointF, 4> corners{area.topLeft(), area.topRight(), area.bottomLeft(), area.bottomRight()};
        for (size_t i = 0; i < 4; ++i) { // image space: "top" is the lower y
            percent[i] = percentOf(corners[i], imgSize);
            squares[i] = handleSquare(corners[i], imgSize);
        }
    };
    side(reshaping.rect_Cheek_Left_Area_To_Paint, h.pointPercenteLeft, h.rectPointLeft);
    side(reshaping.rect_Cheek_Right_Area_To_Paint, h.pointPercenteRight, h.rectPointRight);
}
