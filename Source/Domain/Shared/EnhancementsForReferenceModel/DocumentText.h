#pragma once

#include "Utilities/Change.h"
#include "Utilities/Digest.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orv::domain::shared::enhancementsforreferencemodel {

/// The text of a document, and a draft of the next one, which shares the beginning that both have. A draft is made
/// piece by piece, from its beginning to its end, and then accepted or discarded.
class DocumentText {
public:
    /// A part of a text.
    struct Range {
        std::size_t begin = 0;
        std::size_t end = 0;
    };

    /// The expected size is that of the whole draft; it may get longer.
    void startDraft(std::size_t expectedSize);

    /// Appends to the draft, and returns where that stands in it.
    Range append(std::string_view piece);

    /// Appends what stands there in what was accepted last.
    Range repeat(const Range& range);

    void endDraft();

    void accept();
    void discard();

    /// What was accepted last, between an acceptance and the start of the next draft, and its digest.
    std::string_view getText() const { return {text.data(), text.size()}; }
    const utilities::Digest& getDigest() const { return accepted.get(); }

    /// Replaces what was accepted last by the draft, which has ended. For as long as the draft isn't accepted or
    /// discarded.
    utilities::Replacement getReplacement() const;

    /// What was accepted last, during that time.
    std::string getFormerText() const;

private:
    void cut();
    void appendToText(std::string_view piece);

    std::vector<char>
        text;             // the draft, once it differs, otherwise what was accepted last; it grows by less than strings
    std::size_t same = 0; // the size of the beginning that both have, as far as that is known
    bool isCut = false;   // the draft differs
    std::string formerEnd; // what was accepted last, behind that, if the draft differs
    utilities::RunningDigest accepted;
    utilities::RunningDigest drafted;
};

} // namespace orv::domain::shared::enhancementsforreferencemodel
