#include "Annotate/Terminal.h"

#include "Annotate/Arguments.h"
#include "Xml/Utf8.h"

#include <algorithm>
#include <cwchar>
#include <iostream>
#include <limits>
#include <unistd.h>

namespace annotate {

namespace {

void appendHexEscape(std::string& out, char byte) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    const auto value = static_cast<unsigned char>(byte);
    out += "\\x";
    out += {digits[value >> 4U], digits[value & 0xfU]};
}

bool isControl(char32_t codePoint) {
    return codePoint < 0x20 || (codePoint >= 0x7f && codePoint < 0xa0);
}

/// The columns of a terminal that a text takes which printable gave.
std::size_t width(std::string_view text) {
    std::size_t columns = 0;
    while (!text.empty()) {
        const auto [codePoint, length] = orv::xml::decodeUtf8(text);
        const int characterWidth = ::wcwidth(static_cast<wchar_t>(codePoint));
        columns += characterWidth < 0 ? 1 : static_cast<std::size_t>(characterWidth);
        text.remove_prefix(length);
    }
    return columns;
}

void printAligned(const Row& row, const std::vector<std::size_t>& widths) {
    std::string line;
    for (std::size_t column = 0; column < row.size(); ++column) {
        line += row[column];
        if (column + 1 < row.size()) {
            line.append(widths[column] - width(row[column]) + 2, ' ');
        }
    }
    std::cout << line << '\n';
}

void printSeparated(const Row& row) {
    std::string_view separator;
    for (const std::string& cell : row) {
        std::cout << separator << cell;
        separator = "\t";
    }
    std::cout << '\n';
}

} // namespace

std::string printable(std::string_view text) {
    std::string out;
    while (!text.empty()) {
        const auto [codePoint, length] = orv::xml::decodeUtf8(text);
        const std::string_view character = text.substr(0, std::max<std::size_t>(length, 1));
        switch (text.front()) {
        case '\\':
            out += "\\\\";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        case '\t':
            out += "\\t";
            break;
        default:
            if (length == 0 || isControl(codePoint)) {
                std::for_each(character.begin(), character.end(), [&](char byte) { appendHexEscape(out, byte); });
            } else {
                out += character;
            }
        }
        text.remove_prefix(character.size());
    }
    return out;
}

void printStored(const std::filesystem::path& path) {
    if (!(std::cout << "Stored in " << printable(path.string()) << ".\n" << std::flush)) {
        throw RequestError("It is stored in " + path.string() + ", but the output couldn't be written.");
    }
}

ReadProgress::ReadProgress(std::uintmax_t fileSize) : size(fileSize) {
    if (::isatty(STDERR_FILENO) == 0) {
        nextStep = std::numeric_limits<std::uintmax_t>::max();
    }
}

ReadProgress::~ReadProgress() {
    if (isShown) {
        std::cerr << "\r                       \r";
    }
}

void ReadProgress::step(std::uintmax_t position) {
    constexpr auto moment = std::chrono::milliseconds(50);
    const std::uintmax_t percent = std::max<std::uintmax_t>(size / 100, 1);
    nextStep = position + percent;
    if (std::chrono::steady_clock::now() - start >= moment) {
        std::cerr << "\rReading the model: " + std::to_string(std::min<std::uintmax_t>(position / percent, 99)) + "%";
        isShown = true;
    }
}

void printTable(const Row& header, const std::vector<Row>& rows) {
    if (::isatty(STDOUT_FILENO) == 0) {
        std::for_each(rows.begin(), rows.end(), printSeparated);
        return;
    }
    std::vector<std::size_t> widths(header.size());
    const auto widen = [&widths](const Row& row) {
        std::transform(row.begin(), row.end(), widths.begin(), widths.begin(),
                       [](const std::string& cell, std::size_t widest) { return std::max(widest, width(cell)); });
    };
    widen(header);
    std::for_each(rows.begin(), rows.end(), widen);
    printAligned(header, widths);
    for (const Row& row : rows) {
        printAligned(row, widths);
    }
}

} // namespace annotate
