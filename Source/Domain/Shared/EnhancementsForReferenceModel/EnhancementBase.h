#pragma once

#include "Id/Guid.h"
#include "Object/PropertyValue.h"
#include "OrvExport.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orv::domain::shared::enhancementsforreferencemodel {

/// A record that a user puts on top of the reference model. Hosts derive the kinds of record; the library
/// holds, stores and reloads records through this base alone.
///
/// On every rewrite of the file, which is for every stored record and not just for the one that changed,
/// getEntityName and getAttributes are called once each. They return the record's present state and change
/// nothing that another operation of the record or of the library returns. They must not throw: while one does,
/// nothing is written.
class ORV_ENHANCEMENTS_EXPORT EnhancementBase {
public:
    virtual ~EnhancementBase() = default;

    /// The same text for every object of the kind and different from that of every other kind: the kind's key
    /// in Factory and the name of its elements in the file. Any text will do; one that is a valid XML name is
    /// best to read.
    virtual std::string getEntityName() const = 0;

    /// The kind's own attributes by name, without the owner, in the order in which they are to be written.
    /// The file holds text for an int, a bool and a std::string; any other alternative is written as an empty
    /// element and doesn't come back.
    virtual std::vector<std::pair<std::string, object::PropertyValue>> getAttributes() const = 0;

    /// Takes what the file holds of a record: name and text of each child element that has content, in file order,
    /// "OwnerId" among them. A kind with attributes overrides this, takes the names that it knows, ignores the others,
    /// and passes the list on to this base, which sets ownerId from every "OwnerId" whose text is one.
    virtual void setAttributes(const std::vector<std::pair<std::string, std::string>>& attributes);

    /// A new object of the kind, owned by the caller, that setAttributes fills straight afterwards. The base
    /// returns null: a kind that doesn't override this is never made from the file.
    virtual std::unique_ptr<EnhancementBase> createInstance() const;

    /// The object of the reference model that the record belongs to.
    Guid ownerId;

protected:
    EnhancementBase() = default;
    EnhancementBase(const EnhancementBase&) = default;
    EnhancementBase& operator=(const EnhancementBase&) = default;
};

} // namespace orv::domain::shared::enhancementsforreferencemodel
