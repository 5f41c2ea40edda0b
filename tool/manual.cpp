#include "manual.h"

#include <algorithm>
#include <vector>

namespace tool {

static std::vector<const CLI::App*> commandsOf(const CLI::App& app) {
    return app.get_subcommands([](const CLI::App*) { return true; });
}

/// A text as a line of a manual page: no character of its own meaning for the formatter.
static std::string plain(const std::string& text) {
    std::string out = text.starts_with('.') || text.starts_with('\'') ? "\\&" : "";
    for (const char c : text) {
        if (c == '\\')
            out += "\\e";
        else if (c == '-')
            out += "\\-";
        else
            out += c;
    }
    return out;
}

static std::string optionEntry(const CLI::Option& option) {
    std::string names;
    for (const std::string& name : option.get_snames()) names += (names.empty() ? "-" : ", -") + name;
    for (const std::string& name : option.get_lnames()) names += (names.empty() ? "--" : ", --") + name;
    if (names.empty()) names = option.get_name(true);
    const bool takesValue = option.get_type_size() != 0 && !option.get_positional();
    return ".TP\n.B " + plain(names) + (takesValue ? " \\fI" + plain(option.get_type_name()) + "\\fR" : "") +
           "\n" + plain(option.get_description()) + "\n";
}

static std::string optionList(const CLI::App& app) {
    std::string text;
    for (const CLI::Option* option : app.get_options())
        if (!option->get_group().empty()) text += optionEntry(*option);
    return text;
}

/// The lines of a footer, as they stand.
static std::string verbatim(const std::string& text) {
    return text.empty() ? text : ".PP\n.nf\n" + plain(text) + "\n.fi\n";
}

std::string manualPage(const CLI::App& app) {
    std::string text = ".TH TORVA-DXF 1\n.SH NAME\n" + plain(app.get_name() + " - " + app.get_description()) +
                       "\n.SH SYNOPSIS\n.B " + plain(app.get_name()) +
                       "\n.I COMMAND\n[options]\n.SH OPTIONS\n" + optionList(app) + ".SH COMMANDS\n";
    for (const CLI::App* command : commandsOf(app))
        text += ".SS " + plain(command->get_name()) + "\n" + plain(command->get_description()) + ".\n" +
                optionList(*command) + verbatim(command->get_footer());
    return text + ".SH NOTES\n" + verbatim(app.get_footer());
}

static std::string optionWords(const CLI::App& app) {
    std::string words;
    for (const CLI::Option* option : app.get_options())
        for (const std::string& name : option->get_lnames()) words += " --" + name;
    return words;
}

std::string bashCompletion(const CLI::App& app) {
    std::string commands, cases;
    for (const CLI::App* command : commandsOf(app)) {
        commands += " " + command->get_name();
        cases +=
            "        " + command->get_name() + ") words=\"" + optionWords(*command).substr(1) + "\" ;;\n";
    }
    return "# Completion of torva-dxf for bash.\n"
           "_torva_dxf() {\n"
           "    local current=${COMP_WORDS[COMP_CWORD]} words\n"
           "    if [ \"$COMP_CWORD\" -eq 1 ]; then\n"
           "        COMPREPLY=($(compgen -W \"" +
           commands.substr(1) + optionWords(app) +
           "\" -- \"$current\"))\n"
           "        return\n"
           "    fi\n"
           "    case ${COMP_WORDS[1]} in\n" +
           cases +
           "    esac\n"
           "    [[ $current == -* ]] && COMPREPLY=($(compgen -W \"$words\" -- \"$current\"))\n"
           "}\n"
           "complete -o default -F _torva_dxf torva-dxf\n";
}

} // namespace tool
