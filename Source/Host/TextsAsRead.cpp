#include "Host/TextsAsRead.h"

namespace orv::host {

void TextsAsRead::keep(std::string_view field, std::vector<std::string> texts, std::vector<std::string> textsOfValue,
                       bool isTaken) {
    if (!texts.empty() && texts != textsOfValue) {
        entries.push_back({field, std::move(texts), std::move(textsOfValue), isTaken});
    }
}

void TextsAsRead::forget(std::string_view field) {
    std::erase_if(entries, [field](const Entry& entry) { return entry.field == field; });
}

void TextsAsRead::appendAttributes(std::string_view field, std::vector<std::string>& textsOfValue,
                                   std::vector<std::pair<std::string, object::PropertyValue>>& attributes) {
    if (const Entry* const entry = find(field, textsOfValue)) {
        for (const std::string& text : entry->texts) {
            attributes.emplace_back(field, text);
        }
        return;
    }
    forget(field); // should the value come to be the one that was read again
    for (std::string& text : textsOfValue) {
        attributes.emplace_back(field, std::move(text));
    }
    if (textsOfValue.empty()) {
        attributes.emplace_back(field, object::PropertyValue());
    }
}

void TextsAsRead::appendUnread(std::string_view field, const std::vector<std::string>& textsOfValue,
                               std::vector<std::pair<std::string, std::string>>& unread) const {
    const Entry* const entry = find(field, textsOfValue);
    if (entry != nullptr && !entry->isTaken) {
        for (const std::string& text : entry->texts) {
            unread.emplace_back(field, text);
        }
    }
}

const TextsAsRead::Entry* TextsAsRead::find(std::string_view field,
                                            const std::vector<std::string>& textsOfValue) const {
    for (const Entry& entry : entries) {
        if (entry.field == field && entry.textsOfValue == textsOfValue) {
            return &entry;
        }
    }
    return nullptr;
}

} // namespace orv::host
