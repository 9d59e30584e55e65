#include "CheekBlush.h"

#include "FilterPrimitives.h"
#include "ImageSpace.h"
#include "Picture.h"
#include "SinglePrecision.h"

#include <QColorTransform>
#include <QCoreApplication>
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
    finishSide(*layers[0], pass.photoEdits.rect_Cheek_Left_Area_To_Paint, h.rectPointLeft);
    finishSide(*layers[1], pass.photoEdits.rect_Cheek_Right_Area_To_Paint, h.rectPointRight);
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

void CheekBlush::handles(const PhotoEdits& photoEdits, const Settings& s, QSizeF imgSize, Handles& h)
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
    side(photoEdits.rect_Cheek_Left_Area_To_Paint, h.pointPercenteLeft, h.rectPointLeft);
    side(photoEdits.rect_Cheek_Right_Area_To_Paint, h.pointPercenteRight, h.rectPointRight);
}

namespace {

// Which handles of one area a gesture holds: the four corners (left-bottom,
// right-bottom, right-up, left-up) or the whole area.
struct Held {
    bool LB = false, RB = false, RU = false, LU = false, Crop = false;
    bool any() const { return LB || RB || RU || LU || Crop; }
};

// The new area of a cheek while one of its handles is dragged to `m`
// (photo pixels, y up), relative to the area `r` at mouse-down. The
// right-up handle follows the right-bottom rule and the left-up handle
// moves the top edge while the width changes as for the left edge: both
// are the program's own rules. Nothing is limited; sizes may go negative.
QRectF draggedArea(const Held& d, const QRectF& r, QPointF m)
{
    const double x0 = r.x(), y0 = r.y(), w0 = r.width(), h0 = r.height();
    const double mx = m.x(), my = m.y();
    if (d.LB)
        return {mx, my, single(w0 + x0 - mx), single(h0 + y0 - my)};
    if (d.RB || d.RU)
        return {x0, my, single(mx - x0), single(h0 + y0 - my)};
    if (d.LU)
        return {x0, y0, single(w0 + x0 - mx), single(my - y0)};
    return {single(mx - w0 * 0.5), single(my - h0 * 0.5), w0, h0};
}

// The first handle hit in the order left-bottom, right-bottom, left-top,
// right-top (the order of `corners`); else the whole area when the pointer
// is inside it.
void hitCorners(QPointF percent, Held& held, const std::array<QPointF, 4>& corners)
{
    if (inHandleCell(percent, corners[0]))
        held.LB = true;
    else if (inHandleCell(percent, corners[1]))
        held.RB = true;
    else if (inHandleCell(percent, corners[2]))
        held.LU = true;
    else if (inHandleCell(percent, corners[3]))
        held.RU = true;
    else if (QRectF(corners[1], corners[2]).normalized().contains(percent))
        held.Crop = true;
}

// Moves and resizes the two paint areas by their corners or whole. Both
// areas are tested on every press, so one click takes both where their
// handles share a cell. Hovering marks handles too, which a press then
// drags; the next release lets go of them.
class CheekAreasTool final : public PhotoTool {
public:
    explicit CheekAreasTool(CheekBlush::Settings& s)
        : s_(s)
    {
    }

    bool isOn() const override { return s_.b_Activated_Cheeks_Reposition; }

    void press(const ToolPointer& at, ToolTarget& target) override
    {
        face_ = faceUnder(at, target.openedPhoto());
        const FaceInFront front(target.photoEdits(), face_);
        const PhotoEdits& r = target.photoEdits();
        leftAtPress_ = r.rect_Cheek_Left_Area_To_Paint;
        rightAtPress_ = r.rect_Cheek_Right_Area_To_Paint;
        const Handles h = handlesOn(target.photoEdits(), target);
        hitCorners(at.percent, left_, h.pointPercenteLeft);
        hitCorners(at.percent, right_, h.pointPercenteRight);
    }

