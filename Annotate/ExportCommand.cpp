#include "Annotate/AsciiCase.h"
#include "Annotate/Commands.h"
#include "Annotate/Exports.h"
#include "Annotate/Interruption.h"
#include "Annotate/Terminal.h"

#include <algorithm>
#include <iostream>
#include <iterator>

namespace annotate {

namespace {

struct Format {
    std::string_view ending;
    ExportOutcome (*write)(const Arguments& arguments, NewFile& file);
};

constexpr Format formats[] = {
    {".ifc", exportModel}, {".bcf", exportTopics}, {".html", exportReport}, {".csv", exportCsv}, {".json", exportJson},
};

const Format& formatOf(const std::filesystem::path& path) {
    const auto* const found = std::find_if(std::begin(formats), std::end(formats), [&path](const Format& format) {
        return equalsInAnyCase(format.ending, path.extension().string());
    });
    if (found == std::end(formats)) {
        std::string endings;
        for (const Format& format : formats) {
            endings.append(endings.empty()                    ? ""
                           : &format + 1 == std::end(formats) ? " or "
                                                              : ", ")
                .append(format.ending);
        }
        throw UsageError("The name of an export ends in " + endings + ", which tells the form. " + path.string() +
                         " doesn't.");
    }
    return *found;
}

} // namespace

void exportFile(const Arguments& arguments) {
    const Format& format = formatOf(arguments.file);
    if (arguments.onlyNotes && format.write != exportCsv) {
        throw UsageError("--notes is for exports to .csv.");
    }
    if (!arguments.bcfVersion.empty() && format.write != exportTopics) {
        throw UsageError("--bcf is for exports to .bcf.");
    }
    Interruption interruption("Nothing was exported.");
    NewFile file(arguments.file, arguments.model, storePath(arguments));
    interruption.removeAtEnd(file.getUnfinished());
    const ExportOutcome outcome = format.write(arguments, file);
    interruption.hold();
    file.finish();
    printStored(outcome.done);
    interruption.release();
    for (const std::string& remark : outcome.remarks) {
        std::cerr << "annotate: " << printable(remark) << '\n';
    }
}

} // namespace annotate
