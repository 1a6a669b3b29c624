#include "Annotate/AdditionsJson.h"
#include "Annotate/Commands.h"
#include "Annotate/EditTable.h"
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

std::vector<std::pair<std::int64_t, Note*>> notesOn(const ModelObject& object, const ModelDetails& details,
                                                    const Records& records) {
    auto notes = numberedNotes(records);
    std::erase_if(notes, [&](const auto& each) { return details.getModel().find(each.second->ownerId) != &object; });
    return notes;
}

void printHead(const ModelDetails& details, const ModelObject& object, const Records& records) {
    std::cout << shown(object) << "\nGlobalId: " << printable(object.globalId) << '\n';
    if (const auto place = details.placeOf(object); !place.empty()) {
        std::cout << "Place: " << shown(place) << '\n';
    }
    if (const ModelObject* const type = details.typeOf(object)) {
        std::cout << "Type: " << shown(*type) << ", " << printable(type->globalId) << '\n';
    }
    for (const auto& [number, note] : notesOn(object, details, records)) {
        std::cout << shown(number, *note) << '\n';
    }
}

/// What is known of an object. Its properties refer to its sets.
struct Shown {
    const ModelObject* object;
    std::vector<ModelSet> sets;
    std::vector<ModelSet> materialSets;
    std::vector<MergedProperty> properties;
};

Shown shownOf(const ModelObject& object, const ModelDetails& details, const EditIndex& edits) {
    Shown shown{&object, details.setsOf(object), details.materialSetsOf(object), {}};
    shown.properties = merged(shown.sets, editsFor(object, details, edits));
    const std::vector<MergedProperty> ofMaterials = merged(shown.materialSets, {});
    shown.properties.insert(shown.properties.end(), ofMaterials.begin(), ofMaterials.end());
    return shown;
}

/// The unit of the model's value, or if it has none that of what is set.
std::string unitShown(const MergedProperty& property, const ModelUnits& units) {
    return property.model == nullptr ? unitOf(property, units) : unitText(*property.model);
}

Row rowOf(const MergedProperty& property, const ModelUnits& units) {
    const ModelProperty* const model = property.model;
    return {property.set, property.name, model == nullptr ? "" : valuesText(*model), unitShown(property, units),
            model == nullptr ? "" : model->from};
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
        Row& row = rows.emplace_back(rowOf(property, units));
        if (isEdited) {
            const std::string unit = unitBesideModel(property, units);
            row.push_back(property.edit == nullptr ? "" : withUnit(editText(property.edit->edit), unit));
            row.push_back(comparisonText(property, units));
        }
    }
    if (!rows.empty()) {
        printTable(arguments, columns, rows);
    }
}

void printCsv(const Arguments& arguments, const std::vector<Shown>& objects, const ModelUnits& units) {
    const std::vector<Column> columns = {{"GlobalId"}, {"Set"},   {"Property"},      {"Value"},      {"Unit"},
                                         {"From"},     {"Yours"}, {"Unit of yours"}, {"Yours from"}, {"Compared"}};
    std::vector<Row> rows;
    for (const Shown& shown : objects) {
        for (const MergedProperty& property : shown.properties) {
            Row row = rowOf(property, units);
            row.insert(row.begin(), shown.object->globalId);
            if (property.edit != nullptr) {
                row.insert(row.end(), {editText(property.edit->edit), property.edit->edit.unit});
            }
            row.resize(columns.size() - 2);
            row.insert(row.end(),
                       {std::string(property.editFrom), std::string(comparisonWord(comparisonOf(property, units)))});
            rows.push_back(std::move(row));
        }
    }
    printTable(arguments, columns, rows);
}

Json jsonOf(const MergedProperty& property, const ModelUnits& units) {
    Json json{{"propertySet", property.set}, {"property", property.name}, {"model", nullptr}, {"edit", nullptr}};
    if (const ModelProperty* const model = property.model) {
        json["model"] = {{"kind", kindName(model->kind)},
                         {"value", valueJson(model->kind, model->values)},
                         {"unit", orNull(unitText(*model))},
                         {"from", orNull(model->from)}};
    }
    if (property.edit != nullptr) {
        const orv::host::PropertyEdit& edit = property.edit->edit;
        json["edit"] = {{"kind", kindName(kindOf(edit))},
                        {"value", valueJson(edit)},
                        {"unit", orNull(edit.unit)},
                        {"from", orNull(std::string(property.editFrom))},
                        {"compared", comparisonWord(comparisonOf(property, units))},
                        {"author", orNull(edit.author)},
                        {"time", orNull(timeOf(edit))}};
    }
    return json;
}

Json jsonOf(const ModelObject* object) {
    return object == nullptr ? Json() : objectJson(object->globalId, object);
}

Json jsonOf(const Shown& shown, const ModelDetails& details, const Records& records) {
    Json json = jsonOf(shown.object);
    json["place"] = Json::array();
    for (const ModelObject* const part : details.placeOf(*shown.object)) {
        json["place"].push_back(jsonOf(part));
    }
    json["type"] = jsonOf(details.typeOf(*shown.object));
    json["notes"] = Json::array();
    for (const auto& [number, note] : notesOn(*shown.object, details, records)) {
        json["notes"].push_back(noteJson(number, *note, shown.object));
    }
    json["properties"] = Json::array();
    for (const MergedProperty& property : shown.properties) {
        json["properties"].push_back(jsonOf(property, details.getUnits()));
    }
    return json;
}

void printText(const Arguments& arguments, const std::vector<Shown>& objects, const ModelDetails& details,
               const Records& records) {
    std::string_view separator;
    for (const Shown& shown : objects) {
        std::cout << separator;
        printHead(details, *shown.object, records);
        printValues(arguments, shown.properties, details.getUnits());
        separator = "\n";
    }
}

void printChangedUnits(const Shown& shown, const ModelUnits& units) {
    for (const MergedProperty& property : shown.properties) {
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
    std::vector<Shown> objects;
    for (const std::string& globalId : arguments.globalIds) {
        objects.push_back(shownOf(objectNamed(arguments, details.getModel(), globalId), details, edits));
    }
    if (arguments.json) {
        Json all = Json::array();
        for (const Shown& shown : objects) {
            all.push_back(jsonOf(shown, details, records));
        }
        std::cout << jsonText(all);
    } else if (arguments.csv) {
        printCsv(arguments, objects, details.getUnits());
    } else {
        printText(arguments, objects, details, records);
    }
    for (const Shown& shown : objects) {
        printChangedUnits(shown, details.getUnits());
    }
}

} // namespace annotate
