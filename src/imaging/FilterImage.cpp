#include "FilterImage.h"

#include "Contract.h"
#include "Picture.h"

FilterImage FilterImage::fromPicture(const QImage& picture)
{
    const QImage image = toPicture(picture);
    return {image, image.isNull() ? QRect() : image.rect()};
}

QImage imageFromCIImage(const FilterImage& filterImage)
{
    if (filterImage.extent.isEmpty())
        return {};
    BELLAVENOR_CHECK(filterImage.image.size() == filterImage.extent.size(),
                     "picture " << filterImage.image.size() << ", extent " << filterImage.extent);
    return toPicture(filterImage.image);
}
