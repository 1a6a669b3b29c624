#include "IfcVersionMapping/SetApplicability.h"

#include "IfcVersionMapping/OwnDefinitions.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace orv::ifc {

namespace {

struct Published {
    std::string_view set;
    std::string_view classes;
};

/// As they are published. For the compiler alone, which makes of them what the library carries.
constexpr Published published[] = {
#define CLASSES(set, classes) {#set, classes},
#define TYPED(set, class) {#set, #class "," #class "Type"},
#define TYPED_PREDEFINED(set, class, type) {#set, #class "/" #type "," #class "Type/" #type},
#include "IfcVersionMapping/SetApplicability.inc"
#undef CLASSES
#undef TYPED
#undef TYPED_PREDEFINED
};

static_assert(std::is_sorted(std::begin(published), std::end(published),
                             [](const Published& a, const Published& b) { return a.set < b.set; }));

constexpr std::size_t lengthOfTexts() {
    std::size_t length = 0;
    for (const Published& row : published) {
        length += row.set.size() + row.classes.size();
    }
    return length;
}

/// The texts one after the other, and where they end. Holds no addresses.
struct Carried {
    constexpr Carried() {
        std::size_t used = 0;
        for (std::size_t row = 0; row < rows.size(); ++row) {
            used += published[row].set.copy(&letters[used], published[row].set.size());
            rows[row].endOfSet = static_cast<std::uint32_t>(used);
            used += published[row].classes.copy(&letters[used], published[row].classes.size());
            rows[row].endOfClasses = static_cast<std::uint32_t>(used);
        }
    }

    struct Row {
        std::uint32_t endOfSet = 0;
        std::uint32_t endOfClasses = 0;
    };

    std::array<Row, std::size(published)> rows{};
    std::array<char, lengthOfTexts()> letters{};
};

constexpr Carried carried;

Published publishedOf(const Carried::Row& row) {
    const std::size_t begin = &row == carried.rows.data() ? 0 : (&row)[-1].endOfClasses;
    const std::string_view letters(carried.letters.data(), carried.letters.size());
    return {letters.substr(begin, row.endOfSet - begin), letters.substr(row.endOfSet, row.endOfClasses - row.endOfSet)};
}

/// The classes of the published set of that name, with commas between them; empty if there is none.
std::string_view publishedClasses(std::string_view pset) {
    const auto* const row =
        std::lower_bound(carried.rows.begin(), carried.rows.end(), pset,
                         [](const Carried::Row& a, std::string_view wanted) { return publishedOf(a).set < wanted; });
    return row != carried.rows.end() && publishedOf(*row).set == pset ? publishedOf(*row).classes : "";
}

} // namespace

std::vector<ApplicableClass> applicableClasses(const std::string& pset) {
    std::vector<ApplicableClass> classes;
    const auto append = [&classes](std::string_view text) {
        // As in IfcActuator/ELECTRICACTUATOR; added sets may have IfcBoiler[PerformanceHistory].
        const std::size_t end = std::min(text.find_first_of("/["), text.size());
        const bool hasType = end < text.size() && text[end] == '/';
        const ApplicableClass applicable{text.substr(0, end), hasType ? text.substr(end + 1) : ""};
        if (std::find(classes.begin(), classes.end(), applicable) == classes.end()) {
            classes.push_back(applicable);
        }
    };
    for (std::string_view rest = publishedClasses(pset); !rest.empty();) {
        const std::size_t length = std::min(rest.find(','), rest.size());
        append(rest.substr(0, length));
        rest.remove_prefix(std::min(length + 1, rest.size()));
    }
    for (const std::string_view text : ownClasses(pset)) {
        append(text);
    }
    return classes;
}

} // namespace orv::ifc
