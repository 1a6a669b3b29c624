#include "Annotate/CommandChanges.h"
#include "Annotate/Commands.h"
#include "Annotate/EditWriting.h"
#include "Annotate/ImportChecks.h"
#include "Annotate/Interruption.h"
#include "Annotate/ModelDetails.h"
#include "Annotate/Notes.h"
#include "Annotate/ProgressBar.h"
#include "Annotate/Terminal.h"
#include "Annotate/TextFile.h"
#include "Annotate/TopicsImport.h"

#include <algorithm>
#include <iostream>
#include <utility>

namespace annotate {

using orv::host::ObjectEdit;

namespace {

ImportRows readRows(const std::filesystem::path& path) {
    ImportRows read = readImportRows(readTextFile(path));
    if (read.rows.empty() && read.refused.empty()) {
        throw RequestError(path.string() + " has nothing below its header.");
    }
    if (!read.leftOut.empty()) {
        std::string names;
        for (const std::string& name : read.leftOut) {
            names += (names.empty() ? "" : ", ") + name;
        }
        std::cerr << "annotate: Columns left out: " << printable(names) << ".\n";
    }
    return read;
}

/// An import under way: the rows of a file, and which lines are refused.
class Import {
public:
    explicit Import(const Arguments& usersArguments) : arguments(usersArguments), file(readRows(arguments.file)) {}

    const ImportRows& getFile() const { return file; }

    /// Takes each row; one for which that throws RequestError is refused. Throws if nothing is to be stored then.
    template <typename Action>
    void takeRows(const Action& take) {
        ProgressBar bar("Checking the lines:", file.rows.size());
        std::size_t checked = 0;
        for (const ImportRow& row : file.rows) {
            try {
                take(row);
                ++taken;
            } catch (const RequestError& error) {
                file.refused.push_back({row.line, error.what()});
            }
            bar.reach(++checked);
        }
        std::stable_sort(file.refused.begin(), file.refused.end(),
                         [](const RefusedLine& a, const RefusedLine& b) { return a.line < b.line; });
        if (!file.refused.empty() && (!arguments.keepGoing || taken == 0)) {
            printRefused();
            throw RequestError("Nothing was stored.");
        }
    }

    /// Stores what the rows come to, of which so much is new, and says so.
    template <typename Action>
    void store(const std::string& what, std::size_t count, const Action& write) {
        std::string sentence = "Nothing was stored.";
        if (count > 0) {
            interruption.hold();
            write();
            sentence = countOf(count, what) + (count == 1 ? " is" : " are") + " stored in " +
                       storePath(arguments).string() + '.';
        }
        if (const std::size_t present = taken - count; present > 0) {
            sentence += ' ' + std::to_string(present) + (present == 1 ? " was" : " were") + " there already.";
        }
        printStored(sentence);
        interruption.release();
    }

    /// Says what wasn't stored. Throws if there is something.
    void finish() const {
        if (!file.refused.empty()) {
            printRefused();
            throw RequestError(std::to_string(file.refused.size()) + " of " +
                               countOf(taken + file.refused.size(), "line") + " weren't imported.");
        }
    }

private:
    void printRefused() const {
        for (const RefusedLine& refused : file.refused) {
            std::cerr << "annotate: Line " << refused.line << ": " << printable(refused.reason) << '\n';
        }
    }

    const Arguments& arguments;
    Interruption interruption{"Nothing was stored."};
    ImportRows file;
    std::size_t taken = 0;
};

void importEdits(const Arguments& arguments, Import& run, const Model& model, const ModelUnits& units) {
    Store store(storePath(arguments));
    EditIndex present(Store::getRecords());
    EditChecks checks(arguments, model, units, present);
    std::vector<ObjectEdit> edits;
    run.takeRows([&](const ImportRow& row) {
        if (auto edit = checks.check(row)) {
            edits.push_back(*std::move(edit));
        }
    });
    run.store("edit", edits.size(), [&] { writeEdits(store, authorOf(arguments), arguments.command, present, edits); });
    for (const auto& [remark, lines] : checks.getRemarks()) {
        std::cerr << "annotate: " << printable(remark) << " (" << countOf(lines.count, "line") << ", the first is "
                  << lines.first << ")\n";
    }
    run.finish();
}

void importNotes(const Arguments& arguments, Import& run, const Model& model) {
    Store store(storePath(arguments));
    Notebook notebook(store);
    NoteChecks checks(arguments, model, notebook);
    std::vector<ImportedNote> notes;
    run.takeRows([&](const ImportRow& row) {
        if (auto note = checks.check(row)) {
            notes.push_back(*std::move(note));
        }
    });
    run.store("note", notes.size(), [&] {
        const std::string author = authorOf(arguments);
        CommandChanges changes(store, author, arguments.command);
        for (const auto& [present, content] : notes) {
            if (present == nullptr) {
                changes.add(notebook.add(content, author));
            } else {
                changes.change(*present, [&changed = *present, &content = content, &author] {
                    changed.text = content.text;
                    changed.priority = content.priority;
                    changed.resolved = content.resolved;
                    changed.changedBy = author;
                    changed.changed = now();
                });
            }
        }
        changes.write();
    });
    run.finish();
}

} // namespace

void importFile(const Arguments& arguments) {
    if (isTopicsArchive(arguments.file)) {
        return importTopics(arguments);
    }
    Import run(arguments);
    if (run.getFile().areNotes) {
        return importNotes(arguments, run, Model::read(arguments.model));
    }
    const ModelDetails details = ModelDetails::read(arguments.model);
    importEdits(arguments, run, details.getModel(), details.getUnits());
}

} // namespace annotate
