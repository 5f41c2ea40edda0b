// The torva-dxf command: its command line.
#include "environment.h"
#include "interrupt.h"
#include "manual.h"
#include "options.h"
#include "options_render.h"
#include "streams.h"
#include "tell.h"
#include "units.h"
#include "usage.h"
#include "validate.h"
#include "variables.h"
#include "words.h"

#include <CLI/CLI.hpp>

#include <iostream>

namespace tool {

static void addMessageOptions(CLI::App& command, Options& options) {
    command.add_option("--confine", options.confine, "Read and write only below this folder; repeatable")
        ->type_name("DIR")
        ->allow_extra_args(false);
    command.add_flag("-q,--quiet", options.quiet, "Errors only");
    command.add_flag("-v,--verbose", options.verbose, "All messages of the run");
    command.add_option("--lang", options.language, "Language of messages")
        ->check(CLI::IsMember({"de", "en"}));
}

static void addUnit(CLI::App& command, const char* name, int& unit, std::string_view purpose) {
    command.add_option_function<std::string>(
        name,
        [name, &unit](const std::string& word) {
            unit = unitFromWord(word);
            if (unit == 0) throw CLI::ValidationError(name, words::say("no such unit: {}", word));
        },
        words::say("{}: nm, um, mm, cm, m, km, inch, feet", words::tr(purpose)));
}

static void addReadOptions(CLI::App& command, Options& options) {
    ReadOptions& read = options.read;
    command.add_flag("--3d", read.threeD, "Import faces and solids in 3D");
    command.add_option("--space", read.space, "Which space of a DXF file")
        ->check(CLI::IsMember({"model", "paper", "all"}))
        ->capture_default_str();
    const auto config = command.add_option("--config", read.config,
                                           "A configuration file (.dxd or the older form); it rules alone");
    config->check(CLI::ExistingFile);
    command.add_flag("--plain", read.plain, "The module's defaults instead of keeping everything")
        ->excludes(config);
    command.add_flag("--center", read.center, "Middle of the extents at the origin");
    addUnit(command, "--unit", read.unit,
            "What a DXF file's numbers are, whatever it says; they stay as they are");
    addUnit(command, "--convert-unit", read.convertUnit, "Unit that all lengths are converted to");
    command.add_option("--set", read.variables, "Macro variable '&Name=number' or '$Name=text'; repeatable")
        ->allow_extra_args(false)
        ->check(whyNoVariable);
    command.add_option("--max-elements", read.maxElements, "Stop at so many elements")
        ->check(CLI::PositiveNumber);
    command.add_flag("--strict", read.strict, "Anything lost in the reading is an error: exit status 1");
    addMessageOptions(command, options);
}

static void addInputs(CLI::App& command, Options& options) {
    command.add_option("IN", options.inputs, "Drawings; - is standard input")->required();
}

static void addInput(CLI::App& command, Options& options) {
    const auto take = [&options](const std::string& input) { options.inputs = {input}; };
    command.add_option_function<std::string>("IN", take, "Drawing; - is standard input")->required();
}

static void addJobs(CLI::App& command, Options& options) {
    command.add_option("--jobs", options.jobs, "Files worked on at a time, a process each")
        ->check(CLI::Range(1, 256));
}

using Run = int (*)(const Options&);

static CLI::App* addCommand(CLI::App& app, const char* name, const char* purpose, Run run, Run& chosen) {
    CLI::App* command = app.add_subcommand(name, purpose);
    command->callback([run, &chosen] { chosen = run; });
    return command;
}

static void addFormat(CLI::App& command, Options& options) {
    command
        .add_option("--format", options.format,
                    "Version to write, the newest by default; 2018, R12 and the like are understood. R13 is "
                    "written as R12, R14 as 2000")
        ->transform(formatKeyword)
        ->check(CLI::IsMember({"ACAD32", "ACAD27", "ACAD24", "ACAD21", "ACAD18", "ACAD15", "ACAD14", "ACAD13",
                               "ACAD12", "ACAD11", "EASY"}))
        ->excludes(command.get_option("--config"))
        ->excludes(command.get_option("--plain"));
}

static void addWriteCommands(CLI::App& app, Options& options, Run& chosen) {
    CLI::App* write =
        addCommand(app, "export", "A drawing file becomes a DXF file, or its faces a mesh (.obj, .stl, .ply)",
                   runExport, chosen);
    addInput(*write, options);
    write
        ->add_option(
            "OUT", options.output,
            "The DXF file; - is standard output. A name with .obj, .stl or .ply: a mesh of the faces")
        ->required();
    addReadOptions(*write, options);
    addFormat(*write, options);

    CLI::App* convert =
        addCommand(app, "convert", "DXF files become DXF files of another version", runConvert, chosen);
    convert->add_option("FILES", options.inputs, "IN OUT (- is standard output), or IN... with -d")
        ->required();
    convert->add_option("-d,--directory", options.directory, "Folder for the DXF files");
    convert->add_flag("--binary", options.binary, "Write binary DXF");
    addJobs(*convert, options);
    addReadOptions(*convert, options);
    addFormat(*convert, options);
}

static CLI::Validator ruleNumber() {
    const auto check = [](const std::string& text) {
        const auto rules = validate::allRules();
        const bool known = std::any_of(rules.begin(), rules.end(), [&](const validate::RuleInfo& rule) {
            return std::to_string(rule.number) == text;
        });
        return known ? std::string() : words::say("there is no rule {}", text);
    };
    return {check, "RULE"};
}

static void addValidate(CLI::App& app, Options& options, Run& chosen) {
    CheckOptions& check = options.check;
    CLI::App* command =
        addCommand(app, "validate", "What is wrong with DXF files, by line", runValidateCommand, chosen);
    addInputs(*command, options);
    command->add_flag("--json", options.json, "One JSON object a file, a line each");
    command->add_flag("--strict", options.strict, "Warnings count as errors");
    command->add_option("--level", check.level, "Mildest findings to show")
        ->check(CLI::IsMember({"error", "warning", "note"}))
        ->capture_default_str();
    const auto only = command->add_option("--rule", check.only, "Judge by this rule only; repeatable");
    const auto ignored =
        command->add_option("--ignore", check.ignored, "Don't judge by this rule; repeatable");
    for (CLI::Option* option : {only, ignored})
        option->delimiter(',')->allow_extra_args(false)->check(ruleNumber());
    const auto takeRepair = [&check](const std::string& name) {
        check.repairs = true;
        check.repaired = name;
    };
    command
        ->add_option_function<std::string>("--repair", takeRepair,
                                           "Write OUT with what can be mended mended; no name with -d")
        ->expected(0, 1)
        ->type_name("OUT");
    command->add_option("-d,--directory", options.directory,
                        "Folder for a report of each file, or with --repair for the mended files");
    addJobs(*command, options);
    addMessageOptions(*command, options);
}

static void addCommands(CLI::App& app, Options& options, Run& chosen) {
    CLI::App* import = addCommand(app, "import", "DXF files become drawing files (.tdw)", runImport, chosen);
    addInputs(*import, options);
    const auto output = import->add_option("-o,--output", options.output, "The drawing file");
    import->add_option("-d,--directory", options.directory, "Folder for the drawing files")->excludes(output);
    addJobs(*import, options);
    addReadOptions(*import, options);

    addWriteCommands(app, options, chosen);

    CLI::App* render = addCommand(app, "render", "Pictures of drawings: SVG, PNG or PDF", runRender, chosen);
    addPictureOptions(*render, options);
    addReadOptions(*render, options);

    CLI::App* info = addCommand(app, "info", "What is in drawings, what became of it", runInfo, chosen);
    addInputs(*info, options);
    info->add_flag("--json", options.json, "One JSON object a file, a line each");
    addJobs(*info, options);
    addReadOptions(*info, options);

    CLI::App* dump = addCommand(app, "dump", "A drawing as text, stable, for diffs", runDump, chosen);
    addInput(*dump, options);
    addReadOptions(*dump, options);

    addValidate(app, options, chosen);
}

static void addSat(CLI::App& app, Options& options, Run& chosen) {
    CLI::App* sat = addCommand(
        app, "sat", "Solid models (.sat, .sab): converted, shown, taken out of drawings", runSat, chosen);
    sat->add_option("FILES", options.inputs, "IN OUT (.sab: binary), or IN alone with --dump or --extract")
        ->required()
        ->expected(1, 2);
    const auto dump = sat->add_flag("--dump", options.dumpModel, "The records as text, stable, for diffs");
    const auto extract =
        sat->add_flag("--extract", options.extractSolids, "The solids of a drawing, a file each")
            ->excludes(dump);
    sat->add_option("-d,--directory", options.directory, "Folder for them")->needs(extract);
    extract->needs("-d");
    addMessageOptions(*sat, options);
}

/// What CLI11 can't say by itself. Empty when all is well.
static std::string checkUsage(const Options& options, Run chosen) {
    const bool isImport = chosen == runImport;
    const bool endsWithOutput =
        chosen == runConvert && options.directory.empty() && options.inputs.size() > 1;
    const auto standardInput =
        std::count(options.inputs.begin(), options.inputs.end() - (endsWithOutput ? 1 : 0), "-");
    if (standardInput > 1) return words::say("standard input can be read once only");
    const CheckOptions& check = options.check;
    if (check.repairs && check.repaired.empty() == options.directory.empty())
        return check.repaired.empty() ? words::say("--repair needs the name of a file, or -d DIR")
                                      : words::say("--repair takes no name with -d");
    if (check.repairs && options.inputs.size() > 1 && options.directory.empty())
        return words::say("several inputs need -d DIR");
    if (chosen == runSat) {
        const bool isAlone = options.dumpModel || options.extractSolids;
        if (isAlone != (options.inputs.size() == 1))
            return words::say("sat needs IN OUT, --dump IN, or --extract IN -d DIR");
    }
    if (!isImport) return {};
    if (options.output.empty() && options.directory.empty())
        return words::say("import needs -o FILE or -d DIR");
    if (options.inputs.size() > 1 && options.directory.empty())
        return words::say("several inputs need -d DIR");
    return {};
}

static int wrongUsage(const std::string& why) {
    fail(why);
    std::cerr << words::tr("Run with --help for more information.") << '\n';
    return STATUS_USAGE;
}

/// Help and wrong usage are told in it, before the command line is understood. What an installation brings
/// along is English.
static void chooseLanguage(const std::vector<std::string>& arguments) {
    std::string language = localeLanguage();
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i].starts_with("--lang=")) language = arguments[i].substr(7);
        if (arguments[i] == "--lang" && i + 1 < arguments.size()) language = arguments[i + 1];
        if (arguments[i] == "--manual-page" || arguments[i] == "--bash-completion") language = "en";
    }
    words::choose(language);
}

