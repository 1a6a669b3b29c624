#include "Annotate/NamedObject.h"

#include <algorithm>

namespace annotate {

namespace {

std::string numberOf(const ModelObject& object) {
    return '#' + std::to_string(object.id);
}

template <typename Predicate>
const ModelObject* findIf(const Model& model, const Predicate& predicate) {
    const auto& objects = model.getObjects();
    const auto found = std::find_if(objects.begin(), objects.end(), predicate);
    return found == objects.end() ? nullptr : &*found;
}

const ModelObject* find(const Arguments& arguments, const Model& model, const std::string& name) {
    if (isInstanceNumber(name)) {
        return findIf(model, [&](const ModelObject& object) { return isNumberOf(name, object); });
    }
    if (orv::Guid id; !id.boSet(name)) {
        if (const auto* const bearer = findIf(model, [&](const auto& object) { return object.globalId == name; })) {
            throw RequestError(name + " isn't a valid GlobalId. The object that has it in " + arguments.model.string() +
                               " can be named by its number there, " + numberOf(*bearer) + '.');
        }
    }
    return model.find(idOf(name));
}

} // namespace

const ModelObject& objectNamed(const Arguments& arguments, const Model& model, const std::string& name) {
    const ModelObject* const object = find(arguments, model, name);
    if (object == nullptr) {
        throw RequestError("There is no object " + name + " in " + arguments.model.string() +
                           ". The command objects lists those that there are.");
    }
    return *object;
}

orv::Guid idNamed(const Arguments& arguments, const Model& model, const std::string& name) {
    const ModelObject& object = objectNamed(arguments, model, name);
    if (const std::optional<orv::Guid> id = idOf(model, object)) {
        return *id;
    }
    throw RequestError(whyWithoutId(model, object));
}

std::string whyWithoutId(const Model& model, const ModelObject& object) {
    orv::Guid shared;
    const ModelObject* const other = shared.boSet(object.globalId) ? model.find(shared) : nullptr;
    return "Notes and edits are kept by GlobalIds, and that of " + numberOf(object) +
           (other == nullptr
                ? ", \"" + object.globalId + "\", isn't valid: those have 22 characters, the first of them 0 to 3."
                : " is the one of " + numberOf(*other) + " as well, which gets them.");
}

std::optional<orv::Guid> idOf(const Model& model, const ModelObject& object) {
    orv::Guid id;
    return id.boSet(object.globalId) && model.find(id) == &object ? std::optional(id) : std::nullopt;
}

std::string nameFor(const Model& model, const ModelObject& object) {
    return idOf(model, object) ? object.globalId : numberOf(object);
}

bool isInstanceNumber(const std::string& name) {
    return name.starts_with('#');
}

bool isNumberOf(const std::string& name, const ModelObject& object) {
    return name == numberOf(object);
}

} // namespace annotate
