#include "Annotate/DefinitionFiles.h"

#include "Annotate/AsciiCase.h"
#include "Annotate/Definitions.h"
#include "Annotate/NearNames.h"
#include "Annotate/Terminal.h"
#include "Annotate/TextFile.h"
#include "FoundationClasses/FcValueType.h"
#include "IfcVersionMapping/SchemaDefinitions.h"

#include <algorithm>
#include <iostream>
#include <set>
#include <sstream>
#include <system_error>
#include <vector>

namespace annotate {

namespace {

/// Those of the published definitions that values can have.
std::vector<std::string_view> knownTypes() {
    std::vector<std::string_view> types;
    for (const Definition& definition : orv::ifc::definitions()) {
        types.insert(types.end(), {definition.valueType, definition.definedValueType});
    }
    std::sort(types.begin(), types.end());
    types.erase(std::unique(types.begin(), types.end()), types.end());
    return types;
}

/// The values of such a property would be taken for whatever they look like.
void remarkOnTypes(const std::string& source) {
    const std::vector<std::string_view> known = knownTypes();
    for (const Definition* const definition : orv::ifc::addedDefinitions()) {
        for (const std::string_view type :
             {std::string_view(definition->valueType), std::string_view(definition->definedValueType)}) {
            const bool isKnown =
                orv::fc::FcValueType::find(type) != nullptr || std::binary_search(known.begin(), known.end(), type);
            if (definition->source == source && !isKnown) {
                std::cerr << "annotate: "
                          << printable(source + ": The type " + std::string(type) + " of " + fullName(*definition) +
                                       " isn't known" + didYouMean(type, known))
                          << '\n';
            }
        }
    }
}

void takeFile(const std::filesystem::path& path, bool isNeeded) {
    std::error_code ignored;
    const auto status = std::filesystem::status(path, ignored);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status) &&
        !std::filesystem::is_directory(status)) {
        throw RequestError(path.string() + " isn't a regular file, as definitions of property sets are.");
    }
    std::istringstream text(readTextFile(path));
    const orv::ifc::AddedDefinitions added = orv::ifc::addDefinitions(text, path.filename().string());
    if (!added.reason.empty()) {
        throw RequestError(path.string() + " can't be taken as definitions of property sets. Line " +
                           std::to_string(added.line) + ": " + added.reason + '.');
    }
    if (added.properties > 0 && isNeeded) {
        remarkOnTypes(path.filename().string());
    }
}

/// In the order of their names; none if there is no such folder.
std::vector<std::filesystem::path> filesIn(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> files;
    std::error_code error;
    if (!std::filesystem::exists(folder, error)) {
        return files;
    }
    std::filesystem::directory_iterator entry(folder, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        const std::filesystem::path& path = entry->path();
        const bool isHidden = path.filename().string().starts_with('.');
        if (!isHidden && equalsInAnyCase(path.extension().string(), ".xml")) {
            files.push_back(path);
        }
    }
    if (error) {
        throw RequestError("The folder of definitions " + folder.string() + " can't be read (" + error.message() +
                           ").");
    }
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace

void takeOwnDefinitions(const Arguments& arguments, bool areNeeded) {
    const auto take = [areNeeded](const auto& takeSome) {
        try {
            takeSome();
        } catch (const RequestError& error) {
            if (areNeeded) {
                throw;
            }
            std::cerr << "annotate: " << printable(error.what()) << '\n';
        }
    };
    if (!arguments.model.empty()) {
        const std::filesystem::path shortName = besideModel(arguments.model, ".definitions");
        const std::filesystem::path longName = std::filesystem::path(arguments.model) += ".definitions";
        std::vector<std::filesystem::path> files;
        for (const std::filesystem::path& folder : std::set{shortName, longName}) {
            take([&] {
                const std::vector<std::filesystem::path> found = filesIn(folder);
                files.insert(files.end(), found.begin(), found.end());
            });
        }
        for (const std::filesystem::path& file : files) {
            take([&] { takeFile(file, areNeeded); });
        }
    }
    for (const std::filesystem::path& file : arguments.definitions) {
        takeFile(file, areNeeded);
    }
}

} // namespace annotate
