#pragma once

#include "Host/Record.h"
#include "Id/Guid.h"

#include <chrono>
#include <cstdint>
#include <optional>

namespace annotate {

using Time = std::chrono::sys_time<std::chrono::milliseconds>;

inline Time now() {
    return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
}

/// A remark on an object of the model. Those of an annotate before 0.2 have text, priority and state only; they get the
/// rest, but for who made them and when, from the first command that writes their store.
struct Note : orv::host::Record<Note> {
    static constexpr auto entityName = "Note";

    std::optional<std::int64_t> number; ///< By which the user names it, from 1.
    std::optional<orv::Guid> id;
    std::string text;
    int priority = 0; ///< The user's own scale.
    bool resolved = false;
    std::string author;
    std::optional<Time> made;
    std::string changedBy; ///< Empty if nobody did.
    std::optional<Time> changed;

    static constexpr auto fields =
        std::tuple(orv::host::field("Number", &Note::number), orv::host::field("Id", &Note::id),
                   orv::host::field("Text", &Note::text), orv::host::field("Priority", &Note::priority),
                   orv::host::field("Resolved", &Note::resolved), orv::host::field("Author", &Note::author),
                   orv::host::field("Made", &Note::made), orv::host::field("ChangedBy", &Note::changedBy),
                   orv::host::field("Changed", &Note::changed));
};

/// The highest number that a note of the store has had, so that none is given again. Belongs to no object.
struct LastNoteNumber : orv::host::Record<LastNoteNumber> {
    static constexpr auto entityName = "LastNoteNumber";

    std::int64_t number = 0;

    static constexpr auto fields = std::tuple(orv::host::field("Number", &LastNoteNumber::number));
};

} // namespace annotate
