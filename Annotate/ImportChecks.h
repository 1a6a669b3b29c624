#pragma once

#include "Annotate/Arguments.h"
#include "Annotate/Definitions.h"
#include "Annotate/EditIndex.h"
#include "Annotate/ImportRows.h"
#include "Annotate/Model.h"
#include "Annotate/Notes.h"
#include "Annotate/Overlay.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace annotate {

class ModelUnits;

/// What can be said of lines that are taken all the same.
struct LinesRemarked {
    std::size_t count = 0;
    std::size_t first = 0;
};

/// Checks the rows of an import as the command set checks what it is given, and makes edits of them.
class EditChecks {
public:
    /// All outlive this. The units are those of the model.
    EditChecks(const Arguments& usersArguments, const Model& usersModel, const ModelUnits& modelUnits,
               const EditIndex& presentEdits)
        : arguments(usersArguments), model(usersModel), units(modelUnits), present(presentEdits), overlay(usersModel) {}

    /// The edit, with its author and time if nothing was stored for the property and the row tells them; nothing if
    /// that is what is stored. Throws RequestError if it is refused.
    std::optional<orv::host::ObjectEdit> check(const ImportRow& row);

    /// By their texts.
    const std::map<std::string, LinesRemarked>& getRemarks() const { return remarks; }

private:
    /// Throws RequestError if there is none. Each is looked for once, as that takes long where it fails.
    const Definition& definitionOf(const ImportRow& row);

    void requireFirst(const ImportRow& row, const orv::Guid& id);
    void remark(const ImportRow& row, const std::vector<std::string>& texts);

    /// The stored edit of which an export writes the row, which may be on an object that the model no longer has; null
    /// if there is none.
    const EditIndex::Entry* storedAs(const ImportRow& row) const;
    bool isPresent(const orv::host::ObjectEdit& made) const;

    const Arguments& arguments;
    const Model& model;
    const ModelUnits& units;
    const EditIndex& present;
    Overlay overlay;
    std::map<std::pair<std::string, std::string>, std::pair<const Definition*, std::string>> definitions;
    std::map<std::string, std::size_t> linesOfProperties;
    std::map<std::string, LinesRemarked> remarks;
};

/// A note that is to be stored.
struct ImportedNote {
    Note* present; ///< The one that becomes so; null if it is new.
    Note content;
};

/// Checks the rows of an import as the command note checks what it is given, and makes notes of them.
class NoteChecks {
public:
    /// All outlive this.
    NoteChecks(const Arguments& usersArguments, const Model& usersModel, const Notebook& presentNotes);

    /// The note; nothing if that is what is stored, or was in an earlier row. Throws RequestError if it is refused.
    std::optional<ImportedNote> check(const ImportRow& row);

private:
    const Arguments& arguments;
    const Model& model;
    std::map<std::string, Note*> ofIds; ///< Null for those of earlier rows.
    std::set<std::tuple<std::string, std::string, int>> texts;
};

} // namespace annotate
