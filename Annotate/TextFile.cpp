#include "Annotate/TextFile.h"

#include "Annotate/Arguments.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <system_error>

namespace annotate {

std::string readTextFile(const std::filesystem::path& path) {
    std::ifstream file;
    std::error_code ignored;
    const bool isStandardInput = path == "-";
    errno = std::filesystem::is_directory(path, ignored) ? EISDIR : 0;
    if (!isStandardInput && errno == 0) {
        file.open(path, std::ios::binary);
    }
    std::ostringstream text;
    std::istream& stream = isStandardInput ? std::cin : file;
    if (isStandardInput || file.is_open()) {
        std::copy(std::istreambuf_iterator<char>(stream), {}, std::ostreambuf_iterator<char>(text));
    }
    if (errno != 0) {
        throw RequestError((isStandardInput ? "Standard input" : path.string()) + " can't be read (" +
                           std::generic_category().message(errno) + ").");
    }
    return text.str();
}

} // namespace annotate
