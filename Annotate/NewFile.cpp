#include "Annotate/NewFile.h"

#include "Annotate/Arguments.h"
#include "Annotate/System.h"
#include "Utilities/Beside.h"

#include <string>
#include <utility>

namespace annotate {

using orv::utilities::Descriptor;
using orv::utilities::done;
using orv::utilities::Opening;

namespace {

void requireOther(const std::filesystem::path& path, const std::filesystem::path& taken, const std::string& what) {
    if (areSameFile(path, taken)) {
        throw RequestError(path.string() + " is " + what + ". Give another name.");
    }
}

} // namespace

NewFile::NewFile(std::filesystem::path filePath, const std::filesystem::path& model, const std::filesystem::path& store)
    : path(orv::utilities::resolved(std::move(filePath))) {
    requireOther(path, model, "the model itself");
    requireOther(path, store, "the file of the additions");
    std::error_code ignored;
    const auto status = std::filesystem::symlink_status(path, ignored);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        throw RequestError(path.string() + (std::filesystem::is_directory(status) ? " is a folder" : " isn't a file") +
                           ". Give the name of a file.");
    }
    if (const std::errc refusal = refusalOfWriting(path); std::filesystem::exists(status) && refusal != done) {
        fail(refusal);
    }
    unfinished = path;
    unfinished += ".unfinished-" + std::to_string(processNumber());
    std::filesystem::remove(unfinished, ignored); // of one that was killed
    std::errc outcome = done;
    file = Descriptor::open(unfinished, Opening::MakeNew, outcome);
    if (outcome != done) {
        unfinished.clear();
        fail(outcome);
    }
    giveUsualAccess(unfinished);
    if (const auto replaced = Descriptor::open(path, Opening::Read); replaced.isOpen()) {
        file.takeAccess(replaced); // or that of a new file
    }
}

NewFile::~NewFile() {
    if (!unfinished.empty()) {
        std::error_code ignored;
        std::filesystem::remove(unfinished, ignored);
    }
}

void NewFile::write(std::string_view content) {
    if (const std::errc outcome = file.write(content, size); outcome != done) {
        fail(outcome);
    }
    size += content.size();
}

void NewFile::finish() {
    if (const std::errc outcome = file.sync(); outcome != done) {
        fail(outcome);
    }
    std::error_code error;
    std::filesystem::rename(unfinished, path, error);
    if (error) {
        fail(static_cast<std::errc>(error.default_error_condition().value()));
    }
    unfinished.clear();
}

void NewFile::fail(std::errc outcome) const {
    throw RequestError(path.string() + " can't be written (" + std::make_error_code(outcome).message() +
                       "). Nothing was exported.");
}

} // namespace annotate
