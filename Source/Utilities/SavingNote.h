#pragma once

#include "OrvExport.h"
#include "Utilities/Descriptor.h"
#include "Utilities/Digest.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

namespace orv::utilities {

/// A file NAME.saving that stands beside a document while that is being written, and from which the next program that
/// locks or reads the document has what was there before, should this one end in the middle. It and its name are on the
/// disk before the first byte of the document changes, and it goes once the document is whole and on the disk.
/// docs/enhancements-file.md tells users of it.
class ORV_UTILITIES_EXPORT SavingNote {
public:
    /// Makes the note that says this of the document. Where the directory takes no new file, or what has the note's
    /// name is no note, there is none afterwards and the outcome is `done`: the write goes on without one. Any
    /// other failure leaves nothing behind.
    static std::errc make(const Descriptor& document, const std::filesystem::path& path, std::string_view content,
                          SavingNote& made);

    /// Whether it was made and neither ended nor left.
    bool isOpen() const { return file.isOpen(); }

    /// Whether it is still the one that stands beside the document at that path.
    bool standsBeside(const std::filesystem::path& path) const;

    /// Tells what the document is to be after the next change of the series, before that begins.
    void announce(const Digest& after);

    /// Removes the note. The document must be whole and, but for a change that wasn't begun, on the disk. What can't be
    /// removed does no harm.
    void end();

    /// Leaves the note to the next holder of the document.
    void leave() { file = Descriptor(); }

    struct Settlement {
        std::errc outcome;
        bool wasNeeded; // there was a note
    };

    /// Puts the document right if another program left a note beside it; the document must be locked for writing. A
    /// note that stands and isn't to be looked at may be given. Fails if a note can't be read, or what was there before
    /// can't be put back.
    static Settlement settle(const Descriptor& document, const std::filesystem::path& path, const SavingNote* own);

    /// For a new document at that path: removes a note that a former one left, and returns once the document's name is
    /// on the disk.
    static std::errc beginDocument(const std::filesystem::path& path);

    /// Reads what stands beside the document at that path, nothing if that is no note. Fails if it can't be read.
    static std::errc readBeside(const std::filesystem::path& path, std::string& content);

private:
    Descriptor file;
    std::filesystem::path notePath;
    std::uint64_t announced = 0;
};

} // namespace orv::utilities
