#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orv::host {

/// What came of a write to the overlay. True if it was done.
struct Outcome {
    /// Whether it was done, and if not, why.
    enum class Result {
        Done,
        NoSuchSet,      ///< See nearestNames.
        NoSuchProperty, ///< The set has none of that name; see nearestNames.
        NoSuchObject,   ///< Neither the shadow database nor the model has one, or the host hands in no shadow database.
        TakesNoValue,   ///< A reference or complex property.
        ValueRefused,   ///< See neededType.
        StoreRefused,   ///< The file couldn't be written; the overlay is as it was.
        NotUnderstood   ///< A line in the file that tells no edit.
    };

    Result result = Result::Done;

    // Remarks on what was done all the same.
    bool isOutsideEnumeration = false; ///< A value isn't one of those that the definition offers.
    bool isOfOtherClass = false;       ///< The set is for objects of other classes.

    /// The names that the fewest edits make of the one that there isn't. They live as long as the process.
    std::vector<std::string_view> nearestNames;

    /// The type that would do, as in "IfcReal", "bounds of IfcReal", "list of IfcLabel" or "table of IfcReal to
    /// IfcLabel"; "any" in its place where the definition names none.
    std::string neededType;

    /// Whether there is something to tell of what was done.
    bool hasRemark() const { return isOutsideEnumeration || isOfOtherClass; }

    /// Whether it was done.
    explicit operator bool() const { return result == Result::Done; }
};

} // namespace orv::host
