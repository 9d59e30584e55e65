#pragma once

#include "OpenedPhoto.h"
#include "Picture.h"
#include "PhotoEdits.h"
#include "Settings.h"

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <optional>

// One expensive result, kept while the inputs it was made from, its key,
// stay the same. A new result is made in place of the old one, so its
// buffers are reused.
template <typename Key, typename Value = QImage>
class Memo {
public:
    template <typename Make>
    const Value& get(const Key& key, Make&& make)
    {
        if (!key_ || !(*key_ == key)) {
            key_.reset(); // a make that throws leaves no stale key behind
            make(value_);
            key_ = key;
        }
        return value_;
    }

    bool holds(const Key& key) const { return key_ && *key_ == key; }
    void clear() { *this = Memo(); }

private:
    std::optional<Key> key_;
    Value value_;
};

// What the working picture holds between passes: the base it was copied
// from (its cache key) and the part the steps painted over since. Only that
// part needs the base again while the base is unchanged.
struct WorkingRecord {
    qint64 base = 0;
    QRect painted;
};

// What one step of an effect works on: the working picture (the photo's
// size, y down) and everything it is made from. Steps after the first
// paint through ImagePainter or blurredLayerOver, which add what they cover
// to record.painted.
struct EffectPass {
    QImage& working;
    WorkingRecord& record;
    // The photo the steps read: the opened one, or a step's version of it
    // that the steps after it read instead (healed blemishes).
    const OpenedPhoto* photo;
    const PhotoEdits& photoEdits;
    const Handles& handles;
    // Photo pixels per pixel of `working`: above 1 when a shrunk copy of the
    // photo is composed, whose blurs and lines shrink with it.
    double pixelScale = 1;
    // Whether what a step makes is kept for the next picture; a picture
    // composed once, for a file, keeps no whole-picture copies.
    bool keeps = true;

    float scaled(float photoPixels) const { return float(photoPixels / pixelScale); }
    double height() const { return photo->imgSize.height(); }
    // What a picture prepared from the photo is kept under.
    qint64 photoKey() const { return photo->img_Basic.cacheKey(); }
};

// A colour with the alpha a setting gives it.
inline QColor colourOf(const RgbaColor& c, float alpha)
{
    return QColor::fromRgbF(c.r, c.g, c.b, std::clamp(alpha, 0.0f, 1.0f));
}

// A painter on the working picture that takes image-space shapes and adds
// what it covers to the pass's painted area; nothing else paints there.
class ImagePainter : QPainter {
public:
    explicit ImagePainter(EffectPass& pass);

    using QPainter::pen;
    using QPainter::setBrush;
    using QPainter::setOpacity;
    using QPainter::setPen;

    void drawInto(const QRectF& imageRect, const QImage& image);
    void fillImagePath(const QPainterPath& path, const QColor& colour);
    void strokeImagePath(const QPainterPath& path);
    // A handle the mouse aims at: its square filled green.
    void fillHandle(const QRectF& square);

    const double height;

private:
    // Antialiased edges and smooth scaling reach into the pixels a shape
    // only touches: one pixel more on every side.
    void cover(const QRectF& shape, double penWidth);

    QRect& painted_;
};

// The part of the working picture a layer of blurred shapes covers: the
// shapes' bounds (picture coordinates) and the blur's and line's reach.
QRect layerArea(const QRectF& shapeBounds, float blur, double lineWidth, const QImage& working);

void drawLayer(EffectPass& pass, const QRect& area, QImage& layer, float blur);

// Draws shapes into a transparent layer, blurs it and lays it over the
// picture. The layer covers only the part of the photo the blurred shapes
// reach: everywhere else a full-size layer would be transparent.
template <typename PaintFn>
void blurredLayerOver(EffectPass& pass, const QRectF& shapeBounds, float blur, double lineWidth, PaintFn&& paint)
{
    const QRect area = layerArea(shapeBounds, blur, lineWidth, pass.working);
    if (area.isEmpty())
        return;
    QImage layer = makePicture(area.size());
    {
        QPainter painter(&layer);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.translate(-area.topLeft());
        paint(painter);
    }
    drawLayer(pass, area, layer, blur);
}
