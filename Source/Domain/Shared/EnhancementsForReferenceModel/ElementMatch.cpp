#include "Domain/Shared/EnhancementsForReferenceModel/ElementMatch.h"

#include <algorithm>
#include <map>

namespace orv::domain::shared::enhancementsforreferencemodel {

namespace {

using Found = ElementMatch::Found;

/// The elements of the file that have the same markup.
struct Equals {
    std::vector<std::size_t> positions; // in the file, ascending
    std::size_t own = 0;                // how many known ones this process has records for
    std::size_t carried = 0;            // how many that it hasn't were found

    /// Elements of this process's records come before those that it carries for others.
    bool areLeftFor(const KnownElement& element) const {
        return element.slot != KnownElement::noSlot || own + carried < positions.size();
    }

    void take(const KnownElement& element) { carried += element.slot == KnownElement::noSlot ? 1 : 0; }
};

using EqualsOfMarkups = std::map<utilities::Digest, Equals>;

EqualsOfMarkups equalsIn(std::span<const KnownElement> known, std::span<const ElementKey> file) {
    EqualsOfMarkups equals;
    for (std::size_t at = 0; at < file.size(); ++at) {
        equals[file[at].markup].positions.push_back(at);
    }
    for (const KnownElement& element : known) {
        equals[element.key.markup].own += element.slot == KnownElement::noSlot ? 0 : 1;
    }
    return equals;
}

/// Matches each known element with the first equal element of the file behind the previous match. Returns the numbers
/// of those without a match, ascending.
std::vector<std::size_t> matchInOrder(std::span<const KnownElement> known, EqualsOfMarkups& equalsOfMarkups,
                                      std::vector<Found>& found) {
    std::vector<std::size_t> missing;
    std::size_t from = 0;
    for (std::size_t number = 0; number < known.size(); ++number) {
        Equals& equals = equalsOfMarkups[known[number].key.markup];
        const auto at = std::lower_bound(equals.positions.begin(), equals.positions.end(), from);
        if (at == equals.positions.end() || !equals.areLeftFor(known[number])) {
            missing.push_back(number);
        } else {
            equals.take(known[number]);
            found[*at] = {number, true};
            from = *at + 1;
        }
    }
    return missing;
}

/// Of the missing ones, finds those that have been moved.
void matchMoved(std::span<const KnownElement> known, EqualsOfMarkups& equalsOfMarkups,
                std::vector<std::size_t>& missing, std::vector<Found>& found) {
    std::erase_if(missing, [&](std::size_t number) {
        Equals& equals = equalsOfMarkups[known[number].key.markup];
        const auto moved = std::find_if(equals.positions.begin(), equals.positions.end(),
                                        [&](std::size_t at) { return found[at].known == ElementMatch::none; });
        if (moved == equals.positions.end() || !equals.areLeftFor(known[number])) {
            return false;
        }
        equals.take(known[number]);
        found[*moved].known = number;
        return true;
    });
}

/// Of the missing ones, finds those that changed where they stood.
void matchChanged(std::span<const KnownElement> known, std::span<const ElementKey> file,
                  const std::vector<std::size_t>& missing, std::vector<Found>& found) {
    // For each place in the file, the number of the first known element that is in place behind it.
    std::vector<std::size_t> ends(file.size(), known.size());
    for (std::size_t at = file.size(); at-- > 1;) {
        ends[at - 1] = found[at].isInPlace ? found[at].known : ends[at];
    }
    auto next = missing.begin();
    for (std::size_t at = 0; at < file.size() && next != missing.end(); ++at) {
        if (found[at].isInPlace) {
            next = std::lower_bound(next, missing.end(), found[at].known);
        } else if (found[at].known == ElementMatch::none && *next < ends[at] &&
                   known[*next].key.subject == file[at].subject) {
            found[at] = {*next++, true};
        }
    }
}

} // namespace

ElementMatch ElementMatch::between(std::span<const KnownElement> known, std::span<const ElementKey> file) {
    ElementMatch match{std::vector<Found>(file.size()), true};
    EqualsOfMarkups equals = equalsIn(known, file);
    std::vector<std::size_t> missing = matchInOrder(known, equals, match.found);
    matchMoved(known, equals, missing, match.found);
    match.isComplete = std::none_of(missing.begin(), missing.end(),
                                    [&](std::size_t number) { return known[number].slot != KnownElement::noSlot; });
    matchChanged(known, file, missing, match.found);
    return match;
}

} // namespace orv::domain::shared::enhancementsforreferencemodel
