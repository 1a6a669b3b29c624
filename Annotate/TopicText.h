#pragma once

#include <string>

namespace annotate {

/// The title and the description of a text: its first line, shortened if it is long, and all of it if that says more.
struct TitledText {
    std::string title;
    std::string description; ///< Empty if the title is the whole text.
};
TitledText titledText(const std::string& text);

/// The text of a title and a description: the description, if it begins as the title tells, or both.
std::string textOf(const TitledText& titled);

/// A line for the end of a description, which names an object that no viewpoint selects.
std::string objectLine(const std::string& objectName, const std::string& globalId);

/// Takes such a line off the end of the description and returns the GlobalId in it; empty if there is none.
std::string takeObjectLine(std::string& description);

} // namespace annotate
