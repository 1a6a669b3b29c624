#include "Annotate/Notes.h"

#include "Annotate/Arguments.h"
#include "Annotate/DerivedId.h"
#include "Annotate/Terminal.h"

#include <algorithm>
#include <random>
#include <unordered_set>

namespace annotate {

namespace {

/// Whether it can be the number of a note, with room for those that come.
bool isNumber(std::int64_t number) {
    constexpr std::int64_t most = 1'000'000'000'000;
    return number > 0 && number <= most;
}

std::int64_t highestNumber(const Records& records) {
    std::int64_t highest = 0;
    const auto take = [&highest](std::int64_t number) { highest = std::max(highest, isNumber(number) ? number : 0); };
    for (const Note* const note : allOf<const Note>(records)) {
        take(note->number.value_or(0));
    }
    for (const LastNoteNumber* const last : allOf<const LastNoteNumber>(records)) {
        take(last->number);
    }
    return highest;
}

/// The record of the last number, made if it is missing.
LastNoteNumber& lastNumber(Store& store) {
    const auto present = allOf<LastNoteNumber>(Store::getRecords());
    return present.empty() ? store.make<LastNoteNumber>() : *present.front();
}

} // namespace

std::vector<std::pair<std::int64_t, Note*>> numberedNotes(const Records& records) {
    std::vector<std::pair<std::int64_t, Note*>> notes;
    std::int64_t highest = highestNumber(records);
    std::unordered_set<std::int64_t> known;
    for (Note* const note : allOf<Note>(records)) {
        const std::int64_t number = note->number.value_or(0);
        notes.emplace_back(isNumber(number) && known.insert(number).second ? number : ++highest, note);
    }
    return notes;
}

RequestError noSuchNote(const std::string& number) {
    return RequestError("There is no note " + number + ". The command notes lists those that there are.");
}

void requireText(const std::string& text) {
    if (text.empty()) {
        throw RequestError("The note has no text.");
    }
}

Notebook::Notebook(Store& notesStore) : store(&notesStore), last(&lastNumber(notesStore)) {
    last->number = highestNumber(Store::getRecords());
    for (const auto& [number, note] : numberedNotes(Store::getRecords())) {
        note->number = number;
        note->id = idOf(number, *note);
        last->number = std::max(last->number, number);
        notes.push_back(note);
        ofNumber.emplace(number, note);
    }
}

Note* Notebook::tryFind(std::int64_t number) const {
    const auto found = ofNumber.find(number);
    return found == ofNumber.end() ? nullptr : found->second;
}

Note& Notebook::find(std::int64_t number) const {
    if (Note* const note = tryFind(number)) {
        return *note;
    }
    throw noSuchNote(std::to_string(number));
}

Note& Notebook::add(const Note& content, const std::string& author) {
    Note& note = put(content);
    note.id = content.id ? content.id : makeId();
    if (!content.made) {
        note.author = author;
        note.made = now();
    }
    return note;
}

Note& Notebook::put(const Note& content) {
    auto& note = store->make<Note>();
    note = content;
    note.number = ++last->number;
    return note;
}

orv::Guid idOf(std::int64_t number, const Note& note) {
    return note.id.value_or(derivedId("note " + std::to_string(number) + " on " + note.ownerId.toString(false)));
}

orv::Guid makeId() {
    std::random_device random;
    orv::Guid id;
    id.data1 = random();
    // Version 4 and the variant of RFC 4122: made of random bits.
    id.data2 = static_cast<std::uint16_t>(random());
    id.data3 = static_cast<std::uint16_t>((random() & 0x0fffU) | 0x4000U);
    for (std::uint8_t& byte : id.data4) {
        byte = static_cast<std::uint8_t>(random());
    }
    id.data4[0] = static_cast<std::uint8_t>((id.data4[0] & 0x3fU) | 0x80U);
    return id;
}

std::string textOfNote(const Note& note) {
    std::string text = "OwnerId=" + note.ownerId.toString(false);
    for (const auto& [name, value] : note.getAttributes()) {
        text.append("\t").append(name).append("=").append(printable(value.get<std::string>()));
    }
    return text;
}

void setNote(Note& note, std::string_view text) {
    std::vector<std::pair<std::string, std::string>> attributes;
    while (!text.empty()) {
        const std::string_view attribute = text.substr(0, text.find('\t'));
        text.remove_prefix(std::min(attribute.size() + 1, text.size()));
        const std::size_t equals = std::min(attribute.find('='), attribute.size());
        const std::string_view value = attribute.substr(std::min(equals + 1, attribute.size()));
        if (!value.empty()) {
            attributes.emplace_back(attribute.substr(0, equals), fromPrintable(value));
        }
    }
    const orv::Guid owner = note.ownerId;
    note = Note();
    note.ownerId = owner;
    note.setAttributes(attributes);
}

} // namespace annotate
