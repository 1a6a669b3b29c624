#include "Annotate/Commands.h"
#include "Annotate/Filter.h"
#include "Annotate/Table.h"

namespace annotate {

void listObjects(const Arguments& arguments) {
    const Filter filter(arguments);
    const Model model = Model::read(arguments.model);
    std::vector<Row> rows;
    for (const ModelObject* const object : chosenObjects(model, filter)) {
        rows.push_back({object->globalId, classOf(object), object->name});
    }
    printTable(arguments, {{"GlobalId"}, {"Class"}, {"Name"}}, rows);
}

} // namespace annotate
