// The scan of a flattened MTEXT: which run each character goes to, and what its codes do.
#include "dx_mtext.h"

#include "../config/dx_true_colors.h"
#include "../import/dx_transform.h"
#include "../session/dx_numbers.h"
#include "dx_mtext_layout.h"
#include "dx_mtext_style.h"
#include "dx_text_codes.h"
#include "mt.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

namespace {

constexpr double sameValue = 0.0001;
constexpr std::string_view underline = "%%u", overline = "%%o", strike = "%%k";

char upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}

class Scanner {
public:
    Scanner(const DX_TEXT_TYPE& record, std::string_view text, std::string_view startFont,
            DxMtextBlock& block)
        : record_(record), in_(text), startFont_(startFont), block_(block) {}

    void run() {
        while (pos_ < in_.size()) {
            switch (in_[pos_]) {
            case '{':
            case '}': ++pos_; break;
            case '^': caret(); break;
            case '\\': code(); break;
            default: plain();
            }
        }
        if (lineEnd_ != pos_) endParagraph(); // a broken code has swallowed the last line's end
    }

private:
    using Handler = void (Scanner::*)(char letter);
    struct Row {
        char letter; ///< upper case
        Handler handler;
    };
    static const std::array<Row, 20> rows;

    std::string& text() { return block_.current().text; }

    /// Appends characters; lines along the text that are on go on in a new run.
    void put(std::string_view characters) {
        if (text().empty()) {
            for (const LineState& line : lines_)
                if (line.isOn) text() += line.sequence;
        }
        text() += characters;
    }
    std::string_view rest() const { return in_.substr(std::min(pos_, in_.size())); }

    static bool meansSomething(char c) { return c == '\\' || c == '{' || c == '}' || c == '^'; }

    /// Characters up to the next one that means something.
    void plain() {
        std::size_t end = pos_;
        while (end < in_.size() && !meansSomething(in_[end])) ++end;
        put(in_.substr(pos_, end - pos_));
        pos_ = end;
    }

    /// "^" and a letter stand for a control character; "^ " is the sign itself.
    void caret() {
        const char next = pos_ + 1 < in_.size() ? in_[pos_ + 1] : 0;
        pos_ += 2;
        switch (next) {
        case 'I': put("\t"); break;
        case 'J': endParagraph(); break;
        case 'M': break;
        case ' ': put("^"); break;
        default: put("^"); --pos_;
        }
        pos_ = std::min(pos_, in_.size());
    }

    void code() {
        const char letter = pos_ + 1 < in_.size() ? in_[pos_ + 1] : 0;
        const Row* row = std::find_if(std::begin(rows), std::end(rows),
                                      [&](const Row& r) { return r.letter == upper(letter); });
        if (row == std::end(rows)) {
            put(rest().substr(0, 2));
            pos_ = std::min(pos_ + 2, in_.size());
            return;
        }
        pos_ += 2;
        (this->*row->handler)(letter);
    }

    void skipThrough(std::size_t length) {
        pos_ = std::min(pos_ + length, in_.size());
        if (pos_ < in_.size() && in_[pos_] == ';') ++pos_;
    }
    /// Passes a number of that length, and what follows a comma in it.
    void skipNumber(std::size_t length) {
        const std::size_t end = rest().find_first_not_of("0123456789.,+-xX", length);
        const bool isWhole = end != std::string_view::npos && rest()[end] == ';';
        skipThrough(isWhole ? end : length);
    }

    // ---- characters ----------------------------------------------------------------------------------

    void literal(char letter) { put({&letter, 1}); }
    void blank(char /*letter*/) { put(" "); }

    /// Escapes stay for the text to come.
    void escape(char letter) {
        if (letter == 'U' && rest().starts_with("+2205")) {
            put("%%c"); // the sign for a diameter that drawing programs use
            pos_ += 5;
        } else {
            put("\\");
            literal(letter);
        }
    }

