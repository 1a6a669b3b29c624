#include "Model.h"

#include "FoundationClasses/IfcClass.h"
#include "StepScanner.h"
#include "StepString.h"

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

std::string readText(const std::filesystem::path& path) {
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
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (!file || error) {
        throw errorOf(path, "cannot be opened", "Check the permissions of the file.");
    }
    std::string text(size, '\0');
    file.read(text.data(), static_cast<std::streamsize>(size));
    if (file.bad()) {
        throw errorOf(path, "cannot be read", "Copy the file to another disk and try again.");
    }
    text.resize(static_cast<std::size_t>(file.gcount()));
    return text;
}

constexpr bool isKnownSchema(std::string_view name) {
    return name.starts_with("IFC2X3") || name.starts_with("IFC4");
}

/// Passes over the header. Gives the first schema that it names.
std::string_view takeHeader(StepScanner& scanner) {
    std::string_view schema;
    scanner.expect("HEADER");
    scanner.expect(';');
    while (!scanner.take("ENDSEC")) {
        if (scanner.take("FILE_SCHEMA")) {
            scanner.expect('(');
            scanner.expect('(');
            schema = scanner.takeString();
        } else {
            scanner.takeKeyword();
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
    scanner.expect('(');
    object.globalId = withoutLineEnds(scanner.takeOptionalString());
    scanner.expect(',');
    scanner.skipParameter();
    scanner.expect(',');
    object.name = decodeString(scanner.takeOptionalString());
    scanner.skipParameters();
    scanner.expect(';');
    return object;
}

void takeInstance(StepScanner& scanner, std::vector<ModelObject>& objects) {
    const std::string_view digits = scanner.takeInstanceNumber();
    scanner.expect('=');
    const IfcClass* const ifcClass = scanner.isAtList() ? nullptr : IfcClass::find(scanner.takeKeyword());
    if (ifcClass != nullptr && ifcClass->isObjectDefinition()) {
        objects.push_back(takeObject(scanner, instanceNumber(scanner, digits), *ifcClass));
    } else {
        scanner.skipStatement();
    }
}

std::vector<ModelObject> takeObjects(StepScanner& scanner) {
    std::vector<ModelObject> objects;
    while (scanner.take("DATA")) {
        scanner.skipStatement();
        while (!scanner.take("ENDSEC")) {
            takeInstance(scanner, objects);
        }
        scanner.expect(';');
    }
    scanner.expect("END-ISO-10303-21");
    scanner.expect(';');
    return objects;
}

} // namespace

Model Model::read(const std::filesystem::path& path) {
    const std::string text = readText(path);
    StepScanner scanner(text);
    try {
        scanner.take...
    } catch (const StepError& error) {
        throw errorOf(path, error.what(), "Export the model again, or fetch a whole copy of it.");
    }
}

Model::Model(std::vector<ModelObject> objectsInFileOrder) : objects(std::move(objectsInFileOrder)) {
    positions.reserve(objects.size());
    for (std::size_t position = 0; position < objects.size(); ++position) {
        orv::Guid id;
        if (id.boSet(objects[position].globalId)) {
            positions.emplace(id, position);
        }
    }
}

const ModelObject* Model::find(const orv::Guid& id) const {
    const auto found = positions.find(id);
    return found == positions.end() ? nullptr : &objects[found->second];
}

} // namespace annotate
