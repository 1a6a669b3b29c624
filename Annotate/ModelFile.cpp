#include "Annotate/ModelFile.h"

#include "Annotate/ProgressBar.h"
#include "Annotate/StepScanner.h"
#include "Annotate/StepString.h"
#include "Annotate/ZippedFile.h"
#include "FoundationClasses/IfcClass.h"

#include <charconv>
#include <fstream>
#include <optional>
#include <string>
#include <system_error>

namespace annotate {

using orv::fc::IfcClass;

namespace {

constexpr std::streamsize copiedBlock = 256L * 1024;

std::ifstream open(const std::filesystem::path& path) {
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status)) {
        throw refusedModel(path, "doesn't exist or cannot be reached", "Check the path.");
    }
    // Opening anything but a regular file can wait for ever.
    if (!std::filesystem::is_regular_file(status)) {
        throw refusedModel(path, "isn't a file", "Give the path of an IFC file.");
    }
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw refusedModel(path, "cannot be opened", "Check the permissions of the file.");
    }
    file.exceptions(std::ios::badbit);
    return file;
}

ModelError unreadable(const std::filesystem::path& path) {
    return refusedModel(path, "cannot be read", "Copy the file to another disk and try again.");
}

/// Passes over the header. Returns the first schema that it names, empty text if it names none.
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

bool takeInstance(StepScanner& scanner, InstanceReader& reader) {
    if (!scanner.isAt('#')) {
        return false;
    }
    ModelInstance instance;
    instance.position = scanner.position();
    instance.digits = scanner.takeInstanceNumber();
    scanner.expect('=');
    const bool isOfManyClasses = scanner.isAt('(');
    if (!isOfManyClasses) {
        instance.keyword = scanner.takeKeyword();
    }
    scanner.expect('(');
    instance.isReferring = scanner.isAt('#') || scanner.isAt('(');
    reader.take(scanner, instance);
    return true;
}

bool takeDataStart(StepScanner& scanner) {
    const bool present = scanner.take("DATA");
    if (present) {
        scanner.skipStatement();
    }
    return present;
}

bool takeDataEnd(StepScanner& scanner, InstanceReader& reader) {
    scanner.isAt('E'); // behind the blanks
    const std::uintmax_t position = scanner.position();
    scanner.expect("ENDSEC");
    scanner.expect(';');
    reader.takeDataEnd(position);
    return true;
}

bool takeFileEnd(StepScanner& scanner) {
    scanner.expect("END-ISO-10303-21");
    scanner.expect(';');
    return true;
}

bool takeFileStart(StepScanner& scanner, InstanceReader& reader) {
    if (!scanner.take("ISO-10303-21")) {
        throw StepError("isn't an IFC model: it doesn't begin with ISO-10303-21");
    }
    scanner.expect(';');
    const std::string_view schema = takeHeader(scanner);
    if (!schema.starts_with("IFC2X3") && !schema.starts_with("IFC4")) {
        throw StepError("isn't an IFC model of a known version: its schema is '" + decodeString(schema) + "'");
    }
    reader.takeSchema(schema);
    return true;
}

void takeFile(std::istream& file, std::uintmax_t size, InstanceReader& reader) {
    ProgressBar progress("Reading the model:", size);
    StepScanner scanner(file);
    scanner.takePart([&] { return takeFileStart(scanner, reader); });
    while (scanner.takePart([&] { return takeDataStart(scanner); })) {
        while (scanner.takePart([&] { return takeInstance(scanner, reader); })) {
            progress.reach(scanner.position());
        }
        scanner.takePart([&] { return takeDataEnd(scanner, reader); });
    }
    scanner.takePart([&] { return takeFileEnd(scanner); });
}

void takeZippedFile(const std::filesystem::path& path, InstanceReader& reader) {
    ZippedFile content(path);
    std::istream file(&content);
    file.exceptions(std::ios::badbit);
    try {
        takeFile(file, content.size(), reader);
    } catch (const StepError&) {
        content.requireWhole(); // else it is the archive that is to blame
        throw;
    }
    content.requireWhole();
}

} // namespace

void readModelFile(const std::filesystem::path& path, InstanceReader& reader) {
    try {
        std::ifstream file = open(path);
        if (ZippedFile::isZip(file)) {
            takeZippedFile(path, reader);
        } else {
            std::error_code ignored;
            takeFile(file, std::filesystem::file_size(path, ignored), reader);
        }
    } catch (const StepError& problem) {
        throw brokenModel(path, problem.what());
    } catch (const std::ios_base::failure&) {
        throw unreadable(path);
    }
}

void copyModelFile(const std::filesystem::path& path, const std::function<void(std::string_view)>& take) {
    try {
        std::ifstream file = open(path);
        std::optional<ZippedFile> zipped;
        std::streambuf* content = file.rdbuf();
        if (ZippedFile::isZip(file)) {
            content = &zipped.emplace(path);
        }
        std::string block(copiedBlock, '\0');
        for (std::streamsize size = 0; (size = content->sgetn(block.data(), copiedBlock)) > 0;) {
            take(std::string_view(block).substr(0, static_cast<std::size_t>(size)));
        }
    } catch (const std::ios_base::failure&) {
        throw unreadable(path);
    }
}

std::uint64_t instanceNumber(const StepScanner& scanner, const ModelInstance& instance) {
    const std::string_view digits = instance.digits;
    std::uint64_t number = 0;
    if (std::from_chars(digits.data(), digits.data() + digits.size(), number).ec != std::errc{}) {
        scanner.fail("an instance number below 2^64");
    }
    return number;
}

ModelError refusedModel(const std::filesystem::path& path, std::string_view problem, std::string_view remedy) {
    std::string sentence = "The model \"" + path.string() + "\" ";
    sentence.append(problem).append(". ").append(remedy);
    return ModelError(sentence);
}

ModelError brokenModel(const std::filesystem::path& path, std::string_view problem) {
    return refusedModel(path, problem, "Export the model again, as an IFC file of IFC2X3, IFC4 or later.");
}

const IfcClass* objectClass(const ModelInstance& instance) {
    // Seeing that it refers is cheaper than finding the class.
    const IfcClass* const ifcClass = instance.isReferring ? nullptr : IfcClass::find(instance.keyword);
    return ifcClass != nullptr && ifcClass->isObjectDefinition() ? ifcClass : nullptr;
}

ModelObject takeObject(StepScanner& scanner, const ModelInstance& instance, const IfcClass& ifcClass) {
    // The parameters of an object begin with its GlobalId, its OwnerHistory and its Name.
    ModelObject object{instanceNumber(scanner, instance), &ifcClass, {}, {}};
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

} // namespace annotate
