#include "BenchPictures.h"
#include "Compositor.h"
#include "OpenedPhoto.h"
#include "PictureSaver.h"
#include "PreviewGeometry.h"
#include "ViewProxy.h"

#include <QColorSpace>
#include <QPainter>
#include <QColorTransform>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <map>
#include <type_traits>

// Ratios are given against BM_PlainCopy12MP (or 24MP) of the same run.

namespace {

struct Photo {
    OpenedPhoto photo;
    PhotoEdits photoEdits;
};

const Photo& photoOf(QSize size)
{
    static std::map<int, Photo> photos;
    auto found = photos.find(size.width());
    if (found == photos.end()) {
        const QImage picture = portraitPhoto(size);
        OpenResult opened = analysePhoto("portrait", DecodedPhoto{picture, QSizeF(picture.size()), {}, {}, {}});
        if (opened.outcome != OpenResult::Opened)
            qFatal("the benchmark photo was refused: %s", qPrintable(opened.message));
        PhotoEdits photoEdits = PhotoEdits::of(opened.photo.regions);
        found = photos.emplace(size.width(), Photo{std::move(opened.photo), std::move(photoEdits)}).first;
    }
    return found->second;
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

void plainCopy(benchmark::State& state, QSize size)
{
    const QImage source = noisePicture(size);
    QImage target = makePicture(size);
    for (auto _ : state) {
        std::memcpy(target.bits(), source.constBits(), size_t(source.sizeInBytes()));
        benchmark::ClobberMemory();
    }
}

// A fresh compositor with all nine effects on: nothing computed before.
void fullRedraw(benchmark::State& state, QSize size)
{
    const Photo& p = photoOf(size);
    const EditingState settings = everyEffectOn();
    for (auto _ : state) {
        Compositor compositor;
        benchmark::DoNotOptimize(compositor.compose(p.photo, p.photoEdits, settings));
    }
}

// Every setting a panel control writes, moved to another value its control
// can give.
struct Changed {
    void operator()(const char*, bool& v) { v = !v; }
    void operator()(const char*, std::uint64_t& v) { v = v == 0 ? 3 : v - 1; }
    void operator()(const char*, std::int32_t& v) { v = v + 1; }
    void operator()(const char*, float& v) { v = v >= 0.5f ? v * 0.5f : v + 0.25f; }
    void operator()(const char*, RgbaColor& v) { v = {v.g, v.b, v.r * 0.5f + 0.2f, v.a}; }
    void operator()(const char*, QPointF& v) { v = QPointF(100 - v.x(), 50); }
    void operator()(const char*, PointList& v) { v = v.isEmpty() ? PointList{{38, 58}} : PointList{}; }
};

// One compose after one field changed, all nine effects on and the field's
// own effect: the redraw a slider step, a colour or an Apply box asks for.
// The field goes back and forth between two values.
void composeAfterChanges(benchmark::State& state, const OpenedPhoto& photo, const PhotoEdits& photoEdits,
                         const char* field, double photoPixelsPerPixel = 1, EditingState before = everyEffectOn())
{
    if (const SettingRange* range = settingRange(field); range && range->effect)
        before.*range->effect = true;
    EditingState after = before;
    after.forEachField([&](const char* name, auto& value) {
        if (qstrcmp(name, field) == 0)
            Changed()(name, value);
    });
    Compositor compositor;
    compositor.compose(photo, photoEdits, before, photoPixelsPerPixel);
    bool flip = false;
    for (auto _ : state) {
        flip = !flip;
        benchmark::DoNotOptimize(compositor.compose(photo, photoEdits, flip ? after : before, photoPixelsPerPixel));
    }
}

// The marks a click or a stroke leaves for healing, changed: a list of
// them gains one (or loses it on the way back).
struct ChangedMarks {
    void operator()(PointList& v) const { v = v.isEmpty() ? PointList{{38, 58}} : PointList{}; }
    void operator()(QList<PointList>& v) const { v = v.isEmpty() ? QList<PointList>{{{36, 58}, {40, 60}}} : QList<PointList>{}; }
};

bool isHealingMark(const char* name)
{
    return qstrcmp(name, "array_Healed_Spots") == 0 || qstrcmp(name, "array_Kept_Spots") == 0
           || qstrcmp(name, "array_Heal_Strokes") == 0;
}

// One compose after a click or a stroke changed the healing's marks, all
// nine effects and healing on; back and forth.
void composeAfterMarks(benchmark::State& state, const OpenedPhoto& photo, const PhotoEdits& photoEdits,
                       const char* field, double photoPixelsPerPixel = 1)
{
    EditingState settings = everyEffectOn();
    settings.b_Heal_Blemishes = true;
    PhotoEdits after = photoEdits;
    after.forEachField([&](const char* name, auto& value, auto) {
        if constexpr (std::is_invocable_v<ChangedMarks, decltype(value)>)
            if (qstrcmp(name, field) == 0)
                ChangedMarks()(value);
    });
    Compositor compositor;
    compositor.compose(photo, photoEdits, settings, photoPixelsPerPixel);
    bool flip = false;
    for (auto _ : state) {
        flip = !flip;
        benchmark::DoNotOptimize(compositor.compose(photo, flip ? after : photoEdits, settings, photoPixelsPerPixel));
    }
}

void redrawAfterMarks(benchmark::State& state, QSize size, const char* field)
{
    const Photo& p = photoOf(size);
    composeAfterMarks(state, p.photo, p.photoEdits, field);
}

void redrawAfter(benchmark::State& state, QSize size, const char* field)
{
    const Photo& p = photoOf(size);
    composeAfterChanges(state, p.photo, p.photoEdits, field);
}

// The same with only the field's own effect on: what the effect itself costs.
void redrawAlone(benchmark::State& state, QSize size, const char* field)
{
    const Photo& p = photoOf(size);
    composeAfterChanges(state, p.photo, p.photoEdits, field, 1, EditingState());
}

// The preview's view while a control moves: 1400 × 900 device pixels, the
// photo fitted.
constexpr QSize kView{1400, 900};

ProxyFrame fittedFrame(QSize photo)
{
    const double zoom = shownZoom(Framing{}, QSizeF(photo), QSizeF(kView), 1);
    return proxyFrameFor(photo, QRectF(QPointF(0, 0), QSizeF(photo)), zoom);
}

// One step of a control as the preview shows it while the control moves:
// the interactive frame of the fitted view composed after one field
// changed, all nine effects on. The frame's photo is made once per view,
// as the preview keeps it.
void interactiveStep(benchmark::State& state, QSize size, const char* field)
{
    const Photo& p = photoOf(size);
    const ProxyFrame frame = fittedFrame(size);
    const OpenedPhoto proxy = proxyPhoto(p.photo, frame);
    const PhotoEdits photoEdits = proxyPhotoEdits(p.photoEdits, p.photo.imgSize, frame);
    composeAfterChanges(state, proxy, photoEdits, field, frame.photoPixelsPerPixel());
    state.counters["frameMP"] = double(frame.size.width()) * frame.size.height() / 1e6;
}

void interactiveMarksStep(benchmark::State& state, QSize size, const char* field)
{
    const Photo& p = photoOf(size);
    const ProxyFrame frame = fittedFrame(size);
    const OpenedPhoto proxy = proxyPhoto(p.photo, frame);
    composeAfterMarks(state, proxy, proxyPhotoEdits(p.photoEdits, p.photo.imgSize, frame), field,
                      frame.photoPixelsPerPixel());
}

// What the preview makes once per view before its first frame.
void makeFramePhoto(benchmark::State& state, QSize size)
{
    const Photo& p = photoOf(size);
    const ProxyFrame frame = fittedFrame(size);
    for (auto _ : state)
        benchmark::DoNotOptimize(proxyPhoto(p.photo, frame));
}

// The retouched picture written as `name` asks (PNG; JPEG and WebP at the
// default quality 92; TIFF), with the size of the file.
void save(benchmark::State& state, QSize size, const char* name)
{
    const Photo& p = photoOf(size);
    Compositor compositor;
    const QImage picture = compositor.compose(p.photo, p.photoEdits, everyEffectOn());
    QTemporaryDir folder;
    const QString path = folder.filePath(name);
    for (auto _ : state)
        writePicture(picture, path, {*pictureFormatOf(path)}, p.photo.metadata);
    state.counters["MB"] = double(QFileInfo(path).size()) / 1e6;
}

// What the preview converts for a wide-gamut photo on every redraw: a
// 1600 × 1000 frame from Display P3 to the screen's sRGB, in place.
void showP3Frame(benchmark::State& state)
{
    QImage frame = noisePicture({1600, 1000}).convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const QColorTransform toScreen = QColorSpace(QColorSpace::DisplayP3).transformationToColorSpace(QColorSpace::SRgb);
    for (auto _ : state)
        frame.applyColorTransform(toScreen);
}

bool isPanelSetting(const char* name)
{
    // The picking state is the mouse's, not a setting any control writes.
    return qstrcmp(name, "b_Cheeks_Picking_Color") != 0 && qstrcmp(name, "i_Picking_Color_Index") != 0;
}

void registerAll(const char* label, QSize size)
{
    const auto name = [label](const QString& what) { return QString(what).arg(label).toStdString(); };
    benchmark::RegisterBenchmark(name("BM_PlainCopy%1").c_str(), plainCopy, size)
        ->Unit(benchmark::kMillisecond)->UseRealTime();
    benchmark::RegisterBenchmark(name("BM_FullRedrawAllEffects%1").c_str(), fullRedraw, size)
        ->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);
    EditingState fields;
    fields.forEachField([&](const char* field, auto&) {
        if (isPanelSetting(field))
            benchmark::RegisterBenchmark(name(QString("BM_Redraw%1/") + field).c_str(), redrawAfter, size, field)
                ->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(0.5);
        if (QByteArray(field).contains("Natural_Skin"))
            benchmark::RegisterBenchmark(name(QString("BM_RedrawAlone%1/") + field).c_str(), redrawAlone, size, field)
                ->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(0.5);
    });
    PhotoEdits marks;
    marks.forEachField([&](const char* field, auto&, auto) {
        if (isHealingMark(field))
            benchmark::RegisterBenchmark(name(QString("BM_Redraw%1/") + field).c_str(), redrawAfterMarks, size, field)
                ->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(0.5);
    });
    for (const auto& [format, file] : {std::pair{"Png", "saved.png"}, {"Jpeg", "saved.jpg"}, {"WebP", "saved.webp"},
                                       {"Tiff", "saved.tif"}})
        benchmark::RegisterBenchmark(name(QString("BM_Save") + format + "%1").c_str(), save, size, file)
            ->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);
}

