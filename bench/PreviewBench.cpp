#include "BenchPictures.h"
#include "Compositor.h"
#include "OpenedPhoto.h"

#include <benchmark/benchmark.h>

#include <cstring>

// Ratios are given against BM_PlainCopy12MP of the same run.

namespace {

const OpenedPhoto& photo12MP()
{
    static const OpenResult opened = [] {
        const QImage picture = portrait12Megapixels();
        return analysePhoto("portrait-12mp", DecodedPhoto{picture, QSizeF(picture.size()), {}});
    }();
    return opened.photo;
}

const Reshaping& reshaping12MP()
{
    static const Reshaping reshaping = Reshaping::of(photo12MP().regions);
    return reshaping;
}

EditingState everyEffectOn()
{
    EditingState s;
    s.b_Face_Skin_Smooth = s.b_Remove_Wrinkles = s.b_Color_Eyes = s.b_Widen_Eyes = s.b_Eye_Eyeshadow = true;
    s.b_Eyes_Darken = s.b_Apply_Cheeks = s.b_Color_Lips = s.b_Whiten_Teeth = true;
    s.u_Widen_Eyes_Level = 10;
    s.f_Darken_Eyes_Transparency = 0.5f;
    return s;
}

void BM_PlainCopy12MP(benchmark::State& state)
{
    const QImage& source = photo12MP().img_Basic; // analysed before timing starts
    QImage target = makePicture(source.size());
    for (auto _ : state) {
        std::memcpy(target.bits(), source.constBits(), size_t(source.sizeInBytes()));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_PlainCopy12MP)->Unit(benchmark::kMillisecond)->UseRealTime();

// (a) A redraw with all nine effects on and nothing computed before.
void BM_FullRedrawAllEffects12MP(benchmark::State& state)
{
    const EditingState settings = everyEffectOn();
    photo12MP(); // analysed before timing starts
    for (auto _ : state) {
        Compositor compositor;
        benchmark::DoNotOptimize(compositor.compose(photo12MP(), reshaping12MP(), settings));
    }
}
BENCHMARK(BM_FullRedrawAllEffects12MP)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);

// (b) The redraw after moving the lips transparency slider, all else on.
void BM_RedrawAfterLipsTransparency12MP(benchmark::State& state)
{
    EditingState settings = everyEffectOn();
    Compositor compositor;
    compositor.compose(photo12MP(), reshaping12MP(), settings);
    int step = 0;
    for (auto _ : state) {
        settings.f_Color_Lips_Transparency = (++step % 2) ? 0.3f : 0.4f;
        benchmark::DoNotOptimize(compositor.compose(photo12MP(), reshaping12MP(), settings));
    }
}
BENCHMARK(BM_RedrawAfterLipsTransparency12MP)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
