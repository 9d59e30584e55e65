#include "UnderEyeDarkening.h"

#include "ImageSpace.h"

#include <QCoreApplication>

#include <cmath>

const PanelDescription& UnderEyeDarkening::panel()
{
    static const PanelDescription panel{
        "IDD_DARKEN_EYES",
        {{ControlKind::Apply, "b_Eyes_Darken", "checkApply"},
         {.kind = ControlKind::Mode,
          .field = "b_Activated_Darken_Eyes_Reposition",
          .control = "checkActivateEyesDarkenReposition",
          .label = {"IDD_EDIT_SIZE_POSITION"},
          .rests = {"slider_Transparency", "slider_Line_Width", "slider_Blur"}},
         {ControlKind::Slider, "f_Darken_Eyes_Transparency", "slider_Transparency", {"IDD_TRANSPARENCY"},
          "label_Transparency", "label_Transparency_Value"},
         {ControlKind::Slider, "f_Darken_Eyes_Line_Width", "slider_Line_Width", {"IDD_LINE_WIDTH"}, "label_Line_Width",
          "label_Line_Width_Value"},
         {ControlKind::Slider, "f_Darken_Eyes_Blur_Level", "slider_Blur", {"IDD_BLUR"}, "label_Blur",
          "label_Blur_Value"}}};
    return panel;
}

namespace {

// Per side, the control-point offsets of the curve's six segments in
// percent of each segment's extent; the sides are deliberately not mirror
// images.
constexpr std::array<QPointF, 6> kLeft{{{-2, -20}, {0, -10}, {10, 10}, {10, 10}, {-10, 30}, {-10, 20}}};
constexpr std::array<QPointF, 6> kRight{{{0, -10}, {-2, -10}, {10, 10}, {10, 20}, {-10, 30}, {10, 10}}};

} // namespace

QPainterPath UnderEyeDarkening::curve(const PointList& points, double imageHeight, bool leftSide)
{
    QPainterPath path;
    if (points.size() < 6)
        return path;
    const std::array<QPointF, 6>& offsets = leftSide ? kLeft : kRight;
    path.moveTo(flipped(points[0], imageHeight));
    for (int k = 1; k <= 6; ++k) {
        const QPointF from = points[k - 1], to = points[k % 6];
        const float w = float(std::abs(to.x() - from.x())), h = float(std::abs(to.y() - from.y()));
        const float minX = float(std::min(from.x(), to.x())), minY = float(std::min(from.y(), to.y()));
        const QPointF offset = offsets[size_t(k - 1)];
        const QPointF control(minX + 0.5f * w + float(offset.x()) * w / 100.0f,
                              float(imageHeight) - (minY + 0.5f * h + float(offset.y()) * h / 100.0f));
        path.cubicTo(control, control, flipped(to, imageHeight));
    }
    path.closeSubpath();
    return path;
}

void UnderEyeDarkening::darken(EffectPass& pass, const Settings& s)
{
    const double height = pass.height();
    const QPainterPath left = flipped(curve(pass.photoEdits.array_Eye_Darken_Left_Points, height, true), height);
    const QPainterPath right = flipped(curve(pass.photoEdits.array_Eye_Darken_Right_Points, height, false), height);
    const QColor ink = QColor::fromRgbF(0, 0, 0, std::clamp(1.0f - s.f_Darken_Eyes_Transparency, 0.0f, 1.0f));
    const float lineWidth = pass.scaled(s.f_Darken_Eyes_Line_Width);
    blurredLayerOver(pass, left.boundingRect() | right.boundingRect(), pass.scaled(s.f_Darken_Eyes_Blur_Level),
                     lineWidth, [&](QPainter& layer) {
                         layer.setPen(QPen(ink, lineWidth));
                         layer.drawPath(left);
                         layer.drawPath(right);
                     });
}