    // ---- lines along the text ------------------------------------------------------------------------

    struct LineState {
        std::string_view sequence;
        bool isOn = false;
    };

    void switchLine(char letter, LineState& line) {
        const bool isOn = letter == upper(letter);
        if (isOn == line.isOn) return;
        line.isOn = isOn;
        if (!text().empty()) text() += line.sequence;
    }
    void underlined(char letter) { switchLine(letter, lines_[0]); }
    void overlined(char letter) { switchLine(letter, lines_[1]); }
    void struck(char letter) { switchLine(letter, lines_[2]); }

    // ---- format --------------------------------------------------------------------------------------

    void vertical(char /*letter*/) {
        if (!rest().empty() && rest()[0] >= '0' && rest()[0] <= '9') return skipThrough(1);
        skipThrough(std::min(rest().find(';'), rest().find('\\')));
    }

    /// What follows stands in a run of its own.
    DxMtextRun& change() {
        block_.close();
        block_.split();
        return block_.current();
    }

    /// The value of a format code, which is passed. False for a code without a value or a lower-case form.
    bool value(char letter, double present, double& result) {
        const DxMtextNumber number = DxMtextReadValue(rest());
        skipNumber(number.length);
        if (number.length == 0) return false;
        result = number.over(present);
        if (letter == upper(letter)) return std::isfinite(result);
        if (result != 0) change();
        return false;
    }

    void height(char letter) {
        double height = 0;
        const double old = block_.current().height;
        if (!value(letter, old, height) || height <= 0 || std::fabs(height - old) <= sameValue) return;
        DxMtextRun& run = change();
        run.y += height - run.height; // the bottom stays
        run.height = height;
    }
    void setFactor(char letter, double DxMtextRun::*field, bool always) {
        double factor = 0;
        const double old = block_.current().*field;
        if (value(letter, old, factor) && (always || std::fabs(factor - old) > sameValue))
            change().*field = factor;
    }
    void oblique(char letter) { setFactor(letter, &DxMtextRun::oblique, false); }
    void width(char letter) { setFactor(letter, &DxMtextRun::widthFactor, false); }
    /// 1 is the font's own spacing.
    void tracking(char letter) {
        setFactor(letter, &DxMtextRun::charSpacing, true);
        double& spacing = block_.current().charSpacing;
        if (std::fabs(spacing - 1.0) <= sameValue) spacing = -1.0;
    }

    /// "\C" gives a colour of the palette, "\c" a true one with blue first, drawn in the palette's nearest.
    void color(char letter) {
        const DxMtextNumber number = DxMtextReadValue(rest());
        const int value = DxAtoi(rest());
        skipNumber(number.length);
        if (number.length == 0) return;
        int color = value, trueColor = -1;
        if (letter == 'c') {
            trueColor = (value & 0xFF) << 16 | (value & 0xFF00) | (value >> 16 & 0xFF);
            color = DxNearestColor(trueColor);
        } else if (value == record_.base.color) {
            trueColor = record_.base.trueColor;
        }
        const DxMtextRun& present = block_.current();
        if (color == present.color && trueColor == present.trueColor) return;
        DxMtextRun& run = change();
        run.color = color;
        run.trueColor = trueColor;
    }

    void font(char letter) {
        const std::string_view name = DxMtextFontName(rest());
        skipThrough(name.size());
        if (name.empty()) return;
        DxMtextRun& run = change();
        if (letter == 'F' && name == startFont_) {
            run.font = block_.firstFont();
        } else {
            DX_NAME style = run.font->style;
            DxMtextFindStyle(name, letter == 'F', &style);
            run.font = block_.font(style);
        }
    }

    // ---- paragraphs ----------------------------------------------------------------------------------