    void drag(const ToolPointer& at, ToolTarget& target) override
    {
        move(at, target);
        if (moved_)
            target.moved(); // the faces' areas back in their places
    }

    void move(const ToolPointer& at, ToolTarget& target)
    {
        const FaceInFront front(target.photoEdits(), face_);
        PhotoEdits& r = target.photoEdits();
        if (left_.any())
            r.rect_Cheek_Left_Area_To_Paint = draggedArea(left_, leftAtPress_, at.pixel);
        if (right_.any())
            r.rect_Cheek_Right_Area_To_Paint = draggedArea(right_, rightAtPress_, at.pixel);
        if (left_.any() || right_.any())
            moved_ = true;
    }

    void release(const ToolPointer&, ToolTarget& target) override
    {
        if (moved_)
            target.gestureEnded(QCoreApplication::translate("EditHistory", "Move Blush Area"));
        left_ = right_ = {};
        moved_ = false;
    }

    // Over the left area the open hand; the right area is only marked.
    std::optional<QCursor> hover(const ToolPointer& at, const ToolTarget& target) override
    {
        PhotoEdits edits = target.photoEdits();
        const FaceInFront front(edits, faceUnder(at, target.openedPhoto()));
        const Handles h = handlesOn(edits, target);
        hitCorners(at.percent, left_, h.pointPercenteLeft);
        if (QRectF(h.pointPercenteRight[0], h.pointPercenteRight[3]).normalized().contains(at.percent))
            right_.Crop = true;
        const bool overLeft = QRectF(h.pointPercenteLeft[0], h.pointPercenteLeft[3]).normalized().contains(at.percent);
        return QCursor(overLeft ? Qt::OpenHandCursor : Qt::ArrowCursor);
    }

    QString hint() const override
    {
        return QCoreApplication::translate("Effects", "Drag a blush area's corner to resize it, its inside to move it");
    }

private:
    Handles handlesOn(const PhotoEdits& edits, const ToolTarget& target) const
    {
        Handles h;
        CheekBlush::handles(edits, s_, target.openedPhoto().imgSize, h);
        return h;
    }

    CheekBlush::Settings& s_;
    int face_ = 0; // whose areas the press took
    Held left_, right_;
    QRectF leftAtPress_, rightAtPress_;
    bool moved_ = false;
};

// A click takes the untouched photo's colour under the pointer, as the
// person sees it on the screen, into the colour whose Pick button was
// pressed; the pick ends.
class ColourPickTool final : public PhotoTool {
public:
    explicit ColourPickTool(CheekBlush::Settings& s)
        : s_(s)
    {
    }

    bool isOn() const override { return s_.b_Cheeks_Picking_Color; }

    void release(const ToolPointer& at, ToolTarget& target) override
    {
        const OpenedPhoto& photo = target.openedPhoto();
        const QImage& untouched = photo.img_Basic;
        const QSizeF size = photo.imgSize;
        const QPoint pixel(int(std::floor(size.width() * at.percent.x() / 100)),
                           int(std::floor(size.height() * (100 - at.percent.y()) / 100)));
        QColor picked = untouched.valid(pixel) ? untouched.pixelColor(pixel) : QColor(Qt::black);
        if (!isSrgb(photo.metadata))
            picked = photo.metadata.colourSpace.transformationToColorSpace(QColorSpace::SRgb).map(picked);
        const RgbaColor colour{float(picked.redF()), float(picked.greenF()), float(picked.blueF()),
                               float(picked.alphaF())};
        if (const char* field = CheekBlush::takePickedColour(s_, colour))
            target.settingChanged(field);
    }

    QString hint() const override
    {
        return QCoreApplication::translate("Effects", "Click the photo to take its colour");
    }

private:
    CheekBlush::Settings& s_;
};

} // namespace

void CheekBlush::addTools(Settings& s, std::vector<std::unique_ptr<PhotoTool>>& tools)
{
    tools.push_back(std::make_unique<ColourPickTool>(s));
    tools.push_back(std::make_unique<CheekAreasTool>(s));
}
