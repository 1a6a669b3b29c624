#include "Annotate/EditIndex.h"
#include "Annotate/Exports.h"
#include "Annotate/ModelDetails.h"
#include "Annotate/ModelExport.h"
#include "Annotate/ModelFile.h"
#include "Annotate/StatementFinder.h"
#include "Annotate/Store.h"
#include "Annotate/Terminal.h"

#include <algorithm>
#include <map>
#include <system_error>

namespace annotate {

namespace {

/// What tells whether a model's file has been changed.
class FileVersion {
public:
    explicit FileVersion(const std::filesystem::path& path)
        : time(std::filesystem::last_write_time(path, ignored)), size(std::filesystem::file_size(path, ignored)) {}

    bool operator==(const FileVersion& other) const { return time == other.time && size == other.size; }

private:
    std::error_code ignored;
    std::filesystem::file_time_type time;
    std::uintmax_t size;
};

/// Passes the model's file on with the replacements in it.
class Replacing {
public:
    Replacing(const ModelExport& exported, NewFile& newFile)
        : next(exported.replacements.begin()), last(exported.replacements.end()), file(newFile) {}

    void take(std::string_view block) {
        const std::uintmax_t end = position + block.size();
        while (position < end) {
            const std::uintmax_t stop = next == last ? end : std::min(next->first, end);
            if (stop > position) {
                pass(block, stop);
            }
            if (next != last && next->first == position) {
                file.write(next->second.text);
                skipped = next->second.end;
                ++next;
            }
            const std::uintmax_t resumed = std::clamp(skipped, position, end);
            block.remove_prefix(resumed - position);
            position = resumed;
        }
    }

private:
    void pass(std::string_view& block, std::uintmax_t stop) {
        file.write(block.substr(0, stop - position));
        block.remove_prefix(stop - position);
        position = stop;
    }

    Replacements::const_iterator next;
    Replacements::const_iterator last;
    NewFile& file;
    std::uintmax_t position = 0;
    std::uintmax_t skipped = 0; ///< Up to here the file is left out.
};

} // namespace

ExportOutcome exportModel(const Arguments& arguments, NewFile& file) {
    const FileVersion version(arguments.model);
    const ModelDetails details = ModelDetails::read(arguments.model);
    const ModelExport exported = ModelExport::of(details, EditIndex(readStore(arguments)));
    Replacing replacing(exported, file);
    copyModelFile(arguments.model, [&replacing](std::string_view block) { replacing.take(block); });
    if (!(version == FileVersion(arguments.model))) {
        throw changedMeanwhile();
    }
    ExportOutcome outcome{arguments.file.string(), {exported.remarks.begin(), exported.remarks.end()}};
    if (exported.properties == 0) {
        outcome.done += " is the model as it is, as nothing is set on its objects.";
    } else {
        outcome.done += " is the model with " + countOf(exported.properties, "property", "properties") + " of " +
                        countOf(exported.objects, "object", "objects") + " that were set.";
    }
    if (exported.vanished > 0) {
        outcome.remarks.push_back(
            countOf(exported.vanished, "edit is", "edits are") +
            " left out, on objects that the model no longer has; the command edits --vanished lists them.");
    }
    return outcome;
}

} // namespace annotate
