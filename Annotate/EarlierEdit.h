#pragma once

#include "Host/Record.h"

namespace annotate {

/// A value that was set by an annotate before 0.2, which kept a record for each. The edits of the same property in the
/// records of OrvHost are later ones.
struct EarlierEdit : orv::host::Record<EarlierEdit> {
    static constexpr auto entityName = "PropertyEdit";

    std::string propertySet;
    std::string property;
    std::string form;                ///< "single", also for an enumerated or bounded property, "list" or "table".
    std::vector<std::string> values; ///< One; those of the list; or of a table, defining and defined in turn.

    static constexpr auto fields =
        std::tuple(orv::host::field("PropertySet", &EarlierEdit::propertySet),
                   orv::host::field("Property", &EarlierEdit::property), orv::host::field("Form", &EarlierEdit::form),
                   orv::host::field("Value", &EarlierEdit::values));
};

} // namespace annotate
