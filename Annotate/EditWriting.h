#pragma once

#include "Annotate/Store.h"
#include "Host/PropertyEdits.h"

#include <string>
#include <vector>

namespace annotate {

class EditIndex;

/// Stores edits that were checked, all or none, with one rewrite, as the author's last command. Each gets the author
/// and the present time, or one later than that of the edit that it replaces; one that replaces none and has a time
/// keeps that and its author. present is the index of the store's records. Throws StoreError if that can't be done.
void writeEdits(Store& store, const std::string& author, const std::string& command, EditIndex& present,
                std::vector<orv::host::ObjectEdit> edits);

} // namespace annotate
