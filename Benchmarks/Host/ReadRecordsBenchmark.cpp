// The reading of a file of records without the process's database. Expat reads the file and parses it with handlers
// that do nothing; the kinds make the records and take their fields, which lie ready.

#include "Domain/Shared/EnhancementsForReferenceModel/Enhancements.h"
#include "Domain/Shared/EnhancementsForReferenceModel/EnhancementsFile.h"
#include "Domain/Shared/EnhancementsForReferenceModel/Factory.h"
#include "Domain/Shared/EnhancementsForReferenceModel/SampleRecords.h"
#include "Host/ReadRecords.h"
#include "Support/TemporaryDirectory.h"

#include <benchmark/benchmark.h>
#include <expat.h>

namespace orv::host {

namespace {

using namespace domain::shared::enhancementsforreferencemodel;

const std::string& storedMarks() {
    static const tests::TemporaryDirectory directory;
    static const std::string path = [] {
        Factory::registerClass(std::make_unique<Mark>());
        EnhancementsFile::setFilePath(directory / "store.xml");
        Records records = makeMarks(10'000);
        Enhancements::addEnhancements(records);
        return directory / "store.xml";
    }();
    return path;
}

void readOurs(benchmark::State& state) {
    const std::string& path = storedMarks();
    for ([[maybe_unused]] const auto iteration : state) {
        if (readRecords(path).records.size() != static_cast<std::size_t>(state.range())) {
            state.SkipWithError("a record isn't read");
        }
    }
}

void parseEmptily(benchmark::State& state) {
    const std::string& path = storedMarks();
    for ([[maybe_unused]] const auto iteration : state) {
        const std::string document = tests::contentOf(path);
        XML_Parser parser = XML_ParserCreate(nullptr);
        XML_SetElementHandler(
            parser, [](void* /*data*/, const char* /*name*/, const char** /*attributes*/) {},
            [](void* /*data*/, const char* /*name*/) {});
        XML_SetCharacterDataHandler(parser, [](void* /*data*/, const char* /*text*/, int /*size*/) {});
        if (XML_Parse(parser, document.data(), static_cast<int>(document.size()), 1) != XML_STATUS_OK) {
            state.SkipWithError("the file isn't parsed");
        }
        XML_ParserFree(parser);
    }
}

void callKinds(benchmark::State& state) {
    Factory::registerClass(std::make_unique<Mark>());
    std::vector<std::vector<std::pair<std::string, std::string>>> records;
    for (const auto& mark : makeMarks(state.range())) {
        auto& fields = records.emplace_back();
        fields.emplace_back("OwnerId", mark->ownerId.toString(false));
        for (const auto& [name, value] : mark->getAttributes()) {
            fields.emplace_back(name, textOf(value));
        }
    }
    for ([[maybe_unused]] const auto iteration : state) {
        Records made;
        for (const auto& fields : records) {
            made.push_back(Factory::createEntityFromName("Mark"));
            made.back()->setAttributes(fields);
        }
        benchmark::DoNotOptimize(made);
    }
}

BENCHMARK(readOurs)->Name("readRecords/ours")->Arg(10'000);
BENCHMARK(parseEmptily)->Name("readRecords/Expat")->Arg(10'000);
BENCHMARK(callKinds)->Name("readRecords/kinds")->Arg(10'000);

} // namespace

} // namespace orv::host
