#include "Vision/UtilityPxl/PelBuffer.h"

#include <cmath>

tv2XformLinear tv2XformLinear::inverse() const {
    double const det = a_ * d_ - b_ * c_;
    if (det == 0 || !std::isfinite(det))
        throw tvException(tvException::Kind::singular, L"The transform cannot be inverted.");
    double const ia = d_ / det, ib = -b_ / det, ic = -c_ / det, id = a_ / det;
    return tv2XformLinear(ia, ib, ic, id, -(ia * tx_ + ib * ty_), -(ic * tx_ + id * ty_));
}
