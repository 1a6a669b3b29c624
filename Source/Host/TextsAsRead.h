#pragma once

#include "Object/PropertyValue.h"
#include "OrvExport.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orv::host {

/// What stood in the file for the fields of a record, where that isn't the text of the value that was read: a number
/// written otherwise, or a text that the field couldn't take. It is good until the attributes of
/// the record are asked for with another value of the field.
class ORV_HOST_EXPORT TextsAsRead {
public:
    void clear() { entries.clear(); }

    /// Keeps the texts of a field, if need be, under those of the value that the reading left. The name lives as long
    /// as this.
    void keep(std::string_view field, std::vector<std::string> texts, std::vector<std::string> textsOfValue,
              bool isTaken);

    /// Forgets what stood there for the field.
    void forget(std::string_view field);

    /// Appends the attributes of a field whose value has these texts: one for each text that stood there, or else for
    /// each of the value, which is moved out, or an empty one. Forgets what stood there for the field if the value is
    /// another one.
    void appendAttributes(std::string_view field, std::vector<std::string>& textsOfValue,
                          std::vector<std::pair<std::string, object::PropertyValue>>& attributes);

    /// Appends name and text for each text that such a field couldn't take.
    void appendUnread(std::string_view field, const std::vector<std::string>& textsOfValue,
                      std::vector<std::pair<std::string, std::string>>& unread) const;

private:
    struct Entry {
        std::string_view field;
        std::vector<std::string> texts;
        std::vector<std::string> textsOfValue;
        bool isTaken;
    };

    const Entry* find(std::string_view field, const std::vector<std::string>& textsOfValue) const;

    std::vector<Entry> entries;
};

} // namespace orv::host
