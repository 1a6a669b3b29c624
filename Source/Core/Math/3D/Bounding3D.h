#pragma once

#include "OrvExport.h"

#include <limits>

namespace orv::math::_3d {

/// A point, or a corner of a box, in whatever unit the host uses.
struct Point {
    double x = 0;
    double y = 0;
    double z = 0;
};

/// Two corners of a box. They should be in order: on no axis lies lowerLeft beyond upperRight, unless it is the largest
/// finite double there, by which an unset axis is known. For this library alone; it isn't exported.
class Bounding {
public:
    /// Takes the corners as they are, and reports each axis on which they are out of order.
    Bounding(const Point& lower, const Point& upper);

    Point lowerLeft;
    Point upperRight;
};

/// An axis-aligned box. An unset box, the default, has the largest finite double in its lower corner and its negative
/// in the upper one, so that united with another box it becomes that box.
class Extent {
public:
    Extent() = default;

    /// The box between the corners, taken as they are.
    Extent(const Point& lower, const Point& upper) : lowerLeft(lower), upperRight(upper) {}

    /// Makes this box large enough to hold other as well, which may be this very box. A coordinate of other that is NaN
    /// is passed over, one of this box stays. A box that ends up out of order on an axis, as one or both were, is
    /// reported and kept. Allocates nothing, but for a report.
    ORV_ENHANCEMENTS_EXPORT void uniteWith(const Extent& other);

    Point lowerLeft{unset, unset, unset};
    Point upperRight{-unset, -unset, -unset};

private:
    static constexpr double unset = std::numeric_limits<double>::max();
};

} // namespace orv::math::_3d
