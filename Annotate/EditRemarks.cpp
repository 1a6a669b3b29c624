#include "Annotate/EditRemarks.h"

#include "Annotate/ValueText.h"
#include "Host/FieldText.h"
#include "Host/TimeText.h"

#include <chrono>
#include <limits>
#include <regex>
#include <set>
#include <string_view>

namespace annotate {

using orv::host::Outcome;
using orv::host::PropertyEdit;
using orv::object::PropertyValue;

namespace {

/// Not a number if the value isn't one, which compares with none.
double numberOf(const PropertyValue& value) {
    double number = std::numeric_limits<double>::quiet_NaN();
    static_cast<void>(orv::host::take(valueText(value), number));
    return number;
}

std::vector<std::string> remarksOnOutcome(const Definition& definition, const Outcome& outcome) {
    std::vector<std::string> remarks;
    if (outcome.isOutsideEnumeration) {
        remarks.push_back("The values of " + fullName(definition) + " are " +
                          std::string(definition.enumerationValues) + "; this isn't among them.");
    }
    if (outcome.isOfOtherClass) {
        remarks.push_back(std::string(definition.propertySet) + " is published for objects of other classes.");
    }
    return remarks;
}

/// Numbers that a type is defined for.
struct Range {
    std::string_view type;
    double least;
    double greatest;
    bool isAbove; ///< The least isn't one of them.
    std::string_view told;
};

constexpr double unbounded = std::numeric_limits<double>::infinity();
constexpr Range ranges[] = {
    {"IfcHeatingValueMeasure", 0, unbounded, true, "numbers above 0"},
    {"IfcNonNegativeLengthMeasure", 0, unbounded, false, "numbers from 0 on"},
    {"IfcNormalisedRatioMeasure", 0, 1, false, "numbers from 0 to 1"},
    {"IfcPHMeasure", 0, 14, false, "numbers from 0 to 14"},
    {"IfcPositiveInteger", 0, unbounded, true, "numbers above 0"},
    {"IfcPositiveLengthMeasure", 0, unbounded, true, "numbers above 0"},
    {"IfcPositivePlaneAngleMeasure", 0, unbounded, true, "numbers above 0"},
    {"IfcPositiveRatioMeasure", 0, unbounded, true, "numbers above 0"},
};

/// Texts that are written as ISO 8601 tells.
struct TimeForm {
    std::string_view type;
    const char* pattern;
    std::string_view told;
};

constexpr const char* zonePattern = "(Z|[+-][0-9]{2}(:?[0-9]{2})?)?";
constexpr TimeForm forms[] = {
    {"IfcDate", "", "dates like 2026-03-31"},
    {"IfcDateTime", "T", "times like 2026-03-31T09:30:00"},
    {"IfcDuration",
     "P(?=[0-9T])([0-9.,]+Y)?([0-9.,]+M)?([0-9.,]+W)?([0-9.,]+D)?(T(?=[0-9])([0-9.,]+H)?([0-9.,]+M)?([0-9.,]+S)?)?",
     "durations like P1Y6M or PT8H"},
    {"IfcTime", "([01][0-9]|2[0-3])(:[0-5][0-9]){1,2}([.,][0-9]+)?", "times like 09:30:00"},
};

bool isOfForm(const TimeForm& form, const std::string& text) {
    const std::string pattern = form.pattern;
    if (pattern.size() > 1) {
        const std::regex whole(form.type == "IfcTime" ? pattern + zonePattern : pattern);
        return std::regex_match(text, whole);
    }
    std::chrono::year_month_day date{};
    orv::host::UtcTime time;
    return pattern.empty() ? orv::host::take(text, date) && date.ok()
                           : orv::host::take(text, time) || orv::host::take(text + 'Z', time);
}

/// What the value's type says against it; empty if nothing.
std::string remarkOnValue(const Definition& definition, std::string_view type, const PropertyValue& value) {
    if (value.isEmpty()) {
        return "";
    }
    const double number = numberOf(value);
    for (const Range& range : ranges) {
        if (range.type == type &&
            (number < range.least || number > range.greatest || (range.isAbove && number == range.least))) {
            return fullName(definition) + " is for " + std::string(range.told) + ", and " + valueText(value) +
                   " isn't one.";
        }
    }
    for (const TimeForm& form : forms) {
        if (form.type == type && !isOfForm(form, valueText(value))) {
            return fullName(definition) + " is for " + std::string(form.told) + ", and \"" + valueText(value) +
                   "\" isn't one.";
        }
    }
    return "";
}

std::string remarkOnBounds(const Definition& definition, const PropertyEdit& edit) {
    const double lower = numberOf(edit.values[0]);
    const double upper = numberOf(edit.values[1]);
    const double setPoint = numberOf(edit.values[2]);
    if (upper < lower) {
        return "The upper bound of " + fullName(definition) + " is below the lower bound.";
    }
    return setPoint < lower || setPoint > upper ? "The set point of " + fullName(definition) + " is outside the bounds."
                                                : "";
}

std::string remarkOnRows(const Definition& definition, const PropertyEdit& edit) {
    std::set<std::string> known;
    for (std::size_t place = 0; place < edit.values.size(); place += 2) {
        const std::string defining = valueText(edit.values[place]);
        if (!known.insert(defining).second) {
            return "The table " + fullName(definition) + " has the defining value " + defining + " more than once.";
        }
    }
    return "";
}

} // namespace

std::vector<std::string> remarksOn(const Definition& definition, const orv::host::Outcome& outcome,
                                   const PropertyEdit& edit) {
    std::vector<std::string> remarks = remarksOnOutcome(definition, outcome);
    const std::string remark = edit.form == PropertyEdit::Form::Bounded ? remarkOnBounds(definition, edit)
                               : edit.form == PropertyEdit::Form::Table ? remarkOnRows(definition, edit)
                                                                        : "";
    if (!remark.empty()) {
        remarks.push_back(remark);
    }
    for (std::size_t place = 0; place < edit.values.size(); ++place) {
        const bool isDefined = edit.form == PropertyEdit::Form::Table && place % 2 == 1;
        const std::string onValue = remarkOnValue(
            definition, isDefined ? definition.definedValueType : definition.valueType, edit.values[place]);
        if (!onValue.empty()) {
            remarks.push_back(onValue);
        }
    }
    return remarks;
}

} // namespace annotate
