#include "FaceChooser.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QMouseEvent>
#include <QPixmap>
#include <QPushButton>
#include <QPainter>
#include <QVBoxLayout>

#include <functional>

namespace {

// The photo fitted into the widget, its frames drawn and numbered.
class FramesView : public QWidget {
public:
    FramesView(const FaceChoice& choice, std::function<void(const FaceFrame&)> take, QWidget* parent)
        : QWidget(parent)
        , choice_(choice)
        , take_(std::move(take))
    {
        setMouseTracking(true);
        setMinimumSize(320, 240);
        setCursor(choice.markByHand ? Qt::CrossCursor : Qt::PointingHandCursor);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), palette().window());
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(shown(), choice_.photo);
        painter.setRenderHint(QPainter::Antialiasing);
        const QTransform toView = photoToView();
        for (std::size_t k = 0; k < choice_.frames.size(); ++k) {
            const QPolygonF outline = toView.map(choice_.frames[k].outline);
            const bool hovered = int(k) == hovered_;
            painter.setPen(QPen(hovered ? QColor(255, 210, 0) : QColor(0, 200, 255), hovered ? 4 : 2));
            painter.drawPolygon(outline);
            drawNumber(painter, outline.boundingRect().topLeft(), int(k) + 1);
        }
        if (dragging_) {
            painter.setPen(QPen(QColor(255, 210, 0), 2, Qt::DashLine));
            painter.drawRect(QRectF(pressedAt_, draggedTo_).normalized());
        }
    }

    void mousePressEvent(QMouseEvent* event) override
    {
        if (event->button() != Qt::LeftButton)
            return;
        pressedAt_ = draggedTo_ = event->position();
        dragging_ = choice_.markByHand;
    }

    void mouseMoveEvent(QMouseEvent* event) override
    {
        if (dragging_) {
            draggedTo_ = event->position();
        } else {
            hovered_ = frameAt(event->position());
        }
        update();
    }

    void mouseReleaseEvent(QMouseEvent* event) override
    {
        if (event->button() != Qt::LeftButton)
            return;
        dragging_ = false;
        const QRect drawn = photoToView().inverted().mapRect(QRectF(pressedAt_, event->position()).normalized()).toRect()
                            & choice_.photo.rect();
        if (choice_.markByHand && drawn.width() >= 8 && drawn.height() >= 8)
            return take_(FaceFrame::drawn(drawn));
        if (const int k = frameAt(event->position()); k >= 0)
            take_(choice_.frames[std::size_t(k)]);
        update();
    }

private:
    QRectF shown() const
    {
        const QSizeF fitted = QSizeF(choice_.photo.size()).scaled(size(), Qt::KeepAspectRatio);
        return QRectF(QPointF((width() - fitted.width()) / 2, (height() - fitted.height()) / 2), fitted);
    }

    QTransform photoToView() const
    {
        const QRectF area = shown();
        const double scale = area.width() / std::max(1, choice_.photo.width());
        return QTransform::fromTranslate(area.x(), area.y()).scale(scale, scale);
    }

    // The smallest frame under the pointer: a face inside a larger one's.
    int frameAt(QPointF position) const
    {
        int found = -1;
        const QPointF onPhoto = photoToView().inverted().map(position);
        for (std::size_t k = 0; k < choice_.frames.size(); ++k)
            if (choice_.frames[k].outline.containsPoint(onPhoto, Qt::OddEvenFill))
                found = int(k); // largest first: a later one is smaller
        return found;
    }

    static void drawNumber(QPainter& painter, QPointF at, int number)
    {
        const QRectF badge(at - QPointF(0, 22), QSizeF(26, 22));
        painter.fillRect(badge, QColor(0, 0, 0, 170));
        painter.setPen(Qt::white);
        painter.drawText(badge, Qt::AlignCenter, QString::number(number));
    }

    const FaceChoice& choice_;
    std::function<void(const FaceFrame&)> take_;
    int hovered_ = -1;
    bool dragging_ = false;
    QPointF pressedAt_, draggedTo_;
};

