#include "Annotate/EditTable.h"
#include "Annotate/Exports.h"
#include "Annotate/Filter.h"
#include "Annotate/ReportParts.h"
#include "Annotate/ReportSections.h"
#include "Annotate/Terminal.h"

#include <algorithm>
#include <optional>

namespace annotate {

namespace {

void addHead(HtmlPage& page, const std::string& title) {
    page << "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
            "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src '"
         << reportStyleDigest << "'; script-src '" << reportScriptDigest
         << "'; base-uri 'none'; form-action 'none'\">\n"
            "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>";
    page.text(title) << "</title>\n<style>" << reportStyle << "</style>\n</head>\n";
}

void addGlance(HtmlPage& page, const Status& status) {
    page << "<dl class=\"glance\">\n";
    for (const auto& [name, count] : status.totals()) {
        page << "<div><dt>" << name << "</dt><dd>" << std::to_string(count) << "</dd></div>\n";
    }
    page << "</dl>\n";
}

/// When the last of it was added or changed; nothing if nobody knows.
std::optional<Time> latestIn(const Additions& additions) {
    std::optional<Time> latest; // less than any
    for (const AddedNote& added : additions.getNotes()) {
        latest = std::max({latest, added.note->made, added.note->changed});
    }
    for (const AddedEdit& added : additions.getEdits()) {
        latest = std::max(latest, timeOf(added.entry->edit));
    }
    return latest;
}

} // namespace

Standing standingOf(const AddedEdit& edit, const ModelUnits& units) {
    if (edit.object == nullptr) {
        return Standing::Vanished;
    }
    const Comparison comparison = comparisonOf(edit.property, units);
    return comparison == Comparison::New    ? Standing::New
           : comparison == Comparison::Same ? Standing::CaughtUp
                                            : Standing::Differs;
}

ExportOutcome exportReport(const Arguments& arguments, NewFile& file) {
    const Additions additions(arguments);
    const Status status(additions);
    const std::optional<Time> latest = latestIn(additions);
    const std::string title = "Additions to " + arguments.model.filename().string();
    HtmlPage page(file);
    addHead(page, title);
    page << "<body>\n<header><h1>";
    page.text(title) << "</h1>\n";
    if (latest) {
        page << "<p class=\"quiet\">Last change: " << shownTime(latest) << "</p>\n";
    }
    page << "<nav aria-label=\"Sections\"><a href=\"#where\">Where and by whom</a> "
            "<a href=\"#edits\">Property edits</a> <a href=\"#notes\">Notes</a> "
            "<a href=\"#vanished\">Vanished objects</a></nav></header>\n<main>\n";
    addGlance(page, status);
    addCharts(page, additions);
    addEdits(page, additions);
    addNotes(page, additions);
    addVanished(page, status);
    page << "</main>\n<script>" << reportScript << "</script>\n</body>\n</html>\n";
    page.flush();
    return {arguments.file.string() + " reports on " + countOf(additions.getNotes().size(), "note") + " and " +
                countOf(additions.getEdits().size(), "edit") + '.',
            {}};
}

} // namespace annotate
