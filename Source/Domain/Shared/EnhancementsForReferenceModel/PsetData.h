#pragma once

#include "FoundationClasses/FcObjectDefinition.h"
#include "FoundationClasses/FcPropertySet.h"
#include "FoundationClasses/FcShadowDb.h"
#include "Id/Guid.h"
#include "Object/PropertyValue.h"
#include "OrvExport.h"
#include "Utilities/ScopeGuard.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orv::domain::shared::enhancementsforreferencemodel {

/// A handle on the shadow database, for reading and writing the property values that users put on objects of the
/// reference model.
///
/// Values land on shadow objects in the shadow database, never on the model's own objects, and are read from there
/// alone. A property comes into being at its first write, and only if the published IFC property-set definitions know
/// it. Sets and properties go by their exact names. Nothing is told of a write that has no effect.
///
/// The host sets the three callbacks before it makes the first handle. A callback may set any of them anew while it
/// runs. When the library is unloaded they are destroyed, and a handle made later finds none. A handle without a
/// database does nothing. Called from one thread at a time; a guard that came with the database lasts as long as the
/// handle.
class PsetData {
public:
    /// Returns the shadow database for reading; null if there is none.
    using ReadOnlyCallback = std::function<std::shared_ptr<fc::FcShadowDb>()>;
    /// Returns the shadow database for writing, null if there is none, and what is to be done once that has ended.
    using ReadWriteCallback = std::function<std::pair<std::shared_ptr<fc::FcShadowDb>, ScopeGuard>()>;
    /// Returns the model's object of that Guid; null if it has none.
    using ObjectCallback = std::function<std::shared_ptr<const fc::core::kernel::FcObjectDefinition>(const Guid& guid)>;

    /// Sets what returns the shadow database for reading. An empty function leaves none; so for the other two.
    ORV_ENHANCEMENTS_EXPORT static void getPsetShadowDbReadOnlyCallbackSet(ReadOnlyCallback callback);

    /// Sets what returns the shadow database for writing, with a guard that each handle keeps to its end.
    ORV_ENHANCEMENTS_EXPORT static void getPsetShadowDbReadWriteCallbackSet(ReadWriteCallback callback);

    /// Sets what finds an object of the reference model, or returns null. Asked by writes alone, for a Guid that the
    /// shadow database doesn't have.
    ORV_ENHANCEMENTS_EXPORT static void getObjectFromGuidCallbackSet(ObjectCallback callback);

    /// A handle for reading.
    ORV_ENHANCEMENTS_EXPORT PsetData();

    /// A handle for reading, or for writing as well. Asks the callback of that mode for the database; if there is none
    /// that is reported, and the handle has no database.
    ORV_ENHANCEMENTS_EXPORT explicit PsetData(bool readOnly);

    PsetData(const PsetData&) = delete;
    PsetData& operator=(const PsetData&) = delete;

    /// The database, shared with the handle, or null.
    ORV_ENHANCEMENTS_EXPORT std::shared_ptr<fc::FcShadowDb> getDb();

    /// Writes a value to a single, enumerated or bounded property. The object, not null, is one of the reference model
    /// or its shadow object. Every write makes the shadow object and the set, also one that changes no property. The
    /// empty value, an empty text and an optional text that holds none change no property; any other optional that
    /// holds nothing is a value that no type takes.
    ///
    /// Single: a value that the property's type doesn't take deletes the property.
    ///
    /// Enumerated: a text's parts between semicolons become the values; any value but a std::string deletes the
    /// property.
    ///
    /// Bounded: the parts of a text are the upper bound, the lower bound and the set point; a number, rounded to six
    /// decimals, is the upper bound. A part that the bound's type doesn't take leaves that bound empty. Bounds without
    /// a part lose value and type. Any other value is reported and does that to all three.
    ///
    /// A list or table property that is defined but not there yet is made without values, and stays so.
    ORV_ENHANCEMENTS_EXPORT void setValue(std::shared_ptr<const fc::core::kernel::FcObjectDefinition> object,
                                          const std::string& pset, const std::string& property,
                                          const object::PropertyValue& value);

