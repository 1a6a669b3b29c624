#include "Annotate/Commands.h"
#include "Annotate/Definitions.h"
#include "Annotate/Table.h"

namespace annotate {

void listDefinitions(const Arguments& arguments) {
    std::vector<Row> rows;
    for (const Definition* const definition : allDefinitions()) {
        if (arguments.propertySet.empty() || definition->propertySet == arguments.propertySet) {
            rows.push_back({std::string(definition->propertySet), std::string(definition->property),
                            std::string(kindName(*definition)), shownType(*definition), std::string(definition->source),
                            std::string(definition->enumerationValues)});
        }
    }
    if (rows.empty()) {
        throw unknownSet(arguments.propertySet);
    }
    printTable(arguments, {{"Property set"}, {"Property"}, {"Kind"}, {"Type"}, {"Source"}, {"Values"}}, rows);
}

} // namespace annotate
