#pragma once

#include "Domain/Shared/EnhancementsForReferenceModel/Enhancements.h"
#include "Domain/Shared/EnhancementsForReferenceModel/KnownFiles.h"
#include "Domain/Shared/EnhancementsForReferenceModel/RecordDocument.h"
#include "Utilities/SavingNote.h"

namespace orv::domain::shared::enhancementsforreferencemodel {

/// What the database knows of its file beside the records.
struct Enhancements::State {
    RecordDocument document;
    KnownFiles knownFiles;
    utilities::SavingNote loadNote; // of a load that changes the file's layout, until its end
};

} // namespace orv::domain::shared::enhancementsforreferencemodel
