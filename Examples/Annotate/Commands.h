#pragma once

#include "Annotate/Arguments.h"

namespace annotate {

// The commands. Each writes its result to standard output and throws UsageError, RequestError, ModelError or
// StoreError, with nothing stored, if it can't be done.

void listObjects(const Arguments& arguments);
void addNote(const Arguments& arguments);
void listNotes(const Arguments& arguments);

void getProperty(const Arguments& arguments);
void setProperty(const Arguments& arguments);
void setListProperty(const Arguments& arguments);
void setTableProperty(const Arguments& arguments);
void listDefinitions(const Arguments& arguments);

} // namespace annotate
