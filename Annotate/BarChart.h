#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace annotate {

/// Names with how often each occurs.
using Counts = std::vector<std::pair<std::string, std::size_t>>;

/// A line for each count with its name, a bar of characters and its number, in columns that are aligned. A bar has a
/// character for each that is counted, or as many as fit into so many columns; long names are cut. The names are as
/// printable makes them.
std::vector<std::string> barChart(const Counts& counts, std::size_t columns);

} // namespace annotate
