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
#include <utility>

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
    const Overlay overlay(model, records);
    std::vector<PropertyValue> values = Overlay::read(property.edit->id, property.set, property.name);
    if (!values.empty() && edit.form != Form::Enumerated && edit.form != Form::Bounded) {
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

/// For programs with the unit, and whose it is.
void printHeld(const Arguments& arguments, const MergedProperty& property, const std::vector<PropertyValue>& held,
               const ModelUnits& units) {
    const bool isTold = arguments.csv || arguments.json;
    const std::size_t width = isTable(property) ? 2 : 1;
    std::vector<Column> columns =
        width == 2 ? std::vector<Column>{{"Defining"}, {"Defined"}} : std::vector<Column>{{"Value"}};
    std::vector<Row> rows;
    for (std::size_t place = 0; place < held.size(); place += width) {
        Row& row = rows.emplace_back();
        for (std::size_t column = 0; column < width; ++column) {
            row.push_back(place + column < held.size() ? valueText(held[place + column]) : "");
        }
        if (isTold) {
            row.push_back(property.edit == nullptr ? unitText(*property.model) : unitOf(property, units));
            row.push_back(property.edit == nullptr ? "model" : "yours");
        }
    }
    if (isTold) {
        columns.insert(columns.end(), {{"Unit"}, {"Whose"}});
    }
    printTable(arguments, columns, rows);
}

/// As in "model: F60, yours: F90".
void printBoth(const MergedProperty& property, const ModelUnits& units) {
    std::string text;
    if (property.model != nullptr) {
        text = "model: " + withUnit(valuesText(*property.model), unitText(*property.model));
    }
    if (property.edit != nullptr) {
        text.append(text.empty() ? "" : ", ")
            .append(property.editFrom.empty() ? "yours: " : "yours, from " + std::string(property.editFrom) + ": ")
            .append(withUnit(editText(property.edit->edit), unitOf(property, units)));
    }
    std::cout << printable(text) << '\n';
}

/// That the object doesn't have the property, or that nobody knows it.
RequestError notSet(const EditRequest& request, const std::vector<ModelSet>& sets) {
    if (orv::ifc::findSchemaDefForProperty(request.set, request.property) != nullptr) {
        return RequestError(request.set + '.' + request.property + " isn't set on " + request.globalId +
                            ", neither in the model nor by you.");
    }
    std::vector<std::string_view> names;
    for (const ModelSet& set : sets) {
        for (const ModelProperty& property : set.properties) {
            if (set.name == request.set) {
                names.emplace_back(property.name);
            }
        }
    }
    return unknownProperty(request.set, request.property, std::move(names));
}

} // namespace

void getProperty(const Arguments& arguments) {
    const EditRequest request(arguments, 0, 0);
    const ModelDetails details = ModelDetails::read(arguments.model);
    const Model& model = details.getModel();
    const ModelObject& object = objectNamed(arguments, model, request.globalId);
    const Records records = readStore(arguments);
    const EditIndex edits(records);
    const std::vector<ModelSet> sets = details.setsOf(object);
    const HeldEdit edit = editFor(object, details, edits, request.set, request.property);
    const MergedProperty property = mergedProperty(sets, edit, request.set, request.property);
    if (property.model == nullptr && property.edit == nullptr) {
        throw notSet(request, sets);
    }
    if (isForReaders(arguments)) {
        printBoth(property, details.getUnits());
    } else {
        printHeld(arguments, property, heldValues(property, model, records), details.getUnits());
    }
    if (const std::string sentence = changedUnit(property, details.getUnits()); !sentence.empty()) {
        std::cerr << "annotate: " << printable(sentence) << '\n';
    }
}

} // namespace annotate
