#pragma once

#include "Annotate/Arguments.h"

namespace annotate {

// The commands. Each writes its result to standard output and throws UsageError, RequestError, ModelError or
// StoreError, with nothing stored, if it can't be done.

void listObjects(const Arguments& arguments);
void showObjects(const Arguments& arguments);

void addNote(const Arguments& arguments);
void editNote(const Arguments& arguments);
void resolveNotes(const Arguments& arguments);
void reopenNotes(const Arguments& arguments);
void removeNotes(const Arguments& arguments);
void listNotes(const Arguments& arguments);

void getProperty(const Arguments& arguments);
void setProperty(const Arguments& arguments);
void setListProperty(const Arguments& arguments);
void setTableProperty(const Arguments& arguments);
void unsetProperty(const Arguments& arguments);
void listEdits(const Arguments& arguments);

void showStatus(const Arguments& arguments);
void importFile(const Arguments& arguments);
void exportModel(const Arguments& arguments);
void moveObject(const Arguments& arguments);

void undo(const Arguments& arguments);

void listDefinitions(const Arguments& arguments);

} // namespace annotate
