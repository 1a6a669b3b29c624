#include "Annotate/Additions.h"

namespace annotate {

using Form = orv::host::PropertyEdit::Form;

Additions::Additions(const Arguments& arguments)
    : details(ModelDetails::read(arguments.model)), records(readStore(arguments)) {
    const auto find = [this](const orv::Guid& id) { return details.getModel().find(id); };
    const auto storeyOf = [this](const ModelObject* object) {
        return object == nullptr ? nullptr : details.storeyOf(*object);
    };
    for (const auto& [number, note] : numberedNotes(records)) {
        const ModelObject* const object = find(note->ownerId);
        notes.push_back({number, note, object, storeyOf(object)});
    }
    for (const EditIndex::Entry& entry : index.getEntries()) {
        if (entry.edit.form != Form::Unset) {
            const ModelObject* const object = find(entry.id);
            edits.push_back({&entry, object, storeyOf(object), sets.find(object, entry)});
        }
    }
}

} // namespace annotate
