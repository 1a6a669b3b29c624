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

    /// Appends that range of what was accepted last, and returns where it stands in the draft.
    Range repeat(const Range& range);

    void endDraft();

    void accept();
    void discard();

    /// What was accepted last, while there is no draft, and its digest.
    std::string_view getAccepted() const { return getText(); }
    const utilities::Digest& getAcceptedDigest() const { return accepted.get(); }

    /// The draft, from endDraft until it is accepted or discarded; so for the next two.
    std::string_view getDraft() const { return getText(); }

    /// The replacement of what was accepted last by the draft. Its views are good for as long.
    utilities::Replacement getReplacement() const;

    /// What was accepted last.
    std::string getFormerText() const;

private:
    void cut();
    void appendToText(std::string_view piece);
    std::string_view getText() const { return {text.data(), text.size()}; }

    std::vector<char> text;     // the draft, once it differs, otherwise what was accepted last; a string would double
    std::size_t sharedSize = 0; // of the beginning that both have, as far as that is known
    bool differs = false;       // the draft from what was accepted last
    std::string formerEnd;      // what was accepted last, behind that, if the draft differs
    utilities::RunningDigest accepted;
    utilities::RunningDigest drafted;
};

} // namespace orv::domain::shared::enhancementsforreferencemodel
