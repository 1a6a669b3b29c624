#include "Annotate/Commands.h"
#include "Annotate/Model.h"
#include "Annotate/NearNames.h"
#include "Annotate/Overlay.h"
#include "Annotate/Store.h"
#include "Annotate/Terminal.h"
#include "FoundationClasses/FcValue.h"
#include "IfcVersionMapping/SchemaDefinitions.h"

#include <algorithm>
#include <array>

namespace annotate {

using orv::ifc::def::xml::Def;
using orv::ifc::def::xml::PropertyKind;
using orv::object::PropertyValue;

namespace {

/// By the number of the kind.
constexpr std::array<std::string_view, 7> kindNames{"single", "enumerated", "bounded", "list",
                                                    "table",  "reference",  "complex"};

std::string_view kindName(const Def& definition) {
    return kindNames[static_cast<std::size_t>(definition.kind)];
}

bool isInSet(const Def& definition, std::string_view propertySet) {
    return definition.propertySet == propertySet;
}

RequestError unknownSet(const std::string& propertySet) {
    std::vector<std::string_view> names;
    for (const Def& definition : orv::ifc::definitions()) {
        if (names.empty() || names.back() != definition.propertySet) {
            names.push_back(definition.propertySet);
        }
    }
    return RequestError("IFC has no property set " + propertySet + didYouMean(propertySet, names));
}

RequestError unknownProperty(const Arguments& arguments) {
    std::vector<std::string_view> names;
    for (const Def& definition : orv::ifc::definitions()) {
        if (isInSet(definition, arguments.propertySet)) {
            names.push_back(definition.property);
        }
    }
    if (names.empty()) {
        return unknownSet(arguments.propertySet);
    }
    return RequestError(arguments.propertySet + " has no " + arguments.property +
                        didYouMean(arguments.property, names));
}

const Def& findDefinition(const Arguments& arguments) {
    const Def* definition = orv::ifc::findSchemaDefForProperty(arguments.propertySet, arguments.property);
    if (definition == nullptr) {
        throw unknownProperty(arguments);
    }
    return *definition;
}

std::string fullName(const Def& definition) {
    return std::string(definition.propertySet) + '.' + std::string(definition.property);
}

std::string shownType(const Def& definition) {
    std::string shown(definition.valueType.empty() ? "any" : definition.valueType);
    if (!definition.definedValueType.empty()) {
        shown.append(" to ").append(definition.definedValueType);
    }
    return shown;
}

std::string shownValue(const PropertyValue& value) {
    orv::fc::FcValue text(orv::fc::FcValueType::find("IfcLabel"));
    text.updateValueFromPropertyValue(value);
    return printable(text.getAsString(false).value_or(""));
}

/// The form in which a property of the kind is set.
PropertyEdit::Form formOf(const Def& definition) {
    switch (definition.kind) {
    case PropertyKind::List:
        return PropertyEdit::Form::List;
    case PropertyKind::Table:
        return PropertyEdit::Form::Table;
    case PropertyKind::Reference:
    case PropertyKind::Complex:
        throw RequestError(fullName(definition) + " is of the kind " + std::string(kindName(definition)) +
                           ", which takes no value.");
    default:
        return PropertyEdit::Form::Single;
    }
}

void requireForm(const Def& definition, PropertyEdit::Form form) {
    constexpr std::array<std::string_view, 3> commands{"set", "set-list", "set-table"};
    if (const PropertyEdit::Form needed = formOf(definition); needed != form) {
        throw RequestError(fullName(definition) + " is of the kind " + std::string(kindName(definition)) +
                           ". Use the command " + std::string(commands[static_cast<std::size_t>(needed)]) + '.');
    }
}

/// A bound that was reset has lost its type and takes anything, so the parts are held against the definition.
bool areBoundsOfType(const Def& definition, std::string_view text) {
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find(';', begin), text.size());
        orv::fc::FcValue bound(orv::fc::FcValueType::find(definition.valueType));
        if (end > begin && !bound.setValueOnTypeFromString(std::string(text.substr(begin, end - begin)))) {
            return false;
        }
        begin = end + 1;
    }
    return true;
}

