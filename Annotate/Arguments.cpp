#include "Annotate/Arguments.h"

#include "Annotate/AsciiCase.h"
#include "Annotate/System.h"
#include "Utilities/FileState.h"

#include <algorithm>

namespace annotate {

namespace {

std::string namedAuthor(const Arguments& arguments) {
    if (!arguments.author.empty()) {
        return arguments.author;
    }
    const auto named = environmentValue("ANNOTATE_AUTHOR");
    return named && !named->empty() ? *named : userName();
}

} // namespace

std::filesystem::path storePath(const Arguments& arguments) {
    if (arguments.store.empty()) {
        return besideModel(arguments.model, ".enhancements.xml");
    }
    if (areSameFile(arguments.store, arguments.model)) {
        throw UsageError("--store names the model itself, which is never written.");
    }
    return arguments.store;
}

bool areSameFile(const std::filesystem::path& one, const std::filesystem::path& other) {
    using orv::utilities::FileState;
    const auto state = FileState::of(one);
    const auto otherState = FileState::of(other);
    return state && otherState && state->identity == otherState->identity;
}

std::filesystem::path besideModel(const std::filesystem::path& model, std::string_view ending) {
    std::filesystem::path path = model;
    const std::string extension = path.extension().string();
    if (equalsInAnyCase(extension, ".ifc") || equalsInAnyCase(extension, ".ifczip")) {
        path.replace_extension();
    }
    return path += ending;
}

std::string authorOf(const Arguments& arguments) {
    std::string author = namedAuthor(arguments);
    if (hasControlCharacter(author)) {
        throw UsageError("The author's name, \"" + author +
                         "\", has a control character in it. Give a name on one line with --author.");
    }
    return author;
}

bool hasControlCharacter(std::string_view text) {
    return std::any_of(text.begin(), text.end(),
                       [](char letter) { return (letter >= 0 && letter < ' ') || letter == '\x7f'; });
}

orv::Guid idOf(const std::string& globalId) {
    orv::Guid id;
    if (!id.boSet(globalId)) {
        throw RequestError(globalId + " isn't a GlobalId: those have 22 characters, the first of them 0 to 3. "
                                      "The command objects lists them.");
    }
    return id;
}

} // namespace annotate
