#pragma once

#include "Id/Guid.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace annotate {

/// What the user asks for. What doesn't belong to the command is empty.
struct Arguments {
    std::string command; ///< As it was typed, without the model, the store and the author.
    std::filesystem::path model;
    std::filesystem::path store;                    ///< Empty: beside the model.
    std::vector<std::filesystem::path> definitions; ///< Files of the user's own.
    std::string globalId;
    std::string oldId;                  ///< Of the object whose notes and edits another one gets.
    std::vector<std::string> globalIds; ///< Of the command that takes several.
    std::vector<std::string> words;     ///< Of commands on one object or on those that are chosen.

    // Which objects, notes or edits.
    std::vector<std::string> classes; ///< Empty: any.
    std::string match;
    std::vector<std::string> storeys;
    std::vector<std::string> conditions; ///< As Condition reads them.
    std::string byAuthor;
    std::string since;
    bool open = false;
    bool onlyResolved = false;
    bool vanished = false;

    std::string author; ///< Who gives the command.
    std::optional<std::string> text;
    std::optional<int> priority;
    bool resolved = false;
    std::vector<std::int64_t> numbers;

    std::string propertySet;
    std::string lower;
    std::string upper;
    std::string setPoint;
    std::string unit;       ///< Of the values that are given; empty: the model's.
    bool onlyNotes = false; ///< Of an export to a table.
    bool strict = false;
    bool keepGoing = false;
    std::string bcfVersion;     ///< Of an archive of topics that is made; empty: the newest.
    std::filesystem::path file; ///< That is imported, "-" for standard input; or made by an export.

    std::string helpOn; ///< A command; empty: the program.
    bool wantsManPage = false;

    bool csv = false;
    bool json = false;

    bool choosesObjects() const {
        return !classes.empty() || !match.empty() || !storeys.empty() || !conditions.empty();
    }
};

/// What the arguments ask for can't be done; what() tells the user why.
class RequestError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The arguments make no sense together; what() tells the user why.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The file of the additions. Throws UsageError if it is the model itself.
std::filesystem::path storePath(const Arguments& arguments);

/// Whether both paths name the same file.
bool areSameFile(const std::filesystem::path& one, const std::filesystem::path& other);

/// The path of a file beside the model, with the ending in place of the model's.
std::filesystem::path besideModel(const std::filesystem::path& model, std::string_view ending);

/// Who gives the command: --author, ANNOTATE_AUTHOR, or the login's full name or else its name. Throws UsageError if
/// that has control characters.
std::string authorOf(const Arguments& arguments);

/// Names are told on one line.
bool hasControlCharacter(std::string_view text);

/// The id of the object. Throws RequestError if the text is none.
orv::Guid idOf(const std::string& globalId);

} // namespace annotate
