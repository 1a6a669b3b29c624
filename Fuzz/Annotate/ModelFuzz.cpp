// Any bytes are a model or throw a ModelError, and the objects of a model and their values are what they promise.

#include "Annotate/ModelDetails.h"
#include "FoundationClasses/IfcClass.h"
#include "Require.h"
#include "Support/TemporaryDirectory.h"
#include "Xml/Utf8.h"

#include <algorithm>

using namespace orv;

namespace {

void requireUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = xml::decodeUtf8(text).length;
        fuzz::require(length > 0, "texts are UTF-8");
        text.remove_prefix(length);
    }
}

void requireDetails(const annotate::ModelDetails& details) {
    for (const annotate::ModelObject& object : details.getModel().getObjects()) {
        std::vector<annotate::ModelSet> sets = details.setsOf(object);
        const std::vector<annotate::ModelSet> ofMaterials = details.materialSetsOf(object);
        sets.insert(sets.end(), ofMaterials.begin(), ofMaterials.end());
        for (const annotate::ModelSet& set : sets) {
            requireUtf8(set.name);
            for (const annotate::ModelProperty& property : set.properties) {
                requireUtf8(property.name);
                requireUtf8(property.from);
                requireUtf8(valuesText(property));
                requireUtf8(unitText(property));
            }
        }
        const auto place = details.placeOf(object);
        const annotate::ModelObject* const storey = details.storeyOf(object);
        fuzz::require(storey == nullptr || storey == &object ||
                          std::find(place.begin(), place.end(), storey) != place.end(),
                      "the storey is among the places, or the object itself");
        static_cast<void>(details.typeOf(object));
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const fuzz::Byte* data, std::size_t size) {
    static const tests::TemporaryDirectory directory;
    static const auto path = directory / "model.ifc";
    tests::setContent(path, std::string(data, data + size));
    try {
        const annotate::Model model = annotate::Model::read(path);
        for (const annotate::ModelObject& object : model.getObjects()) {
            fuzz::require(object.ifcClass->isObjectDefinition(), "objects are of a class below IfcObjectDefinition");
            requireUtf8(object.name);
            Guid id;
            if (id.boSet(object.globalId) && object.globalId.size() == 22) {
                const annotate::ModelObject* const found = model.find(id);
                fuzz::require(found != nullptr && found <= &object && found->globalId == object.globalId,
                              "an id finds its first object");
            }
        }
        const annotate::ModelDetails details = annotate::ModelDetails::read(path);
        fuzz::require(details.getModel().getObjects().size() == model.getObjects().size(),
                      "both readings find the same objects");
        requireDetails(details);
    } catch (const annotate::ModelError& error) {
        fuzz::require(std::string_view(error.what()).find("model.ifc") != std::string_view::npos,
                      "an error names the file");
    }
    return 0;
}
