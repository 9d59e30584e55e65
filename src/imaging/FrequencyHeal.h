#pragma once

#include <QImage>
#include <QPointF>

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
