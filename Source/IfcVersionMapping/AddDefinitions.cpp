#include "IfcVersionMapping/OwnDefinitions.h"
#include "IfcVersionMapping/SchemaDefinitions.h"
#include "Xml/ElementEvents.h"

#include <algorithm>
#include <array>
#include <istream>
#include <set>
#include <utility>

namespace orv::ifc {

using def::xml::PropertyKind;

namespace {

constexpr std::array<std::pair<std::string_view, PropertyKind>, 7> kinds{{
    {"TypePropertySingleValue", PropertyKind::Single},
    {"TypePropertyEnumeratedValue", PropertyKind::Enumerated},
    {"TypePropertyBoundedValue", PropertyKind::Bounded},
    {"TypePropertyListValue", PropertyKind::List},
    {"TypePropertyTableValue", PropertyKind::Table},
    {"TypePropertyReferenceValue", PropertyKind::Reference},
    {"TypeComplexProperty", PropertyKind::Complex},
}};

constexpr std::string_view propertyPath = "/PropertyDefs/PropertyDef";
constexpr std::string_view typePath = "/PropertyDefs/PropertyDef/PropertyType/";

std::string trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t begin = text.find_first_not_of(blanks);
    return begin == std::string_view::npos ? std::string()
                                           : std::string(text.substr(begin, text.find_last_not_of(blanks) - begin + 1));
}

/// Takes the definitions of a file as its elements come by.
class Reader : public xml::ElementEvents {
public:
    void beginElement(std::string_view name, const Attributes& attributes, std::uint64_t line) override {
        const std::string_view localName = name.substr(name.find(':') + 1);
        if (depthInSet == 0 && localName != "PropertySetDef") {
            return;
        }
        if (++depthInSet == 1) {
            beginSet(line);
            return;
        }
        lengths.push_back(path.size());
        path.append("/").append(localName);
        if (path == propertyPath) {
            property = {};
            property.line = line;
            hasKind = false;
        } else if (path.starts_with(typePath)) {
            takeType(std::string_view(path).substr(typePath.size()), attributes);
        }
    }

    void endElement(std::string_view text) override {
        if (depthInSet == 0) {
            return;
        }
        if (--depthInSet == 0) {
            endSet();
            return;
        }
        if (path == "/Name") {
            set.name = trimmed(text);
        } else if (path == "/ApplicableClasses/ClassName" && !trimmed(text).empty()) {
            set.classes.push_back(trimmed(text));
        } else if (path == "/PropertyDefs/PropertyDef/Name") {
            property.name = trimmed(text);
        } else if (path == "/PropertyDefs/PropertyDef/PropertyType/TypePropertyEnumeratedValue/EnumList/EnumItem") {
            takeEnumerated(trimmed(text));
        } else if (path == propertyPath) {
            endProperty();
        }
        path.resize(lengths.back());
        lengths.pop_back();
    }

    DefinitionsFile file;
    std::optional<DefinitionsRefusal> refusal; ///< The first.

private:
    void refuse(std::size_t line, std::string reason) {
        if (!refusal) {
            refusal = {line, std::move(reason)};
        }
    }

    void beginSet(std::size_t line) {
        set = {};
        setLine = line;
        firstOfSet = file.properties.size();
    }

    void endSet() {
        if (set.name.empty()) {
            refuse(setLine, "a property set has no name");
        } else if (file.properties.size() == firstOfSet) {
            refuse(setLine, set.name + " has no properties");
        }
        for (std::size_t number = firstOfSet; number < file.properties.size(); ++number) {
            auto& defined = file.properties[number];
            defined.set = set.name;
            if (!names.emplace(defined.set, defined.name).second) {
                refuse(defined.line, set.name + '.' + defined.name + " is defined twice");
            }
        }
        file.sets.push_back(std::move(set));
    }

    void endProperty() {
        if (property.name.empty()) {
            refuse(property.line, "a property has no name");
        } else if (!hasKind) {
            refuse(property.line, property.name + " has no type of property that is known");
        }
        file.properties.push_back(std::move(property));
    }

    /// What stands at that place in a PropertyType.
    void takeType(std::string_view place, const Attributes& attributes) {
        const auto* const kind =
            std::find_if(kinds.begin(), kinds.end(), [place](const auto& known) { return known.first == place; });
        if (kind != kinds.end()) {
            hasKind = true;
            property.kind = kind->second;
            property.valueType =
                property.kind == PropertyKind::Enumerated ? "IfcLabel" : valueOf(attributes, "reftype");
        } else if (place == "TypePropertySingleValue/DataType" || place == "TypePropertyBoundedValue/DataType" ||
                   place == "TypePropertyListValue/ListValue/DataType" ||
                   place == "TypePropertyTableValue/DefiningValue/DataType") {
            property.valueType = valueOf(attributes, "type");
        } else if (place == "TypePropertyTableValue/DefinedValue/DataType" ||
                   place == "TypePropertyReferenceValue/DataType") {
            property.definedValueType = valueOf(attributes, "type");
        }
    }

    static std::string valueOf(const Attributes& attributes, std::string_view name) {
        for (const auto& [known, value] : attributes) {
            if (known == name) {
                return trimmed(value);
            }
        }
        return {};
    }

    void takeEnumerated(const std::string& value) {
        if (value.find(';') != std::string::npos) {
            refuse(property.line, "a value of the enumeration has a semicolon: " + value);
        }
        if (!value.empty()) {
            property.enumerationValues += (property.enumerationValues.empty() ? "" : ";") + value;
        }
    }

    std::uint64_t depthInSet = 0;     // 1 for the set's own element
    std::string path;                 // of the present element, from its set's on
    std::vector<std::size_t> lengths; // of the paths of the elements around it

    DefinitionsFile::Set set;
    std::size_t setLine = 0;
    std::size_t firstOfSet = 0;
    DefinitionsFile::Property property;
    bool hasKind = false;
    std::set<std::pair<std::string, std::string>> names;
};

} // namespace

AddedDefinitions addDefinitions(std::istream& stream, const std::string& source) {
    if (!stream) {
        return {0, 1, "the stream can't be read"};
    }
    Reader reader;
    const auto failure = xml::readElements(stream, reader);
    if (reader.refusal) {
        return {0, reader.refusal->line, reader.refusal->reason};
    }
    if (failure) {
        return {0, failure->line, failure->reason};
    }
    if (reader.file.sets.empty()) {
        return {0, 1, "there is no PropertySetDef"};
    }
    const std::size_t before = ownDefinitions().size();
    std::erase_if(reader.file.properties,
                  [](const auto& property) { return findPublishedDefinition(property.set, property.name) != nullptr; });
    if (const auto refusal = keepDefinitions(reader.file, source)) {
        return {0, refusal->line, refusal->reason};
    }
    return {ownDefinitions().size() - before, 0, {}};
}

std::vector<const def::xml::Def*> addedDefinitions() {
    return ownDefinitions();
}

} // namespace orv::ifc
