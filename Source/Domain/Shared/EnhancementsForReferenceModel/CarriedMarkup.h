#pragma once

#include "Xml/Outline.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orv::domain::shared::enhancementsforreferencemodel {

class EnhancementBase;

/// What the file holds beside the records of the database, as the load found it: elements of kinds that aren't
/// registered, records that couldn't be taken, comments. Every rewrite writes it again, as it stood and where it stood.
class CarriedMarkup {
public:
    struct Piece {
        std::size_t position; // the number of records ahead of it
        std::string markup;
    };

    /// Puts all pieces ahead of the first record, since there is none left to stand among.
    void moveToFront() {
        for (Piece& piece : pieces) {
            piece.position = 0;
        }
    }

    const std::vector<Piece>& getPieces() const { return pieces; }

    /// Takes the content of the root, which must last until endLoad.
    void startLoad(std::string_view content) { behindTurn = content; }

    /// It is the turn of the part's element. What is ahead of it stands behind that many records.
    void startTurn(std::size_t position, const xml::Outline::Part& part) {
        append(position, part.ahead);
        inTurn = part.element;
        behindTurn = part.behind;
    }

    /// Takes the record that the turn's element gave; noteAddition tells when it is added.
    void setCandidate(const EnhancementBase* record) { candidate = record; }

    /// A record was added. If it is the candidate, it stands for the element from now on.
    void noteAddition(const EnhancementBase* record) {
        if (record == candidate) {
            inTurn = {};
        }
    }

    /// Keeps the element, as behind that many records, if no record stands for it.
    void endTurn(std::size_t position) {
        append(position, inTurn);
        inTurn = {};
        candidate = nullptr;
    }

    /// Keeps what is still waiting, because an exception ended the load or because it is behind the last element.
    void endLoad(std::size_t position) {
        endTurn(position);
        append(position, behindTurn);
        behindTurn = {};
    }

    /// What the load hasn't come to or has in hand. It stands behind the records and the pieces.
    std::array<std::string_view, 2> getWaiting() const { return {inTurn, behindTurn}; }

    /// What stands around the records and the pieces.
    xml::Surroundings surroundings;

private:
    /// Adds a piece behind all others, unless it is empty.
    void append(std::size_t position, std::string_view markup) {
        if (!markup.empty()) {
            pieces.push_back({position, std::string(markup)});
        }
    }

    std::vector<Piece> pieces;
    std::string_view inTurn;
    std::string_view behindTurn;
    const EnhancementBase* candidate = nullptr;
};

} // namespace orv::domain::shared::enhancementsforreferencemodel
