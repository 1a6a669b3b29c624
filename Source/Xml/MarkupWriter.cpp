#include "Xml/MarkupWriter.h"

#include "Xml/Buffer.h"
#include "Xml/Escape.h"
#include "Xml/Names.h"

#include <algorithm>
#include <string>
#include <vector>

namespace orv::xml {

namespace {

// Of a deep document the indentation would grow with the square of the depth.
constexpr std::size_t maximumIndentedDepth = 32;
constexpr std::size_t indentationWidth = 2;

std::string_view lineBreakOf(LineEnding lineEnding) {
    switch (lineEnding) {
    case LineEnding::CrLf:
        return "\r\n";
    case LineEnding::Lf:
        return "\n";
    default:
        return {};
    }
}

} // namespace

class MarkupWriter::State {
public:
    State(LineEnding lineEnding, std::size_t expectedSize)
        : out(expectedSize),
          lineBreak(lineBreakOf(lineEnding)),
          deepestLine(std::string(lineBreak) + std::string(indentationWidth * maximumIndentedDepth, ' ')) {}

    void appendOutside(std::string_view markup) {
        if (!markup.empty()) {
            out.append(markup);
            out.append(lineBreak);
        }
    }

    void startElement(std::string_view name, std::string_view attributes, bool isInline) {
        const Names::Name& known = names[names.numberOf(name)];
        startChild();
        out.append(known.startTag);
        if (!attributes.empty()) {
            out.dropLast();
            out.append(attributes);
            out.append(">");
        }
        openElements.push_back({&known, true, isInline});
    }

    void appendText(std::string_view text) {
        openElements.back().isEmpty = false;
        openElements.back().isInline = true;
        appendCharacters(text);
    }

    void appendElement(std::string_view name, std::string_view text) {
        const Names::Name& known = names[names.numberOf(name)];
        startChild();
        out.append(known.startTag);
        appendCharacters(text);
        out.append(known.endTag);
    }

    void appendMarkup(std::string_view markup) {
        startChild();
        out.append(markup);
    }

    void endElement() {
        const OpenElement ended = openElements.back();
        openElements.pop_back();
        if (ended.isEmpty) {
            out.dropLast();
            out.append("/>");
        } else {
            if (!ended.isInline) {
                breakLine();
            }
            out.append(ended.name->endTag);
        }
        if (openElements.empty()) {
            out.append(lineBreak);
        }
    }

    std::string_view getText() const { return out.getText(); }

private:
    struct OpenElement {
        const Names::Name* name;
        bool isEmpty;
        bool isInline;
    };

    void appendCharacters(std::string_view text) {
        if (text.empty()) {
            out.append("<![CDATA[]]>");
        } else {
            appendEscapedText(out, text);
        }
    }

    void startChild() {
        if (openElements.empty()) {
            return;
        }
        OpenElement& parent = openElements.back();
        parent.isEmpty = false;
        if (!parent.isInline) {
            breakLine();
        }
    }

    /// Begins a line, indented by the number of open elements.
    void breakLine() {
        if (!lineBreak.empty()) {
            const std::size_t blanks = indentationWidth * std::min(openElements.size(), maximumIndentedDepth);
            out.append(std::string_view(deepestLine).substr(0, lineBreak.size() + blanks));
        }
    }

    Buffer out;
    std::string_view lineBreak;
    std::string deepestLine;
    Names names;
    std::vector<OpenElement> openElements;
};

MarkupWriter::MarkupWriter(LineEnding lineEnding, std::size_t expectedSize)
    : state(std::make_unique<State>(lineEnding, expectedSize)) {}

MarkupWriter::~MarkupWriter() = default;

void MarkupWriter::appendDeclaration() {
    state->appendOutside(R"(<?xml version="1.0" encoding="UTF-8"?>)");
}

void MarkupWriter::appendOutside(std::string_view markup) {
    state->appendOutside(markup);
}

void MarkupWriter::startElement(std::string_view name, std::string_view attributes, bool isInline) {
    state->startElement(name, attributes, isInline);
}

void MarkupWriter::appendText(std::string_view text) {
    state->appendText(text);
}

void MarkupWriter::appendMarkup(std::string_view markup) {
    state->appendMarkup(markup);
}

void MarkupWriter::endElement() {
    state->endElement();
}

void MarkupWriter::appendElement(std::string_view name, std::string_view text) {
    state->appendElement(name, text);
}

std::string_view MarkupWriter::getText() const {
    return state->getText();
}

} // namespace orv::xml
