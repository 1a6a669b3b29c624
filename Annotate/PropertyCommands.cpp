#include "Annotate/Commands.h"
#include "Annotate/Definitions.h"
#include "Annotate/EditRequest.h"
#include "Annotate/EditText.h"
#include "Annotate/MergedValues.h"
#include "Annotate/ModelDetails.h"
#include "Annotate/Overlay.h"
#include "Annotate/SetsOfObjects.h"
#include "Annotate/Store.h"
#include "Annotate/Terminal.h"
#include "Annotate/UnitEntry.h"
#include "Annotate/ValueText.h"
#include "Host/FieldText.h"

#include <algorithm>
#include <iostream>
#include <limits>
#include <set>
#include <utility>

namespace annotate {

using orv::host::ObjectEdit;
using orv::host::PropertyEdit;
using orv::ifc::def::xml::PropertyKind;
using orv::object::PropertyValue;
using Form = PropertyEdit::Form;

namespace {

constexpr std::size_t noMaximum = std::numeric_limits<std::size_t>::max();

/// The command that sets a property of the kind.
std::string_view commandFor(const Definition& definition) {
    switch (definition.kind) {
    case PropertyKind::List:
        return "set-list";
    case PropertyKind::Table:
        return "set-table";
    case PropertyKind::Reference:
    case PropertyKind::Complex:
        throw RequestError(fullName(definition) + " is of the kind " + std::string(kindName(definition.kind)) +
                           ", which takes no value.");
    default:
        return "set";
    }
}

const Definition& definitionFor(const EditRequest& request, std::string_view command) {
    const Definition& definition = findDefinition(request.set, request.property);
    if (const std::string_view needed = commandFor(definition); needed != command) {
        throw RequestError(fullName(definition) + " is of the kind " + std::string(kindName(definition.kind)) +
                           ". Use the command " + std::string(needed) + '.');
    }
    return definition;
}

bool hasBounds(const Arguments& arguments) {
    return !arguments.lower.empty() || !arguments.upper.empty() || !arguments.setPoint.empty();
}

PropertyValue boundIn(const std::string& text) {
    return text.empty() ? PropertyValue() : PropertyValue(text);
}

std::vector<PropertyValue> givenBounds(const Arguments& arguments, const Definition& definition) {
    if (definition.kind != PropertyKind::Bounded) {
        throw RequestError(fullName(definition) + " is of the kind " + std::string(kindName(definition.kind)) +
                           ", which has no bounds. Give the VALUE.");
    }
    return {boundIn(arguments.lower), boundIn(arguments.upper), boundIn(arguments.setPoint)};
}

PropertyEdit editOf(const EditRequest& request, Form form, std::vector<PropertyValue> values = {}) {
    PropertyEdit edit;
    edit.set = request.set;
    edit.property = request.property;
    edit.form = form;
    edit.values = std::move(values);
    return edit;
}

/// The bounds that aren't named stay as they are: those that were set, otherwise those of the model.
void keepOtherBounds(const ModelDetails& details, const Definition& definition, const EditIndex& present,
                     ObjectEdit& each) {
    const ModelObject& object = *details.getModel().find(each.id);
    const std::vector<ModelSet> sets = details.setsOf(object);
    const HeldEdit edit = editFor(object, details, present, each.edit.set, each.edit.property);
    const MergedProperty held = mergedProperty(sets, edit, each.edit.set, each.edit.property);
    const bool isModels = held.edit == nullptr && held.model != nullptr && held.model->kind == PropertyKind::Bounded;
    const std::string text = held.edit != nullptr ? editText(held.edit->edit) : isModels ? valuesText(*held.model) : "";
    std::vector<PropertyValue> bounds = boundsIn(definition, text);
    takeUnits(definition, details.getUnits(), isMeasured(definition) ? unitOf(held, details.getUnits()) : "", bounds);
    for (std::size_t place = 0; place < bounds.size(); ++place) {
        if (each.edit.values[place].isEmpty()) {
            each.edit.values[place] = bounds[place];
        }
    }
}

bool arePlainNumbers(const std::vector<PropertyValue>& values) {
    double number = 0;
    return std::all_of(values.begin(), values.end(), [&number](const PropertyValue& value) {
        return value.isEmpty() || orv::host::take(valueText(value), number);
    });
}

/// Says that the model has the property of some of the objects in units of its own, which plain numbers aren't in.
void remarkOnOwnUnits(const ModelDetails& details, const std::vector<orv::Guid>& ids, const PropertyEdit& edit) {
    SetsOfObjects sets(details);
    std::set<std::string> own;
    for (const orv::Guid& id : ids) {
        const ModelObject& object = *details.getModel().find(id);
        const MergedProperty property = sets.find(object, {}, edit.set, edit.property);
        const std::string unit = property.model == nullptr ? "" : unitText(*property.model);
        if (!unit.empty() && unit != edit.unit && own.insert(unit).second) {
            std::cerr << "annotate: The model has " << printable(edit.set + '.' + edit.property + " in " + unit)
                      << ". What is set is in " << printable(edit.unit) << ", as numbers without a unit are.\n";
        }
    }
}

/// Makes the edit of all the objects, its values as they were given.
void makeEdits(const Arguments& arguments, const EditRequest& request, const Definition& definition,
               PropertyEdit edit) {
    const ModelDetails details = ModelDetails::read(arguments.model);
    const bool hasPlainNumbers = arguments.unit.empty() && arePlainNumbers(edit.values);
    edit.unit = takeUnits(definition, details.getUnits(), arguments.unit, edit.values);
    const RequestedObjects objects = request.objectsIn(details, arguments);
    if (!edit.unit.empty() && hasPlainNumbers) {
        remarkOnOwnUnits(details, objects.ids, edit);
    }
    RequestedEdits requested{{}, objects.refusals, {}};
    for (const orv::Guid& id : objects.ids) {
        requested.edits.push_back({id, edit});
    }
    if (hasBounds(arguments)) {
        requested.complete = [&](ObjectEdit& each, const EditIndex& present) {
            keepOtherBounds(details, definition, present, each);
        };
    }
    makeEdits(arguments, details.getModel(), std::move(requested));
}

std::vector<PropertyValue> givenValues(const EditRequest& request) {
    return {request.values.begin(), request.values.end()};
}

/// Sets the bounds that options name.
void setBounds(const Arguments& arguments) {
    if (arguments.words.size() == (arguments.choosesObjects() ? 3 : 4)) {
        throw UsageError(
            "VALUE sets all the bounds, and --lower, --upper and --set-point one each. Give the one or the "
            "others.");
    }
    const EditRequest request(arguments, 0, 0);
    const Definition& definition = definitionFor(request, "set");
    makeEdits(arguments, request, definition, editOf(request, Form::Bounded, givenBounds(arguments, definition)));
}

} // namespace

void setProperty(const Arguments& arguments) {
    if (hasBounds(arguments)) {
        return setBounds(arguments);
    }
    const EditRequest request(arguments, 1, 1);
    const Definition& definition = definitionFor(request, "set");
    makeEdits(arguments, request, definition, editIn(definition, request.values.front()));
}

void setListProperty(const Arguments& arguments) {
    const EditRequest request(arguments, 1, noMaximum);
    makeEdits(arguments, request, definitionFor(request, "set-list"),
              editOf(request, Form::List, givenValues(request)));
}

void setTableProperty(const Arguments& arguments) {
    const EditRequest request(arguments, 2, noMaximum);
    if (request.values.size() % 2 != 0) {
        throw UsageError("A table takes pairs, DEFINING DEFINED, behind the property " + request.property +
                         ". The last, " + request.values.back() + ", is half a pair.");
    }
    makeEdits(arguments, request, definitionFor(request, "set-table"),
              editOf(request, Form::Table, givenValues(request)));
}

void unsetProperty(const Arguments& arguments) {
    const EditRequest request(arguments, 0, 0);
    const ModelDetails details = ModelDetails::read(arguments.model);
    const Records records = readStore(arguments);
    const EditIndex present(records);
    const auto isSet = [&](const orv::Guid& id) {
        const EditIndex::Entry* const entry = present.find(id, request.set, request.property);
        return entry != nullptr && entry->edit.form != Form::Unset;
    };
    RequestedEdits requested;
    if (orv::Guid id; id.boSet(request.globalId) && isSet(id)) { // perhaps on an object that has vanished
        requested.edits.push_back({id, editOf(request, Form::Unset)});
    } else {
        const RequestedObjects objects = request.objectsIn(details, arguments);
        requested.refusals = objects.refusals;
        for (const orv::Guid& each : objects.ids) {
            if (isSet(each)) {
                requested.edits.push_back({each, editOf(request, Form::Unset)});
            }
        }
    }
    if (requested.edits.empty()) {
        throw RequestError(fullName(findDefinition(request.set, request.property)) + " isn't set on " +
                           (request.globalId.empty() ? "any of the objects" : request.globalId) + '.');
    }
    makeEdits(arguments, details.getModel(), std::move(requested));
}

} // namespace annotate