QString explanation(const FaceChoice& choice)
{
    const int offered = int(choice.frames.size());
    if (!choice.markByHand)
        return FaceChooser::tr("%1 faces were found. Click the face to retouch, or retouch every face.")
            .arg(choice.facesSeen);
    QString text = FaceChooser::tr("No face was found. Drag a frame from the brows to the chin.");
    if (offered == 1)
        text += " " + FaceChooser::tr("Or click the face found on the photo turned or enlarged.");
    else if (offered > 1)
        text += " " + FaceChooser::tr("Or click one of the %1 faces found on the photo turned or enlarged.").arg(offered);
    return text;
}

} // namespace

FaceChooser::FaceChooser(FaceChoice choice, QWidget* parent)
    : QDialog(parent)
    , choice_(std::move(choice))
{
    setWindowTitle(choice_.markByHand ? tr("Mark the Face") : tr("Choose a Face"));
    auto* layout = new QVBoxLayout(this);
    auto* label = new QLabel(explanation(choice_), this);
    label->setObjectName("explanation");
    label->setWordWrap(true);
    layout->addWidget(label);
    auto* view = new FramesView(choice_, [this](const FaceFrame& frame) {
        chosen_ = ChosenFaces(frame);
        accept();
    }, this);
    view->setObjectName("frames");
    layout->addWidget(view, 1);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    if (!choice_.markByHand && choice_.facesSeen > 1) {
        QPushButton* every = buttons->addButton(tr("&Every Face"), QDialogButtonBox::AcceptRole);
        every->setObjectName("everyFace");
        connect(every, &QPushButton::clicked, this, [this] {
            chosen_ = ChosenFaces({}, true);
            accept();
        });
    }
    layout->addWidget(buttons);
    if (parent)
        resize(parent->size() * 0.8);
}

ChosenFaces FaceChooser::ask(const FaceChoice& choice, QWidget* parent)
{
    FaceChooser chooser(choice, parent);
    return chooser.exec() == QDialog::Accepted ? chooser.chosen() : ChosenFaces();
}

namespace {

// The face's part of the photo, twice its landmarks' extent, with the
// landmarks drawn on it.
QImage landmarksShown(const OpenedPhoto& photo)
{
    const QRectF bounds = QPolygonF(photo.facePointsRelativeToImageSize).boundingRect();
    const QRect around = bounds.adjusted(-bounds.width() / 2, -bounds.height() / 2, bounds.width() / 2, bounds.height() / 2)
                             .toAlignedRect() & photo.img_Basic.rect();
    QImage shown = photo.img_Basic.copy(around).scaled(QSize(480, 480), Qt::KeepAspectRatio, Qt::SmoothTransformation);
    const double scale = double(shown.width()) / std::max(1, around.width());
    QPainter painter(&shown);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 230, 120));
    for (const QPointF& point : photo.facePointsRelativeToImageSize)
        painter.drawEllipse((point - around.topLeft()) * scale, 2.5, 2.5);
    return shown;
}

} // namespace

bool FaceChooser::confirm(const OpenedPhoto& photo, QWidget* parent)
{
    QDialog dialog(parent);
    dialog.setWindowTitle(tr("Mark the Face"));
    auto* layout = new QVBoxLayout(&dialog);
    auto* text = new QLabel(tr("These are the eyes, brows, nose, mouth and jaw found in the frame. Is this the face?"),
                            &dialog);
    text->setWordWrap(true);
    layout->addWidget(text);
    auto* picture = new QLabel(&dialog);
    picture->setPixmap(QPixmap::fromImage(landmarksShown(photo)));
    picture->setAlignment(Qt::AlignCenter);
    layout->addWidget(picture, 1);
    auto* buttons = new QDialogButtonBox(&dialog);
    buttons->addButton(tr("Use this face"), QDialogButtonBox::AcceptRole)->setDefault(true);
    buttons->addButton(tr("Draw again"), QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    layout->addWidget(buttons);
    return dialog.exec() == QDialog::Accepted;
}
