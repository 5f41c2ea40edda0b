#include "keep.h"

#include "letter_case.h"
#include "ut_string.h"
#include "words.h"

#include <algorithm>
#include <bitset>
#include <fstream>
#include <set>

namespace tool {

static constexpr int kFirstLineType = 2, kLastLineType = 62;
static constexpr int kColors = 255;

namespace {

/// Gives out numbers, one a name whatever its letter case.
class LineTypeNumbers {
public:
    explicit LineTypeNumbers(KeepPlan& plan) : plan_(plan) {
        for (const char* name : {"continuous", "bylayer", "byblock"}) numbers_[name] = 1;
    }
    void add(const SourceLineType& type) {
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
    if (file.find(".shx") != std::string::npos) return;
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

/// Fonts of the DXF side that a configuration file maps. None when it can't be read to its end.
static std::optional<std::set<std::string>> mappedFonts(const std::string& config) {
    std::ifstream in(config);
    std::string section;
    std::set<std::string> fonts;
    for (std::string line; std::getline(in, line);) {
        if (line.starts_with("#EOF")) return fonts;
        if (line.starts_with('#'))
            section = line;
        else if (section == "#FONT-DXF-TO-CAD")
            fonts.insert(line.substr(0, line.find('|')));
    }
    return std::nullopt;
}

std::optional<DxConfigAdditions> keepAdditions(const KeepPlan& plan, const std::string& keep) {
    const auto known = mappedFonts(keep);
    if (!known) return std::nullopt;
    DxConfigAdditions added;
    for (const auto& [name, number] : plan.spellings)
        added.rows.push_back({"#LT-DXF-TO-CAD", name, std::to_string(number)});
    for (const auto& [file, face] : std::map<std::string, std::string>(plan.fonts.begin(), plan.fonts.end()))
        if (!known->contains(file)) added.rows.push_back({"#FONT-DXF-TO-CAD", file, face});
    for (const char* section : {"#PEN-DXF-TO-CAD", "#FILL-DXF-TO-CAD"}) {
        for (int color = 1; color <= kColors; ++color)
            added.rows.push_back({section, std::to_string(color), std::to_string(color)});
        added.rows.push_back({section, "DEF", "7"});
    }
    return added;
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
