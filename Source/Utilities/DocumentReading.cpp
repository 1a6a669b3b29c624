#include "Utilities/DocumentReading.h"

#include "Utilities/Beside.h"
#include "Utilities/Descriptor.h"
#include "Utilities/NoteContent.h"
#include "Utilities/SavingNote.h"

#include <chrono>
#include <string>
#include <thread>
#include <utility>

namespace orv::utilities {

namespace {

/// The content with what a write has left undone, by the note that stands beside it.
std::string wholeContent(std::string content, const std::string& noteBytes) {
    const auto note = NoteContent::parse(noteBytes);
    if (!note) {
        return content;
    }
    if (const auto size = note->sizeIfWhole(content)) {
        content.resize(*size);
    } else if (auto old = note->undone(content)) {
        return *std::move(old);
    }
    return content;
}

} // namespace

std::optional<DocumentReading> readDocument(const std::filesystem::path& path, std::error_code& error) {
    constexpr int attemptsToReadNote = 500;
    constexpr int maximumAttempts =
        2 * attemptsToReadNote; // others write meanwhile, and somebody may write without end
    constexpr auto moment = std::chrono::milliseconds(1);
    const std::filesystem::path documentPath = resolved(path);
    std::optional<DocumentReading> reading;
    for (int attempt = 0; attempt < maximumAttempts; ++attempt) {
        std::string note;
        std::string noteAfter;
        if (SavingNote::readBeside(documentPath, note) != done && attempt < attemptsToReadNote) {
            std::this_thread::sleep_for(moment); // a write whose note others may not read ends soon
            continue;
        }
        std::errc outcome{};
        const auto file = Descriptor::open(documentPath, Opening::Read, outcome);
        const auto state = file.isOpen() ? file.getState() : std::nullopt;
        auto content = state ? file.read() : std::nullopt;
        if (!content) {
            error = std::make_error_code(outcome == done ? std::errc::io_error : outcome);
            return std::nullopt;
        }
        const auto previous = std::exchange(reading, {{wholeContent(*std::move(content), note), *state, documentPath}});
        static_cast<void>(SavingNote::readBeside(documentPath, noteAfter)); // nothing if it can't be read, as before
        const bool isUnchanged = file.getState() == state && noteAfter == note;
        if (isUnchanged && (state->isOld() || (previous && previous->content == reading->content))) {
            error.clear();
            return reading;
        }
    }
    error = std::make_error_code(std::errc::resource_unavailable_try_again);
    return std::nullopt;
}

} // namespace orv::utilities
