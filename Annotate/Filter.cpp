#include "Annotate/Filter.h"

#include "Annotate/NearNames.h"

#include <algorithm>
#include <utility>

namespace annotate {

using orv::fc::IfcClass;

namespace {

const IfcClass* findClass(const std::string& name) {
    const IfcClass* const ifcClass = IfcClass::find(name);
    if (ifcClass != nullptr && ifcClass->isObjectDefinition()) {
        return ifcClass;
    }
    const IfcClass& all = *IfcClass::find("IfcObjectDefinition");
    std::vector<std::string_view> names;
    for (std::uint32_t number = all.kindNumber; number <= all.lastOfKind; ++number) {
        names.emplace_back(IfcClass::ofNumber(number)->name);
    }
    throw RequestError(name + " isn't a class of objects in IFC" + didYouMean(name, names));
}

/// A date, which stands for its beginning in UTC, or a time.
Time timeIn(const std::string& text) {
    std::chrono::year_month_day date{};
    Time time{};
    if (orv::host::take(text, date)) {
        return std::chrono::sys_days(date);
    }
    if (!orv::host::take(text, time)) {
        throw RequestError("\"" + text + "\" isn't a date like 2026-03-31, nor a time like 2026-03-31T09:30:00Z.");
    }
    return time;
}

} // namespace

Filter::Filter(const Arguments& arguments)
    : match(arguments.match), author(arguments.byAuthor), onlyVanished(arguments.vanished) {
    std::transform(arguments.classes.begin(), arguments.classes.end(), std::back_inserter(classes), findClass);
    if (!arguments.globalId.empty()) {
        owner = idOf(arguments.globalId);
    }
    if (!arguments.since.empty()) {
        since = timeIn(arguments.since);
    }
}

bool Filter::takes(const ModelObject& object) const {
    const bool isOfClass = classes.empty() || std::any_of(classes.begin(), classes.end(), [&](const IfcClass* wanted) {
                               return wanted->includes(*object.ifcClass);
                           });
    return isOfClass && containsInAnyCase(object.name, match);
}

bool Filter::takesOwner(const orv::Guid& id, const ModelObject* object) const {
    const bool isWanted = (!owner || *owner == id) && (!onlyVanished || object == nullptr);
    return isWanted && (object == nullptr ? classes.empty() && match.empty() : takes(*object));
}

bool Filter::takesAct(const std::string& actor, const std::optional<Time>& time) const {
    return (author.empty() || equalsInAnyCase(actor, author)) && (!since || (time && *time >= *since));
}

std::vector<const ModelObject*> chosenObjects(const Model& model, const Filter& filter) {
    std::vector<const ModelObject*> chosen;
    for (const ModelObject& object : model.getObjects()) {
        if (filter.takes(object)) {
            chosen.push_back(&object);
        }
    }
    return chosen;
}

std::string classOf(const ModelObject* object) {
    return object == nullptr ? "(not in the model)" : std::string(object->ifcClass->name);
}

std::string nameOf(const ModelObject* object) {
    return object == nullptr ? "" : object->name;
}

std::string shownTime(const std::optional<Time>& time) {
    return time ? orv::host::textOf(std::chrono::floor<std::chrono::seconds>(*time)) : "";
}

} // namespace annotate