void UnderEyeDarkening::paintHandles(EffectPass& pass, const Settings&)
{
    ImagePainter p(pass);
    for (const auto* squares : {&pass.handles.rectPointEyeLeft, &pass.handles.rectPointEyeRight})
        for (const QRectF& square : *squares)
            if (!square.isNull())
                p.fillHandle(square);
}

void UnderEyeDarkening::handles(const PhotoEdits& photoEdits, const Settings& s, QSizeF imgSize, Handles& h)
{
    if (!s.b_Eyes_Darken || !s.b_Activated_Darken_Eyes_Reposition)
        return;
    const auto side = [&](const PointList& points, std::array<QPointF, 6>& percent, std::array<QRectF, 6>& squares) {
        for (size_t i = 0; i < 6 && i < size_t(points.size()); ++i) {
            const QPointF point = flipped(points[qsizetype(i)], imgSize.height());
            percent[i] = percentOf(point, imgSize);
            squares[i] = handleSquare(point, imgSize);
        }
    };
    side(photoEdits.array_Eye_Darken_Left_Points, h.pointPercenteEyeLeft, h.rectPointEyeLeft);
    side(photoEdits.array_Eye_Darken_Right_Points, h.pointPercenteEyeRight, h.rectPointEyeRight);
}

namespace {

// Moves one point of each ring: the first point of the left side in the
// order 1 to 6 whose one-percent cell the press falls in, and the same on
// the right; the point follows the pointer.
class UnderEyeRingsTool final : public PhotoTool {
public:
    explicit UnderEyeRingsTool(UnderEyeDarkening::Settings& s)
        : s_(s)
    {
    }

    bool isOn() const override { return s_.b_Activated_Darken_Eyes_Reposition; }

    void press(const ToolPointer& at, ToolTarget& target) override
    {
        face_ = faceUnder(at, target.openedPhoto());
        const FaceInFront front(target.photoEdits(), face_);
        Handles h;
        UnderEyeDarkening::handles(target.photoEdits(), s_, target.openedPhoto().imgSize, h);
        left_ = hit(at.percent, h.pointPercenteEyeLeft);
        right_ = hit(at.percent, h.pointPercenteEyeRight);
    }

    void drag(const ToolPointer& at, ToolTarget& target) override
    {
        // The points are kept with y from the top of the photo.
        const QPointF point = flipped(at.pixel, target.openedPhoto().imgSize.height());
        bool moved = false;
        {
            const FaceInFront front(target.photoEdits(), face_);
            PhotoEdits& r = target.photoEdits();
            moved = replace(left_, r.array_Eye_Darken_Left_Points, point);
            moved = replace(right_, r.array_Eye_Darken_Right_Points, point) || moved;
        }
        if (moved) {
            moved_ = true;
            target.moved(); // the faces' rings back in their places
        }
    }

    void release(const ToolPointer&, ToolTarget& target) override
    {
        if (moved_)
            target.gestureEnded(QCoreApplication::translate("EditHistory", "Move Under-Eye Ring"));
        left_ = right_ = -1;
        moved_ = false;
    }

    std::optional<QCursor> hover(const ToolPointer&, const ToolTarget&) override { return QCursor(Qt::ArrowCursor); }

    QString hint() const override
    {
        return QCoreApplication::translate("Effects", "Drag a green point to reshape an under-eye ring");
    }

private:
    static int hit(QPointF percent, const std::array<QPointF, 6>& points)
    {
        for (int i = 0; i < 6; ++i)
            if (inHandleCell(percent, points[size_t(i)]))
                return i;
        return -1;
    }
    static bool replace(int index, PointList& points, QPointF point)
    {
        if (index < 0 || index >= points.size())
            return false;
        points[index] = point;
        return true;
    }

    UnderEyeDarkening::Settings& s_;
    int face_ = 0; // whose rings the press took
    int left_ = -1, right_ = -1;
    bool moved_ = false;
};

} // namespace

void UnderEyeDarkening::addTools(Settings& s, std::vector<std::unique_ptr<PhotoTool>>& tools)
{
    tools.push_back(std::make_unique<UnderEyeRingsTool>(s));
}
