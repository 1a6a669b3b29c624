#pragma once

#include "Annotate/Model.h"
#include "Annotate/Store.h"
#include "Host/Overlay.h"

#include <string>
#include <vector>

namespace annotate {

/// The property values that users set on the objects of a model: the model's objects as masters in a Data of the host's
/// own, the shadow database beside it, and the callbacks by which the library reaches both. There can be one in a
/// process.
class Overlay {
public:
    /// Over the model, which outlives it; nothing is set. A master is made when it is looked for.
    explicit Overlay(const Model& model);

    /// Sets the edits among the records again.
    Overlay(const Model& model, const Records& records);

    /// By which values are set and checked.
    const orv::host::Overlay& getEdits() const { return edits; }

    /// What the property holds: a value; the values of a list; or those of a table, defining and defined in turn. Empty
    /// if it holds nothing.
    static std::vector<orv::object::PropertyValue> read(const orv::Guid& object, const std::string& propertySet,
                                                        const std::string& property);

private:
    orv::host::Overlay edits;
};

} // namespace annotate
