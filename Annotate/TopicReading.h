#pragma once

#include "Annotate/Topic.h"

#include <cstddef>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace annotate {

/// The topics of an archive of the BIM Collaboration Format, and their comments, each as a topic of its own that has
/// its topic's state.
struct TopicsRead {
    std::vector<Topic> topics;                  ///< In the order of the archive, a topic before its comments.
    std::map<std::string, std::size_t> leftOut; ///< What notes can't hold, as in "snapshots", and how many.
};

/// Reads versions 2.0, 2.1 and 3.0, as other programs write them. Throws RequestError, with the reason, if the file
/// isn't such an archive, or something in it can't be read.
TopicsRead readTopics(const std::filesystem::path& path);

} // namespace annotate
