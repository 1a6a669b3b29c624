#include "Annotate/Commands.h"
#include "Annotate/EditText.h"
#include "Annotate/Filter.h"
#include "Annotate/MergedValues.h"
#include "Annotate/ModelDetails.h"
#include "Annotate/NamedObject.h"
#include "Annotate/Notes.h"
#include "Annotate/Table.h"
#include "Annotate/Terminal.h"
#include "Annotate/ValueText.h"
#include "FoundationClasses/IfcClass.h"

#include <algorithm>
#include <iostream>

namespace annotate {

namespace {

using Entries = std::vector<const EditIndex::Entry*>;

/// As in "IfcWall North wall".
std::string shown(const ModelObject& object) {
    std::string text(object.ifcClass->name);
    return object.name.empty() ? text : text + ' ' + printable(object.name);
}

std::string shown(const std::vector<const ModelObject*>& place) {
    std::string text;
    for (const ModelObject* const part : place) {
        text.append(text.empty() ? "" : " > ").append(shown(*part));
    }
    return text;
}

/// As in "Note 3: Is it load-bearing? (open, priority 2, Anna, 2026-01-31T12:00:00Z)".
std::string shown(std::int64_t number, const Note& note) {
    std::string text = "Note " + std::to_string(number) + ": " + printable(note.text) + " (" +
                       (note.resolved ? "resolved" : "open") + ", priority " + std::to_string(note.priority);
    if (!note.author.empty()) {
        text += ", " + printable(note.author);
    }
    if (note.made) {
        text += ", " + shownTime(note.made);
    }
    if (note.changed) {
        text += "; changed" + (note.changedBy.empty() ? "" : " by " + printable(note.changedBy)) + ", " +
                shownTime(note.changed);
    }
    return text + ')';
}

void printHead(const ModelDetails& details, const ModelObject& object, const Records& records) {
    std::cout << shown(object) << "\nGlobalId: " << printable(object.globalId) << '\n';
    if (const auto place = details.placeOf(object); !place.empty()) {
        std::cout << "Place: " << shown(place) << '\n';
    }
    if (const ModelObject* const type = details.typeOf(object)) {
        std::cout << "Type: " << shown(*type) << ", " << printable(type->globalId) << '\n';
    }
    for (const auto& [number, note] : numberedNotes(records)) {
        if (details.getModel().find(note->ownerId) == &object) {
            std::cout << shown(number, *note) << '\n';
        }
    }
}

/// What is set on the property, with its unit where that isn't the one of the model's value.
std::string yours(const MergedProperty& property, const ModelUnits& units) {
    if (property.edit == nullptr) {
        return "";
    }
    return withUnit(editText(property.edit->edit), unitBesideModel(property, units));
}

/// The columns of the users' own are there if there is something in them.
void printValues(const Arguments& arguments, const std::vector<MergedProperty>& properties, const ModelUnits& units) {
    const bool isEdited = std::any_of(properties.begin(), properties.end(),
                                      [](const MergedProperty& property) { return property.edit != nullptr; });
    std::vector<Column> columns = {{"Set"}, {"Property"}, {"Value"}, {"Unit"}, {"From"}};
    if (isEdited) {
        columns.insert(columns.end(), {{"Yours"}, {"Compared"}});
    }
    std::vector<Row> rows;
    for (const MergedProperty& property : properties) {
        const ModelProperty* const model = property.model;
        Row& row = rows.emplace_back(Row{property.set, property.name, model == nullptr ? "" : valuesText(*model),
                                         model == nullptr ? unitOf(property, units) : unitText(*model),
                                         model == nullptr ? "" : model->from});
        if (isEdited) {
            row.insert(row.end(), {yours(property, units), std::string(comparisonOf(property, units))});
        }
    }
    if (!rows.empty()) {
        printTable(arguments, columns, rows);
    }
    for (const MergedProperty& property : properties) {
        if (const std::string sentence = changedUnit(property, units); !sentence.empty()) {
            std::cerr << "annotate: " << printable(sentence) << '\n';
        }
    }
}

} // namespace

void showObjects(const Arguments& arguments) {
    const ModelDetails details = ModelDetails::read(arguments.model);
    const Records records = readStore(arguments);
    const EditIndex edits(records);
    std::vector<const ModelObject*> wanted;
    for (const std::string& globalId : arguments.globalIds) {
        wanted.push_back(&objectNamed(arguments, details.getModel(), globalId));
    }
    std::string_view separator;
    for (const ModelObject* const object : wanted) {
        std::cout << separator;
        printHead(details, *object, records);
        const std::vector<ModelSet> sets = details.setsOf(*object);
        const std::vector<ModelSet> materialSets = details.materialSetsOf(*object);
        const std::optional<orv::Guid> id = idOf(details.getModel(), *object);
        std::vector<MergedProperty> properties = merged(sets, id ? edits.of(*id) : Entries());
        const std::vector<MergedProperty> ofMaterials = merged(materialSets, {});
        properties.insert(properties.end(), ofMaterials.begin(), ofMaterials.end());
        printValues(arguments, properties, details.getUnits());
        separator = "\n";
    }
}

} // namespace annotate
