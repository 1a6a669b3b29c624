#include "Annotate/EditWriting.h"

#include "Annotate/CommandChanges.h"
#include "Annotate/EditIndex.h"
#include "Annotate/Note.h"

#include <algorithm>

namespace annotate {

using orv::host::ObjectEdit;

void writeEdits(Store& store, const std::string& author, const std::string& command, EditIndex& present,
                std::vector<ObjectEdit> edits) {
    CommandChanges changes(store, author, command);
    const Time time = now();
    for (ObjectEdit& each : edits) {
        const EditIndex::Entry* const before = present.find(each.id, each.edit.set, each.edit.property);
        if (before != nullptr || each.edit.time == Time()) {
            each.edit.author = author;
            each.edit.time =
                before == nullptr ? time : std::max(time, before->edit.time + std::chrono::milliseconds(1));
        }
        const std::string line = before == nullptr ? "" : before->line;
        changes.replace(line, each);
        present.replaceLine(store, each.id, line, lineOf(each.edit));
    }
    changes.write();
}

} // namespace annotate
