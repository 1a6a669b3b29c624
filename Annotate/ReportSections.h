#pragma once

#include "Annotate/Additions.h"
#include "Annotate/HtmlPage.h"
#include "Annotate/Status.h"

namespace annotate {

/// How an edit stands to the model.
enum class Standing { Differs, New, CaughtUp, Vanished };

Standing standingOf(const AddedEdit& edit, const ModelUnits& units);

// The sections of a report.

/// How much was added, by storey, class, property set and person.
void addCharts(HtmlPage& page, const Additions& additions);

void addEdits(HtmlPage& page, const Additions& additions);

/// The open ones first.
void addNotes(HtmlPage& page, const Additions& additions);

void addVanished(HtmlPage& page, const Status& status);

} // namespace annotate
