#include "Annotate/EditRemarks.h"

#include "Annotate/ValueText.h"
#include "Host/FieldText.h"

#include <limits>
#include <set>

namespace annotate {

using orv::host::PropertyEdit;
using orv::object::PropertyValue;

namespace {

/// Not a number if the value isn't one, which compares with none.
double numberOf(const PropertyValue& value) {
    double number = std::numeric_limits<double>::quiet_NaN();
    static_cast<void>(orv::host::take(valueText(value), number));
    return number;
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
    std::vector<std::string> remarks = remarksOn(definition, outcome);
    const std::string remark = edit.form == PropertyEdit::Form::Bounded ? remarkOnBounds(definition, edit)
                               : edit.form == PropertyEdit::Form::Table ? remarkOnRows(definition, edit)
                                                                        : "";
    if (!remark.empty()) {
        remarks.push_back(remark);
    }
    return remarks;
}

} // namespace annotate
