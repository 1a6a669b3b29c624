#pragma once

#include <filesystem>
#include <string_view>

namespace annotate {

/// What Ctrl-C, a terminal that is closed and a request to terminate do while it lives: the process says that nothing
/// came of it and ends by that signal at once, so that a shell's loop ends too. There is one at a time.
class Interruption {
public:
    /// The sentence, as in "Nothing was stored.", lives as long as the process.
    explicit Interruption(std::string_view sentence);
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;
    ~Interruption();

    /// The file goes as well then. Its path has less than 4,096 bytes, or it stays.
    void removeAtEnd(const std::filesystem::path& path);

    /// From here on the signal waits.
    void hold();

    /// To be called when it is stored, and that was said. Ends the process if a signal came meanwhile.
    void release();

private:
    bool isHeld = false;
};

} // namespace annotate
