#pragma once

#include "Annotate/MergedValues.h"
#include "Annotate/Note.h"
#include "Annotate/Table.h"

#include <optional>

namespace annotate {

class ModelUnits;
struct ModelObject;

/// The columns of tables of edits, which import knows again.
std::vector<Column> editColumns();

/// What they hold for an edit, whose time is shown like that. The object is null if the model no longer has it.
Row editRow(const MergedProperty& property, const ModelObject* object, const ModelUnits& units,
            const std::string& shownTime);

/// When the edit was made; nothing if that isn't known.
std::optional<Time> timeOf(const orv::host::PropertyEdit& edit);

} // namespace annotate