// What a 64 MP photo costs while a control moves (the frame) and when the
// hand rests (the full picture after the same step, the preview's redraw).
void registerLive()
{
    const QSize size{8000, 8000};
    benchmark::RegisterBenchmark("BM_PlainCopy64MP", plainCopy, size)->Unit(benchmark::kMillisecond)->UseRealTime();
    benchmark::RegisterBenchmark("BM_MakeFramePhoto64MP", makeFramePhoto, size)
        ->Unit(benchmark::kMillisecond)->UseRealTime();
    EditingState fields;
    fields.forEachField([&](const char* field, auto&) {
        if (!isPanelSetting(field))
            return;
        benchmark::RegisterBenchmark((std::string("BM_InteractiveStep64MP/") + field).c_str(), interactiveStep, size,
                                     field)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(0.3);
        benchmark::RegisterBenchmark((std::string("BM_Settle64MP/") + field).c_str(), redrawAfter, size, field)
            ->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(4);
    });
    PhotoEdits marks;
    marks.forEachField([&](const char* field, auto&, auto) {
        if (isHealingMark(field))
            benchmark::RegisterBenchmark((std::string("BM_InteractiveStep64MP/") + field).c_str(), interactiveMarksStep,
                                         size, field)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(0.3);
    });
}

// A 12 MP group photo: the head photo alone, or four of them in a grid
// (-1: the grid with its largest face only, the same picture around one
// face).
QImage groupPhoto(int faces)
{
    if (faces == 1)
        return portraitPhoto(k12Megapixels);
    const QImage one = portraitPhoto(k12Megapixels / 2);
    QImage group = makePicture(k12Megapixels);
    QPainter painter(&group);
    for (int k = 0; k < 4; ++k)
        painter.drawImage((k % 2) * one.width(), (k / 2) * one.height(), one);
    return group;
}

