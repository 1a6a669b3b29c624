#include "Annotate/Commands.h"
#include "Annotate/ModelDetails.h"
#include "Annotate/Table.h"
#include "Annotate/Terminal.h"
#include "FoundationClasses/IfcClass.h"

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

void printHead(const ModelDetails& details, const ModelObject& object) {
    std::cout << shown(object) << "\nGlobalId: " << printable(object.globalId) << '\n';
    if (const auto place = details.placeOf(object); !place.empty()) {
        std::cout << "Place: " << shown(place) << '\n';
    }
    if (const ModelObject* const type = details.typeOf(object)) {
        std::cout << "Type: " << shown(*type) << ", " << printable(type->globalId) << '\n';
    }
}

void printValues(const Arguments& arguments, const std::vector<ModelSet>& sets) {
    std::vector<Row> rows;
    for (const ModelSet& set : sets) {
        for (const ModelProperty& property : set.properties) {
            rows.push_back(
                {set.name, property.name, valuesText(property), unitText(property), property.isFromType ? "type" : ""});
        }
    }
    if (!rows.empty()) {
        printTable(arguments, {{"Set"}, {"Property"}, {"Value"}, {"Unit"}, {"From"}}, rows);
    }
}

} // namespace

void showObjects(const Arguments& arguments) {
    const ModelDetails details = ModelDetails::read(arguments.model);
    std::vector<const ModelObject*> wanted;
    for (const std::string& globalId : arguments.globalIds) {
        wanted.push_back(details.getModel().find(idOf(globalId)));
        if (wanted.back() == nullptr) {
            throw notInModel(arguments, globalId);
        }
    }
    std::string_view separator;
    for (const ModelObject* const object : wanted) {
        std::cout << separator;
        printHead(details, *object);
        printValues(arguments, details.setsOf(*object));
        separator = "\n";
    }
}

} // namespace annotate