static int runCommandLine(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    chooseLanguage(arguments);
    Options options;
    Run chosen = nullptr;
    CLI::App app("Brings DXF drawings in, writes them out, shows and checks them.", "torva-dxf");
    app.set_version_flag("--version", "torva-dxf " TORVA_VERSION);
    app.require_subcommand(1);
    addMessageOptions(app, options);
    addCommands(app, options, chosen);
    addSat(app, options, chosen);
    addExamples(app);
    translateHelp(app);
    if (arguments.empty() || arguments.front() == "help") {
        (arguments.empty() ? std::cerr : std::cout) << app.help();
        return arguments.empty() ? STATUS_USAGE : STATUS_DONE;
    }
    // What an installation brings along, made by the command itself.
    if (arguments.front() == "--manual-page" || arguments.front() == "--bash-completion") {
        std::cout << (arguments.front() == "--manual-page" ? manualPage(app) : bashCompletion(app));
        return STATUS_DONE;
    }
    if (const std::string wrong = unknownWord(app, arguments); !wrong.empty()) return wrongUsage(wrong);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& wanted) {
        return app.exit(wanted, std::cout, std::cerr);
    } catch (const CLI::ParseError& error) {
        return wrongUsage(words::retold(error.what()));
    }
    if (chosen == runRender) {
        const bool spaceGiven = app.get_subcommand("render")->count("--space") > 0;
        if (const std::string wrong = settlePicture(options, spaceGiven); !wrong.empty())
            return wrongUsage(wrong);
    }
    if (const std::string wrong = checkUsage(options, chosen); !wrong.empty()) return wrongUsage(wrong);
    setDataEnvironment();
    if (const std::string wrong = chosen == runValidateCommand ? "" : whyNoData(); !wrong.empty())
        return fail(wrong);
    if (const std::string wrong = confine(options.confine); !wrong.empty()) return fail(wrong, STATUS_USAGE);
    watchInterrupt();
    return interruptedStatus(chosen(options));
}

} // namespace tool

int main(int argc, char** argv) {
    const tool::QuotedOutput messages(std::cerr);
    try {
        tool::guardStreams();
        return tool::finishOutput(tool::runCommandLine(argc, argv));
    } catch (const std::exception& error) {
        return tool::fail(words::retold(error.what()));
    }
}
