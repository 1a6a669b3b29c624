#pragma once

#include "FoundationClasses/FcBase.h"

namespace orv::fc::core::kernel {

/// A named set of an object's properties, of whatever form.
class ORV_FOUNDATION_CLASSES_EXPORT FcPropertySetDefinition : public FcBase {
public:
    std::string name;
};

} // namespace orv::fc::core::kernel
