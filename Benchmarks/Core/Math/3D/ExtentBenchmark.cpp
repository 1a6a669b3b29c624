// The union of boxes, one after the other with the same box, against the six comparisons alone.

#include "Core/Math/3D/Bounding3D.h"
#include "Support/Timing.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <vector>

namespace orv::math::_3d {

namespace {

std::vector<Extent> boxes(const benchmark::State& state) {
    std::mt19937_64 random; // NOLINT(cert-msc32-c, cert-msc51-cpp): the same in each run
    std::uniform_real_distribution<double> coordinate(-1000, 1000);
    std::vector<Extent> all;
    while (all.size() < static_cast<std::size_t>(state.range(0))) {
        const Point corner{coordinate(random), coordinate(random), coordinate(random)};
        all.emplace_back(corner, Point{corner.x + 1, corner.y + 2, corner.z + 3});
    }
    return all;
}

void uniteWith(benchmark::State& state) {
    Extent whole;
    benchmarks::timeEach(state, boxes(state), [&whole](const Extent& box) {
        whole.uniteWith(box);
        return &whole;
    });
}

void compare(benchmark::State& state) {
    Extent whole;
    benchmarks::timeEach(state, boxes(state), [&whole](const Extent& box) {
        whole.lowerLeft.x = std::min(whole.lowerLeft.x, box.lowerLeft.x);
        whole.lowerLeft.y = std::min(whole.lowerLeft.y, box.lowerLeft.y);
        whole.lowerLeft.z = std::min(whole.lowerLeft.z, box.lowerLeft.z);
        whole.upperRight.x = std::max(whole.upperRight.x, box.upperRight.x);
        whole.upperRight.y = std::max(whole.upperRight.y, box.upperRight.y);
        whole.upperRight.z = std::max(whole.upperRight.z, box.upperRight.z);
        return &whole;
    });
}

BENCHMARK(uniteWith)->Name("uniteWith/ours")->Arg(1000);
BENCHMARK(compare)->Name("uniteWith/floor")->Arg(1000);

} // namespace

} // namespace orv::math::_3d
