#include "RenderSession.h"

#include "Picture.h"

RenderSession::RenderSession(const Document& document, QObject* parent)
    : QObject(parent)
    , document_(document)
    , fullJob_([this](const QString& failure) { fullCompositionDone(failure); })
{
    settleTimer_.setSingleShot(true);
    settleTimer_.setInterval(kSettleDelay);
    connect(&settleTimer_, &QTimer::timeout, this, &RenderSession::startFullComposition);
    connect(&document, &Document::photoReplaced, this, &RenderSession::photoReplaced);
}

RenderSession::~RenderSession() = default;

// What was composed of the old photo goes, and its memory with it.
void RenderSession::photoReplaced()
{
    fullJob_.finish();
    settleTimer_.stop();
    proxy_.reset();
    composed_.reset();
    failed_.reset();
    framed_.reset();
    frameCompositor_ = Compositor();
    compositor_ = Compositor();
    giveBackFreedPictures();
}

bool RenderSession::settled() const
{
    return document_.isOpen() && !fullJob_.running() && composed_ == document_.revision();
}

RenderSession::Shown RenderSession::pictureFor(const ProxyFrame& frame, QString& failure)
{
    const QRectF wholePhoto(QPointF(0, 0), document_.photo()->imgSize);
    if (settled())
        return {&compositor_.working(), wholePhoto};
    if (!worthAProxy(wholePhoto.size().toSize(), frame))
        return {fullPicture(failure), wholePhoto};
    return {upToDateFrame(frame, failure), QRectF(frame.area)};
}

const QImage* RenderSession::fullPicture(QString& failure)
{
    fullJob_.finish();
    if (composed_ == document_.revision() && !compositor_.working().isNull())
        return &compositor_.working();
    composed_.reset();
    const QImage* working = compositor_.tryCompose(*document_.photo(), document_.photoEdits, document_.state, failure);
    if (working)
        composed_ = document_.revision();
    return working;
}

WriteFailure RenderSession::writeFull(const QString& path, const PictureEncoding& encoding)
{
    fullJob_.finish();
    composed_.reset();
    const WriteFailure failure = writeRetouched(compositor_, *document_.photo(), document_.photoEdits, document_.state,
                                                path, encoding);
    if (failure.composing.isEmpty())
        composed_ = document_.revision();
    return failure;
}

// The interactive frame of the current edit; a new one starts the wait for
// the full picture again.
const QImage* RenderSession::upToDateFrame(const ProxyFrame& frame, QString& failure)
{
    const OpenedPhoto& photo = *document_.photo();
    if (!proxy_ || !(proxy_->frame == frame)) {
        framed_.reset();
        proxy_.reset();
        try {
            proxy_ = Proxy{frame, proxyPhoto(photo, frame)};
        } catch (const std::exception& error) {
            failure = QString::fromLocal8Bit(error.what());
            return nullptr;
        }
    }
    if (framed_ == document_.revision())
        return &frameCompositor_.working();
    framed_.reset();
    settleTimer_.start();
    const PhotoEdits reshaped = proxyPhotoEdits(document_.photoEdits, photo.imgSize, frame);
    const QImage* picture = frameCompositor_.tryCompose(proxy_->photo, reshaped, document_.state, failure,
                                                        frame.photoPixelsPerPixel());
    if (picture)
        framed_ = document_.revision();
    return picture;
}

// On another thread, with copies of what the picture is made of; the
// compositor is not touched here until it is done.
void RenderSession::startFullComposition()
{
    if (!document_.isOpen() || fullJob_.running() || settled() || failed_ == document_.revision())
        return; // the memory ran out for this edit already: the frame stays
    composed_.reset();
    composing_ = document_.revision();
    fullJob_.start([this, photo = document_.photo(), edit = document_.edit()] {
        QString failure;
        compositor_.tryCompose(*photo, edit.photoEdits, edit.state, failure);
        return failure;
    });
}

void RenderSession::fullCompositionDone(const QString& failure)
{
    (failure.isEmpty() ? composed_ : failed_) = composing_;
    composing_.reset();
    // What changed while it was composed is composed after a rest of its own.
    if (!settled() && proxy_)
        settleTimer_.start();
    emit fullPictureReady();
}