OpenResult openedGroup(const QImage& picture, bool everyFace = true)
{
    FacePick pick;
    pick.every = everyFace;
    pick.largest = !everyFace;
    return analysePhoto("group", DecodedPhoto{picture, QSizeF(picture.size()), {}, {}, {}}, pick);
}

const Photo& groupOf(int faces)
{
    static std::map<int, Photo> photos;
    auto found = photos.find(faces);
    if (found == photos.end()) {
        OpenResult opened = openedGroup(groupPhoto(std::abs(faces)), faces > 0);
        if (opened.outcome != OpenResult::Opened || opened.photo.faceCount() != std::max(1, faces))
            qFatal("the group photo was not opened with its %d faces", faces);
        PhotoEdits edits = PhotoEdits::of(opened.photo.regions);
        found = photos.emplace(faces, Photo{std::move(opened.photo), std::move(edits)}).first;
    }
    return found->second;
}

// Every face found, landmarks and regions, from the decoded photo.
void openFaces(benchmark::State& state, int faces)
{
    const QImage picture = groupPhoto(std::abs(faces));
    for (auto _ : state)
        benchmark::DoNotOptimize(openedGroup(picture, faces > 0));
}

void fullRedrawFaces(benchmark::State& state, int faces)
{
    const Photo& p = groupOf(faces);
    for (auto _ : state) {
        Compositor compositor;
        benchmark::DoNotOptimize(compositor.compose(p.photo, p.photoEdits, everyEffectOn()));
    }
}

