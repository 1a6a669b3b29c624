#include "Annotate/Note.h"

#include <charconv>

namespace annotate {

std::string Note::getEntityName() const {
    return "Note";
}

std::vector<std::pair<std::string, orv::object::PropertyValue>> Note::getAttributes() const {
    return {{"Text", text}, {"Priority", priority}, {"Resolved", resolved}};
}

void Note::setAttributes(const std::vector<std::pair<std::string, std::string>>& attributes) {
    EnhancementBase::setAttributes(attributes);
    for (const auto& [name, value] : attributes) {
        if (name == "Text") {
            text = value;
        } else if (name == "Priority") {
            std::from_chars(value.data(), value.data() + value.size(), priority);
        } else if (name == "Resolved") {
            resolved = value == "true" || value == "1";
        }
    }
}

std::unique_ptr<orv::domain::shared::enhancementsforreferencemodel::EnhancementBase> Note::createInstance() const {
    return std::make_unique<Note>();
}

} // namespace annotate
