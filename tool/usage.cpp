#include "usage.h"

#include "suggest.h"
#include "words.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace tool {

namespace {

struct Example {
    const char* command;
    const char* line;
    const char* what;
};

/// The first example of a command stands in the program's own help too.
constexpr std::array kExamples{
    Example{"render", "render plan.dxf plan.svg", "a picture, to see what is in the file"},
    Example{"render", "render plan.dxf plan.png --size 3000 --dark", "a large one, on black"},
    Example{"render", "render *.dxf -o book.pdf --paper A3 --landscape", "many, a page each"},
    Example{"render", "render *.dxf -d pictures --type svg --jobs 4", "many, four at a time"},
    Example{"render", "render plan.dxf - --type svg --window 0,0,20,10", "a part, to standard output"},
    Example{"info", "info plan.dxf", "what is in a drawing"},
    Example{"info", "info plan.dxf --json", "the same for programs"},
    Example{"info", "info *.dxf --jobs 4", "many, four at a time"},
    Example{"info", "info - < plan.dxf", "from standard input"},
    Example{"import", "import plan.dxf -o plan.tdw", "a drawing file (SQLite)"},
    Example{"import", "import *.dxf -d drawings --jobs 4", "many, four at a time"},
    Example{"convert", "convert plan.dxf r12.dxf --format R12", "an older version of DXF"},
    Example{"convert", "convert *.dxf -d r12 --format R12 --jobs 2", "many"},
    Example{"export", "export plan.tdw plan.dxf --format 2010", "a drawing file goes out again"},
    Example{"dump", "dump plan.tdw", "the drawing as text, for diffs"},
    Example{"sat", "sat part.sab part.sat", "a solid model at version 700, as text"},
    Example{"sat", "sat --dump part.sat", "its records"},
    Example{"sat", "sat --extract plan.dxf -d parts", "the solids of a drawing"},
    Example{"validate", "validate plan.dxf", "what is wrong with the file itself"},
    Example{"validate", "validate *.dxf --strict", "warnings count as errors"},
    Example{"validate", "validate *.dxf --level error --jobs 4", "errors only, four files at a time"},
    Example{"validate", "validate plan.dxf --repair new.dxf", "write it with what can be mended mended"},
};

struct FormatName {
    const char* name;
    const char* keyword;
};

constexpr std::array kFormatNames{
    FormatName{"2018", "ACAD32"},   FormatName{"R2018", "ACAD32"},  FormatName{"2013", "ACAD27"},
    FormatName{"R2013", "ACAD27"},  FormatName{"2010", "ACAD24"},   FormatName{"R2010", "ACAD24"},
    FormatName{"2007", "ACAD21"},   FormatName{"R2007", "ACAD21"},  FormatName{"2004", "ACAD18"},
    FormatName{"R2004", "ACAD18"},  FormatName{"2000", "ACAD15"},   FormatName{"R2000", "ACAD15"},
    FormatName{"R15", "ACAD15"},    FormatName{"R14", "ACAD14"},    FormatName{"14", "ACAD14"},
    FormatName{"R13", "ACAD13"},    FormatName{"13", "ACAD13"},     FormatName{"R12", "ACAD12"},
    FormatName{"12", "ACAD12"},     FormatName{"R11", "ACAD11"},    FormatName{"11", "ACAD11"},
    FormatName{"AC1032", "ACAD32"}, FormatName{"AC1027", "ACAD27"}, FormatName{"AC1024", "ACAD24"},
    FormatName{"AC1021", "ACAD21"}, FormatName{"AC1018", "ACAD18"}, FormatName{"AC1015", "ACAD15"},
    FormatName{"AC1014", "ACAD14"}, FormatName{"AC1012", "ACAD13"}, FormatName{"AC1009", "ACAD12"},
};

} // namespace

static std::string exampleLine(const Example& example) {
    constexpr std::size_t width = 46;
    std::string line = "  torva-dxf " + std::string(example.line);
    line.resize(std::max(width, line.size() + 2), ' ');
    return line + words::say(example.what) + "\n";
}

static std::string examplesOf(const std::string& command) {
    std::string text;
    for (const Example& example : kExamples)
        if (command == example.command) text += exampleLine(example);
    return text.empty() ? text : words::say("Examples:") + "\n" + text;
}

void addExamples(CLI::App& app) {
    std::string first = words::say("Examples:") + "\n", last;
    for (const Example& example : kExamples) {
        if (last != example.command) first += exampleLine(example);
        last = example.command;
    }
    app.footer(
        first + "\n" + words::say("'torva-dxf COMMAND --help' tells of a command's options.") + "\n" +
        words::say("Exit status: 0 done, 1 an import or export ended with an error, 2 wrong usage.") + "\n" +
        words::say("The protocol of each run goes to HD_WORK_DIR/dxf.proto when that variable is set."));
    for (CLI::App* command : app.get_subcommands({})) command->footer(examplesOf(command->get_name()));
}

static void translateOptions(CLI::App& app) {
    app.description(words::say(app.get_description()));
    for (CLI::Option* option : app.get_options()) {
        option->description(words::say(option->get_description()));
        option->group(words::say(option->get_group()));
    }
}

void translateHelp(CLI::App& app) {
    const auto formatter = app.get_formatter();
    for (const char* label :
         {"Usage", "Positionals", "OPTIONS", "SUBCOMMAND", "REQUIRED", "Needs", "Excludes"})
        formatter->label(label, words::say(label));
    translateOptions(app);
    for (CLI::App* command : app.get_subcommands({})) {
        translateOptions(*command);
        command->group(words::say(command->get_group()));
    }
}

static std::vector<std::string> optionNames(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::Option* option : app.get_options())
        for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
    return names;
}

static bool isLongOption(const std::string& word) {
    return word.size() > 2 && word.starts_with("--");
}

static std::string unknownOption(const CLI::App& app, const std::string& word) {
    const std::vector<std::string> names = optionNames(app);
    const std::string name = word.substr(0, word.find('='));
    if (std::find(names.begin(), names.end(), name) != names.end()) return {};
    return words::say("unknown option {}", name) + didYouMean(name, names);
}

std::string unknownWord(const CLI::App& app, const std::vector<std::string>& arguments) {
    std::vector<std::string> commands;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
        commands.push_back(command->get_name());
    const CLI::App* scope = &app;
    bool isValue = false; // of the global option in front
    for (const std::string& word : arguments) {
        if (word == "--") break;
        if (isLongOption(word)) {
            if (std::string wrong = unknownOption(*scope, word); !wrong.empty()) return wrong;
            isValue = scope == &app && word == "--lang";
        } else if (isValue) {
            isValue = false;
        } else if (scope == &app && !word.starts_with("-")) {
            if (std::find(commands.begin(), commands.end(), word) == commands.end())
                return words::say("unknown command {}", word) + didYouMean(word, commands);
            scope = app.get_subcommand(word);
        }
    }
    return {};
}

std::string formatKeyword(const std::string& word) {
    std::string upper = word;
    for (char& c : upper) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    for (const FormatName& format : kFormatNames)
        if (upper == format.name) return format.keyword;
    return upper;
}

} // namespace tool
