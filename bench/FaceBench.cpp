#include "BenchPictures.h"
#include "DLibWrapper.h"
#include "FaceRegions.h"
#include "FaceSearch.h"
#include "HogFaceDetector.h"
#include "OpenedPhoto.h"
#include "RegionImages.h"
#include "PhotoDecoder.h"
#include "../tests/face/PhotoFixtures.h"

#include <QFileInfo>
#include <QImageWriter>
#include <QProcess>
#include <QTemporaryDir>

// The baseline is dlib's own detector on its own image type, so this
// benchmark includes dlib beside the wrapper it measures.
#include <dlib/image_processing.h>
#include <dlib/image_processing/frontal_face_detector.h>

#include <benchmark/benchmark.h>

namespace {

struct Fixture {
    QTemporaryDir folder;
    QString jpegPath;
    QImage photo;
    FaceLandmarks landmarks;

    explicit Fixture(QSize size)
    {
        photo = portraitPhoto(size);
        jpegPath = folder.filePath("portrait.jpg");
        QImageWriter writer(jpegPath, "jpeg");
        writer.setQuality(92);
        writer.write(photo);
        landmarks = DLibWrapper::Detect_Facial_Points(photo).landmarks; // also loads the model
    }
};

Fixture& fixture()
{
    static Fixture shared(k12Megapixels);
    return shared;
}

// Made only when a 24 MP benchmark runs.
Fixture& fixture24()
{
    static Fixture shared(k24Megapixels);
    return shared;
}

dlib::array2d<dlib::rgb_pixel> toDlibImage(const QImage& photo)
{
    const QImage rgb = photo.convertToFormat(QImage::Format_RGB888);
    dlib::array2d<dlib::rgb_pixel> image(rgb.height(), rgb.width());
    for (int y = 0; y < rgb.height(); ++y) {
        const uchar* line = rgb.constScanLine(y);
        for (int x = 0; x < rgb.width(); ++x)
            image[y][x] = dlib::rgb_pixel(line[3 * x], line[3 * x + 1], line[3 * x + 2]);
    }
    return image;
}

void BM_Decode12MP(benchmark::State& state)
{
    const Fixture& f = fixture();
    for (auto _ : state)
        benchmark::DoNotOptimize(decodePhoto(f.jpegPath));
}
BENCHMARK(BM_Decode12MP)->Unit(benchmark::kMillisecond)->UseRealTime();

// dlib alone, as shipped: its HOG detector on its own image of the same
// pixels, the call the program made before it split the work over cores.
void stockDlibDetection(benchmark::State& state, const Fixture& f)
{
    const dlib::array2d<dlib::rgb_pixel> image = toDlibImage(f.photo);
    dlib::frontal_face_detector detector = dlib::get_frontal_face_detector();
    for (auto _ : state)
        benchmark::DoNotOptimize(detector(image, 0.0));
}

void BM_StockDlibDetection12MP(benchmark::State& state)
{
    stockDlibDetection(state, fixture());
}
BENCHMARK(BM_StockDlibDetection12MP)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

void BM_StockDlibDetection24MP(benchmark::State& state)
{
    stockDlibDetection(state, fixture24());
}
BENCHMARK(BM_StockDlibDetection24MP)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

// The program's detection on the same pixels, and its pyramid against
// dlib's.
void BM_HogDetection12MP(benchmark::State& state)
{
    const QImage rgb = fixture().photo.convertToFormat(QImage::Format_RGB888);
    const RgbPixels pixels{rgb.constBits(), rgb.width(), rgb.height(), size_t(rgb.bytesPerLine())};
    const dlib::frontal_face_detector detector = dlib::get_frontal_face_detector();
    for (auto _ : state)
        benchmark::DoNotOptimize(detectFaces(detector, pixels));
}
BENCHMARK(BM_HogDetection12MP)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

void BM_PyramidLevel12MP(benchmark::State& state)
{
    const QImage rgb = fixture().photo.convertToFormat(QImage::Format_RGB888);
    const RgbPixels pixels{rgb.constBits(), rgb.width(), rgb.height(), size_t(rgb.bytesPerLine())};
    dlib::array2d<dlib::rgb_pixel> smaller;
    for (auto _ : state)
        pyramidDown(pixels, smaller);
}
BENCHMARK(BM_PyramidLevel12MP)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_DlibPyramidLevel12MP(benchmark::State& state)
{
    const dlib::array2d<dlib::rgb_pixel> image = toDlibImage(fixture().photo);
    dlib::array2d<dlib::rgb_pixel> smaller;
    const dlib::pyramid_down<6> pyramid;
    for (auto _ : state)
        pyramid(image, smaller);
}
BENCHMARK(BM_DlibPyramidLevel12MP)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_DlibOwnLandmarks12MP(benchmark::State& state)
{
    const dlib::array2d<dlib::rgb_pixel> image = toDlibImage(fixture().photo);
    dlib::frontal_face_detector detector = dlib::get_frontal_face_detector();
    const dlib::rectangle face = detector(image, 0.0).at(0);
    dlib::shape_predictor predictor;
    dlib::deserialize(QFile::encodeName(DLibWrapper::modelPath()).toStdString()) >> predictor;
    for (auto _ : state)
        benchmark::DoNotOptimize(predictor(image, face));
}
BENCHMARK(BM_DlibOwnLandmarks12MP)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_DetectFacialPoints12MP(benchmark::State& state)
{
    const Fixture& f = fixture();
    for (auto _ : state)
        benchmark::DoNotOptimize(DLibWrapper::Detect_Facial_Points(f.photo));
}
BENCHMARK(BM_DetectFacialPoints12MP)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

void BM_DecodeDetectLandmarks12MP(benchmark::State& state)
{
    const Fixture& f = fixture();
    for (auto _ : state)
        benchmark::DoNotOptimize(DLibWrapper::Detect_Facial_Points(decodePhoto(f.jpegPath).img_Basic));
}
BENCHMARK(BM_DecodeDetectLandmarks12MP)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

void BM_RegionGeometry(benchmark::State& state)
{
    const FaceLandmarks& landmarks = fixture().landmarks;
    for (auto _ : state)
        benchmark::DoNotOptimize(FaceRegions::build(landmarks, QSizeF(k12Megapixels)));
}
BENCHMARK(BM_RegionGeometry)->Unit(benchmark::kMicrosecond);

// Every region picture the effects paint with, as they make them when all
// nine are first switched on (an open made them all before).
void BM_RegionImages12MP(benchmark::State& state)
{
    const FaceRegions r = FaceRegions::build(fixture().landmarks, QSizeF(k12Megapixels));
    const QImage& photo = fixture().photo;
    const QSizeF size(k12Megapixels);
    for (auto _ : state) {
        benchmark::DoNotOptimize(RegionImages::faceSkinCut(photo, size, r));
        benchmark::DoNotOptimize(RegionImages::faceFullPicture(photo, size, r));
        benchmark::DoNotOptimize(RegionImages::lipsBlackWhite(photo, size, r));
        benchmark::DoNotOptimize(RegionImages::insideMouthCut(photo, size, r));
        benchmark::DoNotOptimize(RegionImages::eye(photo, size, r.path_Inside_Eye_Left, r.rect_Eye_Left));
        benchmark::DoNotOptimize(RegionImages::eye(photo, size, r.path_Inside_Eye_Right, r.rect_Eye_Right));
    }
}
BENCHMARK(BM_RegionImages12MP)->Unit(benchmark::kMillisecond)->UseRealTime();

// The whole open, model already loaded: decode, detection, landmarks,
// geometry and percent forms (the region pictures come with the effects).
void BM_Open12MP(benchmark::State& state)
{
    const Fixture& f = fixture();
    for (auto _ : state)
        benchmark::DoNotOptimize(openAndAnalyse(f.jpegPath));
}
BENCHMARK(BM_Open12MP)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

// A click on a face in the chooser, 12 MP: the landmarks predicted in the
// face's frame and the regions derived, on the photo already decoded.
// Against BM_Open12MP it leaves out the decoding and the detection.
void BM_OpenChosenFace12MP(benchmark::State& state)
{
    const QRect face = DLibWrapper::Detect_Facial_Points(fixture().photo).faces.at(0);
    for (auto _ : state) {
        OpenResult refused;
        refused.photo.img_Basic = fixture().photo;
        refused.photo.imgSize = fixture().photo.size();
        benchmark::DoNotOptimize(openWithFace(std::move(refused), FaceFrame::drawn(face)));
    }
}
BENCHMARK(BM_OpenChosenFace12MP)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);

