#pragma once

#include "Annotate/ExportedValue.h"
#include "Annotate/ModelStatements.h"
#include "Annotate/ModelUnits.h"
#include "Host/PropertyEdits.h"

#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace annotate {

/// The statement of a property without its number.
struct ExportedProperty {
    std::string keyword;
    std::string parameters;

    bool operator==(const ExportedProperty&) const = default;
};

/// Makes the statement that an edit is in a file of that version. model is the statement of the property that the edit
/// takes the place of; without text if there is none. Nothing if the values can't be had in the model's unit; that, and
/// what the version lacks, is told in a sentence.
class PropertyExporter {
public:
    PropertyExporter(IfcVersion fileVersion, const ModelStatements& modelStatements, const ModelUnits& modelUnits)
        : version(fileVersion), statements(&modelStatements), units(&modelUnits) {}

    std::optional<ExportedProperty> exported(const orv::host::PropertyEdit& edit,
                                             const ModelStatements::Statement& model);

    const std::set<std::string>& getSentences() const { return sentences; }

private:
    struct Content;

    bool takeValues(Content& content, const ModelStatements::Statement& model);
    std::string valuesOf(const std::vector<orv::object::PropertyValue>& values, std::string_view type,
                         std::size_t first = 0, std::size_t step = 1) const;
    std::string boundsOf(const Content& content) const;
    bool isEnumerationOf(const std::string& enumeration, const Content& content) const;

    IfcVersion version;
    const ModelStatements* statements;
    const ModelUnits* units;
    std::set<std::string> sentences;
};

} // namespace annotate
