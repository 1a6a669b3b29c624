#pragma once

#include "Utilities/Descriptor.h"

#include <cstdint>
#include <filesystem>
#include <string_view>

namespace annotate {

/// A file that is written under another name beside its own, which it gets when it is whole. Operations throw
/// RequestError if they fail. The destructor removes a file that isn't whole.
class NewFile {
public:
    /// Throws RequestError as well if the path is that of the model or the store, or no file can be there.
    NewFile(std::filesystem::path filePath, const std::filesystem::path& model, const std::filesystem::path& store);
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;
    ~NewFile();

    /// The name that it has so far.
    const std::filesystem::path& getUnfinished() const { return unfinished; }

    void write(std::string_view content);

    /// Gives the file its name, in the place of one that has it.
    void finish();

private:
    [[noreturn]] void fail(std::errc outcome) const;

    std::filesystem::path path;
    std::filesystem::path unfinished;
    orv::utilities::Descriptor file;
    std::uint64_t size = 0;
};

} // namespace annotate
