#pragma once

#include "Annotate/AnyCase.h"
#include "Annotate/Arguments.h"
#include "Annotate/Condition.h"
#include "Annotate/Note.h"
#include "Annotate/SetsOfObjects.h"
#include "FoundationClasses/IfcClass.h"

#include <optional>
#include <string>
#include <vector>

namespace annotate {

/// Which objects of a model the arguments choose, and which notes and edits on them.
class Filter {
public:
    /// Throws RequestError if a class, a GlobalId, a date or a condition isn't one.
    explicit Filter(const Arguments& arguments);

    /// Whether consult must be called before takes: storeys and conditions can't be told from the objects alone.
    bool needsDetails() const { return !storeys.empty() || !conditions.empty(); }

    /// Takes what storeys and conditions are looked up in, which outlives the filter. Throws RequestError if a storey
    /// isn't in the model.
    void consult(const ModelDetails& modelDetails, const Records& records);

    /// Of any class named, with the text in its name, in any storey named, and with all conditions met.
    bool takes(const ModelObject& object);

    /// On the object named, if one is named; on one that the model no longer has, if those are wanted; else on one that
    /// is taken. The object is null if the model has none.
    bool takesOwner(const orv::Guid& id, const ModelObject* object);

    /// To be called before takesOwner: finds the object if it is named by its number. One without an id has no notes
    /// and edits. Throws RequestError if the model has none of the number.
    void findOwner(const Arguments& arguments, const Model& model);

    /// By the person wanted, on the day wanted or later.
    bool takesAct(const std::string& actor, const std::optional<Time>& time) const;

    /// Remarks, in sentences, on conditions that none of the objects met that takes was called with: that nobody knows
    /// the property, with the nearest name, or that it can't have such a value.
    std::vector<std::string> remarks() const;

private:
    struct Asked {
        Condition condition;
        bool isKnown = false;    ///< Whether there was such a property,
        bool hasValue = false;   ///< and whether it had the condition's value.
        bool areNumbers = false; ///< Whether a model's value was a number.
    };

    bool isInStorey(const ModelObject& object) const;
    bool meets(const ModelObject& object, Asked& asked);
    std::string nearestOf(const Condition& condition) const;

    std::vector<const orv::fc::IfcClass*> classes;
    AnyCase match;
    std::vector<AnyCase> storeys;
    std::vector<Asked> conditions;
    const ModelDetails* details = nullptr;
    std::optional<SetsOfObjects> sets;
    std::optional<EditIndex> edits;
    std::optional<orv::Guid> owner;
    bool hasNoOwner = false;
    AnyCase author;
    std::optional<Time> since;
    bool choosesObjects;
    bool onlyVanished;
};

/// Says what the filter remarks. Throws the first of that as a RequestError if the filter took nothing.
void printRemarks(const Filter& filter, bool isNothingTaken);

/// The objects of the model that the filter takes, in the order of the file.
std::vector<const ModelObject*> chosenObjects(const Model& model, Filter& filter);

/// The model of a command with a filter, with what the filter needs of it, and the records of the store.
class FilteredModel {
public:
    /// Throws what reading the model or the store, or consulting them, throws.
    FilteredModel(const Arguments& arguments, Filter& filter);

    const Model& getModel() const { return details ? details->getModel() : *model; }
    const Records& getRecords() const { return records; }

private:
    std::optional<Model> model; ///< Without details, if the filter needs none.
    std::optional<ModelDetails> details;
    Records records;
};

/// For listings: the class and the name of an object that may have vanished from the model.
std::string classOf(const ModelObject* object);
std::string nameOf(const ModelObject* object);

/// A time as the listings show it, to the second; empty if it isn't known.
std::string shownTime(const std::optional<Time>& time);

} // namespace annotate
