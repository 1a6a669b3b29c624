// What a line tells, if it tells an edit, is told by the line that is written for it, and that line again by itself.

#include "Host/PropertyEdits.h"
#include "Require.h"

using namespace orv;

int LLVMFuzzerTestOneInput(const fuzz::Byte* data, std::size_t size) {
    const auto edit = host::editOf(std::string(data, data + size));
    if (!edit) {
        return 0;
    }
    const std::string line = host::lineOf(*edit);
    fuzz::require(line.find('\n') == std::string::npos, "an edit is one line");
    const auto again = host::editOf(line);
    fuzz::require(again && again->set == edit->set && again->property == edit->property &&
                      again->author == edit->author && again->unit == edit->unit && again->time == edit->time &&
                      again->values.size() == edit->values.size() && host::lineOf(*again) == line,
                  "an edit comes back from its line");
    for (std::size_t number = 0; number < edit->values.size(); ++number) {
        fuzz::require(again->values[number].getIndex() == edit->values[number].getIndex(), "a value keeps its type");
    }
    return 0;
}
