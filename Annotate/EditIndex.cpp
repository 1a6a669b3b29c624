#include "Annotate/EditIndex.h"

#include "Annotate/EarlierEdit.h"
#include "Annotate/EditText.h"
#include "Annotate/ItemText.h"
#include "Annotate/ValueText.h"

#include <algorithm>
#include <utility>

namespace annotate {

using orv::host::PropertyEdit;
using orv::host::PropertyEdits;
using orv::ifc::def::xml::PropertyKind;

namespace {

PropertyEdit editOf(const EarlierEdit& earlier) {
    PropertyEdit edit;
    edit.set = earlier.propertySet;
    edit.property = earlier.property;
    edit.form = earlier.form == "list"    ? PropertyEdit::Form::List
                : earlier.form == "table" ? PropertyEdit::Form::Table
                                          : PropertyEdit::Form::Single;
    edit.values.assign(earlier.values.begin(), earlier.values.end());
    if (edit.form == PropertyEdit::Form::Single) {
        edit.values.resize(1); // the record may have none
    }
    return edit;
}

/// Gives an edit that has choices or bounds in one text, as before 0.2 and where hosts set it so, the form of its
/// property. A text with more parts than there are bounds stays as it is.
void takeApart(PropertyEdit& edit) {
    const auto* const definition = orv::ifc::findSchemaDefForProperty(edit.set, edit.property);
    if (edit.form != PropertyEdit::Form::Single || definition == nullptr) {
        return;
    }
    const std::string text = valueText(edit.values.front());
    const std::vector<std::string> items = itemsIn(text);
    if (definition->kind == PropertyKind::Bounded && items.size() <= 3) {
        edit.form = PropertyEdit::Form::Bounded;
        edit.values = boundsIn(*definition, text);
    } else if (definition->kind == PropertyKind::Enumerated) {
        edit.form = PropertyEdit::Form::Enumerated;
        edit.values.assign(items.begin(), items.end());
    }
}

} // namespace

EditIndex::EditIndex(const Records& all) {
    for (const EarlierEdit* const earlier : allOf<const EarlierEdit>(all)) {
        take({earlier->ownerId, editOf(*earlier), nullptr, {}});
    }
    for (PropertyEdits* const record : allOf<PropertyEdits>(all)) {
        records.emplace(record->ownerId, record);
        for (const std::string& line : record->lines) {
            if (auto edit = orv::host::editOf(line)) {
                take({record->ownerId, *std::move(edit), record, line});
            }
        }
    }
}

void EditIndex::take(Entry entry) {
    takeApart(entry.edit);
    std::vector<std::size_t>& ofObject = places[entry.id];
    const auto known = std::find_if(ofObject.begin(), ofObject.end(), [&](std::size_t place) {
        return entries[place].edit.set == entry.edit.set && entries[place].edit.property == entry.edit.property;
    });
    if (known == ofObject.end()) {
        ofObject.push_back(entries.size());
        entries.push_back(std::move(entry));
    } else if (entries[*known].edit.time <= entry.edit.time) {
        entries[*known] = std::move(entry);
    }
}

std::vector<const EditIndex::Entry*> EditIndex::of(const orv::Guid& id) const {
    std::vector<const Entry*> found;
    if (const auto ofObject = places.find(id); ofObject != places.end()) {
        for (const std::size_t place : ofObject->second) {
            found.push_back(&entries[place]);
        }
    }
    return found;
}

const EditIndex::Entry* EditIndex::find(const orv::Guid& id, const std::string& set,
                                        const std::string& property) const {
    const std::vector<const Entry*> ofObject = of(id);
    const auto found = std::find_if(ofObject.begin(), ofObject.end(), [&](const Entry* entry) {
        return entry->edit.set == set && entry->edit.property == property;
    });
    return found == ofObject.end() ? nullptr : *found;
}

void EditIndex::replaceLine(Store& store, const orv::Guid& id, const std::string& present, const std::string& line) {
    PropertyEdits*& first = records[id];
    if (first == nullptr) {
        first = &store.make<PropertyEdits>();
        first->ownerId = id;
    }
    PropertyEdits* record = first;
    for (const Entry* const entry : of(id)) {
        record = !present.empty() && entry->line == present ? entry->record : record;
    }
    std::vector<std::string>& lines = record->lines;
    const auto place = present.empty() ? lines.end() : std::find(lines.begin(), lines.end(), present);
    if (place != lines.end() && line.empty()) {
        lines.erase(place);
    } else if (place != lines.end()) {
        *place = line;
    } else if (!line.empty()) {
        lines.push_back(line);
    }
}

} // namespace annotate
