#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace annotate {

/// The text with every control character, and every byte that is no UTF-8, as a backslash escape (\n, \r, \t or \xHH
/// for each byte), so that a text is one line and can't steer the terminal. A backslash is doubled.
std::string printable(std::string_view text);

/// Says that an addition is in the file. Throws RequestError if that couldn't be said.
void printStored(const std::filesystem::path& path);

/// Shows in the terminal that standard error may be how far the reading of a model is. It stays away for the first
/// moment, and takes itself away at the end.
class ReadProgress {
public:
    explicit ReadProgress(std::uintmax_t fileSize);
    ReadProgress(const ReadProgress&) = delete;
    ReadProgress& operator=(const ReadProgress&) = delete;
    ~ReadProgress();

    /// So much of the file has been read.
    void reach(std::uintmax_t position) {
        if (position >= nextStep) {
            step(position);
        }
    }

private:
    void step(std::uintmax_t position);

    std::uintmax_t size;
    std::uintmax_t nextStep = 0;
    std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
    bool isShown = false;
};

using Row = std::vector<std::string>;

/// Writes the rows to standard output: in a terminal as a table with the header and aligned columns,
/// elsewhere one line a row, with tabs between the columns and no header.
void printTable(const Row& header, const std::vector<Row>& rows);

} // namespace annotate
