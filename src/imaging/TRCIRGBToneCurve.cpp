#include "TRCIRGBToneCurve.h"

#include "PixelKernels.h"

#include <QCache>
#include <QHash>

#include <atomic>
#include <cmath>
#include <mutex>

namespace {

// A control-point list as a cache key, compared by value.
struct CurveKey {
    ControlPoints points;
    bool operator==(const CurveKey& other) const
    {
        if (points.size() != other.points.size())
            return false;
        for (qsizetype i = 0; i < points.size(); ++i)
            if (points[i].x() != other.points[i].x() || points[i].y() != other.points[i].y())
                return false;
        return true;
    }
};

size_t qHash(const CurveKey& key, size_t seed = 0)
{
    QtPrivate::QHashCombine combine;
    for (const QPointF& p : key.points)
        seed = combine(combine(seed, p.x()), p.y());
    return seed;
}

// The process-wide "TRCIRGBToneCurveSplineCurveCache": at most 40 prepared
// curves, each costing 1.
QCache<CurveKey, PreparedCurve>& splineCurveCache()
{
    static QCache<CurveKey, PreparedCurve> cache(40);
    return cache;
}

std::atomic<int> curvesPrepared{0};
std::mutex cacheLock; // a batch composes two photos at once

// Limits to 0..255 and truncates towards zero; not-a-number counts as 255.
int clampTrunc(float v)
{
    if (std::isnan(v))
        return 255;
    return int(std::clamp(v, 0.0f, 255.0f));
}

float offsetAt(const PreparedCurve& curve, int level)
{
    return level < int(curve.size()) ? curve[size_t(level)] : 0.0f;
}

// Level i through a channel curve, then through the composite curve.
uchar throughCurves(int level, const PreparedCurve& channel, const PreparedCurve& composite)
{
    const int once = clampTrunc(float(level) + offsetAt(channel, level));
    return uchar(clampTrunc(float(once) + offsetAt(composite, once)));
}

QList<QPointF> sortedByXInLevels(const ControlPoints& points)
{
    QList<QPointF> sorted = points;
    std::stable_sort(sorted.begin(), sorted.end(), [](QPointF a, QPointF b) { return a.x() < b.x(); });
    for (QPointF& p : sorted)
        p = QPointF(p.x() * 255.0, p.y() * 255.0);
    return sorted;
}

// Levels below the first sample map to 0, above the last to 255. The first
// sample's own level is padded once more in front of it; kept as it is.
void padToFullRange(QList<QPointF>& samples)
{
    const double first = samples.first().x();
    if (first > 0)
        for (int i = int(first); i >= 0; --i)
            samples.prepend(QPointF(i, 0));
    const double last = samples.last().x();
    if (last < 255)
        for (int i = int(last + 1); i <= 255; ++i)
            samples.append(QPointF(i, 255));
}

const ControlPoints& pointsOrDefault(std::optional<ControlPoints>& points)
{
    if (!points || points->isEmpty())
        points = TRCIRGBToneCurve::defaultCurveControlPoints();
    return *points;
}

} // namespace

ControlPoints TRCIRGBToneCurve::defaultCurveControlPoints()
{
    return {{0, 0}, {0.5, 0.5}, {1, 1}};
}

const ControlPoints& TRCIRGBToneCurve::inputRGBCompositeControlPoints() { return pointsOrDefault(composite_); }
const ControlPoints& TRCIRGBToneCurve::inputRedControlPoints() { return pointsOrDefault(red_); }
const ControlPoints& TRCIRGBToneCurve::inputGreenControlPoints() { return pointsOrDefault(green_); }
const ControlPoints& TRCIRGBToneCurve::inputBlueControlPoints() { return pointsOrDefault(blue_); }
double TRCIRGBToneCurve::inputIntensity() { return lazyDefault(inputIntensity_, 1.0); }

void TRCIRGBToneCurve::setPoints(std::optional<ControlPoints>& input, PreparedCurve& curve, const ControlPoints& points)
{
    input = points;
    curve.clear();
    texture_.reset();
}

