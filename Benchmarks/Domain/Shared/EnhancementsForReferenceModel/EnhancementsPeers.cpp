// The same addition by other XML libraries, which build their document and save it into the emptied file: without a
// lock, and without seeing to it that it is on the disk.

#include "Domain/Shared/EnhancementsForReferenceModel/SampleRecords.h"
#include "Support/TemporaryDirectory.h"

#include <benchmark/benchmark.h>

#include <libxml/tree.h>
#include <pugixml.hpp>
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

BENCHMARK(addPugixml)->Name("addRecord/pugixml")->Apply(eachSize);
BENCHMARK(addTinyxml2)->Name("addRecord/tinyxml2")->Apply(eachSize);
BENCHMARK(addLibxml2)->Name("addRecord/libxml2")->Apply(eachSize);

} // namespace
