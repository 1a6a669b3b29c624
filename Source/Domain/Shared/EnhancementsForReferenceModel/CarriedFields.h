#pragma once

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

    /// Takes the element that a record was made of. The first settle decides what of it is carried.
    explicit CarriedFields(std::shared_ptr<const xml::ElementParts> element) : read(std::move(element)) {}

    /// Whether nothing is carried and no element waits for settle.
    bool isEmpty() const { return !read && attributes.empty() && fields.empty(); }

    /// Takes what the record writes, OwnerId first, and drops what was carried under those names. Returns false, on the
    /// first call only, if the record writes a text otherwise than it was read.
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
