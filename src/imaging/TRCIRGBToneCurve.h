#pragma once

#include "TRCIFilter.h"

#include <QList>
#include <QPointF>

#include <array>
#include <memory>
#include <vector>

// Control points of a curve, in the unit square.
using ControlPoints = QList<QPointF>;

// Offsets (output - input) per integer input level of one prepared curve.
using PreparedCurve = std::vector<float>;

// The lookup of a tone curve: for input level i, the bytes B, G, R, A at
// 4i are the output blue, green and red levels and 255.
using ToneCurveTexture = std::array<uchar, 1024>;

// Maps every colour channel through its own curve (red, green, blue), then
// through one composite curve shared by all three, and mixes the result with
// the unchanged pixel by the intensity. Each curve is a natural cubic spline
// through its control points, sampled at the 256 levels.
class TRCIRGBToneCurve : public TRCIFilter {
public:
    static ControlPoints defaultCurveControlPoints(); // the identity: (0,0), (0.5,0.5), (1,1)

    QImage outputImage() override;
    void setDefaults() override;

    // An empty or unset list reads as the identity.
    const ControlPoints& inputRGBCompositeControlPoints();
    const ControlPoints& inputRedControlPoints();
    const ControlPoints& inputGreenControlPoints();
    const ControlPoints& inputBlueControlPoints();
    double inputIntensity(); // 1 fully curved, 0 unchanged

    // Each stores a copy and drops only its own prepared curve and the
    // lookup texture.
    void setInputRGBCompositeControlPoints(const ControlPoints& points);
    void setInputRedControlPoints(const ControlPoints& points);
    void setInputGreenControlPoints(const ControlPoints& points);
    void setInputBlueControlPoints(const ControlPoints& points);
    void setInputIntensity(double intensity) { inputIntensity_ = intensity; }

    // Rebuilds the missing prepared curves, then the texture.
    void updateToneCurveTexture();
    // The texture, built first when missing.
    const ToneCurveTexture& toneCurveTexture();

    // Prepared curves as they stand (empty until first needed).
    const PreparedCurve& rgbCompositeCurve() const { return rgbCompositeCurve_; }
    const PreparedCurve& redCurve() const { return redCurve_; }

    // A curve of 256 offsets for `points`, from the process-wide cache keyed
    // by the list as passed; empty for an empty list.
    static PreparedCurve getPreparedSplineCurve(const ControlPoints& points);
    // Samples the spline through `points` (level units) at every integer
    // level between the first and last point, clamped to 0..255, and ends
    // with the last point itself.
    static QList<QPointF> splineCurve(const QList<QPointF>& points);
    // Second derivatives of the natural cubic spline through `points`;
    // empty for fewer than two points.
    static std::vector<double> secondDerivative(const QList<QPointF>& points);

    // How many curves the cache has prepared since the process started.
    static int preparedCurveCount();

private:
    void setPoints(std::optional<ControlPoints>& input, PreparedCurve& curve, const ControlPoints& points);

    std::optional<ControlPoints> composite_, red_, green_, blue_;
    std::optional<double> inputIntensity_;
    PreparedCurve rgbCompositeCurve_, redCurve_, greenCurve_, blueCurve_;
    std::unique_ptr<ToneCurveTexture> texture_;
};

// Looks one premultiplied pixel up in a tone-curve texture and mixes it
// with the unchanged pixel by `intensity`; alpha is kept. The lookup works
// on straight colour.
void applyToneCurve(const uchar* in, uchar* out, const ToneCurveTexture& texture, float intensity);

// The texture already mixed by an intensity, one table per channel: what
// applyToneCurve gives an opaque pixel, by three lookups.
struct ToneCurveLookup {
    std::array<uchar, 256> red, green, blue;

    ToneCurveLookup(const ToneCurveTexture& texture, float intensity);

    // Every pixel of `src` through the curve into `dst`.
    void apply(const QImage& src, QImage& dst, const ToneCurveTexture& texture, float intensity) const;
};
