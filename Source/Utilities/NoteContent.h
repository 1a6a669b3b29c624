#pragma once

#include "Utilities/Change.h"
#include "Utilities/Digest.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orv::utilities {

/// What a saving note tells of a document that is being changed.
///
/// The form: a line of text that says what the file is, then 64-bit numbers, little-endian: the document's size before
/// and after, the change's position, the sizes of its parts before and after, 1 for a series of changes, the digest of
/// the document before, a digest of all of this with the parts; then two places for the digest of the document after,
/// each with a word that proves it whole; then the parts.
class NoteContent {
public:
    /// A note of one change, which is known to the last byte.
    static std::string ofChange(const Replacement& replacement);

    /// A note of many changes of the content that add nothing to it.
    static std::string ofSeries(std::string_view content, const Digest& digest);

    /// Where a note of a series tells the digest of the document after its change of that number, and what it writes
    /// there before that begins. That of the change before stays.
    static std::uint64_t digestPosition(std::uint64_t change);
    static std::string digestAfter(const Digest& digest);

    /// Whether a file that holds that could be a note, or what is left of one.
    static bool isLikely(std::string_view bytes);

    /// Nothing if it isn't a whole note. Refers to the bytes.
    static std::optional<NoteContent> parse(std::string_view bytes);

    /// The size of the document if it is as it is to be after a change, or still as before. Reserved bytes may be
    /// behind that.
    std::optional<std::uint64_t> sizeIfWhole(std::string_view document) const;

    /// The document as it was before; nothing if what it holds now can't have been left by the change, each byte of it
    /// being the old one, the new one, reserved or zero.
    std::optional<std::string> undone(std::string_view document) const;

    /// Whether it is a note of a series. Of what the document holds nothing is known then, and undone goes back anyway.
    bool isOfSeries() const { return isSeries; }

private:
    bool isWhole(std::string_view document) const;
    bool mayBeLeftBehind(std::string_view document) const;

    std::uint64_t sizeBefore = 0;
    std::uint64_t sizeAfter = 0;
    Change change;
    bool isSeries = false;
    Digest before;
    std::vector<Digest> after;
};

/// What fills space that is reserved for a document: documents may have line feeds at their end.
constexpr char reservedByte = '\n';

} // namespace orv::utilities
