// Any bytes are a model or give a ModelError, and the objects of a model are what they promise.

#include "Annotate/Model.h"
#include "FoundationClasses/IfcClass.h"
#include "Require.h"
#include "Support/TemporaryDirectory.h"
#include "Xml/Utf8.h"

using namespace orv;

int LLVMFuzzerTestOneInput(const fuzz::Byte* data, std::size_t size) {
    static const tests::TemporaryDirectory directory;
    static const auto path = directory / "model.ifc";
    tests::setContent(path, std::string(data, data + size));
    try {
        const annotate::Model model = annotate::Model::read(path);
        for (const annotate::ModelObject& object : model.getObjects()) {
            fuzz::require(object.ifcClass->isObjectDefinition(), "objects are of a class below IfcObjectDefinition");
            for (std::string_view rest = object.name; !rest.empty();) {
                const std::size_t length = xml::decodeUtf8(rest).length;
                fuzz::require(length > 0, "names are UTF-8");
                rest.remove_prefix(length);
            }
            Guid id;
            if (id.boSet(object.globalId) && object.globalId.size() == 22) {
                const annotate::ModelObject* const found = model.find(id);
                fuzz::require(found != nullptr && found <= &object && found->globalId == object.globalId,
                              "an id finds its first object");
            }
        }
    } catch (const annotate::ModelError& error) {
        fuzz::require(std::string_view(error.what()).find("model.ifc") != std::string_view::npos,
                      "an error names the file");
    }
    return 0;
}
