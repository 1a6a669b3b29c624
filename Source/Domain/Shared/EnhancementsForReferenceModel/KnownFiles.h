#pragma once

#include "Domain/Shared/EnhancementsForReferenceModel/ElementMatch.h"
#include "Utilities/Digest.h"
#include "Utilities/FileState.h"

#include <filesystem>
#include <map>
#include <optional>
#include <vector>

namespace orv::domain::shared::enhancementsforreferencemodel {

/// What this process last read or wrote at a path.
struct KnownFile {
    std::optional<utilities::FileState> state; // nothing if another content could be in the same state
    utilities::Digest content;
    std::vector<KnownElement> elements; // empty for the current file, whose elements the document has
};

/// Whose content a file holds is decided by what was last read or written there; times only save looking. A relative
/// path is resolved when it is passed in.
class KnownFiles {
public:
    /// Null if this process has neither read nor written a file at the path.
    KnownFile* find(const std::filesystem::path& path);

    /// The one that the document was last read from or written to; null at first.
    KnownFile* getCurrent() { return current; }

    /// Makes the entry of the path, so that setCurrent can't fail.
    void prepare(const std::filesystem::path& path);

    /// The one at the path that was prepared last.
    void setCurrent(KnownFile file);

    /// Nothing could be loaded from the path: whatever document is found there later is all of others, unless this
    /// process has read or written one there before.
    void setForeign(const std::filesystem::path& path);

    /// One that held that content when this process last read or wrote it, at whatever path; null if there is none.
    const KnownFile* findContent(const utilities::Digest& content) const;

private:
    using Key = std::filesystem::path::string_type; // an absolute path
    using Files = std::map<Key, KnownFile>;

    const Key& keyOf(const std::filesystem::path& path);

    Files files;
    KnownFile* current = nullptr;
    Files::node_type prepared;
    std::filesystem::path lastPath; // that was asked for; an addition asks four times for the same
    Key lastKey;                    // its key
};

} // namespace orv::domain::shared::enhancementsforreferencemodel
