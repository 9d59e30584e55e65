#include "TRCIHighPass.h"

#include "GaussianBlur.h"
#include "PixelKernels.h"
#include "SkinSmoothingKernels.h"

#include <opencv2/imgproc.hpp>

QImage TRCIHighPass::outputImage()
{
    if (inputImage.isNull())
        return {};
    const QImage input = toPicture(inputImage);
    const float radius = float(inputRadius());
    QImage blurred = makePicture(input.size());
    cv::Mat blurredPixels = matView(blurred);
    gaussianBlur(matView(input), blurredPixels, radius, cv::BORDER_REPLICATE);

    const uchar* blurredBytes = blurred.constBits();
    QImage result;
    mapPixels(input, result, [&](const uchar* in, uchar* out, qsizetype k) {
        const UnitColour c = unpremultiplied(in), b = unpremultiplied(blurredBytes + k);
        storePremultiplied(out, {highPass(c.r, b.r), highPass(c.g, b.g), highPass(c.b, b.b)}, in[3]);
    });
    return result;
}
