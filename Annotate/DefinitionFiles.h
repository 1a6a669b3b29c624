#pragma once

#include "Annotate/Arguments.h"

namespace annotate {

/// Makes the definitions known that are the user's own: those in the .xml files of the folder MODEL.definitions beside
/// the model, with or without the ending of the model's name, and those in the files that --definitions names. Throws
/// RequestError, with the file and the reason, if one can't be read or holds something else; unless all are needed,
/// that is only said of those beside the model. If they are, says which types in them nobody knows.
void takeOwnDefinitions(const Arguments& arguments, bool areNeeded);

} // namespace annotate
