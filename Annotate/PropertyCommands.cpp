#include "Annotate/Commands.h"
#include "Annotate/Definitions.h"
#include "Annotate/EditRequest.h"
#include "Annotate/EditText.h"
#include "Annotate/ModelDetails.h"
#include "Annotate/Overlay.h"
#include "Annotate/Store.h"
#include "Annotate/UnitEntry.h"

#include <algorithm>
#include <utility>

namespace annotate {

using orv::host::ObjectEdit;
using orv::host::PropertyEdit;
using orv::ifc::def::xml::PropertyKind;
using orv::object::PropertyValue;
using Form = PropertyEdit::Form;

namespace {

constexpr std::size_t any = 1 << 20;

/// The command that sets a property of the kind.
std::string_view commandFor(const Definition& definition) {
    switch (definition.kind) {
    case PropertyKind::List:
        return "set-list";
    case PropertyKind::Table:
        return "set-table";
    case PropertyKind::Reference:
    case PropertyKind::Complex:
        throw RequestError(fullName(definition) + " is of the kind " + std::string(kindName(definition)) +
                           ", which takes no value.");
    default:
        return "set";
    }
}

const Definition& definitionFor(const EditRequest& request, std::string_view command) {
    const Definition& definition = findDefinition(request.set, request.property);
    if (const std::string_view needed = commandFor(definition); needed != command) {
        throw RequestError(fullName(definition) + " is of the kind " + std::string(kindName(definition)) +
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
        throw RequestError(fullName(definition) + " is of the kind " + std::string(kindName(definition)) +
                           ", which has no bounds. Give the VALUE.");
    }
    return {boundIn(arguments.lower), boundIn(arguments.upper), boundIn(arguments.setPoint)};
}

/// Without values.
PropertyEdit editOf(const EditRequest& request, Form form) {
    PropertyEdit edit;
    edit.set = request.set;
    edit.property = request.property;
    edit.form = form;
    return edit;
}

/// Makes the same edit of all the objects.
void makeEdits(const Arguments& arguments, const EditRequest& request, const Definition& definition, Form form,
               std::vector<PropertyValue> values) {
    const ModelDetails details = ModelDetails::read(arguments.model);
    PropertyEdit edit = editOf(request, form);
    edit.unit = takeUnits(definition, details.getUnits(), arguments.unit, values);
    edit.values = std::move(values);
    std::vector<ObjectEdit> edits;
    for (const orv::Guid& id : request.objectsIn(details, arguments)) {
        edits.push_back({id, edit});
    }
    makeEdits(arguments, details.getModel(), std::move(edits));
}

} // namespace

void setProperty(const Arguments& arguments) {
    const EditRequest request(arguments, hasBounds(arguments) ? 0 : 1, hasBounds(arguments) ? 0 : 1);
    const Definition& definition = definitionFor(request, "set");
    if (hasBounds(arguments)) {
        makeEdits(arguments, request, definition, Form::Bounded, givenBounds(arguments, definition));
    } else {
        PropertyEdit edit = editIn(definition, request.values.front());
        makeEdits(arguments, request, definition, edit.form, std::move(edit.values));
    }
}

void setListProperty(const Arguments& arguments) {
    const EditRequest request(arguments, 1, any);
    makeEdits(arguments, request, definitionFor(request, "set-list"), Form::List,
              {request.values.begin(), request.values.end()});
}

void setTableProperty(const Arguments& arguments) {
    const EditRequest request(arguments, 2, any);
    if (request.values.size() % 2 != 0) {
        throw UsageError("A table takes pairs: DEFINING DEFINED [DEFINING DEFINED ...]");
    }
    makeEdits(arguments, request, definitionFor(request, "set-table"), Form::Table,
              {request.values.begin(), request.values.end()});
}

void unsetProperty(const Arguments& arguments) {
    const EditRequest request(arguments, 0, 0);
    const Definition& definition = findDefinition(request.set, request.property);
    const ModelDetails details = ModelDetails::read(arguments.model);
    const Model& model = details.getModel();
    const PropertyEdit edit = editOf(request, Form::Unset);
    std::vector<ObjectEdit> edits;
    {
        const Overlay overlay(model, readStore(arguments));
        for (const orv::Guid& id : request.objectsIn(details, arguments)) {
            if (!Overlay::read(id, request.set, request.property).empty()) {
                edits.push_back({id, edit});
            }
        }
    }
    if (edits.empty()) {
        throw RequestError(fullName(definition) + " isn't set on " +
                           (request.globalId.empty() ? "any of the objects" : request.globalId) + '.');
    }
    makeEdits(arguments, model, std::move(edits));
}

} // namespace annotate