    /// Length of the properties of a paragraph: as far as they can be properties.
    std::size_t propertiesLength() const {
        return std::min(rest().find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789.,+-*"), rest().size());
    }

    static constexpr int unchanged = -2;
    /// As DxMtextLook has it.
    static int justificationOf(char letter) {
        switch (letter) {
        case 'c': return 1;
        case 'r': return 2;
        case '*': return -1; // what an MTEXT begins with
        default: return 0;
        }
    }

    /// Takes the properties of a paragraph. `justification` receives its alignment, if there is one.
    void properties(int& justification) {
        const std::size_t end = propertiesLength();
        std::string_view list = rest().substr(0, end);
        while (!list.empty()) {
            const char letter = list.front();
            list.remove_prefix(1);
            if (letter == 'q' && !list.empty()) {
                justification = justificationOf(list.front());
                list.remove_prefix(1);
            } else if (letter == 'b') {
                const double value = DxfReadConvDouble(list);
                if (value > 0) paraSpace_ = value;
            }
        }
        pos_ += end;
        while (pos_ < in_.size() && in_[pos_] == ';') ++pos_;
        hasProperties_ = true;
    }

    void paragraph(char letter) {
        if (letter == 'P') return endParagraph();
        int justification = unchanged;
        block_.close();
        properties(justification);
        if (justification != unchanged) block_.justify(justification);
    }
    void lineBreak(char letter) {
        if (letter == upper(letter))
            endParagraph();
        else
            (text() += '\\') += letter;
    }

    /// Properties behind the end of a paragraph are those of the one that begins there, which is the line to
    /// come.
    void endParagraph() {
        block_.endLine();
        int justification = unchanged;
        if (rest().starts_with("\\p")) {
            pos_ += 2;
            properties(justification);
        }
        const bool hasSpace = hasProperties_ && paraSpace_ > 0;
        block_.startLine(hasSpace ? paraSpace_ * block_.lineDistance() : 0);
        if (justification != unchanged) block_.justify(justification);
        lineEnd_ = pos_;
    }

    // ---- stacked texts -------------------------------------------------------------------------------

    void stack(char /*letter*/) {
        const std::size_t end = rest().find(';');
        if (end == std::string_view::npos) return;
        const std::string_view content = rest().substr(0, end);
        const std::size_t separator = content.find_first_of("/^");
        if (separator != std::string_view::npos) {
            skipThrough(end);
            const std::size_t below = separator + (content.substr(separator + 1).starts_with(' ') ? 2 : 1);
            stackParts(content.substr(0, separator), content.substr(below), content[separator] == '/');
        } else if (content.find('#') != std::string_view::npos) {
            skipThrough(end);
            for (const char c : content) literal(c == '#' ? '/' : c);
        }
    }

    static std::string partText(std::string_view part) {
        std::string text(part);
        DxCutChars(text, DX_PIECE_LIMIT);
        return text;
    }

    void stackParts(std::string_view above, std::string_view below, bool hasBar) {
        block_.close();
        const DxMtextRun& old = block_.current();
        const double height = old.height, y = old.y;
        const double x = old.x + (old.hasText() ? old.length + old.space * height : 0);
        const double line = block_.lineDistance() * height;
        std::string upperText = partText(above), lowerText = partText(below);
        const double upperLength =
            addPart(DxMtextRun::Numerator, x, y + line * (lowerText.empty() ? 0.5 : 1), upperText);
        const double lowerLength = addPart(DxMtextRun::Denominator, x, y, lowerText);
        if (hasBar) drawBar(upperLength, lowerLength);
        const double space = block_.current().space * height;
        const bool hasText = !upperText.empty() || !lowerText.empty();
        DxMtextRun& following = block_.add(x + std::max(upperLength, lowerLength) + (hasText ? space : 0));
        following.y = y;
        following.part = DxMtextRun::Plain;
        block_.raiseLine(line - y);
    }

    /// Length of the part.
    double addPart(DxMtextRun::Part kind, double x, double y, const std::string& text) {
        DxMtextRun& run = block_.add(x);
        run.part = kind;
        run.y = y;
        run.text = text;
        block_.measure(run);
        block_.widenLine(run);
        return run.hasText() ? run.length : 0;
    }

    /// The bar belongs to the longer part; the shorter one is centred.
    void drawBar(double upperLength, double lowerLength) {
        DxMtextRun& lower = block_.current();
        DxMtextRun& above = block_.previous();
        const double shift = std::fabs(upperLength - lowerLength) / 2;
        const bool isAbove = upperLength > lowerLength;
        (isAbove ? lower : above).x += shift;
        std::string& longer = isAbove ? above.text : lower.text;
        const std::string_view bar = isAbove ? underline : overline;
        if (!longer.empty()) longer = std::string(bar) + longer + std::string(bar);
    }

    const DX_TEXT_TYPE& record_;
    std::string_view in_;
    std::string_view startFont_;
    DxMtextBlock& block_;
    std::size_t pos_ = 0;
    std::size_t lineEnd_ = 0; ///< behind the last end of a line
    std::array<LineState, 3> lines_{{{underline}, {overline}, {strike}}};
    double paraSpace_ = -1.0;
    bool hasProperties_ = false;
};

constexpr std::array<Scanner::Row, 20> Scanner::rows{{
    {'A', &Scanner::vertical},  {'C', &Scanner::color},     {'F', &Scanner::font},
    {'H', &Scanner::height},    {'K', &Scanner::struck},    {'L', &Scanner::underlined},
    {'M', &Scanner::escape},    {'N', &Scanner::lineBreak}, {'O', &Scanner::overlined},
    {'P', &Scanner::paragraph}, {'Q', &Scanner::oblique},   {'S', &Scanner::stack},
    {'T', &Scanner::tracking},  {'U', &Scanner::escape},    {'W', &Scanner::width},
    {'X', &Scanner::lineBreak}, {'\\', &Scanner::literal},  {'{', &Scanner::literal},
    {'}', &Scanner::literal},   {'~', &Scanner::blank},
}};

} // namespace

