#include "Domain/Shared/EnhancementsForReferenceModel/RenderedFrom.h"

#include <algorithm>
#include <cstring>

namespace orv::domain::shared::enhancementsforreferencemodel {

namespace {

/// Hands all bytes over that tell one record from another, piece by piece, for as long as take returns true. Values of
/// which no text is written are all the same.
template <typename Take>
bool describe(std::string_view kind, const Guid& owner, const RenderedFrom::Attributes& attributes, Take take) {
    const auto takeText = [&take](std::string_view text) {
        constexpr std::size_t large = 255;
        const std::size_t size = text.size();
        const auto shortSize = static_cast<unsigned char>(std::min(size, large));
        return take(&shortSize, sizeof shortSize) && (size < large || take(&size, sizeof size)) &&
               take(text.data(), size);
    };
    bool isTaken = takeText(kind) && take(&owner, sizeof owner);
    for (auto attribute = attributes.begin(); isTaken && attribute != attributes.end(); ++attribute) {
        const auto& [name, value] = *attribute;
        const auto* const text = value.getIf<std::string>();
        const auto* const number = value.getIf<int>();
        const auto* const truth = value.getIf<bool>();
        const char form = text != nullptr ? 't' : number != nullptr ? 'n' : truth != nullptr ? 'b' : '-';
        isTaken = takeText(name) && take(&form, sizeof form) && (text == nullptr || takeText(*text)) &&
                  (number == nullptr || take(number, sizeof *number)) &&
                  (truth == nullptr || take(truth, sizeof *truth));
    }
    return isTaken;
}

} // namespace

RenderedFrom::RenderedFrom(std::string_view kind, const Guid& owner, const Attributes& attributes) {
    std::string description;
    describe(kind, owner, attributes, [&description](const void* piece, std::size_t length) {
        description.append(static_cast<const char*>(piece), length);
        return true;
    });
    size = description.size();
    bytes = std::make_unique<char[]>(size); // NOLINT(*-avoid-c-arrays)
    std::copy(description.begin(), description.end(), bytes.get());
}

bool RenderedFrom::equals(std::string_view kind, const Guid& owner, const Attributes& attributes) const {
    std::size_t position = 0;
    const bool isBeginning =
        describe(kind, owner, attributes, [this, &position](const void* piece, std::size_t length) {
            const bool isSame = length <= size - position && std::memcmp(bytes.get() + position, piece, length) == 0;
            position += length;
            return isSame;
        });
    return isBeginning && position == size;
}

} // namespace orv::domain::shared::enhancementsforreferencemodel
