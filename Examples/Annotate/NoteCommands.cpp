#include "Annotate/Commands.h"
#include "Annotate/Model.h"
#include "Annotate/Note.h"
#include "Annotate/Store.h"
#include "Annotate/Terminal.h"
#include "FoundationClasses/IfcClass.h"

#include <iostream>
#include <optional>

namespace annotate {

namespace {

std::string shownClass(const ModelObject* object) {
    return object == nullptr ? "(not in the model)" : std::string(object->ifcClass->name);
}

std::string shownName(const ModelObject* object) {
    return object == nullptr ? "" : printable(object->name);
}

const orv::fc::IfcClass* findClass(const std::string& name) {
    const orv::fc::IfcClass* ifcClass = orv::fc::IfcClass::find(name);
    if (ifcClass == nullptr || !ifcClass->isObjectDefinition()) {
        throw RequestError(name + " isn't a class of objects in IFC. Names are like IfcWall.");
    }
    return ifcClass;
}

} // namespace

void listObjects(const Arguments& arguments) {
    const auto* wanted = findClass(arguments.className.empty() ? "IfcObjectDefinition" : arguments.className);
    const Model model = Model::read(arguments.model);
    std::vector<Row> rows;
    for (const ModelObject& object : model.getObjects()) {
        if (wanted->includes(*object.ifcClass) && containsInAnyCase(object.name, arguments.match)) {
            rows.push_back({printable(object.globalId), shownClass(&object), shownName(&object)});
        }
    }
    printTable({"GlobalId", "Class", "Name"}, rows);
}

void addNote(const Arguments& arguments) {
    auto note = std::make_unique<Note>();
    note->ownerId = objectId(arguments);
    note->text = arguments.text;
    note->priority = arguments.priority;
    note->resolved = arguments.resolved;
    if (Model::read(arguments.model).find(note->ownerId) == nullptr) {
        throw notInModel(arguments);
    }
    const std::filesystem::path path = storePath(arguments);
    const auto turn = waitForTurn(arguments.model);
    Store(path).add(std::move(note));
    printStored(path);
}

void listNotes(const Arguments& arguments) {
    std::optional<orv::Guid> wanted;
    if (!arguments.globalId.empty()) {
        wanted = objectId(arguments);
    }
    const Model model = Model::read(arguments.model);
    const std::filesystem::path path = storePath(arguments);
    const auto turn = waitForTurn(arguments.model);
    const Store store(path);
    std::vector<Row> rows;
    for (const Note* note : store.getAll<Note>()) {
        if (!wanted || note->ownerId == *wanted) {
            const ModelObject* object = model.find(note->ownerId);
            rows.push_back({note->ownerId.toString(false), shownClass(object), shownName(object),
                            std::to_string(note->priority), note->resolved ? "resolved" : "open",
                            printable(note->text)});
        }
    }
    if (wanted && rows.empty() && model.find(*wanted) == nullptr) {
        throw notInModel(arguments);
    }
    printTable({"GlobalId", "Class", "Name", "Priority", "State", "Text"}, rows);
}

} // namespace annotate
