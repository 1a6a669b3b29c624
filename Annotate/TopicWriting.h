#pragma once

#include "Annotate/Placements.h"
#include "Annotate/Topic.h"

#include <optional>
#include <string>
#include <vector>

namespace annotate {

/// The versions of the format that are written.
enum class BcfVersion { Bcf21, Bcf30 };

/// What an archive tells of all its topics.
struct TopicsHead {
    BcfVersion version = BcfVersion::Bcf30;
    std::string modelName; ///< The name of its file.
    std::string projectId; ///< The GlobalId of the model's project; empty if it has none that is valid.
};

/// The topic's markup.bcf, with a viewpoint if one is written, and with that at the end of its description.
std::string topicMarkup(const TopicsHead& head, const Topic& topic, bool hasViewpoint, const std::string& ending);

/// The viewpoint.bcfv that selects the topic's objects, with a camera if there is a place to look at. Version 3.0
/// demands one.
std::string topicViewpoint(BcfVersion version, const Topic& topic, const std::optional<Point>& place);

/// The archive's bcf.version.
std::string versionMarkup(BcfVersion version);

/// The extensions.xml of version 3.0: the priorities and people that occur, and what a note can be.
std::string extensionsMarkup(const std::vector<Topic>& topics);

} // namespace annotate
