// Any text is a condition, which is met or not, or throws a RequestError.

#include "Annotate/Arguments.h"
#include "Annotate/Condition.h"
#include "Require.h"

#include <string>

using namespace orv;

int LLVMFuzzerTestOneInput(const fuzz::Byte* data, std::size_t size) {
    const std::string bytes(data, data + size);
    try {
        const annotate::Condition condition(bytes.c_str()); // an argument ends at a NUL
        fuzz::require(!condition.getSet().empty() && !condition.getProperty().empty(), "a condition is on a property");
        const bool takesAbsence = condition.holds({});
        const bool takesNumber = condition.holds({"16"});
        const bool takesText = condition.holds({"F90"});
        fuzz::require(!takesAbsence || (!takesNumber && !takesText), "what is absent has no value");
        fuzz::require(condition.holds({"16", "F90"}) || !takesNumber || !takesText, "two values are no fewer");
    } catch (const annotate::RequestError& error) {
        fuzz::require(std::string_view(error.what()).ends_with('.'), "a refusal is in sentences");
    }
    return 0;
}
