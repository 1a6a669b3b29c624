#include "Utilities/NoteContent.h"

#include <algorithm>
#include <cstddef>
#include <initializer_list>

namespace orv::utilities {

namespace {

constexpr std::string_view title{"Saving note, version 1. Undoes a save cut off. Keep it.\n", 56};
constexpr std::size_t wordSize = 8;
constexpr std::size_t numberCount = 8;
constexpr std::size_t proofPosition = title.size() + numberCount * wordSize;
constexpr std::size_t firstDigestPosition = proofPosition + 2 * wordSize;
constexpr std::size_t digestCount = 2;
constexpr std::size_t digestSize = 3 * wordSize;
constexpr std::size_t partsPosition = firstDigestPosition + digestCount * digestSize;

void append(std::string& text, std::initializer_list<std::uint64_t> numbers) {
    for (std::uint64_t number : numbers) {
        for (std::size_t byte = 0; byte < wordSize; ++byte, number >>= 8U) {
            text += static_cast<char>(number & 0xffU);
        }
    }
}

std::uint64_t numberAt(std::string_view text, std::size_t position) {
    std::uint64_t number = 0;
    for (std::size_t byte = wordSize; byte-- > 0;) {
        number = (number << 8U) | static_cast<unsigned char>(text[position + byte]);
    }
    return number;
}

Digest digestAt(std::string_view text, std::size_t position) {
    return {numberAt(text, position), numberAt(text, position + wordSize)};
}

/// A word that fits the digest, and none of which only a part was written.
std::uint64_t checkWordOf(const Digest& digest) {
    return ~(digest.first ^ digest.second);
}

/// Of all but the digest of the document after, which may change.
Digest proofOf(std::string_view note) {
    const Digest head = Digest::of(note.substr(0, proofPosition));
    const Digest parts = Digest::of(note.substr(partsPosition));
    return {head.first ^ parts.second, head.second ^ parts.first};
}

std::string noteOf(const Replacement& replacement, bool isSeries) {
    const auto& [change, sizeBefore, before, content, after] = replacement;
    std::string note(title);
    append(note, {sizeBefore, content.size(), change.position, change.before.size(), change.after.size(),
                  isSeries ? 1U : 0U, before.first, before.second});
    append(note, {0, 0});
    const std::string digest = NoteContent::digestAfter(after);
    note.append(digest).append(digest).append(change.before).append(change.after);
    const Digest proof = proofOf(note);
    std::string words;
    append(words, {proof.first, proof.second});
    return note.replace(proofPosition, words.size(), words);
}

} // namespace

std::string NoteContent::ofChange(const Replacement& replacement) {
    return noteOf(replacement, false);
}

std::string NoteContent::ofSeries(std::string_view content, const Digest& digest) {
    return noteOf({{0, content, {}}, content.size(), digest, {}, digest}, true);
}

std::uint64_t NoteContent::digestPosition(std::uint64_t change) {
    return firstDigestPosition + change % digestCount * digestSize;
}

std::string NoteContent::digestAfter(const Digest& digest) {
    std::string words;
    append(words, {digest.first, digest.second, checkWordOf(digest)});
    return words;
}

bool NoteContent::isLikely(std::string_view bytes) {
    const std::string_view beginning = bytes.substr(0, title.size());
    return title.starts_with(beginning) || beginning.find_first_not_of('\0') == std::string_view::npos;
}

std::optional<NoteContent> NoteContent::parse(std::string_view bytes) {
    if (bytes.size() < partsPosition || !bytes.starts_with(title) || proofOf(bytes) != digestAt(bytes, proofPosition)) {
        return std::nullopt;
    }
    const auto number = [bytes](std::size_t index) { return numberAt(bytes, title.size() + index * wordSize); };
    const std::string_view parts = bytes.substr(partsPosition);
    NoteContent note;
    note.sizeBefore = number(0);
    note.sizeAfter = number(1);
    note.change.position = number(2);
    note.change.before = parts.substr(0, number(3));
    note.change.after = parts.substr(note.change.before.size());
    note.isSeries = number(5) != 0;
    if (note.change.before.size() != number(3) || note.change.after.size() != number(4)) {
        return std::nullopt;
    }
    note.before = digestAt(bytes, title.size() + 6 * wordSize);
    for (std::size_t place = 0; place < digestCount; ++place) {
        const Digest after = digestAt(bytes, digestPosition(place));
        if (numberAt(bytes, digestPosition(place) + 2 * wordSize) == checkWordOf(after)) {
            note.after.push_back(after);
        }
    }
    return note;
}

std::optional<std::uint64_t> NoteContent::sizeIfWhole(std::string_view document) const {
    if (isWhole(document)) {
        return document.size();
    }
    // All but the first document of a series end in one line feed.
    const std::size_t size = document.find_last_not_of(reservedByte) + 2;
    if (size < document.size() && isWhole(document.substr(0, size))) {
        return size;
    }
    const bool isBefore = isSeries && document.starts_with(change.before) &&
                          document.find_first_not_of(reservedByte, change.before.size()) == std::string_view::npos;
    return isBefore ? std::optional<std::uint64_t>(change.before.size()) : std::nullopt;
}

bool NoteContent::isWhole(std::string_view document) const {
    const Digest digest = Digest::of(document);
    return digest == before || std::find(after.begin(), after.end(), digest) != after.end();
}

std::optional<std::string> NoteContent::undone(std::string_view document) const {
    if (isSeries) {
        return std::string(change.before);
    }
    if (!mayBeLeftBehind(document)) {
        return std::nullopt;
    }
    std::string old(document.substr(0, change.position));
    old += change.before;
    if (old.size() < sizeBefore) {
        old += document.substr(old.size());
    }
    return Digest::of(old) == before ? std::optional(std::move(old)) : std::nullopt;
}

bool NoteContent::mayBeLeftBehind(std::string_view document) const {
    const auto [smaller, larger] = std::minmax(sizeBefore, sizeAfter);
    if (document.size() < smaller || document.size() > larger || document.size() < change.position) {
        return false;
    }
    const std::string_view left =
        document.substr(change.position, sizeBefore == sizeAfter ? change.before.size() : std::string_view::npos);
    for (std::size_t at = 0; at < left.size(); ++at) {
        const char byte = left[at];
        const bool isOld = at < change.before.size() && byte == change.before[at];
        const bool isNew = at < change.after.size() && byte == change.after[at];
        if (!isOld && !isNew && byte != '\0' && byte != reservedByte) {
            return false;
        }
    }
    return true;
}

} // namespace orv::utilities
