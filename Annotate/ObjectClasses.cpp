#include "Annotate/ObjectClasses.h"

#include "Annotate/Arguments.h"
#include "Annotate/NearNames.h"

namespace annotate {

using orv::fc::IfcClass;

std::vector<std::string_view> objectClassNames() {
    const IfcClass& all = *IfcClass::find("IfcObjectDefinition");
    std::vector<std::string_view> names;
    for (std::uint32_t number = all.kindNumber; number <= all.lastOfKind; ++number) {
        names.emplace_back(IfcClass::ofNumber(number)->name);
    }
    return names;
}

const IfcClass& objectClassNamed(const std::string& name) {
    const IfcClass* const ifcClass = IfcClass::find(name);
    if (ifcClass == nullptr || !ifcClass->isObjectDefinition()) {
        throw RequestError(name + " isn't a class of objects in IFC" + didYouMean(name, objectClassNames()));
    }
    return *ifcClass;
}

} // namespace annotate
