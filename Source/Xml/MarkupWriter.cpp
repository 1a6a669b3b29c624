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

struct MarkupWriter::State {
    struct OpenElement {
        const Names::Name* name;
        bool isEmpty;
        bool isInline;
    };

    State(LineEnding lineEnding, std::size_t expectedSize)
        : out(expectedSize),
          lineBreak(lineBreakOf(lineEnding)),
          deepestLine(std::string(lineBreak) + std::string(indentationWidth * maximumIndentedDepth, ' ')) {}

    /// The line break and the indentation that a child of the open element starts with.
    std::string_view startChild() {
        if (openElements.empty()) {
            return {};
        }
        OpenElement& parent = openElements.back();
        parent.isEmpty = false;
        return parent.isInline ? std::string_view() : newLine();
    }

    /// The beginning of a line that is indented by the number of open elements.
    std::string_view newLine() const {
        const std::size_t blanks = indentationWidth * std::min(openElements.size(), maximumIndentedDepth);
        return std::string_view(deepestLine).substr(0, lineBreak.empty() ? 0 : lineBreak.size() + blanks);
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

void MarkupWriter::restart(std::size_t expectedSize) {
    state->out.restart(expectedSize);
    state->openElements.clear();
    state->names = Names();
}

void MarkupWriter::appendDeclaration() {
    appendOutside(R"(<?xml version="1.0" encoding="UTF-8"?>)");
}

void MarkupWriter::appendOutside(std::string_view markup) {
    if (!markup.empty()) {
        state->out.append(markup, state->lineBreak);
    }
}

void MarkupWriter::startElement(std::string_view name, std::string_view attributes, bool isInline) {
    const Names::Name& known = state->names.find(name);
    state->out.append(state->startChild(), known.startTag);
    if (!attributes.empty()) {
        state->out.dropLast();
        state->out.append(attributes, ">");
    }
    state->openElements.push_back({&known, true, isInline});
}

void MarkupWriter::appendText(std::string_view text) {
    State::OpenElement& parent = state->openElements.back();
    parent.isEmpty = false;
    parent.isInline = true;
    state->out.append(CharacterData{text});
}

void MarkupWriter::appendMarkup(std::string_view markup) {
    state->out.append(state->startChild(), markup);
}

void MarkupWriter::endElement() {
    const State::OpenElement ended = state->openElements.back();
    state->openElements.pop_back();
    if (ended.isEmpty) {
        state->out.dropLast();
        state->out.append("/>");
    } else {
        state->out.append(ended.isInline ? std::string_view() : state->newLine(), ended.name->endTag);
    }
    if (state->openElements.empty()) {
        state->out.append(state->lineBreak);
    }
}

void MarkupWriter::appendElement(std::string_view name, std::string_view text) {
    const Names::Name& known = state->names.find(name);
    state->out.append(state->startChild(), known.startTag, CharacterData{text}, known.endTag);
}

std::string_view MarkupWriter::getText() const {
    return state->out.getText();
}

} // namespace orv::xml