void TRCIRGBToneCurve::setInputRGBCompositeControlPoints(const ControlPoints& points)
{
    setPoints(composite_, rgbCompositeCurve_, points);
}

void TRCIRGBToneCurve::setInputRedControlPoints(const ControlPoints& points) { setPoints(red_, redCurve_, points); }
void TRCIRGBToneCurve::setInputGreenControlPoints(const ControlPoints& points) { setPoints(green_, greenCurve_, points); }
void TRCIRGBToneCurve::setInputBlueControlPoints(const ControlPoints& points) { setPoints(blue_, blueCurve_, points); }

void TRCIRGBToneCurve::setDefaults()
{
    setPoints(composite_, rgbCompositeCurve_, {});
    setPoints(red_, redCurve_, {});
    setPoints(green_, greenCurve_, {});
    setPoints(blue_, blueCurve_, {});
    inputIntensity_.reset();
}

std::vector<double> TRCIRGBToneCurve::secondDerivative(const QList<QPointF>& p)
{
    const qsizetype n = p.size();
    if (n < 2)
        return {};
    // Tridiagonal rows (below, diagonal, above) with natural ends: the
    // second derivative is 0 at the first and the last point.
    std::vector<std::array<double, 3>> m(size_t(n), {0.0, 1.0, 0.0});
    std::vector<double> rhs(size_t(n), 0.0);
    for (qsizetype i = 1; i < n - 1; ++i) {
        m[size_t(i)] = {(p[i].x() - p[i - 1].x()) / 6.0, (p[i + 1].x() - p[i - 1].x()) / 3.0,
                        (p[i + 1].x() - p[i].x()) / 6.0};
        rhs[size_t(i)] = (p[i + 1].y() - p[i].y()) / (p[i + 1].x() - p[i].x())
                         - (p[i].y() - p[i - 1].y()) / (p[i].x() - p[i - 1].x());
    }
    for (size_t i = 1; i < size_t(n); ++i) { // top to bottom
        const double k = m[i][0] / m[i - 1][1];
        m[i][1] -= k * m[i - 1][2];
        m[i][0] = 0;
        rhs[i] -= k * rhs[i - 1];
    }
    for (size_t i = size_t(n) - 1; i-- > 0;) { // bottom to top
        const double k = m[i][2] / m[i + 1][1];
        m[i][1] -= k * m[i + 1][0];
        m[i][2] = 0;
        rhs[i] -= k * rhs[i + 1];
    }
    std::vector<double> s(static_cast<size_t>(n));
    for (size_t i = 0; i < size_t(n); ++i)
        s[i] = rhs[i] / m[i][1];
    return s;
}

QList<QPointF> TRCIRGBToneCurve::splineCurve(const QList<QPointF>& points)
{
    const std::vector<double> s = secondDerivative(points);
    if (s.empty())
        return {};
    QList<QPointF> samples;
    for (qsizetype i = 0; i + 1 < points.size(); ++i) {
        const QPointF cur = points[i], next = points[i + 1];
        const double h = next.x() - cur.x();
        for (int x = int(cur.x()); x < int(next.x()); ++x) {
            const double t = (x - cur.x()) / h;
            const double a = 1 - t;
            const double y = a * cur.y() + t * next.y()
                             + (h * h / 6) * ((a * a * a - a) * s[size_t(i)] + (t * t * t - t) * s[size_t(i) + 1]);
            samples.append(QPointF(x, std::clamp(y, 0.0, 255.0)));
        }
    }
    samples.append(points.last());
    return samples;
}

PreparedCurve TRCIRGBToneCurve::getPreparedSplineCurve(const ControlPoints& points)
{
    const CurveKey key{points};
    {
        const std::lock_guard<std::mutex> locked(cacheLock);
        if (const PreparedCurve* cached = splineCurveCache().object(key))
            return *cached;
    }
    if (points.isEmpty())
        return {};
    QList<QPointF> samples = splineCurve(sortedByXInLevels(points));
    if (samples.isEmpty())
        return {};
    ++curvesPrepared;
    padToFullRange(samples);
    PreparedCurve offsets;
    offsets.reserve(size_t(samples.size()));
    for (const QPointF& p : samples)
        offsets.push_back(float(p.y() - p.x()));
    const std::lock_guard<std::mutex> locked(cacheLock);
    splineCurveCache().insert(key, new PreparedCurve(offsets), 1);
    return offsets;
}

