// The same addition by others. The XML peers build their document and save it into the emptied file, without a lock.
// SQLite adds a row; unlike all others it sees to it that the row is on the disk, but for WAL-NORMAL.

#include "Domain/Shared/EnhancementsForReferenceModel/SampleRecords.h"
#include "Support/TemporaryDirectory.h"

#include <benchmark/benchmark.h>

#include <libxml/tree.h>
#include <pugixml.hpp>
#include <sqlite3.h>
#include <string>
#include <tinyxml2.h>

namespace {

using namespace orv::domain::shared::enhancementsforreferencemodel;
using orv::tests::TemporaryDirectory;

/// Runs the peer's addition for as long as it is measured.
template <typename Add>
void addPeer(benchmark::State& state, Add add) {
    const TemporaryDirectory directory;
    const Records records = makeMarks(state.range() + 1);
    const std::string path = directory / "peer";
    add(path, records);
    for ([[maybe_unused]] const auto iteration : state) {
        const auto start = Clock::now();
        add(path, records);
        state.SetIterationTime(Seconds(Clock::now() - start).count());
    }
}

void addPugixml(benchmark::State& state) {
    addPeer(state, [](const std::string& path, const Records& records) {
        pugi::xml_document document;
        pugi::xml_node root = document.append_child("Enhancements");
        for (const auto& record : records) {
            pugi::xml_node element = root.append_child(record->getEntityName().c_str());
            element.append_child("OwnerId").text().set(record->ownerId.toString(false).c_str());
            for (const auto& [name, value] : record->getAttributes()) {
                element.append_child(name.c_str()).text().set(textOf(value).c_str());
            }
        }
        document.save_file(path.c_str(), "  ");
    });
}

void addTinyxml2(benchmark::State& state) {
    addPeer(state, [](const std::string& path, const Records& records) {
        tinyxml2::XMLDocument document;
        tinyxml2::XMLElement* root = document.NewElement("Enhancements");
        document.InsertEndChild(root);
        for (const auto& record : records) {
            tinyxml2::XMLElement* element = root->InsertNewChildElement(record->getEntityName().c_str());
            element->InsertNewChildElement("OwnerId")->SetText(record->ownerId.toString(false).c_str());
            for (const auto& [name, value] : record->getAttributes()) {
                element->InsertNewChildElement(name.c_str())->SetText(textOf(value).c_str());
            }
        }
        document.SaveFile(path.c_str());
    });
}

const xmlChar* libxml2Text(const std::string& text) {
    return reinterpret_cast<const xmlChar*>(text.c_str()); // NOLINT(cppcoreguidelines-pro-type-reinterpret-cast)
}

void addLibxml2(benchmark::State& state) {
    addPeer(state, [](const std::string& path, const Records& records) {
        xmlDoc* document = xmlNewDoc(libxml2Text("1.0"));
        xmlNode* root = xmlNewNode(nullptr, libxml2Text("Enhancements"));
        xmlDocSetRootElement(document, root);
        for (const auto& record : records) {
            xmlNode* element = xmlNewChild(root, nullptr, libxml2Text(record->getEntityName()), nullptr);
            xmlNewTextChild(element, nullptr, libxml2Text("OwnerId"), libxml2Text(record->ownerId.toString(false)));
            for (const auto& [name, value] : record->getAttributes()) {
                xmlNewTextChild(element, nullptr, libxml2Text(name), libxml2Text(textOf(value)));
            }
        }
        xmlSaveFormatFileEnc(path.c_str(), document, "UTF-8", 1);
        xmlFreeDoc(document);
    });
}

/// One row more, and its commit. The table has the records as rows.
void addSqlite(benchmark::State& state, const char* pragmas) {
    const TemporaryDirectory directory;
    sqlite3* database = nullptr;
    sqlite3_stmt* insert = nullptr;
    sqlite3_open((directory / "store.sqlite").c_str(), &database);
    sqlite3_exec(database, pragmas, nullptr, nullptr, nullptr);
    sqlite3_exec(database,
                 "CREATE TABLE Mark (OwnerId TEXT, Number INTEGER, Visible INTEGER, Label TEXT, Remark TEXT); BEGIN",
                 nullptr, nullptr, nullptr);
    sqlite3_prepare_v2(database, "INSERT INTO Mark VALUES (?, ?, ?, ?, ?)", -1, &insert, nullptr);
    const auto add = [insert](EnhancementBase& record) {
        int column = 1;
        const auto bind = [&](const std::string& text) {
            sqlite3_bind_text(insert, column++, text.c_str(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
        };
        bind(record.ownerId.toString(false));
        for (const auto& [name, value] : record.getAttributes()) {
            bind(textOf(value));
        }
        const bool isAdded = sqlite3_step(insert) == SQLITE_DONE;
        sqlite3_reset(insert);
        return isAdded;
    };
    const Records records = makeMarks(state.range());
    for (const auto& record : records) {
        add(*record);
    }
    sqlite3_exec(database, "COMMIT", nullptr, nullptr, nullptr);
    for ([[maybe_unused]] const auto iteration : state) {
        const auto start = Clock::now();
        const bool isAdded = add(*records.front());
        state.SetIterationTime(Seconds(Clock::now() - start).count());
        if (!isAdded) {
            state.SkipWithError("SQLite adds no row");
        }
    }
    sqlite3_finalize(insert);
    sqlite3_close(database);
}

BENCHMARK(addPugixml)->Name("addRecord/pugixml")->Apply(eachSize);
BENCHMARK(addTinyxml2)->Name("addRecord/tinyxml2")->Apply(eachSize);
BENCHMARK(addLibxml2)->Name("addRecord/libxml2")->Apply(eachSize);
BENCHMARK_CAPTURE(addSqlite, full, "PRAGMA synchronous=FULL")->Name("addRecord/SQLite-FULL")->Apply(eachSize);
BENCHMARK_CAPTURE(addSqlite, normal, "PRAGMA synchronous=NORMAL")->Name("addRecord/SQLite-NORMAL")->Apply(eachSize);
BENCHMARK_CAPTURE(addSqlite, wal, "PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL")
    ->Name("addRecord/SQLite-WAL-NORMAL")
    ->Apply(eachSize);

} // namespace
