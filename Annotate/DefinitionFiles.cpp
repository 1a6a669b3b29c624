#include "Annotate/DefinitionFiles.h"

#include "Annotate/TextFile.h"
#include "IfcVersionMapping/SchemaDefinitions.h"

#include <algorithm>
#include <sstream>
#include <system_error>
#include <vector>

namespace annotate {

namespace {

void takeFile(const std::filesystem::path& path) {
    std::istringstream text(readTextFile(path));
    const orv::ifc::AddedDefinitions added = orv::ifc::addDefinitions(text, path.filename().string());
    if (!added.reason.empty()) {
        throw RequestError(path.string() + " can't be taken as definitions of property sets. Line " +
                           std::to_string(added.line) + ": " + added.reason + '.');
    }
}

/// In the order of their names; none if there is no such folder.
std::vector<std::filesystem::path> filesIn(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> files;
    std::error_code error;
    std::filesystem::directory_iterator entry(folder, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        const std::filesystem::path& path = entry->path();
        const bool isHidden = path.filename().string().starts_with('.');
        if (!isHidden && equalsInAnyCase(path.extension().string(), ".xml")) {
            files.push_back(path);
        }
    }
    if (error && error != std::errc::no_such_file_or_directory) {
        throw RequestError("The folder of definitions " + folder.string() + " can't be read (" + error.message() +
                           ").");
    }
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace

void takeOwnDefinitions(const Arguments& arguments) {
    if (!arguments.model.empty()) {
        const std::filesystem::path shortName = besideModel(arguments.model, ".definitions");
        const std::filesystem::path longName = std::filesystem::path(arguments.model) += ".definitions";
        std::vector<std::filesystem::path> files = filesIn(shortName);
        if (longName != shortName) {
            const std::vector<std::filesystem::path> others = filesIn(longName);
            files.insert(files.end(), others.begin(), others.end());
        }
        std::for_each(files.begin(), files.end(), takeFile);
    }
    std::for_each(arguments.definitions.begin(), arguments.definitions.end(), takeFile);
}

} // namespace annotate
