// The nesting of an MTEXT's groups, taken out; and the way back: plain texts made safe.
#include "../config/config_state.h"
#include "../session/dx_numbers.h"
#include "dx_mtext.h"
#include "dx_text_codes.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace {

constexpr double sameValue = 0.0001;
/// A hostile text could grow to many times its length before it is cut.
constexpr std::size_t byteLimit = 4 * DX_MTEXT_LIMIT;

enum Change : std::size_t { Color, Font, Height, Oblique, Tracking, Width, ChangeCount };

/// Codes that switch a line along the text on; the lower-case letters switch it off.
constexpr std::string_view lineCodes = "LOK";

/// A group that is open: what ruled at its start, and what it has changed.
struct Group {
    DxMtextFormat start;
    std::array<bool, lineCodes.size()> lines{}; ///< which lines along the text were on
    std::array<bool, ChangeCount> changed{};
};

/// A face that is left out of texts that are to be joined: programs put it in where a face lacks a character.
bool isDroppedFont(std::string_view name) {
    return DxJoinTexts && UtCString(name).Lower().str().starts_with("arial unicod");
}

class Flattener {
public:
    Flattener(std::string_view text, const DxMtextFormat& start) : in_(text), now_(start) {
        constexpr std::size_t usualDepth = 4, usualCodes = 50;
        groups_.reserve(usualDepth);
        groups_.push_back({start, {}, {}});
        out_.reserve(std::min(text.size() + usualCodes, byteLimit));
    }

    std::string run() {
        while (pos_ < in_.size() && out_.size() < byteLimit) {
            const char c = in_[pos_];
            if (c == '{')
                open();
            else if (c == '}')
                close();
            else if (c == '\\' && pos_ + 1 < in_.size())
                code();
            else
                copyPlain();
        }
        return std::move(out_);
    }

private:
    /// At least one character, then all up to the next one that means something.
    void copyPlain() {
        std::size_t end = pos_ + 1;
        while (end < in_.size() && in_[end] != '{' && in_[end] != '}' && in_[end] != '\\') ++end;
        out_.append(in_, pos_, end - pos_);
        pos_ = end;
    }

    void open() {
        ++pos_;
        groups_.push_back({now_, lines_, {}});
    }

    /// A brace that closes nothing is passed over.
    void close() {
        ++pos_;
        if (groups_.size() == 1) return;
        const Group group = std::move(groups_.back());
        groups_.pop_back();
        restore(group);
        now_ = group.start;
    }

    void restore(const Group& group) {
        const DxMtextFormat& f = group.start;
        if (group.changed[Color]) out_ += "\\C" + std::to_string(f.color) + ";";
        if (group.changed[Color] && f.trueColor >= 0) out_ += "\\c" + std::to_string(f.trueColor) + ";";
        if (group.changed[Font]) out_ += (f.isFace ? "\\f" : "\\F") + f.font + ";";
        if (group.changed[Height]) restoreNumber('H', f.height);
        if (group.changed[Oblique]) restoreNumber('Q', f.oblique);
        if (group.changed[Tracking]) restoreNumber('T', f.tracking);
        if (group.changed[Width]) restoreNumber('W', f.width);
        for (std::size_t i = 0; i < lines_.size(); ++i) {
            if (lines_[i] == group.lines[i]) continue;
            out_ += {'\\', static_cast<char>(group.lines[i] ? lineCodes[i] : lineCodes[i] | 0x20)};
        }
        lines_ = group.lines;
    }

    /// With six decimals.
    void restoreNumber(char letter, double value) {
        std::array<char, 350> digits; // the largest number has 309 digits ahead of its point
        const auto end =
            std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed, 6);
        out_ += {'\\', letter};
        out_.append(digits.data(), end.ptr);
        out_ += ';';
    }

    void mark(Change change) { groups_.back().changed[change] = true; }

    /// A backslash and the character behind it; the rest of the code follows as plain characters.
    void code() {
        const std::string_view rest = in_.substr(pos_ + 2);
        switch (const char letter = in_[pos_ + 1]) {
        case 'C': takeColor(rest); break;
        case 'c': takeTrueColor(rest); break;
        case 'F':
        case 'f':
            if (!takeFont(letter, rest)) return;
            break;
        case 'H': takeNumber(rest, now_.height, Height); break;
        case 'Q': takeNumber(rest, now_.oblique, Oblique); break;
        case 'T': takeNumber(rest, now_.tracking, Tracking); break;
        case 'W': takeNumber(rest, now_.width, Width); break;
        default: takeLine(letter); break;
        }
        out_.append(in_.substr(pos_, 2));
        pos_ += 2;
    }

    void takeLine(char letter) {
        const std::size_t i = lineCodes.find(static_cast<char>(letter & ~0x20));
        if (i != std::string_view::npos) lines_[i] = letter == lineCodes[i];
    }

    void takeColor(std::string_view rest) {
        const DxMtextNumber number = DxMtextReadValue(rest);
        const int color = DxAtoi(rest.substr(0, number.length));
        if (number.length == 0 || (color == now_.color && now_.trueColor < 0)) return;
        now_.color = color;
        now_.trueColor = -1;
        mark(Color);
    }

    void takeTrueColor(std::string_view rest) {
        const DxMtextNumber number = DxMtextReadValue(rest);
        if (number.length == 0) return;
        now_.trueColor = std::max(DxAtoi(rest.substr(0, number.length)), 0);
        mark(Color);
    }

    void takeNumber(std::string_view rest, double& present, Change change) {
        const DxMtextNumber number = DxMtextReadValue(rest);
        if (number.length == 0) return;
        const double value = number.over(present);
        if (!std::isfinite(value) || std::fabs(value - present) <= sameValue) return;
        present = value;
        mark(change);
    }

    /// False for a code that is left out.
    bool takeFont(char letter, std::string_view rest) {
        const std::string_view name = DxMtextFontName(rest);
        if (name.empty()) return true;
        const bool isFace = letter == 'f' && !DxMtextIsShapeFont(name);
        if (!isFace && isDroppedFont(name)) {
            pos_ += 2 + name.size() + 1;
            return false;
        }
        now_.font = name; // whole: without its extension a font file is taken for a face
        now_.isFace = isFace;
        mark(Font);
        return true;
    }

    std::string_view in_;
    DxMtextFormat now_;
    std::array<bool, lineCodes.size()> lines_{};
    std::vector<Group> groups_; ///< the open ones, the text itself first
    std::size_t pos_ = 0;
    std::string out_;
};

} // namespace

