#include "Annotate/ExportedProperty.h"

#include "Annotate/Arguments.h"
#include "Annotate/StepParameters.h"
#include "Annotate/StepValue.h"
#include "Annotate/StepWriting.h"
#include "Annotate/UnitEntry.h"
#include "Annotate/ValueText.h"
#include "FoundationClasses/FcValueType.h"

#include <algorithm>
#include <iterator>

namespace annotate {

using orv::fc::FcValueType;
using orv::host::PropertyEdit;
using orv::object::PropertyValue;
using Form = PropertyEdit::Form;

namespace {

std::string_view keywordOf(Form form) {
    switch (form) {
    case Form::Enumerated:
        return "IFCPROPERTYENUMERATEDVALUE";
    case Form::Bounded:
        return "IFCPROPERTYBOUNDEDVALUE";
    case Form::List:
        return "IFCPROPERTYLISTVALUE";
    case Form::Table:
        return "IFCPROPERTYTABLEVALUE";
    default:
        return "IFCPROPERTYSINGLEVALUE";
    }
}

} // namespace

std::string PropertyExporter::valuesOf(const std::vector<PropertyValue>& values, std::string_view type,
                                       std::size_t first, std::size_t step) const {
    std::string list;
    for (std::size_t place = first; place < values.size(); place += step) {
        list.append(list.empty() ? "(" : ",").append(exportedValue(version, values[place], type));
    }
    return list.empty() ? "$" : list + ')';
}

/// What an edit sets its property to, in the model's units.
struct PropertyExporter::Content {
    const PropertyEdit& edit;
    const Definition* definition = orv::ifc::findSchemaDefForProperty(edit.set, edit.property);
    std::string fullName = edit.set + '.' + edit.property;
    std::vector<PropertyValue> values = edit.values;
    std::string type{};
    std::string definedType{};
};

/// Returns whether there is something to be exported, and tells why if there isn't.
bool PropertyExporter::takeValues(Content& content, const ModelStatements::Statement& model) {
    const PropertyEdit& edit = content.edit;
    std::vector<PropertyValue>& values = content.values;
    const std::string leftOut = content.fullName + " is left out. ";
    if (model.statementClass->kind == StatementKind::ComplexProperty) {
        sentences.insert(leftOut + "The model has a complex property of that name.");
        return false;
    }
    if (content.definition == nullptr) {
        if (!edit.unit.empty()) {
            sentences.insert(
                leftOut + "It was set in " + edit.unit +
                ", and what is measured isn't known without its definition; name that with --definitions.");
            return false;
        }
        content.type = model.text.empty() ? "" : stepValue(StepParameters(model.text)[2]).type;
        return true;
    }
    content.type = content.definition->valueType;
    content.definedType = content.definition->definedValueType;
    if (!edit.unit.empty()) {
        try {
            takeUnits(*content.definition, *units, edit.unit, values);
        } catch (const RequestError& problem) {
            sentences.insert(leftOut + problem.what());
            return false;
        }
    }
    if (edit.form == Form::Bounded) {
        values.resize(3);
        const bool hasBound = !values[0].isEmpty() || !values[1].isEmpty();
        if (version == IfcVersion::Ifc2x3 && !values[2].isEmpty()) {
            sentences.insert("The set point of " + content.fullName + " is left out, as IFC2X3 has none.");
            return hasBound;
        }
    }
    return true;
}

std::string PropertyExporter::boundsOf(const Content& content) const {
    const auto& [lower, upper, setPoint] = std::tie(content.values[0], content.values[1], content.values[2]);
    std::string bounds =
        exportedValue(version, upper, content.type) + ',' + exportedValue(version, lower, content.type) + ",$";
    return version == IfcVersion::Ifc2x3 ? bounds : bounds + ',' + exportedValue(version, setPoint, content.type);
}

/// Whether it is the model's enumeration of such values, and has them all.
bool PropertyExporter::isEnumerationOf(const std::string& enumeration, const Content& content) const {
    const std::vector<std::uint64_t> ids = referencesIn(enumeration);
    const auto statement = statements->find(ids.empty() ? 0 : ids.front());
    if (statement.statementClass->kind != StatementKind::Enumeration) {
        return false;
    }
    const StepParameters parameters(statement.text);
    std::set<std::string> allowed;
    for (const StepParameter value : parameters[1]) {
        allowed.insert(textIn(value));
    }
    return std::all_of(content.values.begin(), content.values.end(),
                       [&](const PropertyValue& value) { return allowed.contains(valueText(value)); });
}

std::optional<ExportedProperty> PropertyExporter::exported(const PropertyEdit& edit,
                                                           const ModelStatements::Statement& model) {
    Content content{edit};
    if (!takeValues(content, model)) {
        return std::nullopt;
    }
    const StatementParts parts(model.text);
    const bool hasModel = !model.text.empty();
    const StatementKind kind = model.statementClass->kind;
    std::string parameters = hasModel ? parts[0] + ',' + parts[1] + ',' : stepString(edit.property) + ",$,";
    switch (edit.form) {
    case Form::Enumerated:
        parameters += valuesOf(content.values, FcValueType::find(content.type) == nullptr ? "IfcLabel" : content.type) +
                      ',' +
                      (kind == StatementKind::EnumeratedValue && isEnumerationOf(parts[3], content) ? parts[3] : "$");
        break;
    case Form::Bounded:
        parameters += boundsOf(content);
        break;
    case Form::List:
        parameters += valuesOf(content.values, content.type) + ",$";
        break;
    case Form::Table: {
        const bool hasTable = kind == StatementKind::TableValue;
        parameters += valuesOf(content.values, content.type, 0, 2) + ',' +
                      valuesOf(content.values, content.definedType, 1, 2) + ',' + (hasTable ? parts[4] : "$") + ",$,$";
        parameters += version == IfcVersion::Ifc2x3 ? "" : hasTable ? ',' + parts[7] : ",$";
        break;
    }
    default:
        parameters +=
            exportedValue(version, content.values.empty() ? PropertyValue() : content.values.front(), content.type) +
            ",$";
    }
    return ExportedProperty{std::string(keywordOf(edit.form)), std::move(parameters)};
}

} // namespace annotate
