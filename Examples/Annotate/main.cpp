// The host: shows the objects of an IFC model, and keeps users' notes on them beside the model.

#include "Annotate/Model.h"
#include "Annotate/Store.h"
#include "Annotate/Terminal.h"
#include "FoundationClasses/IfcClass.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <clocale>
#include <iostream>
#include <optional>
#include <stdexcept>
#include <vector>

namespace annotate {

namespace {

struct Arguments {
    std::filesystem::path model;
    std::filesystem::path store; // empty: beside the model
    std::string className;       // empty: any
    std::string match;
    std::string globalId;
    Note note;
};

/// What the arguments ask for can't be done; what() tells the user why.
class RequestError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

char lowerCase(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool equalInAnyCase(char a, char b) {
    return lowerCase(a) == lowerCase(b);
}

bool equalsInAnyCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), equalInAnyCase);
}

bool containsInAnyCase(std::string_view text, std::string_view part) {
    const auto found = std::search(text.begin(), text.end(), part.begin(), part.end(), equalInAnyCase);
    return found != text.end() || part.empty();
}

std::filesystem::path storePath(const Arguments& arguments) {
    if (arguments.store.empty()) {
        std::filesystem::path path = arguments.model;
        if (equalsInAnyCase(path.extension().string(), ".ifc")) {
            path.replace_extension();
        }
        return path += ".enhancements.xml";
    }
    std::error_code ignored;
    if (std::filesystem::equivalent(arguments.store, arguments.model, ignored)) {
        throw CLI::ValidationError("--store", "names the model itself, which is never written");
    }
    return arguments.store;
}

std::string shownClass(const ModelObject* object) {
    return object == nullptr ? "(not in the model)" : std::string(object->ifcClass->name);
}

std::string shownName(const ModelObject* object) {
    return object == nullptr ? "" : printable(object->name);
}

orv::Guid parseGlobalId(const std::string& text) {
    orv::Guid id;
    if (!id.boSet(text)) {
        throw RequestError(text + " isn't a GlobalId: those have 22 characters, the first of them 0 to 3. "
                                  "The command objects lists them.");
    }
    return id;
}

RequestError notInModel(const Arguments& arguments) {
    return RequestError("There is no object " + arguments.globalId + " in " + arguments.model.string() +
                        ". The command objects lists those that there are.");
}

const orv::fc::IfcClass* findClass(const std::string& name) {
    const orv::fc::IfcClass* ifcClass = orv::fc::IfcClass::find(name);
    if (ifcClass == nullptr || !ifcClass->isObjectDefinition()) {
        throw RequestError(name + " isn't a class of objects in IFC. Names are like IfcWall.");
    }
    return ifcClass;
}

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
    Note note = arguments.note;
    note.ownerId = parseGlobalId(arguments.globalId);
    if (Model::read(arguments.model).find(note.ownerId) == nullptr) {
        throw notInModel(arguments);
    }
    const std::filesystem::path path = storePath(arguments);
    const auto turn = waitForTurn(arguments.model);
    Store(path).add(note);
    if (!(std::cout << "Stored in " << printable(path.string()) << ".\n" << std::flush)) {
        throw RequestError("The note is stored in " + path.string() + ", but the output couldn't be written.");
    }
}

void listNotes(const Arguments& arguments) {
    std::optional<orv::Guid> wanted;
    if (!arguments.globalId.empty()) {
        wanted = parseGlobalId(arguments.globalId);
    }
    const Model model = Model::read(arguments.model);
    const auto turn = waitForTurn(arguments.model);
    const Store store(storePath(arguments));
    std::vector<Row> rows;
    for (const Note* note : store.getNotes()) {
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

CLI::App* addCommand(CLI::App& app, const std::string& name, const std::string& description, const Arguments& arguments,
                     void (*run)(const Arguments&)) {
    CLI::App* command = app.add_subcommand(name, description);
    command->callback([&arguments, run] { run(arguments); });
    return command;
}

/// CLI11 takes an empty value for one that wasn't given, and a script's unset variable is one.
std::string refuseEmpty(const std::string& value) {
    return value.empty() ? "An empty value was given" : "";
}

void addArguments(CLI::App& app, Arguments& arguments) {
    const std::string storeHelp = "The file of the notes, in place of MODEL.enhancements.xml beside the model";
    app.require_subcommand(1);
    app.add_option("MODEL", arguments.model, "An IFC file; it is never written")->required()->check(refuseEmpty);

    CLI::App* objects = addCommand(app, "objects", "List the objects of the model", arguments, listObjects);
    objects->add_option("--class", arguments.className, "Only objects of this class and the classes below it");
    objects->add_option("--match", arguments.match, "Only objects with this text in their names, in any case");

    CLI::App* note = addCommand(app, "note", "Add a note to an object of the model", arguments, addNote);
    note->add_option("GLOBALID", arguments.globalId, "The object")->required()->check(refuseEmpty);
    note->add_option("TEXT", arguments.note.text, "The note; after -- it may begin with a dash")->required();
    note->add_option("--priority", arguments.note.priority, "A number of your own scale, 0 if not given")
        ->check(refuseEmpty);
    note->add_flag("--resolved", arguments.note.resolved, "The note needs nothing more to be done");
    note->add_option("--store", arguments.store, storeHelp)->check(refuseEmpty);

    CLI::App* notes =
        addCommand(app, "notes", "List the notes, with the objects' classes and names", arguments, listNotes);
    notes->add_option("GLOBALID", arguments.globalId, "Only the notes on this object")->check(refuseEmpty);
    notes->add_option("--store", arguments.store, storeHelp)->check(refuseEmpty);
}

int run(int argc, char** argv) {
    CLI::App app("Keeps notes on the objects of a building model, apart from it.", "annotate");
    Arguments arguments;
    addArguments(app, arguments);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : 2;
    }
    if (!std::cout.flush()) {
        throw RequestError("The output couldn't be written.");
    }
    return 0;
}

} // namespace

} // namespace annotate

int main(int argc, char** argv) {
    // For the widths of characters; without that locale those outside ASCII count as one column.
    static_cast<void>(std::setlocale(LC_CTYPE, "C.UTF-8"));
    try {
        return annotate::run(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << "annotate: " << annotate::printable(error.what()) << '\n';
        return 1;
    }
}
