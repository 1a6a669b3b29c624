#pragma once

#include "Domain/Shared/EnhancementsForReferenceModel/PlainOverlay.h"
#include "Domain/Shared/EnhancementsForReferenceModel/PsetData.h"
#include "IfcVersionMapping/SchemaDefinitions.h"
#include "Support/SampleGuids.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <malloc.h>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace orv::domain::shared::enhancementsforreferencemodel {

inline constexpr std::size_t propertiesPerSet = 10;
inline constexpr std::size_t listLength = 100;
inline constexpr double number = 0.24;
inline const std::string text = "cast in place, C30/37 XC4"; // longer than a string holds without an allocation
inline const std::string listSet = "Pset_ProtectiveDeviceTrippingUnitTimeAdjustment";
inline const std::string listProperty = "TimeAdjustmentValues";

inline void appendProperties(PlainSet& set, fc::FcContent content, const PlainValue& value, std::size_t count) {
    for (const auto& definition : ifc::definitions()) {
        const auto* const type = fc::FcValueType::find(definition.valueType);
        if (count > 0 && definition.propertySet == set.name && definition.kind == ifc::def::xml::PropertyKind::Single &&
            type != nullptr && type->content == content) {
            set.properties.push_back({std::string(definition.property), value});
            --count;
        }
    }
}

/// What each object has; and in each set one number more, the one that is made and removed again.
inline const PlainObject& pattern() {
    static const PlainObject object = [] {
        PlainObject sets{{"Pset_ConcreteElementGeneral", {}},
                         {"Pset_EnvironmentalImpactIndicators", {}},
                         {"Pset_FastenerWeld", {}},
                         {"Pset_PrecastConcreteElementGeneral", {}},
                         {"Pset_SpaceCoveringRequirements", {}}};
        for (PlainSet& set : sets) {
            appendProperties(set, fc::FcContent::Text, text, propertiesPerSet / 2);
            appendProperties(set, fc::FcContent::Real, number, propertiesPerSet + 1 - set.properties.size());
        }
        return sets;
    }();
    return object;
}

/// A property of an object. Refers to names that live as long as the process.
struct Place {
    Guid guid;
    const std::string& set;
    const std::string& property;
};

inline std::size_t heapBytes() {
    const auto heap = mallinfo2();
    return heap.uordblks + heap.hblkhd;
}

/// The same objects in a shadow database and as plain data.
class SampleModel {
public:
    explicit SampleModel(std::size_t objectCount) : guids(benchmarks::sampleGuids(objectCount)) {
        useForHandles();
        const auto propertyCount = static_cast<double>(objectCount * pattern().size() * propertiesPerSet);
        const std::size_t empty = heapBytes();
        fillShadowDb();
        const std::size_t withShadowDb = heapBytes();
        fillPlain();
        shadowBytes = static_cast<double>(withShadowDb - empty) / propertyCount;
        plainBytes = static_cast<double>(heapBytes() - withShadowDb) / propertyCount;
        addLists();
    }

    SampleModel(const SampleModel&) = delete;
    SampleModel& operator=(const SampleModel&) = delete;

    /// That of the size which the benchmark asks for, made once. Handles reach it from now on.
    static SampleModel& of(const benchmark::State& state) {
        static std::map<std::int64_t, SampleModel> models;
        SampleModel& model = models.try_emplace(state.range(0), static_cast<std::size_t>(state.range(0))).first->second;
        model.useForHandles();
        return model;
    }

    /// Properties with a value of that one's type, of objects in an order that jumps about: as many as there are
    /// objects, and enough of them that the processor can't learn the way to each.
    std::vector<Place> places(const PlainValue& value) const {
        std::vector<Place> all;
        std::mt19937_64 random; // NOLINT(cert-msc32-c, cert-msc51-cpp): the same in each run
        while (all.size() < std::max<std::size_t>(guids.size(), 20'000)) {
            const PlainSet& set = pattern()[random() % pattern().size()];
            const PlainProperty& property = set.properties[random() % propertiesPerSet];
            if (property.value.index() == value.index()) {
                all.push_back({guids[random() % guids.size()], set.name, property.name});
            }
        }
        return all;
    }

    /// The properties that the sets of a thousand objects at most lack.
    std::vector<Place> missing() const {
        std::vector<Place> all;
        for (std::size_t index = 0; index < std::min<std::size_t>(guids.size(), 1000); ++index) {
            for (const PlainSet& set : pattern()) {
                all.push_back({guids[index], set.name, set.properties.back().name});
            }
        }
        return all;
    }

    std::vector<Place> lists() const {
        std::vector<Place> all;
        for (std::size_t index = 0; index < std::min<std::size_t>(guids.size(), 100); ++index) {
            all.push_back({guids[index], listSet, listProperty});
        }
        return all;
    }

    /// Removes the last property of the set from the shadow database.
    void removeLast(const Place& place) const {
        const auto object =
            std::static_pointer_cast<fc::core::kernel::FcObjectDefinition>(shadowDb->data().findByGuid(place.guid));
        object->getPropertySetDefinitionNonConst<fc::core::kernel::FcPropertySet>(place.set)->properties.pop_back();
    }

    const std::function<std::shared_ptr<fc::FcShadowDb>()>& getCallback() const { return callback; }
    double getShadowBytes() const { return shadowBytes; }
    double getPlainBytes() const { return plainBytes; }

    PlainOverlay plain;

private:
    void useForHandles() const {
        PsetData::getPsetShadowDbReadOnlyCallbackSet(callback);
        PsetData::getPsetShadowDbReadWriteCallbackSet([this] { return std::pair(shadowDb, ScopeGuard()); });
    }

    void fillShadowDb() const {
        PsetData overlay(false);
        const auto master = std::make_shared<fc::core::kernel::FcObjectDefinition>(*fc::IfcClass::find("IfcWall"));
        for (const Guid& guid : guids) {
            master->guid = guid;
            for (const PlainSet& set : pattern()) {
                for (std::size_t index = 0; index < propertiesPerSet; ++index) {
                    const PlainProperty& property = set.properties[index];
                    const bool isNumber = std::holds_alternative<double>(property.value);
                    overlay.setValue(master, set.name, property.name, isNumber ? object::PropertyValue(number) : text);
                }
            }
        }
    }

    void fillPlain() {
        for (const Guid& guid : guids) {
            PlainObject& object = plain.objects.emplace(guid, pattern()).first->second;
            for (PlainSet& set : object) {
                set.properties.pop_back();
            }
        }
    }

    void addLists() {
        PsetData overlay(false);
        for (const Place& place : lists()) {
            overlay.setValue(place.guid, place.set, place.property,
                             std::vector<object::PropertyValue>(listLength, number));
            const PlainProperty list{place.property, std::vector<PlainValue>(listLength, number)};
            plain.objects[place.guid].push_back({place.set, {list}});
        }
    }

    std::vector<Guid> guids;
    std::shared_ptr<fc::FcShadowDb> shadowDb = std::make_shared<fc::FcShadowDb>();
    std::function<std::shared_ptr<fc::FcShadowDb>()> callback = [this] { return shadowDb; };
    double shadowBytes = 0;
    double plainBytes = 0;
};

} // namespace orv::domain::shared::enhancementsforreferencemodel
