#pragma once

#include "Annotate/Store.h"
#include "Host/PropertyEdits.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace annotate {

/// The edits of properties among the records: the latest of each property, as the overlay is made of them.
class EditIndex {
public:
    struct Entry {
        orv::Guid id;
        orv::host::PropertyEdit edit;
        orv::host::PropertyEdits* record; ///< Null for an edit of an annotate before 0.2.
        std::string line;                 ///< Empty for such a one.
    };

    explicit EditIndex(const Records& all);

    /// In the order in which the properties came first.
    const std::vector<Entry>& getEntries() const { return entries; }

    /// Those of an object.
    std::vector<const Entry*> of(const orv::Guid& id) const;

    /// The property's edit, null if there is none.
    const Entry* find(const orv::Guid& id, const std::string& set, const std::string& property) const;

    /// In the object's record, replaces the present line: appends if that is empty, erases if the new one is. The file
    /// changes with the store's next write; the index stays as it is.
    void replaceLine(Store& store, const orv::Guid& id, const std::string& present, const std::string& line);

private:
    void take(Entry entry);

    std::vector<Entry> entries;
    std::unordered_map<orv::Guid, std::vector<std::size_t>> places;
    std::unordered_map<orv::Guid, orv::host::PropertyEdits*> records; ///< The first one of each object.
};

} // namespace annotate
