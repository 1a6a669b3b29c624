#pragma once

#include "Annotate/ModelStatements.h"
#include "Annotate/ModelUnits.h"
#include "Host/PropertyEdits.h"

#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace annotate {

/// A version of IFC by what statements look like in it.
enum class IfcVersion { Ifc2x3, Ifc4, Ifc4x3 };

/// Of the schema that a file names, as in IFC4X3_ADD2.
IfcVersion versionOf(std::string_view schema);

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
    PropertyExporter(IfcVersion fileVersion, const ModelUnits& modelUnits) : version(fileVersion), units(&modelUnits) {}

    std::optional<ExportedProperty> exported(const orv::host::PropertyEdit& edit,
                                             const ModelStatements::Statement& model);

    const std::set<std::string>& getSentences() const { return sentences; }

private:
    std::string valueOf(const orv::object::PropertyValue& value, std::string_view type) const;
    std::string valuesOf(const std::vector<orv::object::PropertyValue>& values, std::string_view type,
                         std::size_t first = 0, std::size_t step = 1) const;

    IfcVersion version;
    const ModelUnits* units;
    std::set<std::string> sentences;
};

} // namespace annotate
