#include "Annotate/Filter.h"

#include "Annotate/Definitions.h"
#include "Annotate/NamedObject.h"
#include "Annotate/NearNames.h"
#include "Annotate/ObjectClasses.h"
#include "Annotate/Terminal.h"
#include "Annotate/ValueText.h"
#include "IfcVersionMapping/SchemaDefinitions.h"

#include <algorithm>
#include <iostream>
#include <set>
#include <utility>

namespace annotate {

using orv::fc::IfcClass;

namespace {

constexpr std::string_view storeyClass = "IfcBuildingStorey";

/// By its name, by its GlobalId, which is another one in another case, or by its number.
bool names(const AnyCase& wanted, const ModelObject& storey) {
    return wanted.equals(storey.name) || wanted.getText() == storey.globalId || isNumberOf(wanted.getText(), storey);
}

/// As far as the model's value tells one.
Definition definitionOf(const ModelProperty& property, const std::string& set) {
    Definition definition;
    definition.propertySet = set.c_str();
    definition.property = property.name.c_str();
    definition.kind = property.kind;
    definition.valueType = property.valueType.c_str();
    definition.definedValueType = property.definedValueType.c_str();
    return definition;
}

bool hasNumbers(const ModelProperty& property) {
    return std::any_of(property.values.begin(), property.values.end(), isNumber);
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
    : match(arguments.match),
      storeys(arguments.storeys.begin(), arguments.storeys.end()),
      author(arguments.byAuthor),
      choosesObjects(arguments.choosesObjects()),
      onlyVanished(arguments.vanished) {
    for (const std::string& condition : arguments.conditions) {
        conditions.push_back({Condition(condition)});
    }
    for (const std::string& name : arguments.classes) {
        classes.push_back(&objectClassNamed(name));
    }
    if (!arguments.globalId.empty() && !isInstanceNumber(arguments.globalId)) {
        owner = idOf(arguments.globalId);
    }
    if (!arguments.since.empty()) {
        since = timeIn(arguments.since);
    }
}

bool Filter::takes(const ModelObject& object) {
    const bool isOfClass = classes.empty() || std::any_of(classes.begin(), classes.end(), [&](const IfcClass* wanted) {
                               return wanted->includes(*object.ifcClass);
                           });
    return isOfClass && match.isIn(object.name) && isInStorey(object) &&
           std::all_of(conditions.begin(), conditions.end(), [&](Asked& asked) { return meets(object, asked); });
}

void Filter::consult(const ModelDetails& modelDetails, const Records& records) {
    details = &modelDetails;
    sets.emplace(modelDetails);
    edits.emplace(records);
    for (Asked& asked : conditions) {
        if (const auto* const definition =
                orv::ifc::findSchemaDefForProperty(asked.condition.getSet(), asked.condition.getProperty())) {
            asked.condition.takeUnit(*definition, modelDetails.getUnits());
        }
    }
    std::vector<const ModelObject*> all;
    for (const ModelObject& object : modelDetails.getModel().getObjects()) {
        if (object.ifcClass->name == storeyClass) {
            all.push_back(&object);
        }
    }
    for (const AnyCase& wanted : storeys) {
        if (std::none_of(all.begin(), all.end(), [&](const auto* storey) { return names(wanted, *storey); })) {
            std::string shown;
            for (const ModelObject* const storey : all) {
                shown.append(shown.empty() ? " It has " : ", ")
                    .append(storey->name.empty() ? nameFor(modelDetails.getModel(), *storey) : storey->name);
            }
            throw RequestError("The model has no storey " + wanted.getText() + '.' +
                               (shown.empty() ? "" : shown + '.'));
        }
    }
}

bool Filter::isInStorey(const ModelObject& object) const {
    if (storeys.empty()) {
        return true;
    }
    const ModelObject* const storey = details->storeyOf(object);
    return storey != nullptr &&
           std::any_of(storeys.begin(), storeys.end(), [&](const AnyCase& wanted) { return names(wanted, *storey); });
}

bool Filter::meets(const ModelObject& object, Asked& asked) {
    const Condition& condition = asked.condition;
    const HeldEdit edit = editFor(object, *details, *edits, condition.getSet(), condition.getProperty());
    const MergedProperty property = sets->find(object, edit, condition.getSet(), condition.getProperty());
    asked.isKnown = asked.isKnown || property.model != nullptr || property.edit != nullptr;
    if (property.model != nullptr) {
        asked.condition.takeUnit(definitionOf(*property.model, condition.getSet()), details->getUnits());
        asked.areNumbers = asked.areNumbers || hasNumbers(*property.model);
    }
    const std::vector<std::string> values = textsThatHold(property, details->getUnits());
    asked.hasValue = asked.hasValue || condition.concerns(values);
    return condition.holds(values);
}

/// As the end of a sentence: the nearest of the names of sets, or of properties if the set is known.
std::string Filter::nearestOf(const Condition& condition) const {
    std::set<std::string_view> setNames;
    std::set<std::string_view> properties;
    const auto take = [&](std::string_view set, std::string_view property) {
        setNames.insert(set);
        if (set == condition.getSet()) {
            properties.insert(property);
        }
    };
    for (const auto* const definition : allDefinitions()) {
        take(definition->propertySet, definition->property);
    }
    for (const auto& [object, ofObject] : sets->getSets()) {
        for (const ModelSet& set : ofObject) {
            for (const ModelProperty& property : set.properties) {
                take(set.name, property.name);
            }
        }
    }
    return properties.empty() ? didYouMean(condition.getSet(), {setNames.begin(), setNames.end()})
                              : didYouMean(condition.getProperty(), {properties.begin(), properties.end()});
}

std::vector<std::string> Filter::remarks() const {
    std::vector<std::string> sentences;
    for (const auto& [condition, isKnown, hasValue, areNumbers] : conditions) {
        if (!isKnown && orv::ifc::findSchemaDefForProperty(condition.getSet(), condition.getProperty()) == nullptr) {
            sentences.push_back("No such object has " + condition.getSet() + '.' + condition.getProperty() +
                                ", nor is it defined" + nearestOf(condition));
        } else if (const std::string objection = condition.objection(areNumbers); !hasValue && !objection.empty()) {
            sentences.push_back(objection);
        }
    }
    return sentences;
}

FilteredModel::FilteredModel(const Arguments& arguments, Filter& filter) {
    if (filter.needsDetails()) {
        details.emplace(ModelDetails::read(arguments.model));
    } else {
        model.emplace(Model::read(arguments.model));
    }
    filter.findOwner(arguments, getModel());
    records = readStore(arguments);
    if (details) {
        filter.consult(*details, records);
    }
}

void Filter::findOwner(const Arguments& arguments, const Model& model) {
    if (isInstanceNumber(arguments.globalId)) {
        owner = idOf(model, objectNamed(arguments, model, arguments.globalId));
        hasNoOwner = !owner;
    }
}

bool Filter::takesOwner(const orv::Guid& id, const ModelObject* object) {
    const bool isWanted = !hasNoOwner && (!owner || *owner == id) && (!onlyVanished || object == nullptr);
    return isWanted && (object == nullptr ? !choosesObjects : takes(*object));
}

bool Filter::takesAct(const std::string& actor, const std::optional<Time>& time) const {
    return (author.getText().empty() || author.equals(actor)) && (!since || (time && *time >= *since));
}

void printRemarks(const Filter& filter, bool isNothingTaken) {
    for (const std::string& remark : filter.remarks()) {
        if (isNothingTaken) {
            throw RequestError(remark);
        }
        std::cerr << "annotate: " << printable(remark) << '\n';
    }
}

std::vector<const ModelObject*> chosenObjects(const Model& model, Filter& filter) {
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