/// The place of an MTEXT, which is given in world coordinates, in the plane of its extrusion.
static RPT3 objectPoint(const DX_TEXT_TYPE& text) {
    const double(&n)[3] = text.extrusion;
    RPT3 point = text.point;
    Mat44 toWorld, toObject;
    if (n[0] == 0 && n[1] == 0 && n[2] == 1) return point;
    DxArbaxis(n[0], n[1], n[2], toWorld);
    if (Mt44Invert(toWorld, toObject) == 0) DxTrans3DRpt(&point, toObject);
    return point;
}

void DxMtextLayOut(DX_TEXT_TYPE* text, DxMtextBlock* block) {
    const DxCharset& charset = *block->firstFont()->charset;
    const std::string startFont(charset.fontFile.view());
    if (charset.font != 0 && !charset.fontTable) DxTextGetFontIndex(startFont);
    DxMtextFlatten(text->text, {text->base.color, -1, startFont, false, text->height, text->oblique, 1.0,
                                charset.widthFactor});
    const std::size_t lastOther = text->text.find_last_not_of('\\');
    const std::size_t backslashes = text->text.size() - (lastOther == std::string::npos ? 0 : lastOther + 1);
    text->text += backslashes % 2 ? "\\\\P" : "\\P"; // one at the very end stands for itself
    Scanner(*text, text->text, startFont, *block).run();
    block->place(objectPoint(*text));
}

int DxMtextToTexts(DX_TEXT_TYPE* text, std::vector<DX_TEXT_TYPE>* pieces, bool isMirrored) {
    DxMtextBlock block(*text, isMirrored);
    DxMtextLayOut(text, &block);
    pieces->assign(block.count(), block.firstPiece());
    for (std::size_t i = 0; i < block.count(); ++i) block.take(i, &(*pieces)[i]);
    return 0;
}
