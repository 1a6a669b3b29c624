#include "Annotate/EditWriting.h"

#include "Annotate/EditIndex.h"
#include "Annotate/Undo.h"

#include <algorithm>

namespace annotate {

using orv::host::ObjectEdit;

void writeEdits(Store& store, const std::string& author, const std::string& command, EditIndex& present,
                std::vector<ObjectEdit> edits) {
    ChangeLog log(store, author, command);
    const auto now = std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
    for (ObjectEdit& each : edits) {
        const EditIndex::Entry* const before = present.find(each.id, each.edit.set, each.edit.property);
        each.edit.author = author;
        each.edit.time = before == nullptr ? now : std::max(now, before->edit.time + std::chrono::milliseconds(1));
        const std::string line = before == nullptr ? "" : before->line;
        log.replace(line, each);
        present.put(store, each.id, line, lineOf(each.edit));
    }
    store.write();
}

} // namespace annotate
