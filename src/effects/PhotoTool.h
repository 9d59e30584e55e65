#pragma once

#include <QCursor>
#include <QList>
#include <QPointF>
#include <QString>

#include <optional>

class QPainter;
class QTransform;
struct OpenedPhoto;
struct PhotoEdits;

// Where the pointer is, in the forms the tools' rules use. The preview maps
// it; a tool never sees zoom or pan.
struct ToolPointer {
    QPointF view;    // view pixels, y down: how far a press has moved
    QPointF percent; // percent of the photo, image space (y up), single precision
    QPointF pixel;   // photo pixels, image space (y up), single precision

    // Percent of the photo with y from its top, as a photo's edits keep points.
    QPointF percentFromTop() const { return {percent.x(), 100 - percent.y()}; }
};

// The face of a group photo the pointer is on (0 the first): the one whose
// blush areas and under-eye rings a press reshapes.
int faceUnder(const ToolPointer& at, const OpenedPhoto& photo);

// While it lives, face `face`'s areas and rings stand in the first face's
// fields of `edits`, where the tools read and move them.
class FaceInFront {
public:
    FaceInFront(PhotoEdits& edits, int face);
    ~FaceInFront();
    FaceInFront(const FaceInFront&) = delete;
    FaceInFront& operator=(const FaceInFront&) = delete;

private:
    PhotoEdits& edits_;
    int face_;
};

// A stroke under way (percent of the photo, y from its top) drawn over the
// view as wide as it will paint, `width` photo pixels, in `colour`.
void paintStrokeUnderWay(QPainter& painter, const QTransform& toView, const OpenedPhoto& photo,
                         const QList<QPointF>& stroke, double width, const QColor& colour);

// What a tool works on and where it says what it changed: the open
// document. A drag says moved() while it goes and names its one undo step
// when it ends; a setting changed by a click is a step of its own.
class ToolTarget {
public:
    virtual const OpenedPhoto& openedPhoto() const = 0;
    virtual const PhotoEdits& photoEdits() const = 0;
    virtual PhotoEdits& photoEdits() = 0;
    virtual void moved() = 0;
    virtual void gestureEnded(const QString& step) = 0;
    // What the tool draws over the preview changed (a stroke under way).
    virtual void overlayChanged() {}
    // What was done on the photo changed by one act (a click): a step of
    // its own.
    virtual void photoEdited(const QString& step) = 0;
    // `step` empty: the step is named after the field and quick changes of
    // it merge, as a slider's do.
    virtual void settingChanged(const char* field, const QString& step = {}) = 0;

protected:
    ~ToolTarget() = default;
};

// What the left button does on the photo while an effect's mouse mode is
// on. Each effect with such a mode implements one in its own files; the
// preview hands the events to the tool that is on without knowing whose it
// is, keeps zoom and pan, and draws the tool's overlay over the picture
// (never into it).
class PhotoTool {
public:
    virtual ~PhotoTool() = default;

    // Whether the mode that makes this the tool of the left button is on.
    virtual bool isOn() const = 0;

    virtual void press(const ToolPointer&, ToolTarget&) {}
    virtual void drag(const ToolPointer&, ToolTarget&) {}
    virtual void release(const ToolPointer&, ToolTarget&) {}
    // The pointer moved with no button down: the cursor to show, or none to
    // leave the cursor as it is.
    virtual std::optional<QCursor> hover(const ToolPointer&, const ToolTarget&) { return std::nullopt; }
    // Drawn over the preview only, whether the tool is on or not (an effect
    // may outline what it found); `photoToView` maps photo pixels (y down)
    // to the view.
    virtual void paintOverlay(QPainter&, const QTransform& /*photoToView*/, const ToolTarget&) {}
    // What the status line says while the tool is on.
    virtual QString hint() const { return {}; }
    // What the status line says of what the overlay shows, when it shows
    // anything.
    virtual QString overlayNote(const ToolTarget&) { return {}; }
};
