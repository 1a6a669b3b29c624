// What the property overlay costs above the least that its work needs, and how it bears large models. A benchmark's
// name is operation/who/objects. Each object has five published sets with ten single properties each, half of them
// texts and half of them numbers; a hundred objects at most have a list as well.
//
// The floor does the same on plain data. Both go from object to object in an order that jumps about, so both miss the
// processor's caches more and more as the objects grow in number; a step that visits all objects would show as a ratio
// to the floor that grows with them.
//
// - allocs: the allocations for one item.
// - property_bytes: the heap for a property with its value, and for its part of its set and object.

#include "Domain/Shared/EnhancementsForReferenceModel/PlainOverlay.h"
#include "Domain/Shared/EnhancementsForReferenceModel/PsetData.h"
#include "IfcVersionMapping/SchemaDefinitions.h"
#include "Support/SampleGuids.h"
#include "Support/Timing.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <malloc.h>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace orv::domain::shared::enhancementsforreferencemodel {

namespace {

using benchmarks::timeAll;
using benchmarks::timeEach;
using fc::core::kernel::FcObjectDefinition;
using fc::core::kernel::FcPropertySet;
using object::PropertyValue;

constexpr std::size_t propertiesPerSet = 10;
constexpr std::size_t listLength = 100;
constexpr double number = 0.24;
const std::string text = "cast in place, C30/37 XC4"; // longer than a string holds without an allocation
const std::string listSet = "Pset_ProtectiveDeviceTrippingUnitTimeAdjustment";
const std::string listProperty = "TimeAdjustmentValues";

void appendProperties(PlainSet& set, fc::FcContent content, const PlainValue& value, std::size_t count) {
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
const PlainObject& pattern() {
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

std::size_t heapBytes() {
    const auto heap = mallinfo2();
    return heap.uordblks + heap.hblkhd;
}

/// The same objects in a shadow database and as plain data.
class Model {
public:
    explicit Model(std::size_t objectCount) : guids(benchmarks::sampleGuids(objectCount)) {
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

    Model(const Model&) = delete;
    Model& operator=(const Model&) = delete;

    /// That of the size which the benchmark asks for, made once. Handles reach it from now on.
    static Model& of(const benchmark::State& state) {
        static std::map<std::int64_t, Model> models;
        Model& model = models.try_emplace(state.range(0), static_cast<std::size_t>(state.range(0))).first->second;
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
        const auto object = std::static_pointer_cast<FcObjectDefinition>(shadowDb->data().findByGuid(place.guid));
        object->getPropertySetDefinitionNonConst<FcPropertySet>(place.set)->properties.pop_back();
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
        const auto master = std::make_shared<FcObjectDefinition>(*fc::IfcClass::find("IfcWall"));
        for (const Guid& guid : guids) {
            master->guid = guid;
            for (const PlainSet& set : pattern()) {
                for (std::size_t index = 0; index < propertiesPerSet; ++index) {
                    const PlainProperty& property = set.properties[index];
                    const bool isNumber = std::holds_alternative<double>(property.value);
                    overlay.setValue(master, set.name, property.name, isNumber ? PropertyValue(number) : text);
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
            overlay.setValue(place.guid, place.set, place.property, std::vector<PropertyValue>(listLength, number));
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

/// Tries the read at each place before it is timed.
template <typename Read, typename IsRight>
void timeReads(benchmark::State& state, const std::vector<Place>& places, const Read& read, const IsRight& isRight) {
    for (const Place& place : places) {
        if (!isRight(read(place))) {
            state.SkipWithError("a value isn't read as it was set");
        }
    }
    timeEach(state, places, read);
}

void getValue(benchmark::State& state) {
    const Model& model = Model::of(state);
    PsetData overlay;
    timeReads(
        state, model.places(number),
        [&overlay](const Place& place) { return overlay.getValue(place.guid, place.set, place.property); },
        [](const PropertyValue& value) { return value.get<double>() == number; });
    state.counters["property_bytes"] = model.getShadowBytes();
}

void getPlainValue(benchmark::State& state) {
    Model& model = Model::of(state);
    timeReads(
        state, model.places(number),
        [&model](const Place& place) { return model.plain.get<double>(place.guid, place.set, place.property); },
        [](const auto& value) { return value == number; });
    state.counters["property_bytes"] = model.getPlainBytes();
}

void getValueAsString(benchmark::State& state) {
    const Model& model = Model::of(state);
    PsetData overlay;
    timeReads(
        state, model.places(text),
        [&overlay](const Place& place) { return overlay.getValueAsString(place.guid, place.set, place.property); },
        [](const auto& value) { return value == text; });
}

void getPlainValueAsString(benchmark::State& state) {
    Model& model = Model::of(state);
    timeReads(
        state, model.places(text),
        [&model](const Place& place) { return model.plain.get<std::string>(place.guid, place.set, place.property); },
        [](const auto& value) { return value == text; });
}

void getListValues(benchmark::State& state) {
    const Model& model = Model::of(state);
    PsetData overlay;
    timeReads(
        state, model.lists(),
        [&overlay](const Place& place) { return overlay.getListValues(place.guid, place.set, place.property); },
        [](const auto& values) {
            return values.size() == listLength && values.back().template get<double>() == number;
        });
}

void getPlainListValues(benchmark::State& state) {
    using Values = std::vector<PlainValue>;
    Model& model = Model::of(state);
    timeReads(
        state, model.lists(),
        [&model](const Place& place) { return model.plain.get<Values>(place.guid, place.set, place.property); },
        [](const auto& values) { return values && values->size() == listLength; });
}

template <typename T>
void setValue(benchmark::State& state, const T& content) {
    const Model& model = Model::of(state);
    PsetData overlay(false);
    const PropertyValue value = content;
    timeEach(state, model.places(content), [&](const Place& place) {
        overlay.setValue(place.guid, place.set, place.property, value);
        return true;
    });
}

template <typename T>
void setPlainValue(benchmark::State& state, const T& content) {
    Model& model = Model::of(state);
    timeEach(state, model.places(content), [&](const Place& place) {
        model.plain.set(place.guid, place.set, place.property, content);
        return true;
    });
}

void makeProperty(benchmark::State& state) {
    const Model& model = Model::of(state);
    PsetData overlay(false);
    timeAll(
        state, model.missing(),
        [&](const Place& place) { overlay.setValue(place.guid, place.set, place.property, number); },
        [&](const Place& place) { model.removeLast(place); });
}

void makePlainProperty(benchmark::State& state) {
    Model& model = Model::of(state);
    timeAll(
        state, model.missing(),
        [&](const Place& place) { model.plain.set(place.guid, place.set, place.property, number); },
        [&](const Place& place) { model.plain.findSet(place.guid, place.set)->properties.pop_back(); });
}

void construct(benchmark::State& state) {
    Model::of(state);
    timeEach(state, std::vector<bool>{true}, [](bool readOnly) { return PsetData(readOnly).getDb(); });
}

void callCallback(benchmark::State& state) {
    timeEach(state, std::vector{&Model::of(state).getCallback()}, [](const auto* callback) { return (*callback)(); });
}

void atEachSize(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(10)->Arg(1000)->Arg(100'000);
}

BENCHMARK(getValue)->Name("getValue/ours")->Apply(atEachSize);
BENCHMARK(getPlainValue)->Name("getValue/floor")->Apply(atEachSize);
BENCHMARK(getValueAsString)->Name("getValueAsString/ours")->Apply(atEachSize);
BENCHMARK(getPlainValueAsString)->Name("getValueAsString/floor")->Apply(atEachSize);
BENCHMARK(getListValues)->Name("getListValues/ours")->Apply(atEachSize);
BENCHMARK(getPlainListValues)->Name("getListValues/floor")->Apply(atEachSize);
BENCHMARK_CAPTURE(setValue, number, number)->Name("setNumber/ours")->Apply(atEachSize);
BENCHMARK_CAPTURE(setPlainValue, number, number)->Name("setNumber/floor")->Apply(atEachSize);
BENCHMARK_CAPTURE(setValue, text, text)->Name("setText/ours")->Apply(atEachSize);
BENCHMARK_CAPTURE(setPlainValue, text, text)->Name("setText/floor")->Apply(atEachSize);
BENCHMARK(makeProperty)->Name("makeProperty/ours")->Apply(atEachSize)->UseManualTime();
BENCHMARK(makePlainProperty)->Name("makeProperty/floor")->Apply(atEachSize)->UseManualTime();
BENCHMARK(construct)->Name("constructPsetData/ours")->Apply(atEachSize);
BENCHMARK(callCallback)->Name("constructPsetData/floor")->Apply(atEachSize);

} // namespace

} // namespace orv::domain::shared::enhancementsforreferencemodel
