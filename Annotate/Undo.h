#pragma once

#include "Annotate/Store.h"

#include <string>

namespace annotate {

/// Takes the author's last command back, or brings it forward if it was taken back, and returns a sentence on it.
/// Throws RequestError, with nothing changed, if there is none, if what it changed has been changed again since, or if
/// what the store tells of it isn't understood.
std::string undoLastCommand(Store& store, const std::string& author);

} // namespace annotate
