#include "BenchPictures.h"
#include "Picture.h"

#include <benchmark/benchmark.h>

#include <cstring>

namespace {

// The yardstick every ratio is given against: one plain copy of the picture
// into a buffer that already exists.
void BM_PlainCopy12MP(benchmark::State& state)
{
    const QImage source = noisePicture(k12Megapixels);
    QImage target = makePicture(k12Megapixels);
    for (auto _ : state) {
        std::memcpy(target.bits(), source.constBits(), size_t(source.sizeInBytes()));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_PlainCopy12MP)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_ToPictureFromArgb32(benchmark::State& state)
{
    const QImage source = noisePicture(k12Megapixels).convertToFormat(QImage::Format_ARGB32);
    for (auto _ : state)
        benchmark::DoNotOptimize(toPicture(source));
}
BENCHMARK(BM_ToPictureFromArgb32)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_PixelLoopInvert12MP(benchmark::State& state)
{
    const QImage source = noisePicture(k12Megapixels);
    for (auto _ : state)
        benchmark::DoNotOptimize(runPixelLoop(source, [](uchar* px, qsizetype) {
            px[0] = uchar(px[3] - px[0]);
            px[1] = uchar(px[3] - px[1]);
            px[2] = uchar(px[3] - px[2]);
        }));
}
BENCHMARK(BM_PixelLoopInvert12MP)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_StretchCheekLayer(benchmark::State& state)
{
    const QImage layer = noisePicture({1024, 1024});
    for (auto _ : state)
        benchmark::DoNotOptimize(Stretch_Image(layer, QSizeF(420, 310)));
}
BENCHMARK(BM_StretchCheekLayer)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
