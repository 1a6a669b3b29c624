#pragma once

#include "Domain/Shared/EnhancementsForReferenceModel/PsetData.h"
#include "Host/Outcome.h"
#include "Host/PropertyEdits.h"
#include "Id/Guid.h"
#include "Object/PropertyValue.h"
#include "OrvExport.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orv::host {

/// The bounds of a bounded property, each empty if there is none.
struct Bounds {
    object::PropertyValue lower;
    object::PropertyValue upper;
    object::PropertyValue setPoint;
};

/// Writes values of properties through PsetData and keeps them in the process's Enhancements, as one act: the overlay
/// and the file have the value, or neither has. The file holds an edit for each property, the latest, in one record of
/// the kind PropertyEdits for each object; restore makes the overlay of them again.
///
/// The host sets PsetData's callbacks and the path of the file, makes the Overlay, and then uses it and Enhancements.
/// Called from one thread at a time.
class ORV_HOST_EXPORT Overlay {
public:
    /// Returns the object of the reference model with that Guid, or null.
    using FindObject = domain::shared::enhancementsforreferencemodel::PsetData::ObjectCallback;

    /// findInModel is what PsetData was given to find the objects of the reference model. author is written to each
    /// edit. Registers PropertyEdits with Factory.
    Overlay(FindObject findInModel, std::string author);

    /// Sets a single property, or an enumerated one to the values in a text with semicolons between them. They replace
    /// all that the property held, as in the other three. The unit is for people to read.
    Outcome set(const Guid& id, const std::string& pset, const std::string& property,
                const object::PropertyValue& value, const std::string& unit = {});

    /// Sets a bounded property; one bound at least must be there.
    Outcome set(const Guid& id, const std::string& pset, const std::string& property, const Bounds& bounds,
                const std::string& unit = {});

    /// Sets a list property, or an enumerated one, to the values, of which there must be one.
    Outcome set(const Guid& id, const std::string& pset, const std::string& property,
                const std::vector<object::PropertyValue>& values, const std::string& unit = {});

    /// Sets a table property to the rows, of which there must be one, each a defining and a defined value.
    Outcome set(const Guid& id, const std::string& pset, const std::string& property,
                const std::vector<std::pair<object::PropertyValue, object::PropertyValue>>& rows,
                const std::string& unit = {});

    /// Takes the property out of the overlay. That is an edit too, so that it wins over an older one of somebody else.
    /// If the property was never set, no edit is stored, and the outcome is Done.
    Outcome unset(const Guid& id, const std::string& pset, const std::string& property);

    /// The outcome that storing the edit would have, StoreRefused aside. Brings its values into the form in which the
    /// property would hold them, and clears those of an edit that unsets. Sets and stores nothing: the host is asked
    /// for its database to read alone.
    Outcome check(const Guid& id, PropertyEdit& edit) const;

    /// Makes many edits, sets and unsets, as one: all are stored, with one rewrite of the file, or none. Returns an
    /// outcome for each, as check does; if one isn't done, or the store refuses them, nothing has changed. The host is
    /// asked for its database once to read and once to write. An edit without an author or a time is by this
    /// Overlay's, now.
    std::vector<Outcome> setAll(std::vector<ObjectEdit> edits);

    /// An edit that restore couldn't make.
    struct Unrestored {
        Guid id;
        std::string line; ///< As in the file.
        Outcome outcome;  ///< Without near names. A set that isn't known counts as one without the property.
    };

    /// Sets every property to its latest edit in the file, also where records of several people hold edits of one
    /// object; of two of the same time, the one that comes later in the file. Returns those that couldn't be made,
    /// because the model or the definitions are others now; they stay in the file.
    std::vector<Unrestored> restore();

    /// The same with the edits among those records, as readRecords reads them; nothing is asked of Enhancements.
    std::vector<Unrestored> restore(
        const std::vector<std::unique_ptr<domain::shared::enhancementsforreferencemodel::EnhancementBase>>& records);

private:
    using PsetData = domain::shared::enhancementsforreferencemodel::PsetData;

    Outcome set(const Guid& id, PropertyEdit edit);
    Outcome check(PsetData& overlay, const Guid& id, PropertyEdit& edit) const;

    FindObject findInModel;
    std::string author;
};

} // namespace orv::host
