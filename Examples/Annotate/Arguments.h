#pragma once

#include "Id/Guid.h"

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace annotate {

/// What the user asks for. What doesn't belong to the command is empty.
struct Arguments {
    std::filesystem::path model;
    std::filesystem::path store; ///< Empty: beside the model.
    std::string className;       ///< Empty: any.
    std::string match;
    std::string globalId;
    std::string text;
    int priority = 0;
    bool resolved = false;
    std::string propertySet;
    std::string property;
    std::vector<std::string> values;
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

/// The id of the object. Throws RequestError if the text is none.
orv::Guid objectId(const Arguments& arguments);

/// That there is no such object in the model.
RequestError notInModel(const Arguments& arguments);

bool equalsInAnyCase(std::string_view a, std::string_view b);         ///< Of the letters A to Z.
bool containsInAnyCase(std::string_view text, std::string_view part); ///< Of the letters A to Z.

} // namespace annotate
