#include "Annotate/Commands.h"
#include "Annotate/Definitions.h"
#include "Annotate/EditRequest.h"
#include "Annotate/EditText.h"
#include "Annotate/MergedValues.h"
#include "Annotate/NamedObject.h"
#include "Annotate/Overlay.h"
#include "Annotate/Table.h"
#include "Annotate/Terminal.h"
#include "Annotate/ValueText.h"

#include <iostream>

namespace annotate {

using orv::ifc::def::xml::PropertyKind;
using orv::object::PropertyValue;
using Form = orv::host::PropertyEdit::Form;

namespace {

/// The values that hold: those of the edit as the overlay has them, otherwise the model's.
std::vector<PropertyValue> heldValues(const MergedProperty& property, const Model& model, const Records& records) {
    if (property.edit == nullptr) {
        const bool isOneText =
            property.model->kind != PropertyKind::List && property.model->kind != PropertyKind::Table;
        return isOneText ? std::vector<PropertyValue>{valuesText(*property.model)} : property.model->values;
    }
    const orv::host::PropertyEdit& edit = property.edit->edit;
    const auto* const definition = orv::ifc::findSchemaDefForProperty(property.set, property.name);
    const bool isBounded = definition != nullptr && definition->kind == PropertyKind::Bounded;
    const Overlay overlay(model, records);
    std::vector<PropertyValue> values = Overlay::read(property.edit->id, property.set, property.name);
    if (!values.empty() && edit.form != Form::Enumerated && !isBounded) {
        return values;
    }
    // Choices and bounds in one text, or what the overlay doesn't take as its definition is missing today.
    const bool isOneText = edit.form != Form::List && edit.form != Form::Table;
    return isOneText ? std::vector<PropertyValue>{editText(edit)} : edit.values;
}

bool isTable(const MergedProperty& property) {
    return property.edit == nullptr ? property.model->kind == PropertyKind::Table
                                    : property.edit->edit.form == Form::Table;
}

void printHeld(const Arguments& arguments, const std::vector<PropertyValue>& held, bool areRows) {
    std::vector<Row> rows;
    for (std::size_t place = 0; place < held.size(); ++place) {
        if (areRows && place % 2 == 1) {
            rows.back().push_back(valueText(held[place]));
        } else {
            rows.push_back({valueText(held[place])});
        }
    }
    printTable(arguments, areRows ? std::vector<Column>{{"Defining"}, {"Defined"}} : std::vector<Column>{{"Value"}},
               rows);
}

/// As in "model: F60, yours: F90".
void printBoth(const MergedProperty& property, const ModelUnits& units) {
    std::string text;
    if (property.model != nullptr) {
        text = "model: " + withUnit(valuesText(*property.model), unitText(*property.model));
    }
    if (property.edit != nullptr) {
        text.append(text.empty() ? "" : ", ")
            .append("yours: " + withUnit(editText(property.edit->edit), unitOf(property, units)));
    }
    std::cout << printable(text) << '\n';
}

} // namespace

void getProperty(const Arguments& arguments) {
    const EditRequest request(arguments, 0, 0);
    const ModelDetails details = ModelDetails::read(arguments.model);
    const Model& model = details.getModel();
    const ModelObject& object = objectNamed(arguments, model, request.globalId);
    const std::optional<orv::Guid> id = idOf(model, object);
    const Records records = readStore(arguments);
    const EditIndex edits(records);
    const std::vector<ModelSet> sets = details.setsOf(object);
    const MergedProperty property = mergedProperty(sets, id ? edits.of(*id) : std::vector<const EditIndex::Entry*>(),
                                                   request.set, request.property);
    if (property.model == nullptr && property.edit == nullptr) {
        throw RequestError(fullName(findDefinition(request.set, request.property)) + " isn't set on " +
                           request.globalId + ", neither in the model nor by you.");
    }
    if (isForReaders(arguments)) {
        printBoth(property, details.getUnits());
    } else {
        printHeld(arguments, heldValues(property, model, records), isTable(property));
    }
    if (const std::string sentence = changedUnit(property, details.getUnits()); !sentence.empty()) {
        std::cerr << "annotate: " << printable(sentence) << '\n';
    }
}

} // namespace annotate