    /// Makes a list property of the values; none for no values. A property that is there already, of whatever kind,
    /// stays as it is. One that is defined to be of another kind is made without a value.
    ORV_ENHANCEMENTS_EXPORT void setValue(std::shared_ptr<const fc::core::kernel::FcObjectDefinition> object,
                                          const std::string& pset, const std::string& property,
                                          const std::vector<object::PropertyValue>& values);

    /// The same for a table property of pairs of a defining and a defined value.
    ORV_ENHANCEMENTS_EXPORT void
    setValue(std::shared_ptr<const fc::core::kernel::FcObjectDefinition> object, const std::string& pset,
             const std::string& property,
             const std::vector<std::pair<object::PropertyValue, object::PropertyValue>>& values);

    /// The same for the object with that Guid, in the shadow database or else in the reference model. Without one,
    /// nothing happens.
    ORV_ENHANCEMENTS_EXPORT void setValue(const Guid& guid, const std::string& pset, const std::string& property,
                                          const object::PropertyValue& value);

    /// The same for a list property.
    ORV_ENHANCEMENTS_EXPORT void setValue(const Guid& guid, const std::string& pset, const std::string& property,
                                          const std::vector<object::PropertyValue>& values);

    /// The same for a table property.
    ORV_ENHANCEMENTS_EXPORT void
    setValue(const Guid& guid, const std::string& pset, const std::string& property,
             const std::vector<std::pair<object::PropertyValue, object::PropertyValue>>& values);

    /// The value of a single property; the text "a;b" of an enumerated one's values; the text "lower;upper;set point"
    /// of a bounded one, whose first two stand the other way round than in a write. The empty value if there is no such
    /// object, set or property, for a single property without a value, and for properties of other kinds. Throws
    /// std::out_of_range, "invalid string position", for an enumerated property whose attribute text is empty.
    ORV_ENHANCEMENTS_EXPORT object::PropertyValue getValue(const Guid& guid, const std::string& pset,
                                                           const std::string& property);

    /// getValue if it is a text. Nothing if it is empty; any other value is reported and becomes an empty text. This
    /// and the next two throw as getValue does.
    ORV_ENHANCEMENTS_EXPORT std::optional<std::string> getValueAsString(const Guid& guid, const std::string& pset,
                                                                        const std::string& property);

    /// getValue if it is a double, otherwise nothing.
    ORV_ENHANCEMENTS_EXPORT std::optional<double> getValueAsDouble(const Guid& guid, const std::string& pset,
                                                                   const std::string& property);

    /// getValue if it is a bool, otherwise nothing.
    ORV_ENHANCEMENTS_EXPORT std::optional<bool> getValueAsBool(const Guid& guid, const std::string& pset,
                                                               const std::string& property);

    /// The values of a list property in order, the empty value for one without content. No values if there is no such
    /// list property.
    ORV_ENHANCEMENTS_EXPORT std::vector<object::PropertyValue> getListValues(const Guid& guid, const std::string& pset,
                                                                             const std::string& property);

    /// The rows of a table property, each a defining and a defined value. No rows if there is no such table property,
    /// or if its two lists differ in length.
    ORV_ENHANCEMENTS_EXPORT std::vector<std::pair<object::PropertyValue, object::PropertyValue>>
    getTableValues(const Guid& guid, const std::string& pset, const std::string& property);

private:
    std::shared_ptr<fc::core::kernel::FcObjectDefinition> findShadowObject(const Guid& guid) const;
    std::shared_ptr<const fc::core::kernel::FcObjectDefinition> resolveObject(const Guid& guid) const;
    std::shared_ptr<fc::FcProperty> findProperty(const Guid& guid, const std::string& pset,
                                                 const std::string& property) const;
    template <typename Value>
    void setOn(const fc::core::kernel::FcObjectDefinition* object, const std::string& pset, const std::string& property,
               const Value& value) const;
    template <typename Value>
    void setOn(const Guid& guid, const std::string& pset, const std::string& property, const Value& value) const;
    template <typename Value>
    void setOnShadow(fc::core::kernel::FcObjectDefinition& shadow, const std::string& pset, const std::string& property,
                     const Value& value) const;

    std::shared_ptr<fc::FcShadowDb> db; // outlives the guard
    ScopeGuard guard;
};

} // namespace orv::domain::shared::enhancementsforreferencemodel
