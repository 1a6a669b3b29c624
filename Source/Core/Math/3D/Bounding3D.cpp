#include "Core/Math/3D/Bounding3D.h"

#include "Assert/Assert.h"

namespace orv::math::_3d {

namespace {

double lesser(double own, double other) {
    return other < own ? other : own;
}

double greater(double own, double other) {
    return other > own ? other : own;
}

void checkAxis(double lower, double upper, std::string_view message, std::uint32_t line) {
    if (assert::Assert::isEnabled() && lower > upper && lower != std::numeric_limits<double>::max()) {
        assert::Assert::addAssert(
            {0, message, "orv::math::_3d::Bounding::Bounding", "Source/Core/Math/3D/Bounding3D", line});
    }
}

} // namespace

Bounding::Bounding(const Point& lower, const Point& upper) : lowerLeft(lower), upperRight(upper) {
    checkAxis(lower.x, upper.x, "LowerLeft is not left of UpperRight", 43);
    checkAxis(lower.y, upper.y, "LowerLeft is not lower than UpperRight", 44);
    checkAxis(lower.z, upper.z, "LowerLeft is not nearer than UpperRight", 45);
}

void Extent::uniteWith(const Extent& other) {
    const Point lower{lesser(lowerLeft.x, other.lowerLeft.x), lesser(lowerLeft.y, other.lowerLeft.y),
                      lesser(lowerLeft.z, other.lowerLeft.z)};
    const Point upper{greater(upperRight.x, other.upperRight.x), greater(upperRight.y, other.upperRight.y),
                      greater(upperRight.z, other.upperRight.z)};
    static_cast<void>(Bounding(lower, upper)); // for its checks
    lowerLeft = lower;
    upperRight = upper;
}

} // namespace orv::math::_3d
