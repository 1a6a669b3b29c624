#include "Annotate/Commands.h"
#include "Annotate/EditTable.h"
#include "Annotate/Filter.h"
#include "Annotate/NamedObject.h"
#include "Annotate/SetsOfObjects.h"
#include "Annotate/Terminal.h"

#include <iostream>
#include <set>

namespace annotate {

using Form = orv::host::PropertyEdit::Form;

void listEdits(const Arguments& arguments) {
    Filter filter(arguments);
    const ModelDetails details = ModelDetails::read(arguments.model);
    filter.findOwner(arguments, details.getModel());
    const Records records = readStore(arguments);
    filter.consult(details, records);
    const EditIndex index(records);
    SetsOfObjects sets(details);
    std::vector<Row> rows;
    std::set<std::string> remarks;
    for (const EditIndex::Entry& entry : index.getEntries()) {
        const ModelObject* const object = details.getModel().find(entry.id);
        const std::optional<Time> time = timeOf(entry.edit);
        if (entry.edit.form != Form::Unset && filter.takesOwner(entry.id, object) &&
            filter.takesAct(entry.edit.author, time)) {
            const MergedProperty property = sets.find(object, entry);
            remarks.insert(changedUnit(property, details.getUnits()));
            rows.push_back(editRow(property, object, details.getUnits(), shownTime(time)));
        }
    }
    if (!arguments.globalId.empty() && rows.empty()) {
        objectNamed(arguments, details.getModel(), arguments.globalId); // throws if there is none
    }
    printRemarks(filter, rows.empty());
    printTable(arguments, editColumns(), rows);
    remarks.erase("");
    for (const std::string& remark : remarks) {
        std::cerr << "annotate: " << printable(remark) << '\n';
    }
}

} // namespace annotate
