#include "Vision/Core/EllipseGeometry.h"

namespace Tavrin::Vision::Implementation {

void EllipseGeometry::PointAt(double t, double* x, double* y) const {
    double const c = std::cos(rotation), s = std::sin(rotation);
    double const alongX = radiusX * std::cos(t), alongY = radiusY * std::sin(t);
    *x = centerX + c * alongX - s * alongY;
    *y = centerY + s * alongX + c * alongY;
}

bool EllipseGeometry::ToUnitCircle(double x, double y, double* u, double* v) const {
    if (radiusX == 0 || radiusY == 0)
        return false;
    double const c = std::cos(rotation), s = std::sin(rotation);
    double const dx = x - centerX, dy = y - centerY;
    *u = (c * dx + s * dy) / radiusX;
    *v = (-s * dx + c * dy) / radiusY;
    return true;
}

bool EllipseGeometry::Contains(double x, double y, ParameterSweep const& sweep,
                               double innerScale) const {
    double u, v;
    if (!ToUnitCircle(x, y, &u, &v))
        return false;
    double const squared = u * u + v * v;
    if (squared > 1 || squared < innerScale * innerScale)
        return false;
    // In the unit-circle frame the polar angle is the parameter; the centre has none.
    return squared == 0 || sweep.Contains(std::atan2(v, u));
}

namespace {

// A = R(phi)·diag(sx, sy)·R(theta) for a 2x2 matrix [[p, q], [s, t]]; sy may be negative.
struct TurnScaleTurn {
    double phi, sx, sy, theta;
};

TurnScaleTurn Decompose(double p, double q, double s, double t) {
    double const e = (p + t) / 2, f = (p - t) / 2, g = (s + q) / 2, h = (s - q) / 2;
    double const qn = std::hypot(e, h), rn = std::hypot(f, g);
    double const a1 = std::atan2(g, f), a2 = std::atan2(h, e);
    return {(a2 + a1) / 2, qn + rn, qn - rn, (a2 - a1) / 2};
}

} // namespace

MappedEllipse MapEllipse(EllipseGeometry const& ellipse, Transform2DLinear const& transform) {
    double const c = std::cos(ellipse.rotation), s = std::sin(ellipse.rotation);
    double const a = transform.A(), b = transform.B(), cc = transform.C(), d = transform.D();
    // Columns: the images of the two radius vectors.
    double const p = (a * c + b * s) * ellipse.radiusX, q = (-a * s + b * c) * ellipse.radiusY;
    double const r = (cc * c + d * s) * ellipse.radiusX, t = (-cc * s + d * c) * ellipse.radiusY;
    TurnScaleTurn const svd = Decompose(p, q, r, t);

    MappedEllipse mapped;
    transform.MapPoint(ellipse.centerX, ellipse.centerY, &mapped.geometry.centerX,
                       &mapped.geometry.centerY);
    // A negative second value mirrors the parameter.
    mapped.parameterSense = svd.sy < 0 ? -1 : 1;
    mapped.parameterOffset = mapped.parameterSense * svd.theta;

    // Turning the axes by a quarter swaps the radii and shifts the parameter by a quarter.
    double const quarters = std::round((std::atan2(r, p) - svd.phi) / (M_PI / 2));
    bool const swapped = std::fmod(std::fabs(quarters), 2.0) == 1.0;
    mapped.geometry.radiusX = swapped ? std::fabs(svd.sy) : svd.sx;
    mapped.geometry.radiusY = swapped ? svd.sx : std::fabs(svd.sy);
    mapped.geometry.rotation = NormalizeAngle(svd.phi + quarters * M_PI / 2);
    mapped.parameterOffset = NormalizeAngle(mapped.parameterOffset - quarters * M_PI / 2);
    return mapped;
}

bool ParameterSweep::Contains(double t) const {
    if (std::fabs(span) >= 2 * M_PI)
        return true;
    double const distance = std::fmod(span >= 0 ? t - start : start - t, 2 * M_PI);
    return (distance < 0 ? distance + 2 * M_PI : distance) <= std::fabs(span);
}

ParameterSweep ParameterSweep::Mapped(MappedEllipse const& mapping) const {
    return {mapping.MapParameter(start), mapping.parameterSense * span};
}

double NormalizeAngle(double angle) {
    double turned = std::fmod(angle + M_PI, 2 * M_PI);
    if (turned < 0)
        turned += 2 * M_PI;
    turned -= M_PI;
    return turned >= M_PI ? turned - 2 * M_PI : turned;
}

} // namespace Tavrin::Vision::Implementation