// A lip colour step in the fitted view, all nine effects on, every face.
void interactiveStepFaces(benchmark::State& state, int faces)
{
    const Photo& p = groupOf(faces);
    const ProxyFrame frame = fittedFrame(k12Megapixels);
    const OpenedPhoto proxy = proxyPhoto(p.photo, frame);
    composeAfterChanges(state, proxy, proxyPhotoEdits(p.photoEdits, p.photo.imgSize, frame),
                        "f_Color_Lips_Transparency", frame.photoPixelsPerPixel());
}

// The same step on the whole picture: the redraw once the hand rests.
void settleFaces(benchmark::State& state, int faces)
{
    const Photo& p = groupOf(faces);
    composeAfterChanges(state, p.photo, p.photoEdits, "f_Color_Lips_Transparency");
}

void registerFaces()
{
    for (int faces : {1, 4, -4}) {
        const std::string count = faces > 0 ? std::to_string(faces) : "1of4";
        benchmark::RegisterBenchmark(("BM_OpenFaces12MP/" + count).c_str(), openFaces, faces)
            ->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);
        benchmark::RegisterBenchmark(("BM_FullRedrawFaces12MP/" + count).c_str(), fullRedrawFaces, faces)
            ->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);
        benchmark::RegisterBenchmark(("BM_InteractiveStepFaces12MP/" + count).c_str(), interactiveStepFaces, faces)
            ->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(0.3);
        benchmark::RegisterBenchmark(("BM_SettleFaces12MP/" + count).c_str(), settleFaces, faces)
            ->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(0.3);
    }
}

BENCHMARK(showP3Frame)->Name("BM_ShowP3Frame1600x1000")->Unit(benchmark::kMillisecond)->UseRealTime();

const bool registered = [] {
    registerAll("12MP", k12Megapixels);
    registerAll("24MP", k24Megapixels);
    registerLive();
    registerFaces();
    return true;
}();

} // namespace
