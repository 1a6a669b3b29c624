#pragma once

#include "Annotate/Store.h"
#include "Host/PropertyEdits.h"

#include <string>
#include <vector>

namespace annotate {

class EditIndex;

/// Writes edits that were found good, by the author and now, but later than the edits that they take the place of, as
/// the author's last command: with one rewrite of the store, whole or not at all. An edit that takes the place of none
/// and has a time keeps that and its author. present is of the store's records.
/// Throws StoreError if that can't be done.
void writeEdits(Store& store, const std::string& author, const std::string& command, EditIndex& present,
                std::vector<orv::host::ObjectEdit> edits);

} // namespace annotate
