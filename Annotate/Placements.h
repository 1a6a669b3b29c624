#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <set>

namespace annotate {

class ModelUnits;

/// A place in the coordinates of a model, in metres.
struct Point {
    double x = 0;
    double y = 0;
    double z = 0;
};

/// Where the placements of the instances lead, by their numbers; without those that have none, or one that can't be
/// followed. Reads the model's file three times. A length unit that isn't known is taken for the metre. Throws
/// ModelError if the file can't be read.
std::map<std::uint64_t, Point> placesOf(const std::filesystem::path& model, const ModelUnits& units,
                                        const std::set<std::uint64_t>& instances);

} // namespace annotate
