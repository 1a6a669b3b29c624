#pragma once

#include "Annotate/Model.h"
#include "Annotate/PropertyEdit.h"
#include "Domain/Shared/EnhancementsForReferenceModel/PsetData.h"

#include <memory>
#include <vector>

namespace annotate {

/// The property values that users set on the objects of a model: the model's objects as masters in a Data of the host's
/// own, the shadow database beside it, and the callbacks by which the library reaches both. There can be one in a
/// process.
class Overlay {
public:
    /// Makes the masters, and sets the edits again in their order.
    Overlay(const Model& model, const std::vector<const PropertyEdit*>& edits);

    /// Sets the value of the edit in the shadow database of the Overlay that there is. Tells nothing of the outcome;
    /// read the property for that.
    static void apply(const PropertyEdit& edit);

    /// What the property holds: a value; the values of a list; or those of a table, defining and defined in turn. Empty
    /// if it holds nothing.
    static std::vector<orv::object::PropertyValue> read(const orv::Guid& object, const std::string& propertySet,
                                                        const std::string& property);

    /// The reference model.
    const orv::fc::Data& getMasters() const { return *masters; }

private:
    std::shared_ptr<orv::fc::Data> masters = std::make_shared<orv::fc::Data>();
    std::shared_ptr<orv::fc::FcShadowDb> shadows = std::make_shared<orv::fc::FcShadowDb>();
};

} // namespace annotate
