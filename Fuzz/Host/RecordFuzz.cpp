// Every text in every field, alone and behind another: the record is written back as it stood. Where a field took the
// text, that of its value is taken for the same value; where it didn't, it has its default.

#include "Require.h"
#include "Support/EveryField.h"

#include <map>

using namespace orv;
using tests::EveryField;

namespace {

using Attributes = std::vector<std::pair<std::string, std::string>>;

/// What the file brings back of the record.
Attributes storedForm(const EveryField& record) {
    Attributes attributes;
    for (const auto& [name, value] : record.getAttributes()) {
        if (!value.isEmpty()) {
            attributes.emplace_back(name, value.get<std::string>());
        }
    }
    return attributes;
}

std::map<std::string, std::vector<std::string>> byName(const Attributes& attributes) {
    std::map<std::string, std::vector<std::string>> texts;
    for (const auto& [name, text] : attributes) {
        texts[name].push_back(text);
    }
    return texts;
}

void setAllAsTheyAre(EveryField& record) {
    std::apply([&record](const auto&... field) { (record.setAsItIs(field.name), ...); }, EveryField::fields);
}

void tryTexts(const std::vector<std::string>& texts) {
    Attributes given;
    for (const auto& [name, value] : EveryField().getAttributes()) {
        for (const std::string& text : texts) {
            given.emplace_back(name, text);
        }
    }
    EveryField record;
    record.setAttributes(given);
    fuzz::require(byName(storedForm(record)) == byName(given), "a record is written back as it stood");
    const auto unread = byName(record.getUnreadTexts());
    setAllAsTheyAre(record);
    auto values = byName(storedForm(record));
    EveryField again;
    again.setAttributes(storedForm(record));
    setAllAsTheyAre(again);
    fuzz::require(byName(storedForm(again)) == values, "a value comes back from its text");
    auto defaults = byName(storedForm(EveryField()));
    for (const auto& [name, unreadTexts] : unread) {
        fuzz::require(unreadTexts == texts && values[name] == defaults[name],
                      "a text that isn't taken leaves the default");
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const fuzz::Byte* data, std::size_t size) {
    const std::string text(data, data + size);
    tryTexts({text});
    tryTexts({"true", text});
    return 0;
}
