#include "Annotate/TextFile.h"

#include "Annotate/Arguments.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <system_error>

namespace annotate {

namespace {

RequestError unreadable(const std::filesystem::path& path, const std::error_code& reason) {
    return RequestError(path.string() + " can't be read (" + reason.message() + ").");
}

} // namespace

std::string readTextFile(const std::filesystem::path& path) {
    const bool isStandardInput = path == "-";
    std::error_code ignored;
    if (!isStandardInput && std::filesystem::is_directory(path, ignored)) {
        throw unreadable(path, std::make_error_code(std::errc::is_a_directory));
    }
    std::ifstream file;
    if (!isStandardInput) {
        file.open(path, std::ios::binary);
        if (!file.is_open()) {
            throw unreadable(path, {errno, std::generic_category()});
        }
    }
    std::ostringstream text;
    try {
        std::istream& stream = isStandardInput ? std::cin : file;
        std::copy(std::istreambuf_iterator<char>(stream), {}, std::ostreambuf_iterator<char>(text));
    } catch (const std::ios_base::failure&) {
        throw unreadable(path, {errno, std::generic_category()});
    }
    if (isStandardInput && std::ferror(stdin) != 0) { // of which std::cin tells nothing
        throw unreadable("Standard input", {errno, std::generic_category()});
    }
    return text.str();
}

} // namespace annotate
