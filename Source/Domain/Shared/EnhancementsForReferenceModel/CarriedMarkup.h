#pragma once

#include "Xml/Surroundings.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orv::domain::shared::enhancementsforreferencemodel {

/// What the file holds beside the records of the database, as the load found it: elements of kinds that aren't
/// registered, records that couldn't be taken, comments. Every rewrite writes it again, as it stood and where it stood.
class CarriedMarkup {
public:
    struct Piece {
        std::size_t position; // the number of records ahead of it
        std::string markup;
    };

    /// Behind all that was found before, and in this order.
    void append(std::size_t position, std::string_view markup) {
        if (!markup.empty()) {
            pieces.push_back({position, std::string(markup)});
        }
    }

    /// For a database that has lost its records.
    void moveToFront() {
        for (Piece& piece : pieces) {
            piece.position = 0;
        }
    }

    const std::vector<Piece>& getPieces() const { return pieces; }

    /// Takes what the load has before it, the content of the root, which must last until endLoad.
    void startLoad(std::string_view content) {
        waiting = content;
        behindTurn = content.size();
    }

    /// It is the turn of all but the last bytes of the content.
    void startTurn(std::size_t behind) { behindTurn = behind; }

    /// What had its turn has become a record or a piece and doesn't wait any more.
    void endTurn() { waiting.remove_prefix(waiting.size() - behindTurn); }

    /// Keeps what is still waiting, as behind that many records: an exception ended the load.
    void endLoad(std::size_t position) {
        append(position, waiting);
        startLoad({});
    }

    /// What the load hasn't come to. It stands behind the records and the pieces.
    std::string_view getWaiting() const { return waiting; }

    /// What stands around the records and the pieces.
    xml::Surroundings surroundings;

private:
    std::vector<Piece> pieces;
    std::string_view waiting;
    std::size_t behindTurn = 0; // how much of it is left after the present turn
};

} // namespace orv::domain::shared::enhancementsforreferencemodel
