#pragma once

#include "Annotate/AnyCase.h"
#include "Annotate/Definitions.h"
#include "Annotate/MergedValues.h"

#include <compare>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace annotate {

/// A condition on a property of objects, as in
///
///     Pset_WallCommon.IsExternal=true     "Our walls"."Load in kN" >= 2.5     Pset_DoorCommon.FireRating absent
///
/// The operators are =, !=, <, <=, >, >=, and ~ for a text within the value, in any case; present and absent stand
/// alone. Names with other characters than letters, digits, underscores, blanks and hyphens stand in quotation marks.
class Condition {
public:
    /// Throws RequestError, with what would be taken, if the text is no condition.
    explicit Condition(std::string_view text);

    const std::string& getSet() const { return set; }
    const std::string& getProperty() const { return property; }

    /// Turns a number with a unit into one of the project's, in which the values of such a property are. Throws
    /// RequestError, with what would be taken, for a unit that can't be.
    void takeUnit(const Definition& definition, const ModelUnits& units);

    /// Whether it holds for one of the values of the property; for != whether there are values and none of them equals.
    /// Two numbers are compared as such, everything else as texts. Without a value nothing holds but absent.
    bool holds(const std::vector<std::string>& values) const;

    /// Whether one of the values is such as the condition asks for: as holds, but for != whether one equals.
    bool concerns(const std::vector<std::string>& values) const;

    /// What the property's definition says against the condition's value, in a sentence; or that its values are
    /// numbers, if they are said to be. Empty if nothing.
    std::string objection(bool areNumbers) const;

private:
    enum class Operator { Equal, Unequal, Less, LessOrEqual, Greater, GreaterOrEqual, Contains, Present, Absent };

    struct Spelling;

    bool holdsFor(const std::string& candidate) const;
    std::partial_ordering comparedWith(const std::string& candidate) const;

    std::string set;
    std::string property;
    Operator operation = Operator::Present;
    std::string value;
    std::optional<AnyCase> part; ///< The value, if it is to be within another.
};

} // namespace annotate
