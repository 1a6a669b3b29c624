#include "Annotate/Commands.h"
#include "Annotate/Filter.h"
#include "Annotate/NamedObject.h"
#include "Annotate/Table.h"

namespace annotate {

void listObjects(const Arguments& arguments) {
    Filter filter(arguments);
    const FilteredModel model(arguments, filter);
    std::vector<Row> rows;
    for (const ModelObject* const object : chosenObjects(model.getModel(), filter)) {
        rows.push_back({nameFor(model.getModel(), *object), classOf(object), object->name});
    }
    printRemarks(filter, rows.empty());
    printTable(arguments, {{"GlobalId"}, {"Class"}, {"Name"}}, rows);
}

} // namespace annotate
