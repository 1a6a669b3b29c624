// A text that is taken for an id is one of its two spellings; any other leaves the id as it was; and every id is read
// back from both.

#include "Id/Guid.h"
#include "Require.h"

#include <algorithm>
#include <cctype>
#include <cstring>

using namespace orv;

int LLVMFuzzerTestOneInput(const fuzz::Byte* data, std::size_t size) {
    Guid first{1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
    static_assert(sizeof(Guid) == 16);
    std::memcpy(&first, data, std::min(size, sizeof(Guid)));
    for (const bool asUuid : {false, true}) {
        const std::string spelled = first.toString(asUuid);
        Guid read;
        fuzz::require(spelled.size() == (asUuid ? 36 : 22) && read.boSet(spelled) && read == first,
                      "an id comes back from its spelling");
    }

    std::string text(data, data + size);
    Guid id = first;
    if (id.boSet(text)) {
        const bool isUuid = text.size() == 36;
        if (isUuid) {
            std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
        }
        fuzz::require(id.toString(isUuid) == text, "what is taken is the spelling of the id");
    } else {
        fuzz::require(id == first, "what is refused changes nothing");
    }
    return 0;
}
