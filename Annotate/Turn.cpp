#include "Annotate/Turn.h"

#include "Annotate/StoreError.h"
#include "Utilities/Beside.h"

#include <system_error>

namespace annotate {

namespace {

/// Where the store's file is, links followed, so that all who mean the same file come to the same place.
std::filesystem::path folderOf(const std::filesystem::path& store) {
    std::error_code error;
    const std::filesystem::path absolute =
        std::filesystem::absolute(store, error); // a missing file stays relative else
    const std::filesystem::path file = std::filesystem::weakly_canonical(orv::utilities::resolved(absolute), error);
    return (error ? absolute : file).parent_path();
}

} // namespace

Turn::Turn(const std::filesystem::path& store) {
    if (!await(folderOf(store), std::chrono::minutes(1))) {
        end();
        throw StoreError("Another annotate has been at work in the folder of " + store.string() +
                         " for a minute. Try again later.");
    }
}

Turn::~Turn() {
    end();
}

} // namespace annotate
