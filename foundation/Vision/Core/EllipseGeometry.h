#pragma once

#include <cmath>

#include "Vision/Core/Transform2D.h"

namespace Tavrin::Vision::Implementation {

struct MappedEllipse;

// The parameters swept from start through start + span; a negative span runs clockwise.
struct ParameterSweep {
    double start = 0;
    double span = 2 * M_PI;

    bool Contains(double t) const;
    ParameterSweep Mapped(MappedEllipse const& mapping) const;

    template <class Archive> void serialize(Archive& archive) { archive(start, span); }
};

// Centre, radii and rotation of an ellipse. The boundary point of parameter t is
// C + R(rotation)·(radiusX·cos t, radiusY·sin t); arcs and sections measure their angles in t.
struct EllipseGeometry {
    double centerX = 0;
    double centerY = 0;
    double radiusX = 1;
    double radiusY = 1;
    double rotation = 0;

    void PointAt(double t, double* x, double* y) const;
    // The point in the frame where this ellipse is the unit circle; false for an ellipse
    // without area, which has no such frame.
    bool ToUnitCircle(double x, double y, double* u, double* v) const;
    // Whether the point lies in the part of the ellipse that the sweep covers from the centre,
    // outside the inner ellipse scaled down by innerScale.
    bool Contains(double x, double y, ParameterSweep const& sweep = {},
                  double innerScale = 0) const;

    template <class Archive> void serialize(Archive& archive) {
        archive(centerX, centerY, radiusX, radiusY, rotation);
    }
};

// The image of an ellipse under a linear map, and where each boundary parameter lands on it:
// the image of the point of parameter t is the point of parameter sense·t + offset.
struct MappedEllipse {
    EllipseGeometry geometry;
    double parameterSense = 1;
    double parameterOffset = 0;

    double MapParameter(double t) const { return parameterSense * t + parameterOffset; }
};

// Radii and rotation come from the singular values and vectors of M·R(rotation)·diag(rx, ry).
// Of the equal ellipses that these give, the one whose X axis lies nearest the image of the
// original X axis is chosen, so that a turn or a scaling keeps radii and rotation in place.
MappedEllipse MapEllipse(EllipseGeometry const& ellipse, Transform2DLinear const& transform);

// The angle brought into the half-open interval from -pi to pi.
double NormalizeAngle(double angle);

} // namespace Tavrin::Vision::Implementation
