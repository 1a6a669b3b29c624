#pragma once

#include "Id/Guid.h"
#include "Object/PropertyValue.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orv::domain::shared::enhancementsforreferencemodel {

/// What an element of the document was rendered from, in a form that takes less memory than the element. As long as a
/// record returns the same, its element is the same.
class RenderedFrom {
public:
    using Attributes = std::vector<std::pair<std::string, object::PropertyValue>>;

    /// Nothing; it equals no record.
    RenderedFrom() = default;

    RenderedFrom(std::string_view kind, const Guid& owner, const Attributes& attributes);

    bool equals(std::string_view kind, const Guid& owner, const Attributes& attributes) const;

private:
    std::unique_ptr<char[]> bytes; // NOLINT(*-avoid-c-arrays): a string would take more
    std::size_t size = 0;
};

} // namespace orv::domain::shared::enhancementsforreferencemodel
