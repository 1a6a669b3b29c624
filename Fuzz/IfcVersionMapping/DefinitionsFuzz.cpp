// A file of definitions is refused with a line and a reason and changes nothing, or what it defines is found.

#include "IfcVersionMapping/SchemaDefinitions.h"
#include "IfcVersionMapping/SetApplicability.h"
#include "Require.h"

#include <sstream>

using namespace orv;

int LLVMFuzzerTestOneInput(const fuzz::Byte* data, std::size_t size) {
    const std::size_t before = ifc::addedDefinitions().size();
    std::istringstream stream(std::string(data, data + size));
    const auto added = ifc::addDefinitions(stream);
    const auto known = ifc::addedDefinitions();
    fuzz::require(known.size() == before + added.properties, "it tells how many there are more");
    if (!added.reason.empty()) {
        fuzz::require(added.line > 0 && added.properties == 0, "a refusal has a line and changes nothing");
        return 0;
    }
    for (std::size_t number = before; number < known.size(); ++number) {
        const std::string set(known[number]->propertySet);
        const std::string property(known[number]->property);
        fuzz::require(!set.empty() && !property.empty(), "sets and properties have names");
        fuzz::require(ifc::findSchemaDefForProperty(set, property) == known[number], "what is defined is found");
        ifc::applicableClasses(set);
    }
    return 0;
}
