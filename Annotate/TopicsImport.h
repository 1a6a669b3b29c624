#pragma once

#include "Annotate/Arguments.h"

#include <filesystem>

namespace annotate {

/// Whether it is an archive of the BIM Collaboration Format, by its name.
bool isTopicsArchive(const std::filesystem::path& path);

/// Makes notes of the topics and comments in the archive, and changes those that come again and were changed there
/// since. Says what it couldn't place and what it left out. Throws RequestError, with nothing stored, if the archive
/// can't be read, and what reading the model or writing the store throws.
void importTopics(const Arguments& arguments);

} // namespace annotate
