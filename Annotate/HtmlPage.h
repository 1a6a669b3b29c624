#pragma once

#include "Annotate/HtmlText.h"
#include "Annotate/NewFile.h"

#include <string>
#include <string_view>

namespace annotate {

/// A page that goes to a new file piece by piece.
class HtmlPage {
public:
    explicit HtmlPage(NewFile& newFile) : file(newFile) {}

    /// Adds markup as it stands.
    HtmlPage& operator<<(std::string_view markup) {
        constexpr std::size_t pieceSize = 1U << 16U;
        piece += markup;
        if (piece.size() >= pieceSize) {
            flush();
        }
        return *this;
    }

    /// Adds what is nothing but text, within an element or a quoted attribute.
    HtmlPage& text(std::string_view content) { return *this << htmlText(content); }

    /// The file has all of it then.
    void flush() {
        file.write(piece);
        piece.clear();
    }

private:
    NewFile& file;
    std::string piece;
};

} // namespace annotate
