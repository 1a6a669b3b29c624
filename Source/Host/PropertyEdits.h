#pragma once

#include "Host/Record.h"
#include "Id/Guid.h"
#include "Object/PropertyValue.h"
#include "OrvExport.h"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace orv::host {

/// What somebody set a property of an object to, or that it was unset.
struct PropertyEdit {
    /// The kind of property that it makes; Unset takes the property out of the overlay.
    enum class Form { Single, Enumerated, Bounded, List, Table, Unset };

    std::string set;
    std::string property;
    Form form = Form::Single;

    /// One; the lower bound, the upper bound and the set point, each perhaps empty; all of an enumeration or a list;
    /// the defining and defined values of a table in turn; none if it is unset.
    std::vector<object::PropertyValue> values;

    std::string unit;   ///< Of the values, empty if it isn't known.
    std::string author; ///< Empty if that isn't known.

    /// When it was made, in UTC; at the epoch, Overlay::setAll puts the present in its place.
    std::chrono::sys_time<std::chrono::milliseconds> time;
};

/// An edit of a property of an object.
struct ObjectEdit {
    Guid id;
    PropertyEdit edit;
};

/// The edit as a line that people can read and compare, as in
///
///     Pset_WallCommon.FireRating single "F90" by "Anna" at 2024-02-29T12:00:00Z
///     "Our walls"."Load in kN" bounded lower 1.5 upper 2.0 unit "kN" by "Anna" at 2024-02-29T12:00:00.250Z
///     Pset_WallCommon.IsExternal unset by "Ben" at 2024-02-29T12:05:00Z
///
/// Texts stand in quotation marks, with `\"`, `\\`, `\n` and `\r` for what would end the text or the line; names do
/// where they have other characters than letters, digits and underscores. A number with a point or an exponent is a
/// double, one without an int; a Logical is .T., .F. or .U.
ORV_HOST_EXPORT std::string lineOf(const PropertyEdit& edit);

/// The edit that the line tells, nothing if it tells none.
ORV_HOST_EXPORT std::optional<PropertyEdit> editOf(std::string_view line);

/// The edits of the properties of an object, which is the owner: the kind of record that keeps the overlay's values. A
/// line that isn't understood stays as it is.
struct ORV_HOST_EXPORT PropertyEdits : Record<PropertyEdits> {
    static constexpr auto entityName = "PropertyEdits";

    std::vector<std::string> lines;

    static constexpr auto fields = std::tuple(field("Edit", &PropertyEdits::lines));
};

} // namespace orv::host
