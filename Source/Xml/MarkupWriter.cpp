#include "Xml/MarkupWriter.h"

#include "Xml/Buffer.h"
#include "Xml/Names.h"
#include "Xml/Spelling.h"

#include <algorithm>
#include <cstdint>
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
    struct Tags {
        std::string start; // without attributes
        std::string end;
    };

    struct OpenElement {
        std::uint32_t name;
        bool isEmpty;
        bool isInline;
    };

    State(LineEnding lineEnding, std::size_t expectedSize)
        : out(expectedSize),
          lineBreak(lineBreakOf(lineEnding)),
          deepestLine(std::string(lineBreak) + std::string(indentationWidth * maximumIndentedDepth, ' ')) {}

    /// The number of the name, which has its tags then.
    std::uint32_t numberOf(std::string_view name) {
        const std::uint32_t number = names.numberOf(name);
        if (number >= tags.size()) {
            makeTags(number);
        }
        return number;
    }

    void makeTags(std::uint32_t last) {
        for (auto number = static_cast<std::uint32_t>(tags.size()); number <= last; ++number) {
            const std::string escaped = escapedName(names[number]);
            tags.push_back({"<" + escaped + ">", "</" + escaped + ">"});
        }
    }

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
    std::vector<Tags> tags; // by the number of the name
    std::vector<OpenElement> openElements;
};

MarkupWriter::MarkupWriter(LineEnding lineEnding, std::size_t expectedSize)
    : state(std::make_unique<State>(lineEnding, expectedSize)) {}

MarkupWriter::~MarkupWriter() = default;

void MarkupWriter::cut(std::size_t size) {
    state->out.cut(size);
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
    const std::uint32_t number = state->numberOf(name);
    state->out.append(state->startChild(), state->tags[number].start);
    if (!attributes.empty()) {
        state->out.dropLast();
        state->out.append(attributes, ">");
    }
    state->openElements.push_back({number, true, isInline});
}

void MarkupWriter::appendText(std::string_view text) {
    State::OpenElement& parent = state->openElements.back();
    parent.isEmpty = false;
    parent.isInline = true;
    state->out.append(CharacterData{text});
}

void MarkupWriter::appendMarkup(std::string_view markup) {
    if (!markup.empty()) {
        state->out.append(state->startChild(), markup);
    }
}

void MarkupWriter::setFilled() {
    state->openElements.back().isEmpty = false;
}

void MarkupWriter::endElement() {
    const State::OpenElement ended = state->openElements.back();
    state->openElements.pop_back();
    if (ended.isEmpty) {
        state->out.dropLast();
        state->out.append("/>");
    } else {
        state->out.append(ended.isInline ? std::string_view() : state->newLine(), state->tags[ended.name].end);
    }
    if (state->openElements.empty()) {
        state->out.append(state->lineBreak);
    }
}

void MarkupWriter::appendElement(std::string_view name, std::string_view text) {
    const State::Tags& tags = state->tags[state->numberOf(name)];
    state->out.append(state->startChild(), tags.start, CharacterData{text}, tags.end);
}

std::size_t MarkupWriter::getSize() const {
    return getText().size();
}

std::string_view MarkupWriter::getText() const {
    return state->out.getText();
}

} // namespace orv::xml
