#pragma once

#include "Annotate/Arguments.h"
#include "Annotate/Definitions.h"
#include "Annotate/EditIndex.h"
#include "Annotate/ImportRows.h"
#include "Annotate/Model.h"
#include "Annotate/Note.h"
#include "Annotate/Overlay.h"

#include <map>
#include <optional>
#include <string>
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

    /// The edit, without its author and time; nothing if that is what is stored. Throws RequestError if it is refused.
    std::optional<orv::host::ObjectEdit> check(const ImportRow& row);

    /// By their texts.
    const std::map<std::string, LinesRemarked>& getRemarks() const { return remarks; }

private:
    /// Throws RequestError if there is none. Each is looked for once, as that takes long where it fails.
    const Definition& definitionOf(const ImportRow& row);

    void requireFirst(const ImportRow& row, const orv::Guid& id);
    void remark(const ImportRow& row, const std::vector<std::string>& texts);
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

/// The object of the row. Throws RequestError if the model has none.
orv::Guid objectOf(const ImportRow& row, const Arguments& arguments, const Model& model);

/// The note that the row tells, without what it gets when it is added. Throws RequestError if it is refused.
Note noteIn(const ImportRow& row, const Arguments& arguments, const Model& model);

} // namespace annotate
