#include "Annotate/Model.h"

#include "Annotate/StepScanner.h"
#include "Annotate/StepString.h"
#include "Annotate/Terminal.h"
#include "FoundationClasses/IfcClass.h"

#include <charconv>
#include <fstream>
#include <string_view>
#include <system_error>
#include <utility>

namespace annotate {

namespace {

using orv::fc::IfcClass;

ModelError errorOf(const std::filesystem::path& path, std::string_view problem, std::string_view remedy) {
    std::string sentence = "The model \"" + path.string() + "\" ";
    sentence.append(problem).append(". ").append(remedy);
    return ModelError(sentence);
}

std::ifstream open(const std::filesystem::path& path) {
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status)) {
        throw errorOf(path, "doesn't exist or cannot be reached", "Check the path.");
    }
    // Opening anything but a regular file can wait for ever.
    if (!std::filesystem::is_regular_file(status)) {
        throw errorOf(path, "isn't a file", "Give the path of an IFC file.");
    }
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw errorOf(path, "cannot be opened", "Check the permissions of the file.");
    }
    return file;
}

/// Passes over the header. Gives the first schema that it names, empty text if it names none.
std::string_view takeHeader(StepScanner& scanner) {
    std::string_view schema;
    scanner.expect("HEADER");
    scanner.expect(';');
    while (!scanner.take("ENDSEC")) {
        if (scanner.take("FILE_SCHEMA")) {
            scanner.expect('(');
            scanner.expect('(');
            schema = scanner.takeString();
        }
        scanner.skipStatement();
    }
    scanner.expect(';');
    return schema;
}

std::uint64_t instanceNumber(const StepScanner& scanner, std::string_view digits) {
    std::uint64_t number = 0;
    if (std::from_chars(digits.data(), digits.data() + digits.size(), number).ec != std::errc{}) {
        scanner.fail("an instance number below 2^64");
    }
    return number;
}

/// The parameters of an object begin with its GlobalId, its OwnerHistory and its Name.
ModelObject takeObject(StepScanner& scanner, std::uint64_t id, const IfcClass& ifcClass) {
    ModelObject object{id, &ifcClass, {}, {}};
    object.globalId = withoutLineEnds(scanner.takeOptionalString());
    scanner.expect(',');
    scanner.skipParameter();
    scanner.expect(',');
    object.name = decodeString(scanner.takeOptionalString());
    while (scanner.take(',')) {
        scanner.skipParameter();
    }
    scanner.expect(')');
    scanner.expect(';');
    return object;
}

bool takeInstance(StepScanner& scanner, std::vector<ModelObject>& objects) {
    if (!scanner.isAt('#')) {
        return false;
    }
    const std::string_view digits = scanner.takeInstanceNumber();
    scanner.expect('=');
    const bool isOfManyClasses = scanner.isAt('(');
    const std::string_view keyword = isOfManyClasses ? std::string_view{} : scanner.takeKeyword();
    scanner.expect('(');
    // Most instances are geometry: a reference or a list comes first, not a GlobalId. Seeing that is cheaper
    // than finding the class.
    const bool isGeometry = scanner.isAt('#') || scanner.isAt('(');
    const IfcClass* const ifcClass = isGeometry ? nullptr : IfcClass::find(keyword);
    if (ifcClass != nullptr && ifcClass->isObjectDefinition()) {
        objects.push_back(takeObject(scanner, instanceNumber(scanner, digits), *ifcClass));
    } else {
        scanner.skipStatement();
    }
    return true;
}

bool takeDataStart(StepScanner& scanner) {
    const bool present = scanner.take("DATA");
    if (present) {
        scanner.skipStatement();
    }
    return present;
}

bool takeEnd(StepScanner& scanner, std::string_view keyword) {
    scanner.expect(keyword);
    scanner.expect(';');
    return true;
}

bool takeFileStart(StepScanner& scanner) {
    if (!scanner.take("ISO-10303-21")) {
        throw StepError("isn't an IFC model: it doesn't begin with ISO-10303-21");
    }
    scanner.expect(';');
    const std::string_view schema = takeHeader(scanner);
    if (!schema.starts_with("IFC2X3") && !schema.starts_with("IFC4")) {
        throw StepError("isn't an IFC model of a known version: its schema is '" + decodeString(schema) + "'");
    }
    return true;
}

std::vector<ModelObject> takeFile(StepScanner& scanner, ReadProgress& progress) {
    std::vector<ModelObject> objects;
    scanner.takePart([&] { return takeFileStart(scanner); });
    while (scanner.takePart([&] { return takeDataStart(scanner); })) {
        while (scanner.takePart([&] { return takeInstance(scanner, objects); })) {
            progress.reach(scanner.position());
        }
        scanner.takePart([&] { return takeEnd(scanner, "ENDSEC"); });
    }
    scanner.takePart([&] { return takeEnd(scanner, "END-ISO-10303-21"); });
    return objects;
}

} // namespace

Model Model::read(const std::filesystem::path& path) {
    std::ifstream file = open(path);
    std::error_code error;
    ReadProgress progress(std::filesystem::file_size(path, error));
    try {
        file.exceptions(std::ios::badbit);
        StepScanner scanner(file);
        return Model(takeFile(scanner, progress));
    } catch (const StepError& problem) {
        throw errorOf(path, problem.what(), "Export the model again, as an IFC file of IFC2X3, IFC4 or later.");
    } catch (const std::ios_base::failure&) {
        throw errorOf(path, "cannot be read", "Copy the file to another disk and try again.");
    }
}

Model::Model(std::vector<ModelObject> objectsInFileOrder) : objects(std::move(objectsInFileOrder)) {
    positions.reserve(objects.size());
    for (std::size_t position = 0; position < objects.size(); ++position) {
        orv::Guid id;
        const std::string& globalId = objects[position].globalId;
        // boSet takes UUIDs as well, which no IFC file has.
        if (id.boSet(globalId) && id.toString(false) == globalId) {
            positions.emplace(id, position);
        }
    }
}

const ModelObject* Model::find(const orv::Guid& id) const {
    const auto found = positions.find(id);
    return found == positions.end() ? nullptr : &objects[found->second];
}

} // namespace annotate