int TRCIRGBToneCurve::preparedCurveCount()
{
    return curvesPrepared;
}

void TRCIRGBToneCurve::updateToneCurveTexture()
{
    auto prepare = [](PreparedCurve& curve, const ControlPoints& points) {
        if (curve.size() != 256)
            curve = getPreparedSplineCurve(points);
    };
    prepare(rgbCompositeCurve_, inputRGBCompositeControlPoints());
    prepare(redCurve_, inputRedControlPoints());
    prepare(greenCurve_, inputGreenControlPoints());
    prepare(blueCurve_, inputBlueControlPoints());

    auto texture = std::make_unique<ToneCurveTexture>();
    for (int i = 0; i < 256; ++i) {
        uchar* texel = texture->data() + 4 * i;
        texel[0] = throughCurves(i, blueCurve_, rgbCompositeCurve_);
        texel[1] = throughCurves(i, greenCurve_, rgbCompositeCurve_);
        texel[2] = throughCurves(i, redCurve_, rgbCompositeCurve_);
        texel[3] = 255;
    }
    texture_ = std::move(texture);
}

const ToneCurveTexture& TRCIRGBToneCurve::toneCurveTexture()
{
    if (!texture_)
        updateToneCurveTexture();
    return *texture_;
}

void applyToneCurve(const uchar* in, uchar* out, const ToneCurveTexture& texture, float intensity)
{
    const int a = in[3];
    if (a == 0) {
        out[0] = out[1] = out[2] = out[3] = 0;
        return;
    }
    int straight[3];
    for (int c = 0; c < 3; ++c)
        straight[c] = a == 255 ? in[c] : std::min(255, (in[c] * 255 + a / 2) / a);
    const int looked[3] = {texture[size_t(4 * straight[0] + 2)], texture[size_t(4 * straight[1] + 1)],
                           texture[size_t(4 * straight[2])]};
    // The change is made in straight colour and applied premultiplied, so
    // intensity 0 returns the pixel exactly, whatever its alpha.
    const float premultiply = float(a) / 255.0f;
    for (int c = 0; c < 3; ++c) {
        const float changed = float(in[c]) + float(looked[c] - straight[c]) * intensity * premultiply;
        out[c] = uchar(std::clamp(changed + 0.5f, 0.0f, float(a)));
    }
    out[3] = uchar(a);
}

ToneCurveLookup::ToneCurveLookup(const ToneCurveTexture& texture, float intensity)
{
    for (int v = 0; v < 256; ++v) {
        const uchar opaque[4] = {uchar(v), uchar(v), uchar(v), 255};
        uchar curved[4];
        applyToneCurve(opaque, curved, texture, intensity);
        red[size_t(v)] = curved[0];
        green[size_t(v)] = curved[1];
        blue[size_t(v)] = curved[2];
    }
}

void ToneCurveLookup::apply(const QImage& src, QImage& dst, const ToneCurveTexture& texture, float intensity) const
{
    mapPixels(src, dst, [&](const uchar* in, uchar* out, qsizetype) {
        if (in[3] != 255) {
            applyToneCurve(in, out, texture, intensity);
            return;
        }
        out[0] = red[in[0]];
        out[1] = green[in[1]];
        out[2] = blue[in[2]];
        out[3] = 255;
    });
}

QImage TRCIRGBToneCurve::outputImage()
{
    if (inputImage.isNull())
        return {};
    const ToneCurveTexture& texture = toneCurveTexture();
    const float intensity = float(inputIntensity());
    QImage result;
    ToneCurveLookup(texture, intensity).apply(inputImage, result, texture, intensity);
    return result;
}
