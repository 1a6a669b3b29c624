#pragma once

#include "Annotate/Arguments.h"
#include "Annotate/NewFile.h"

#include <string>
#include <vector>

namespace annotate {

/// What there is to be said of an export, in sentences.
struct ExportOutcome {
    std::string done;
    std::vector<std::string> remarks;
};

// The exports, by what they write to the new file. Each throws what reading the model or the store throws.

/// The model with what was set on its objects in it.
ExportOutcome exportModel(const Arguments& arguments, NewFile& file);

/// An archive of the BIM Collaboration Format (BCF) with a topic for each note.
ExportOutcome exportTopics(const Arguments& arguments, NewFile& file);

/// A page for readers, which needs nothing beside it: what was added, where and by whom, and all of it in tables.
ExportOutcome exportReport(const Arguments& arguments, NewFile& file);

/// A table of the edits, or with --notes of the notes, which import reads again.
ExportOutcome exportCsv(const Arguments& arguments, NewFile& file);

/// All of the notes and edits, for programs: docs/annotate.schema.json tells the form.
ExportOutcome exportJson(const Arguments& arguments, NewFile& file);

} // namespace annotate