void DxMtextFlatten(std::string& text, const DxMtextFormat& start) {
    const bool isFlat =
        !DxJoinTexts && text.find('{') == std::string::npos && text.find('}') == std::string::npos;
    if (isFlat) return DxCutChars(text, DX_MTEXT_LIMIT);
    text = Flattener(text, start).run();
    DxCutChars(text, DX_MTEXT_LIMIT);
}

std::size_t DxMtextReadNumber(std::string_view text, double* value) {
    text = text.substr(0, DX_TEXT_LIMIT);
    const std::size_t end = text.find(';');
    const std::size_t stop = std::min(end, text.substr(0, end).find(','));
    if (stop == std::string_view::npos) return 0;
    *value = DxfReadConvDouble(text.substr(0, stop));
    return stop;
}

DxMtextNumber DxMtextReadValue(std::string_view text) {
    DxMtextNumber number;
    number.length = DxMtextReadNumber(text, &number.value);
    const bool isNumber = text.substr(0, number.length).find_first_not_of("0123456789.+-eExX ") == text.npos;
    if (!isNumber) return {}; // the end of another code, or a sign of the text
    if (number.length) number.isRelative = (text[number.length - 1] | 0x20) == 'x';
    return number;
}

std::string_view DxMtextFontName(std::string_view text) {
    constexpr std::size_t longest = 160;
    const std::size_t end = text.substr(0, longest + 1).find(';');
    return end == std::string_view::npos ? std::string_view() : text.substr(0, end);
}

bool DxMtextIsShapeFont(std::string_view name) {
    return name.find(".shx") != std::string_view::npos || name.find(".SHX") != std::string_view::npos;
}

namespace {

/// A line along a text: its mark, its "%%" letter in a plain text, its codes in an MTEXT.
struct StyleLine {
    DX_TEXT_BITS bit;
    char letter, on, off;
};
constexpr StyleLine styleLines[] = {
    {DX_BIT_UNDERLINE, 'u', 'L', 'l'}, {DX_BIT_OVERLINE, 'o', 'O', 'o'}, {DX_BIT_STRIKE, 'k', 'K', 'k'}};

/// The line that a code at the start of `rest` switches; null when there is none.
const StyleLine* lineSwitchedBy(std::string_view rest) {
    if (!rest.starts_with("%%") || rest.size() < 3) return nullptr;
    const auto* line = std::find_if(std::begin(styleLines), std::end(styleLines), [&](const StyleLine& l) {
        return rest[2] == l.letter || rest[2] == l.letter - 'a' + 'A';
    });
    return line == std::end(styleLines) ? nullptr : line;
}

} // namespace

void DxMtextEscapeCharacters(std::string& text, const int bits[DX_BIT_COUNT]) {
    bool isOn[DX_BIT_COUNT] = {};
    isOn[DX_BIT_UNDERLINE] = bits[DX_BIT_UNDERLINE] != 0;
    isOn[DX_BIT_OVERLINE] = bits[DX_BIT_OVERLINE] != 0;
    std::string out;
    if (isOn[DX_BIT_UNDERLINE]) out += "\\L";
    if (isOn[DX_BIT_OVERLINE]) out += "\\O";
    for (std::size_t pos = 0; pos < text.size();) {
        if (const StyleLine* line = lineSwitchedBy(std::string_view(text).substr(pos))) {
            isOn[line->bit] = !isOn[line->bit];
            out += {'\\', isOn[line->bit] ? line->on : line->off};
            pos += 3;
            continue;
        }
        const char32_t c = DxNextChar(text, pos);
        if (c == '\\' || c == '{' || c == '}') out += '\\';
        DxAppendChar(out, c);
        if (c == '^') out += ' ';
        if (bits[DX_BIT_STRIKE] && pos < text.size()) out += "\\U+0336";
    }
    if (bits[DX_BIT_OVERLINE]) out += "\\o";
    if (bits[DX_BIT_UNDERLINE]) out += "\\l";
    DxCutChars(out, DX_TEXT_LIMIT);
    text.swap(out);
}