// What the mark dialog offers on a 12 MP photo without a face: the searches
// on the photo turned a quarter either way and by ±30°, before it shows.
void BM_FacesBeyondLimits12MP(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(facesBeyondLimits(fixture().photo));
}
BENCHMARK(BM_FacesBeyondLimits12MP)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

void BM_Open24MP(benchmark::State& state)
{
    const Fixture& f = fixture24();
    for (auto _ : state)
        benchmark::DoNotOptimize(openAndAnalyse(f.jpegPath));
}
// A first open: a fresh process of the command-line tool analysing the
// JPEG of BM_Open12MP, which reads the landmark model on another thread
// while it decodes and looks for the face, as the window does from its
// start. Against BM_Open12MP (the model already read) it includes the
// process's start and end and the JSON written: BM_ProcessStartCli alone.
QString cliTool()
{
    return QFileInfo("/proc/self/exe").canonicalFilePath().section('/', 0, -2) + "/bellavenor-cli";
}

void runCli(benchmark::State& state, const QStringList& arguments)
{
    for (auto _ : state) {
        QProcess tool;
        tool.start(cliTool(), arguments);
        if (!tool.waitForFinished(60000) || tool.exitCode() != 0)
            state.SkipWithError("the command-line tool failed");
    }
}

void BM_FirstOpen12MP(benchmark::State& state)
{
    runCli(state, {"analyse", fixture().jpegPath});
}
BENCHMARK(BM_FirstOpen12MP)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);

void BM_ProcessStartCli(benchmark::State& state)
{
    runCli(state, {"--version"});
}
BENCHMARK(BM_ProcessStartCli)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);

BENCHMARK(BM_Open24MP)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

// The same 12 MP photo as a phone's HEIC (HEVC, 4:2:0, quality 95), beside
// the JPEG of BM_Decode12MP and BM_Open12MP: decoding through libheif, and
// the whole open.
const QString& heicPath()
{
    static const QString path = [] {
        const Fixture& f = fixture();
        const QString heic = f.folder.filePath("portrait.heic");
        QFile file(heic);
        file.open(QIODevice::WriteOnly);
        file.write(heifOf(f.photo, heif_compression_HEVC, heif_orientation_normal, "420"));
        return heic;
    }();
    return path;
}

void BM_DecodeHeic12MP(benchmark::State& state)
{
    const QString& path = heicPath();
    for (auto _ : state)
        benchmark::DoNotOptimize(decodePhoto(path));
}
BENCHMARK(BM_DecodeHeic12MP)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_OpenHeic12MP(benchmark::State& state)
{
    const QString& path = heicPath();
    for (auto _ : state)
        benchmark::DoNotOptimize(openAndAnalyse(path));
}
BENCHMARK(BM_OpenHeic12MP)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

} // namespace
