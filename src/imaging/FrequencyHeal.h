#pragma once

#include <QImage>
#include <QPointF>

#include <opencv2/core.hpp>

#include <functional>
#include <optional>

// Heals a round area of a picture the way a retoucher does by frequency
// separation: its low frequencies filled in from its border (OpenCV's
// inpainting, then blurred: inpainting alone leaves a flat, smudged patch),
// its fine texture copied from the same place around `source` (the texture
// alone would carry the source's shade), faded in with a cosine over `fade`
// pixels beyond `radius`. Only opaque pixels where `allows` says so change.
// Requires: `picture` in the picture format (RGBA, premultiplied) and
// detached; `centre` and `source` in its pixels, y down.
void healDisc(QImage& picture, QPointF centre, double radius, double fade, std::optional<QPointF> source,
              const std::function<bool(QPointF)>& allows);

// The same for an area of any shape, healed at once (a stroke, a cluster):
// `mask` (8-bit, non-zero in the area) lies at `origin` in the picture;
// `sigma` blurs the shading, and parts it from the texture unless `grain`
// (over 0) does; the texture comes from the area moved by `sourceOffset`;
// the fade is measured from the area's edge.
void healArea(QImage& picture, const cv::Mat& mask, QPoint origin, double fade, double sigma,
              std::optional<QPoint> sourceOffset, const std::function<bool(QPointF)>& allows, double grain = 0);
