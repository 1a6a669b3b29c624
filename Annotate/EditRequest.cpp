#include "Annotate/EditRequest.h"

#include "Annotate/Definitions.h"
#include "Annotate/EditRemarks.h"
#include "Annotate/EditWriting.h"
#include "Annotate/NamedObject.h"
#include "Annotate/Overlay.h"
#include "Annotate/Store.h"
#include "Annotate/Terminal.h"

#include <algorithm>
#include <iostream>
#include <map>
#include <utility>

namespace annotate {

using orv::host::ObjectEdit;
using orv::host::Outcome;

namespace {

/// Texts, each with the number of times that it was said.
using Said = std::map<std::string, std::size_t>;

/// Says the first of them, and of how many objects more is to be said.
void print(const Said& said, std::size_t edits) {
    constexpr std::size_t most = 20;
    std::size_t texts = 0;
    std::size_t others = 0;
    for (const auto& [text, count] : said) {
        if (++texts > most) {
            others += count;
            continue;
        }
        std::cerr << "annotate: " << printable(text)
                  << (edits > 1 ? " (" + countOf(count, "object") + ")" : std::string()) << '\n';
    }
    if (others > 0) {
        std::cerr << "annotate: And so on for " << countOf(others, "more object") << ".\n";
    }
}

/// Takes the edits out that can't be made, and says why.
void takeOutRefused(const Overlay& overlay, bool isStrict, std::vector<ObjectEdit>& edits, Said& refusals,
                    Said& remarks) {
    const auto isRefused = [&](ObjectEdit& each) {
        if (each.edit.form == orv::host::PropertyEdit::Form::Unset) {
            return false; // whatever is set can be unset, without its definition and without its object too
        }
        const Definition& definition = findDefinition(each.edit.set, each.edit.property);
        const Outcome outcome = overlay.getEdits().check(each.id, each.edit);
        if (!outcome) {
            ++refusals[explain(definition, outcome)];
            return true;
        }
        const std::vector<std::string> remarksOnIt = remarksOn(definition, outcome, each.edit);
        for (const std::string& remark : remarksOnIt) {
            ++(isStrict ? refusals : remarks)[remark];
        }
        return isStrict && !remarksOnIt.empty();
    };
    edits.erase(std::remove_if(edits.begin(), edits.end(), isRefused), edits.end());
}

} // namespace

EditRequest::EditRequest(const Arguments& arguments, std::size_t minimumValues, std::size_t maximumValues) {
    const std::size_t names = arguments.choosesObjects() ? 2 : 3;
    const std::vector<std::string>& words = arguments.words;
    if (words.size() < names + minimumValues || words.size() - names > maximumValues) {
        const std::string_view shownValues = maximumValues == 0   ? "."
                                             : maximumValues == 1 ? " VALUE."
                                             : minimumValues > 1  ? " DEFINING DEFINED ..."
                                                                  : " VALUE ...";
        throw UsageError(std::string(names == 2 ? "Where --class and the like choose the objects, it takes "
                                                : "It takes GLOBALID ") +
                         "PSET PROPERTY" + std::string(shownValues));
    }
    auto word = words.begin();
    if (names == 3) {
        globalId = *word++;
    }
    set = *word++;
    property = *word++;
    values.assign(word, words.end());
}

RequestedObjects EditRequest::objectsIn(const ModelDetails& details, const Arguments& arguments) const {
    const Model& model = details.getModel();
    if (!globalId.empty()) {
        return {{idNamed(arguments, model, globalId)}, {}};
    }
    const Records records = readPresentRecords(arguments);
    Filter filter(arguments);
    filter.consult(details, records);
    const std::vector<const ModelObject*> chosen = chosenObjects(model, filter);
    if (const std::vector<std::string> remarks = filter.remarks(); !remarks.empty()) {
        throw RequestError(remarks.front() + " Nothing was stored."); // a wrong condition may choose everything
    }
    RequestedObjects objects;
    for (const ModelObject* const object : chosen) {
        if (const std::optional<orv::Guid> id = idOf(model, *object)) {
            objects.ids.push_back(*id);
        } else {
            objects.refusals.push_back(whyWithoutId(model, *object));
        }
    }
    if (objects.ids.empty() && objects.refusals.empty()) {
        throw RequestError("No object of the model is chosen by that. The command objects takes the same options.");
    }
    return objects;
}

void makeEdits(const Arguments& arguments, const Model& model, RequestedEdits requested) {
    std::vector<ObjectEdit>& edits = requested.edits;
    const std::filesystem::path path = storePath(arguments);
    const std::string author = authorOf(arguments);
    const std::size_t wanted = edits.size() + requested.refusals.size();
    if (wanted > 1) {
        std::cerr << "annotate: " << countOf(wanted, "object") << ".\n";
    }
    Store store(path);
    EditIndex present(Store::getRecords());
    if (requested.complete) {
        std::for_each(edits.begin(), edits.end(), [&](ObjectEdit& each) { requested.complete(each, present); });
    }
    const Overlay overlay(model);
    Said remarks;
    Said refusals;
    for (const std::string& reason : requested.refusals) {
        ++refusals[reason];
    }
    takeOutRefused(overlay, arguments.strict, edits, refusals, remarks);
    if (!refusals.empty() && (!arguments.keepGoing || edits.empty())) {
        if (wanted > 1) {
            print(refusals, wanted);
            throw RequestError("Nothing was stored.");
        }
        std::string reasons;
        std::for_each(refusals.begin(), refusals.end(), [&](const auto& each) { reasons += each.first + ' '; });
        throw RequestError(reasons + "Nothing was stored.");
    }
    writeEdits(store, author, arguments.command, present, edits);
    printStored((edits.size() == 1 ? "It is" : std::to_string(edits.size()) + " are") + std::string(" stored in ") +
                path.string() + '.');
    print(remarks, wanted);
    if (!refusals.empty()) {
        print(refusals, wanted);
        throw RequestError(std::to_string(wanted - edits.size()) + " of " + std::to_string(wanted) +
                           " weren't stored.");
    }
}

} // namespace annotate
