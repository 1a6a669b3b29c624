#pragma once

#include "Annotate/Arguments.h"
#include "Annotate/Model.h"
#include "Annotate/Note.h"
#include "FoundationClasses/IfcClass.h"

#include <optional>
#include <string>
#include <vector>

namespace annotate {

/// Which objects of a model the arguments choose, and which notes and edits on them.
class Filter {
public:
    /// Throws RequestError if a class, a GlobalId or a date isn't one.
    explicit Filter(const Arguments& arguments);

    /// Of any class named, with the text in its name.
    bool takes(const ModelObject& object) const;

    /// On the object named, if one is named; on one that the model no longer has, if those are wanted; else on one that
    /// is taken. The object is null if the model has none.
    bool takesOwner(const orv::Guid& id, const ModelObject* object) const;

    /// By the person wanted, on the day wanted or later.
    bool takesAct(const std::string& actor, const std::optional<Time>& time) const;

private:
    std::vector<const orv::fc::IfcClass*> classes;
    std::string match;
    std::optional<orv::Guid> owner;
    std::string author;
    std::optional<Time> since;
    bool onlyVanished;
};

/// The objects of the model that the filter takes.
std::vector<const ModelObject*> chosenObjects(const Model& model, const Filter& filter);

/// For listings: the class and the name of an object that may have vanished from the model.
std::string classOf(const ModelObject* object);
std::string nameOf(const ModelObject* object);

/// A time as the listings show it, to the second; empty if it isn't known.
std::string shownTime(const std::optional<Time>& time);

} // namespace annotate
