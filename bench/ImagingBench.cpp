#include "BenchPictures.h"
#include "FilterPrimitives.h"
#include "Picture.h"
#include "TRCIHighPassSkinSmoothing.h"
#include "TRCIRGBToneCurve.h"

#include <benchmark/benchmark.h>

#include <cstring>

// Every figure is given as a ratio to BM_PlainCopy12MP from the same run.
// Operations used on every redraw are timed in their buffer-reusing form,
// as the preview calls them.

namespace {

const QImage& photo12MP()
{
    static const QImage photo = portrait12Megapixels();
    return photo;
}

// The yardstick: one plain copy of the picture into a buffer that exists.
void BM_PlainCopy12MP(benchmark::State& state)
{
    const QImage& source = photo12MP();
    QImage target = makePicture(k12Megapixels);
    for (auto _ : state) {
        std::memcpy(target.bits(), source.constBits(), size_t(source.sizeInBytes()));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_PlainCopy12MP)->Unit(benchmark::kMillisecond)->UseRealTime();

template <void (*Filter)(const QImage&, QImage&)>
void BM_ReusingFilter(benchmark::State& state)
{
    QImage result;
    for (auto _ : state)
        Filter(photo12MP(), result);
}
BENCHMARK_TEMPLATE(BM_ReusingFilter, imageBlackAndWhite)->Name("BM_imageBlackAndWhite12MP")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_TEMPLATE(BM_ReusingFilter, Whiten_Teeth)->Name("BM_Whiten_Teeth12MP")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_TEMPLATE(BM_ReusingFilter, imageReplaceWhiteWithTransparent)->Name("BM_imageReplaceWhiteWithTransparent12MP")->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_imageReplaceGreenWithOriginal12MP(benchmark::State& state)
{
    const QImage marker = imageReplaceWhiteWithTransparent(photo12MP());
    const QImage source = imageBlackAndWhite(photo12MP());
    QImage result;
    for (auto _ : state)
        imageReplaceGreenWithOriginal(marker, photo12MP(), source, result);
}
BENCHMARK(BM_imageReplaceGreenWithOriginal12MP)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_maskImage12MP(benchmark::State& state)
{
    QImage mask = makePicture(k12Megapixels);
    mask.fill(Qt::white);
    for (auto _ : state)
        benchmark::DoNotOptimize(maskImage(photo12MP(), mask));
}
BENCHMARK(BM_maskImage12MP)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_imageBlurCropped12MP(benchmark::State& state)
{
    QImage result;
    for (auto _ : state)
        gaussianBlurCropped(photo12MP(), result, float(state.range(0)));
}
BENCHMARK(BM_imageBlurCropped12MP)->Arg(1)->Arg(7)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_imageBlur12MP(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(imageBlur(photo12MP(), 4));
}
BENCHMARK(BM_imageBlur12MP)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_imageBlurCheekLayer(benchmark::State& state)
{
    const QImage layer = noisePicture({1024, 1024});
    for (auto _ : state)
        benchmark::DoNotOptimize(imageBlurCheek(layer, 4));
}
BENCHMARK(BM_imageBlurCheekLayer)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_ToneCurve12MP(benchmark::State& state)
{
    TRCIRGBToneCurve filter;
    filter.inputImage = photo12MP();
    filter.setInputRGBCompositeControlPoints(TRCIHighPassSkinSmoothing::defaultInputRGBCompositeControlPoints());
    for (auto _ : state)
        benchmark::DoNotOptimize(filter.outputImage());
}
BENCHMARK(BM_ToneCurve12MP)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_trc_Face_Smooth12MP(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(trc_Face_Smooth(photo12MP(), 10, 10));
}
BENCHMARK(BM_trc_Face_Smooth12MP)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_StretchCheekLayer(benchmark::State& state)
{
    const QImage layer = noisePicture({1024, 1024});
    for (auto _ : state)
        benchmark::DoNotOptimize(Stretch_Image(layer, QSizeF(420, 310)));
}
BENCHMARK(BM_StretchCheekLayer)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

namespace {

void BM_drawOver12MP(benchmark::State& state)
{
    QImage target = photo12MP().copy();
    const QImage over = imageBlackAndWhite(photo12MP());
    for (auto _ : state)
        drawOver(target, over);
}
BENCHMARK(BM_drawOver12MP)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
