#pragma once

#include <QImage>
#include <QPoint>

#include <algorithm>
#include <vector>

// A picture that is `photo` everywhere but where `patch` lies over it: the
// photo with a few parts changed, without a second copy of the whole photo
// (a quarter of a gigabyte at 64 megapixels). Both in picture form.
struct PatchedPicture {
    QImage photo;
    QImage patch; // may be null: then the picture is the photo
    QPoint at;    // the patch's top-left pixel in the photo

    PatchedPicture(QImage photo_, QImage patch_ = {}, QPoint at_ = {})
        : photo(std::move(photo_))
        , patch(std::move(patch_))
        , at(at_)
    {
    }

    int width() const { return photo.width(); }
    int height() const { return photo.height(); }
    QSize size() const { return photo.size(); }

    // The pixel's four bytes as stored.
    quint32 pixel(int x, int y) const
    {
        const int px = x - at.x(), py = y - at.y();
        if (!patch.isNull() && px >= 0 && py >= 0 && px < patch.width() && py < patch.height())
            return reinterpret_cast<const quint32*>(patch.constScanLine(py))[px];
        return reinterpret_cast<const quint32*>(photo.constScanLine(y))[x];
    }

    // Row y: the photo's own row, or the photo's row with the patch over it
    // in `buffer`.
    const quint32* row(int y, std::vector<quint32>& buffer) const
    {
        const auto* own = reinterpret_cast<const quint32*>(photo.constScanLine(y));
        const int py = y - at.y();
        if (patch.isNull() || py < 0 || py >= patch.height())
            return own;
        buffer.assign(own, own + width());
        const auto* over = reinterpret_cast<const quint32*>(patch.constScanLine(py));
        const int from = std::max(0, -at.x()), to = std::min(patch.width(), width() - at.x());
        std::copy(over + from, over + to, buffer.begin() + at.x() + from);
        return buffer.data();
    }
};
