#include "Annotate/ManPage.h"

#include "Annotate/CommandHelp.h"

namespace annotate {

namespace {

/// A text that man shows as it is: no hyphen becomes another character, no line is taken for a request.
std::string plain(std::string_view text) {
    std::string escaped;
    for (const char character : text) {
        const bool isLineStart = escaped.empty() || escaped.back() == '\n';
        if (isLineStart && (character == '.' || character == '\'')) {
            escaped += "\\&";
        }
        switch (character) {
        case '\\':
            escaped += "\\e";
            break;
        case '-':
            escaped += "\\-";
            break;
        case '\'':
            escaped += "\\(aq";
            break;
        default:
            escaped += character;
        }
    }
    return escaped;
}

std::string item(const std::string& words, const std::string& text) {
    return ".TP\n.B " + plain(words) + '\n' + plain(text) + ".\n";
}

/// Options and what takes its place without a name.
std::string itemsOf(const CLI::App& command) {
    std::string text;
    for (const CLI::Option* const positional : positionals(command)) {
        text += item(wordsOf(*positional), positional->get_description());
    }
    for (const CLI::Option* const option : namedOptions(command)) {
        const bool takesValue = option->get_items_expected_max() > 0;
        text += item(option->get_name(false, true) + (takesValue ? ' ' + option->get_type_name() : ""),
                     option->get_description());
    }
    return text;
}

std::string sectionOn(const CLI::App& command) {
    std::string text = ".SS " + plain(command.get_name()) + '\n';
    text += plain(command.get_description()) + ".\n.PP\n.B " + plain(usageOf(command)) + '\n';
    text += itemsOf(command);
    return text + ".PP\n.nf\n" + plain(command.get_footer()) + "\n.fi\n";
}

} // namespace

std::string manPage(const CLI::App& app) {
    std::string text = R"(.TH ANNOTATE 1 "" ")" + plain(app.version()) + "\"\n";
    text +=
        ".SH NAME\nannotate \\- " + plain(app.get_description()) + "\n.SH SYNOPSIS\n.B " + plain(usageOf(app)) + '\n';
    text += ".SH OPTIONS\n" + itemsOf(app) + ".SH COMMANDS\n";
    for (const CLI::App* const command : app.get_subcommands(nullptr)) {
        text += sectionOn(*command);
    }
    return text;
}

} // namespace annotate
