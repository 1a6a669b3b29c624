#pragma once

#include "Annotate/Note.h"

#include <string>
#include <vector>

namespace annotate {

/// A topic of the BIM Collaboration Format (BCF), as far as a note can tell it.
struct Topic {
    Note note;                          ///< With its id; what it is on is among the objects.
    std::vector<std::string> globalIds; ///< Of the objects that its viewpoints select.
};

} // namespace annotate