/// Whether the property took what the edit gave: it lacks what its types refuse.
bool tookAll(const Def& definition, const PropertyEdit& edit, const std::vector<PropertyValue>& held) {
    if (definition.kind == PropertyKind::Bounded) {
        return areBoundsOfType(definition, edit.values.front());
    }
    return held.size() == edit.values.size() &&
           std::none_of(held.begin(), held.end(), [](const PropertyValue& value) { return value.isEmpty(); });
}

void edit(const Arguments& arguments, PropertyEdit::Form form) {
    const Def& definition = findDefinition(arguments);
    requireForm(definition, form);
    if (definition.kind == PropertyKind::Bounded &&
        std::count(arguments.values.front().begin(), arguments.values.front().end(), ';') > 2) {
        throw RequestError(fullName(definition) + " takes three parts at most: UPPER;LOWER;SET POINT.");
    }
    auto edited = std::make_unique<PropertyEdit>();
    edited->ownerId = objectId(arguments);
    edited->propertySet = arguments.propertySet;
    edited->property = arguments.property;
    edited->form = form;
    edited->values = arguments.values;

    const Model model = Model::read(arguments.model);
    if (model.find(edited->ownerId) == nullptr) {
        throw notInModel(arguments);
    }
    const std::filesystem::path path = storePath(arguments);
    const auto turn = waitForTurn(arguments.model);
    Store store(path);
    const Overlay overlay(model, store.getAll<PropertyEdit>());
    if (form != PropertyEdit::Form::Single &&
        !Overlay::read(edited->ownerId, edited->propertySet, edited->property).empty()) {
        throw RequestError(fullName(definition) + " is set on this object already; lists and tables are set once.");
    }
    Overlay::apply(*edited);
    if (!tookAll(definition, *edited, Overlay::read(edited->ownerId, edited->propertySet, edited->property))) {
        throw RequestError(fullName(definition) + " takes values of type " + shownType(definition) +
                           " and refused what was given. Nothing was stored.");
    }
    store.add(std::move(edited));
    printStored(path);
}

} // namespace

void getProperty(const Arguments& arguments) {
    const Def& definition = findDefinition(arguments);
    const orv::Guid id = objectId(arguments);
    const Model model = Model::read(arguments.model);
    if (model.find(id) == nullptr) {
        throw notInModel(arguments);
    }
    const std::filesystem::path path = storePath(arguments);
    const auto turn = waitForTurn(arguments.model);
    const Store store(path);
    const Overlay overlay(model, store.getAll<PropertyEdit>());
    const std::vector<PropertyValue> held = Overlay::read(id, arguments.propertySet, arguments.property);
    if (held.empty()) {
        throw RequestError(fullName(definition) + " isn't set on " + arguments.globalId + '.');
    }
    std::vector<Row> rows;
    for (std::size_t index = 0; index < held.size(); ++index) {
        const bool endsRow = definition.kind == PropertyKind::Table && index % 2 == 1;
        if (endsRow) {
            rows.back().push_back(shownValue(held[index]));
        } else {
            rows.push_back({shownValue(held[index])});
        }
    }
    printTable(definition.kind == PropertyKind::Table ? Row{"Defining", "Defined"} : Row{"Value"}, rows);
}

void setProperty(const Arguments& arguments) {
    edit(arguments, PropertyEdit::Form::Single);
}

void setListProperty(const Arguments& arguments) {
    edit(arguments, PropertyEdit::Form::List);
}

void setTableProperty(const Arguments& arguments) {
    if (arguments.values.size() % 2 != 0) {
        throw UsageError("A table takes pairs: DEFINING DEFINED [DEFINING DEFINED ...]");
    }
    edit(arguments, PropertyEdit::Form::Table);
}

void listDefinitions(const Arguments& arguments) {
    std::vector<Row> rows;
    for (const Def& definition : orv::ifc::definitions()) {
        if (arguments.propertySet.empty() || isInSet(definition, arguments.propertySet)) {
            rows.push_back({std::string(definition.propertySet), std::string(definition.property),
                            std::string(kindName(definition)), shownType(definition), std::string(definition.version),
                            std::string(definition.enumerationValues)});
        }
    }
    if (rows.empty()) {
        throw unknownSet(arguments.propertySet);
    }
    printTable({"Property set", "Property", "Kind", "Type", "Version", "Values"}, rows);
}

} // namespace annotate
