#pragma once

#include "Object/PropertyValue.h"
#include "Xml/ElementParts.h"

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orv::domain::shared::enhancementsforreferencemodel {

/// What the file holds in a record's element that its kind doesn't return: child elements of other names, comments,
/// texts between the children, attributes of the element. Every rewrite repeats it, behind OwnerId and ahead of the
/// record's own attributes, so that where a newer name stands beside an older one the newer is read last.
class CarriedFields {
public:
    /// An attribute of a record as it is written; without a text it is an empty element.
    struct Written {
        std::string_view name;
        std::string_view text;
        bool hasText;
    };

    /// Takes what the element held that a record was made of. What of it is to be carried shows when it is written.
    explicit CarriedFields(std::shared_ptr<const xml::ElementParts> element) : read(std::move(element)) {}

    /// Whether there is nothing, and nothing that could be.
    bool isEmpty() const { return !read && attributes.empty() && fields.empty(); }

    /// Tells what the record returns, OwnerId first. What was carried under one of these names goes. Returns whether
    /// all that was read under these names comes back as it was; the first call alone may return false.
    bool settle(const std::vector<Written>& written);

    /// Of the element, each with a blank ahead.
    std::string_view getAttributes() const { return attributes; }

    struct Field {
        std::string name; // empty for what is no element
        std::string markup;
    };
    const std::vector<Field>& getFields() const { return fields; }

private:
    void carry(std::string_view name, std::string_view markup);

    std::shared_ptr<const xml::ElementParts> read; // until the first settle
    std::string attributes;
    std::vector<Field> fields;
};

} // namespace orv::domain::shared::enhancementsforreferencemodel
