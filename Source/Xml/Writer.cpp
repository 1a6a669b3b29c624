#include "Xml/Writer.h"

#include "Xml/Escape.h"

#include <algorithm>

namespace orv::xml {

namespace {

// Of a deep document the indentation would grow with the square of the depth.
constexpr std::size_t maximumIndentedDepth = 32;
constexpr std::size_t indentationWidth = 2;

// What a node of a document with short names takes beside its text. Too small a guess costs copies, not
// space.
constexpr std::size_t typicalMarkup = 16;

} // namespace

std::string Writer::write() {
    out.reserve(document.getTextSize() + typicalMarkup * document.getNodeCount());
    if (document.hasDeclaration()) {
        appendLine(R"(<?xml version="1.0" encoding="UTF-8"?>)");
    }
    appendLine(document.surroundings.before);
    NodeIndex node = 0;
    while (node != noNode) {
        if (begin(node)) {
            openElements.push_back(node);
            node = document.getFirstChild(node);
            continue;
        }
        while (!openElements.empty() && document.getNextSibling(node) == noNode) {
            node = openElements.back();
            openElements.pop_back();
            end(node);
        }
        node = document.getNextSibling(node);
    }
    out += lineBreak;
    appendLine(document.surroundings.after);
    return std::move(out);
}

/// Writes a node up to its children and tells whether it has any.
bool Writer::begin(NodeIndex node) {
    if (!openElements.empty()) {
        breakLine(openElements.back());
    }
    switch (document.getKind(node)) {
    case NodeKind::Element:
        out.append("<").append(document.getName(node).escaped);
        if (node == 0) {
            out += document.surroundings.rootAttributes;
        }
        if (document.getFirstChild(node) == noNode) {
            out += "/>";
            return false;
        }
        out += '>';
        return true;
    case NodeKind::Text:
        if (document.getText(node).empty()) {
            out += "<![CDATA[]]>";
        } else {
            appendEscapedText(out, document.getText(node));
        }
        return false;
    case NodeKind::Comment:
        out.append("<!--").append(document.getText(node)).append("-->");
        return false;
    case NodeKind::ProcessingInstruction:
        out.append("<?").append(document.getName(node).text);
        out.append(" ").append(document.getText(node)).append("?>");
        return false;
    case NodeKind::Markup:
        out += document.getText(node);
        return false;
    }
    return false;
}

void Writer::end(NodeIndex element) {
    breakLine(element);
    out.append("</").append(document.getName(element).escaped).append(">");
}

/// Begins a line in the parent, indented by the number of open elements, unless that would change its text.
void Writer::breakLine(NodeIndex parent) {
    if (lineBreak.empty() || document.hasText(parent)) {
        return;
    }
    out += lineBreak;
    out.append(indentationWidth * std::min(openElements.size(), maximumIndentedDepth), ' ');
}

void Writer::appendLine(std::string_view text) {
    if (!text.empty()) {
        out.append(text).append(lineBreak);
    }
}

} // namespace orv::xml
