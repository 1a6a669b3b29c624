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
#include "Domain/Shared/EnhancementsForReferenceModel/SampleModel.h"
#include "Support/Timing.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <string>
#include <vector>

namespace orv::domain::shared::enhancementsforreferencemodel {

namespace {

using benchmarks::timeAll;
using benchmarks::timeEach;
using object::PropertyValue;

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
    const SampleModel& model = SampleModel::of(state);
    PsetData overlay;
    timeReads(
        state, model.places(number),
        [&overlay](const Place& place) { return overlay.getValue(place.guid, place.set, place.property); },
        [](const PropertyValue& value) { return value.get<double>() == number; });
    state.counters["property_bytes"] = model.getShadowBytes();
}

void getPlainValue(benchmark::State& state) {
    SampleModel& model = SampleModel::of(state);
    timeReads(
        state, model.places(number),
        [&model](const Place& place) { return model.plain.get<double>(place.guid, place.set, place.property); },
        [](const auto& value) { return value == number; });
    state.counters["property_bytes"] = model.getPlainBytes();
}

void getValueAsString(benchmark::State& state) {
    const SampleModel& model = SampleModel::of(state);
    PsetData overlay;
    timeReads(
        state, model.places(text),
        [&overlay](const Place& place) { return overlay.getValueAsString(place.guid, place.set, place.property); },
        [](const auto& value) { return value == text; });
}

void getPlainValueAsString(benchmark::State& state) {
    SampleModel& model = SampleModel::of(state);
    timeReads(
        state, model.places(text),
        [&model](const Place& place) { return model.plain.get<std::string>(place.guid, place.set, place.property); },
        [](const auto& value) { return value == text; });
}

void getListValues(benchmark::State& state) {
    const SampleModel& model = SampleModel::of(state);
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
    SampleModel& model = SampleModel::of(state);
    timeReads(
        state, model.lists(),
        [&model](const Place& place) { return model.plain.get<Values>(place.guid, place.set, place.property); },
        [](const auto& values) { return values && values->size() == listLength; });
}

template <typename T>
void setValue(benchmark::State& state, const T& content) {
    const SampleModel& model = SampleModel::of(state);
    PsetData overlay(false);
    const PropertyValue value = content;
    timeEach(state, model.places(content), [&](const Place& place) {
        overlay.setValue(place.guid, place.set, place.property, value);
        return true;
    });
}

template <typename T>
void setPlainValue(benchmark::State& state, const T& content) {
    SampleModel& model = SampleModel::of(state);
    timeEach(state, model.places(content), [&](const Place& place) {
        model.plain.set(place.guid, place.set, place.property, content);
        return true;
    });
}

void makeProperty(benchmark::State& state) {
    const SampleModel& model = SampleModel::of(state);
    PsetData overlay(false);
    timeAll(
        state, model.missing(),
        [&](const Place& place) { overlay.setValue(place.guid, place.set, place.property, number); },
        [&](const Place& place) { model.removeLast(place); });
}

void makePlainProperty(benchmark::State& state) {
    SampleModel& model = SampleModel::of(state);
    timeAll(
        state, model.missing(),
        [&](const Place& place) { model.plain.set(place.guid, place.set, place.property, number); },
        [&](const Place& place) { model.plain.findSet(place.guid, place.set)->properties.pop_back(); });
}

void construct(benchmark::State& state) {
    SampleModel::of(state);
    timeEach(state, std::vector<bool>{true}, [](bool readOnly) { return PsetData(readOnly).getDb(); });
}

void callCallback(benchmark::State& state) {
    timeEach(state, std::vector{&SampleModel::of(state).getCallback()},
             [](const auto* callback) { return (*callback)(); });
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
