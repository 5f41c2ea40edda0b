#include "keep.h"

#include "letter_case.h"
#include "ut_string.h"
#include "words.h"

#include <algorithm>
#include <bitset>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>

namespace tool {

static constexpr int kFirstLineType = 2, kLastLineType = 62;
static constexpr int kColors = 255;

/// Whether a line "name|number" of a configuration can carry the name.
static bool isWritable(const std::string& name) {
    return std::none_of(name.begin(), name.end(),
                        [](char c) { return c == '|' || static_cast<unsigned char>(c) < 0x20; });
}

namespace {

/// Gives out numbers, one a name whatever its letter case.
class LineTypeNumbers {
public:
    explicit LineTypeNumbers(KeepPlan& plan) : plan_(plan) {
        for (const char* name : {"continuous", "bylayer", "byblock"}) numbers_[name] = 1;
    }
    void add(const SourceLineType& type) {
        if (!isWritable(type.name)) {
            plan_.notes.push_back(words::say("Line type {} can't be configured: drawn solid", type.name));
            return;
        }
        const auto [entry, isNew] = numbers_.try_emplace(lower(type.name), next_);
        if (isNew && next_ > kLastLineType)
            entry->second = 1, left_.push_back(type.name);
        else if (isNew)
            plan_.lineTypes[next_++] = type;
        spell(type.name, entry->second);
    }
    void finish() {
        if (left_.empty()) return;
        plan_.notes.push_back(
            words::say("{} line types are drawn solid, for the host knows {} only; the first is {}",
                       left_.size(), kLastLineType, left_[0]));
    }

private:
    void spell(const std::string& name, int number) {
        const std::string key = lower(name);
        if (key == "bylayer" || key == "byblock") return;
        const std::pair<std::string, int> entry{name, number};
        if (spelled_.try_emplace(entry.first, number).second) plan_.spellings.push_back(entry);
    }

    KeepPlan& plan_;
    std::map<std::string, int> numbers_, spelled_;
    std::vector<std::string> left_;
    int next_ = kFirstLineType;
};

} // namespace

/// A stroke font without a table stays the default's affair; any other name is a face, or a face's file.
static void addFont(KeepPlan& plan, const std::string& font) {
    std::string file = font;
    std::transform(file.begin(), file.end(), file.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    file.erase(0, file.find_last_of("/\\:") + 1);
    const std::string face = font.substr(font.size() - file.size());
    if (file.find(".shx") != std::string::npos || !isWritable(file)) return;
    // A host side that begins with a digit would be a font number.
    if (file.empty() || (file[0] >= '0' && file[0] <= '9')) return;
    plan.fonts.emplace_back(file, face.substr(0, file.find(".ttf")));
}

KeepPlan planKeeping(const SourceScan& scan) {
    KeepPlan plan;
    // Paper is drawn in the unit of its plotter; sheets have one unit, so that most layouts decide.
    constexpr int inch = 7;
    if (scan.inchLayouts > scan.otherLayouts) plan.paperUnit = inch;
    LineTypeNumbers numbers(plan);
    for (const SourceLineType& type : scan.lineTypes) numbers.add(type);
    for (const std::string& name : scan.lineTypesUsed) numbers.add({name, {}, {}});
    numbers.finish();
    for (const std::string& font : scan.fontFiles) addFont(plan, font);
    return plan;
}

bool writeKeepConfig(const KeepPlan& plan, const std::string& keep, const std::string& target) {
    std::ifstream in(keep);
    std::ofstream out(target);
    std::string inSection;
    std::set<std::string> knownFonts; // those that the configuration maps already
    for (std::string line; std::getline(in, line) && !line.starts_with("#EOF");) {
        out << line << '\n';
        if (line.starts_with('#'))
            inSection = line;
        else if (inSection == "#FONT-DXF-TO-CAD")
            knownFonts.insert(line.substr(0, line.find('|')));
    }
    if (!in) return false;
    out << "\n#LT-DXF-TO-CAD\n" << plan.spellings.size() << '\n';
    for (const auto& [name, number] : plan.spellings) out << name << '|' << number << '\n';
    std::map<std::string, std::string> fonts(plan.fonts.begin(), plan.fonts.end());
    std::erase_if(fonts, [&](const auto& font) { return knownFonts.contains(font.first); });
    out << "\n#FONT-DXF-TO-CAD\n" << fonts.size() << '\n';
    for (const auto& [file, face] : fonts) out << file << '|' << face << '\n';
    for (const char* section : {"#PEN-DXF-TO-CAD", "#FILL-DXF-TO-CAD"}) {
        out << '\n' << section << '\n' << kColors + 1 << '\n';
        for (int color = 1; color <= kColors; ++color) out << color << '|' << color << '\n';
        out << "DEF|7\n";
    }
    out << "\n#EOF\n";
    return static_cast<bool>(out.flush());
}

/// DXF colours whose pens the drawing uses.
static std::bitset<kColors + 1> usedColors(const host::Drawing& drawing) {
    std::bitset<kColors + 1> used;
    const auto use = [&](int pen) {
        if (pen >= 1 && pen <= kColors) used.set(static_cast<std::size_t>(pen));
    };
    for (const host::Pattern& pattern : drawing.patterns) {
        for (const host::Element& element : pattern.elements) use(element.pen);
        for (const host::Text& text : pattern.texts) use(text.pen), use(text.fillPen);
        forEachPenInSpace(pattern, use);
        for (const host::Hatch& hatch : pattern.hatches) {
            use(hatch.fillPen), use(hatch.backPen);
            for (const host::HatchGradient& gradient : hatch.gradient) use(gradient.secondPen);
            for (const host::HatchLines& lines : hatch.lines) use(lines.pen);
            for (const host::HatchFamily& family : hatch.families) use(family.pen);
        }
    }
    return used;
}

void applyKeeping(const KeepPlan& plan, const SourceScan& scan, host::Drawing& drawing) {
    const double sheetMm = host::unitInMm(drawing) * drawing.scale;
    const double factor = (scan.lineTypeScale > 0 ? scan.lineTypeScale : 1) * sheetMm;
    for (const auto& [number, type] : plan.lineTypes) {
        host::LineType& own = drawing.lineTypes[number];
        own.name = type.name;
        own.dashes = type.dashes;
        for (double& dash : own.dashes) dash *= factor;
    }
    const auto used = usedColors(drawing);
    for (int color = 1; color <= kColors; ++color)
        if (used[static_cast<std::size_t>(color)]) drawing.pens[color] = host::dxfColor(color);
}

} // namespace tool
