#include "Annotate/XmlTree.h"

#include <expat.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <type_traits>

namespace annotate {

namespace {

std::string_view localName(std::string_view name) {
    return name.substr(name.find(':') + 1);
}

/// What the parser's calls build.
struct Tree {
    static constexpr std::size_t maximumDepth = 64;

    XML_Parser parser = nullptr;
    XmlElement top;                         ///< Which holds the root.
    std::vector<XmlElement*> open = {&top}; ///< The path to where the parser is.
    const char* refusal = nullptr;

    void refuse(const char* reason) {
        refusal = reason;
        XML_StopParser(parser, XML_FALSE);
    }

    static Tree& of(void* data) { return *static_cast<Tree*>(data); }
};

void start(void* data, const char* name, const char** attributes) {
    Tree& tree = Tree::of(data);
    if (tree.open.size() > Tree::maximumDepth) {
        return tree.refuse("is nested more than 64 deep");
    }
    XmlElement& element = tree.open.back()->children.emplace_back();
    element.name = localName(name);
    for (; *attributes != nullptr; attributes += 2) {
        element.attributes.emplace(localName(attributes[0]), attributes[1]);
    }
    tree.open.push_back(&element);
}

void end(void* data, const char* /*name*/) {
    Tree::of(data).open.pop_back();
}

void addText(void* data, const char* text, int size) {
    Tree::of(data).open.back()->text.append(text, static_cast<std::size_t>(size));
}

void refuseDoctype(void* data, const char* /*name*/, const char* /*system*/, const char* /*publicId*/, int /*inner*/) {
    Tree::of(data).refuse("has a document type declaration, which isn't taken");
}

} // namespace

const XmlElement* XmlElement::child(std::string_view childName) const {
    const auto found = std::find_if(children.begin(), children.end(),
                                    [childName](const XmlElement& each) { return each.name == childName; });
    return found == children.end() ? nullptr : &*found;
}

std::string XmlElement::textOf(std::string_view childName) const {
    const XmlElement* const found = child(childName);
    return found == nullptr ? "" : found->text;
}

std::string XmlElement::attribute(std::string_view attributeName) const {
    const auto found = attributes.find(attributeName);
    return found == attributes.end() ? "" : found->second;
}

XmlElement readXml(std::string_view document) {
    Tree tree;
    const std::unique_ptr<std::remove_pointer_t<XML_Parser>, void (*)(XML_Parser)> parser(XML_ParserCreate(nullptr),
                                                                                          XML_ParserFree);
    if (parser == nullptr) {
        throw std::bad_alloc();
    }
    tree.parser = parser.get();
    XML_SetUserData(parser.get(), &tree);
    XML_SetElementHandler(parser.get(), start, end);
    XML_SetCharacterDataHandler(parser.get(), addText);
    XML_SetStartDoctypeDeclHandler(parser.get(), refuseDoctype);
    // A file is at most 64 MB, which an int counts.
    if (XML_Parse(parser.get(), document.data(), static_cast<int>(document.size()), XML_TRUE) != XML_STATUS_OK) {
        throw XmlError(tree.refusal != nullptr ? tree.refusal
                                               : std::string("isn't well-formed XML (line ")
                                                     .append(std::to_string(XML_GetCurrentLineNumber(parser.get())))
                                                     .append(": ")
                                                     .append(XML_ErrorString(XML_GetErrorCode(parser.get())))
                                                     .append(")"));
    }
    return std::move(tree.top.children.front());
}

} // namespace annotate
