#pragma once

#include <QImage>
#include <QSizeF>

// The one picture form of the program, used for display and for every pixel
// operation alike: bytes R, G, B, A in that order, colour premultiplied by
// alpha, 4 × width bytes per row with no padding.
constexpr QImage::Format kPictureFormat = QImage::Format_RGBA8888_Premultiplied;

// Makes the process keep the memory of freed large pictures for the next
// ones instead of giving it back to the system at once: a new 48 MB picture
// otherwise costs about 22 ms of page faults on first touch, and a redraw
// or an open makes several. Every program of the project calls this first.
void keepMemoryOfFreedPictures();

// Gives what the process keeps of freed pictures back to the system: after
// a photo was opened, whose decoding and analysis freed several pictures
// that the next ones (made on other threads) would not reuse.
void giveBackFreedPictures();

// A transparent picture (all bytes zero) of the given size. Like every
// allocation of a picture here, it throws std::bad_alloc when the memory is
// not there (QImage itself would hand back a null picture that later code
// would write through).
QImage makePicture(QSize size);

// Throws std::bad_alloc when `picture` should have been made at `size` but
// is null: the memory for it was not there.
void requireAllocated(const QImage& picture, QSize size);

// A deep copy of `picture`, or of its part inside `area` when one is given.
QImage copied(const QImage& picture, const QRect& area = {});

// The same pixels in picture form. Shares the data when the image already
// is in that form; a null image stays null.
QImage toPicture(const QImage& image);

// A new picture of exactly `size` (rounded to whole pixels) holding the whole
// image stretched to fill it; the aspect ratio is not kept. A size without
// area gives a null picture.
QImage Stretch_Image(const QImage& image, QSizeF size);

// Stretches horizontally only: width ceil(width × percentage / 100), the
// height unchanged.
QImage Scale_Image_Width_By_Percentage(const QImage& image, float percentage);

// `dst` becomes a picture of `size` that may be written over completely. It
// keeps its buffer when it already has that size and shares it with nobody:
// callers that redraw often pass the same picture again and allocate once.
inline void ensurePicture(QImage& dst, QSize size)
{
    if (dst.size() != size || dst.format() != kPictureFormat || !dst.isDetached()) {
        dst = QImage(size, kPictureFormat);
        requireAllocated(dst, size);
    }
}
