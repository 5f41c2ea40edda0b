#include "dx_mtext_flow.h"
#include "../host/dx_frame.h"

#include "../session/session_state.h"
#include "dx_text_codes.h"
#include "dx_text_import.h"

#include <algorithm>
#include <cmath>
#include <iterator>

static constexpr std::string_view switchLetters = "uok";
static constexpr double roundingSlack = 1 + 1e-9; // a line that just fits doesn't break

void DxLineSwitches::follow(std::string_view text) {
    for (std::size_t at = text.find("%%"); at != std::string_view::npos && at + 2 < text.size();
         at = text.find("%%", at + 3)) {
        const std::size_t line = switchLetters.find(static_cast<char>(text[at + 2] | 0x20));
        if (line != std::string_view::npos) isOn_[line] = !isOn_[line];
    }
}

std::string DxLineSwitches::codes() const {
    std::string codes;
    for (std::size_t line = 0; line < switchLetters.size(); ++line)
        if (isOn_[line]) (codes += "%%") += switchLetters[line];
    return codes;
}

void DxMtextFlow::run() {
    const double room = block_.lineRoom();
    std::size_t withText = 0;
    if (!needsBreak(room, withText)) return;
    const auto first = block_.runs_.begin() + static_cast<std::ptrdiff_t>(block_.lineFirst_);
    std::vector<DxMtextRun> runs(std::make_move_iterator(first), std::make_move_iterator(block_.runs_.end()));
    block_.runs_.erase(first, block_.runs_.end());
    block_.lineWidth_ = block_.lineDepth_ = block_.lineExtra_ = block_.lineHeight_ = 0;
    const DxMtextLook last = runs.back(); // what follows goes on in this format
    if (withText == 1 && room < HUGE_VAL && block_.hostBox_ > 0) {
        const auto only =
            std::find_if(runs.begin(), runs.end(), [](const DxMtextRun& run) { return run.hasText(); });
        flowOne(*only, room);
    } else {
        flowAll(std::move(runs), room);
    }
    const double x = block_.runs_.back().x, y = block_.runs_.back().y;
    block_.runs_.emplace_back(last, x, y);
}

bool DxMtextFlow::needsBreak(double room, std::size_t& withText) const {
    bool isLong = false;
    double right = 0;
    for (std::size_t i = block_.lineFirst_; i < block_.runs_.size(); ++i) {
        const DxMtextRun& run = block_.runs_[i];
        if (!run.hasText()) continue;
        ++withText;
        right = std::max(right, run.right());
        isLong = isLong || (run.text.size() > DX_PIECE_LIMIT && DxTextStrlen(run.text) > DX_PIECE_LIMIT);
    }
    return withText > 0 && (isLong || right > room);
}

DxMtextFlow::Word DxMtextFlow::nextWord(std::string_view text) {
    std::size_t pos = 0;
    int visible = 0;
    while (pos < text.size() && text[pos] != ' ' && visible < DX_PIECE_LIMIT) {
        const bool isPlain = DxIsPlain(text[pos]); // most are
        const DxTextUnit unit = isPlain ? DxTextUnit{U'x', 0, 1} : DxNextTextUnit(text, pos);
        if (unit.character) ++visible;
        pos += unit.length;
    }
    std::size_t end = pos;
    while (end < text.size() && text[end] == ' ') ++end;
    const int blanks = static_cast<int>(end - pos);
    return {text.substr(0, pos), text.substr(0, end), visible + blanks};
}

double DxMtextFlow::widthOf(const DxMtextRun& run, std::string_view text) {
    DxTextLength length;
    DxTextGetDxfFontLen(run.measure(text), &length);
    return length.length;
}

/// Blanks at the end of a line are shown by its end; they would only shift a line that is held at its right.
void DxMtextFlow::trimLine() {
    DxMtextRun& last = block_.runs_.back();
    std::string& text = last.text;
    if (!open_ || text.empty() || text.back() != ' ') return;
    text.erase(text.find_last_not_of(' ') + 1);
    last.length = visibleEnd_ - last.x;
    last.measured = text.size();
}

void DxMtextFlow::nextLine() {
    trimLine();
    block_.settleLine();
    block_.startLine(0);
    block_.runs_.pop_back(); // the runs to come begin by themselves
    x_ = 0;
    open_ = nullptr;
    beginsLine_ = true;
}

/// Where a run of the unbroken line stands in its line, which begins with the first run's top as a paragraph
/// does. Runs keep their common baseline.
double DxMtextFlow::levelIn(double y) {
    if (beginsLine_) level_ = y;
    beginsLine_ = false;
    return y - level_;
}

namespace {

/// How the host measures words of a run, which all stand in one text: the width of its characters is that
/// which gives the text its length, so that a single word needn't be as wide as by itself.
class HostMeasure {
public:
    HostMeasure(const DxMtextRun& run, std::string_view text)
        : charset_(DxTextGetCharset(run.font->style.view(), DxTextDefaultFont())), face_(run.measure(text)) {
        DxTextLength length;
        DxTextGetDxfFontLen(face_, &length);
        double spacing = charset_.factor;
        DxCharSpacingFactor(run.charSpacing, &spacing);
        const double faceWidth = run.height * (run.widthFactor == 0 ? 1.0 : run.widthFactor);
        const double room = charset_.font == 0 ? faceWidth : length.length;
        const DxTextCadParams parms = DxTextCalcCadParams(
            run.height, room, charset_.font, charset_.font == 0 ? text : std::string_view(converted(text)),
            length.space, spacing);
        width_ = DxLengthFromSheet(parms.width);
        gap_ = (parms.spacing - 1) * width_;
        face_.height = 1.0;
        face_.factor = 1.0;
    }

    double gap() const { return gap_; }
    /// With the gaps behind all its characters.
    double operator()(std::string_view word) {
        if (charset_.font == 0) {
            DxTextLength length;
            face_.text = word;
            DxTextGetDxfFontLen(face_, &length);
            const double gaps = gap_ == 0 ? 0 : DxTextHostCount(converted(word)) * gap_;
            return length.length * width_ + gaps;
        }
        const std::string& text = converted(word);
        double hundredths = 0;
        int isProportional = 0;
        DxTextGetCadFontLen(text, charset_.font, &hundredths, &isProportional);
        return hundredths * 0.01 * width_ + DxTextHostCount(text) * gap_;
    }

private:
    const std::string& converted(std::string_view text) {
        host_ = text;
        DxConvTextToCAD(host_, charset_);
        DxResolveEscapes(host_);
        return host_;
    }

    const DxCharset& charset_;
    DxTextMeasure face_;
    std::string host_; ///< characters of the host, converted last
    double width_, gap_;
};

} // namespace

/// The characters of words in a row. Blanks count at the end of a run, at the end of a broken line they
/// don't.
std::string_view DxMtextFlow::textOf(std::span<const Word> words, bool endsRun) {
    const char* const start = words.front().all.data();
    const std::string_view last = endsRun ? words.back().all : words.back().text;
    return {start, static_cast<std::size_t>(last.data() + last.size() - start)};
}

/// The host breaks a text at blanks where the next word doesn't fit.
DxMtextFlow::HostPiece DxMtextFlow::hostPiece(const DxMtextRun& run, std::span<const Word> words,
                                              bool endsRun, double room) {
    HostMeasure measure(run, textOf(words, endsRun));
    const double blank = measure(" ");
    HostPiece piece{words.size(), 1, 0, 0};
    double x = 0;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const double width = measure(words[i].text);
        const bool isFirst = i == piece.lastLine || (i == 1 && words[0].text.empty());
        if (!isFirst && x + width - measure.gap() > room * roundingSlack) {
            ++piece.lines;
            piece.lastLine = i;
            x = 0;
        }
        piece.width = std::max(piece.width, x + width - measure.gap());
        x += width + blank * static_cast<double>(words[i].all.size() - words[i].text.size());
    }
    return piece;
}

/// As many words as a text may hold; whole lines of them, where words are left over.
DxMtextFlow::HostPiece DxMtextFlow::nextPiece(const DxMtextRun& run, std::span<const Word> words,
                                              double room) {
    std::size_t held = 0;
    int visible = 0;
    while (held < words.size() && (held == 0 || visible + words[held].visible <= DX_PIECE_LIMIT))
        visible += words[held++].visible;
    const bool holdsAll = held == words.size();
    const HostPiece piece = hostPiece(run, words.first(held), holdsAll, room);
    if (holdsAll || piece.lastLine == 0) return piece;
    return hostPiece(run, words.first(piece.lastLine), false, room);
}

/// As many lines of the host as a piece may hold stand in one; the next ones below it.
void DxMtextFlow::flowOne(const DxMtextRun& run, double room) {
    constexpr std::size_t usualWord = 5;
    std::vector<Word> words;
    words.reserve(run.text.size() / usualWord + 1);
    for (std::string_view rest = run.text; !rest.empty(); rest.remove_prefix(words.back().all.size()))
        words.push_back(nextWord(rest));
    const double distance = DxMtextLineDist(run.height, block_.record_);
    const double step = distance * run.height;
    DxLineSwitches switches;
    for (std::span<const Word> rest = words; !rest.empty();) {
        const bool isFirst = rest.size() == words.size();
        if (!isFirst) nextLine();
        const HostPiece host = nextPiece(run, rest, room);
        const std::string_view text = textOf(rest.first(host.words), host.words == rest.size());
        rest = rest.subspan(host.words);
        DxMtextRun& piece = block_.runs_.emplace_back(run, 0, isFirst ? run.y : 0);
        piece.space = run.space;
        piece.text = switches.codes();
        piece.text += text;
        switches.follow(text);
        piece.length = host.width;
        piece.extraDepth = static_cast<double>(host.lines - 1) * step;
        if (host.lines > 1) piece.lineDistance = distance;
        piece.measured = piece.text.size();
        block_.close();
        block_.raiseLine(step + piece.extraDepth - piece.y);
    }
}

void DxMtextFlow::flowAll(std::vector<DxMtextRun> runs, double room) {
    for (std::size_t i = 0; i < runs.size(); ++i) {
        if (runs[i].part == DxMtextRun::Plain) {
            if (runs[i].hasText()) flowWords(std::span(runs).subspan(i), room);
            continue;
        }
        const std::size_t count = i + 1 < runs.size() && runs[i + 1].part != DxMtextRun::Plain ? 2 : 1;
        flowStack(&runs[i], count, room);
        i += count - 1;
    }
    if (block_.runs_.size() == block_.lineFirst_) append(runs.back(), {}, 0, {});
}

/// Width of what belongs to the last word of the first run in those that follow it, with the space ahead of
/// it. A word that is wider than the line needn't be measured to its end.
double DxMtextFlow::restOfWord(std::span<const DxMtextRun> runs, double room) {
    double width = 0, space = runs.front().space * runs.front().height;
    for (const DxMtextRun& run : runs.subspan(1)) {
        if (run.part != DxMtextRun::Plain || width > room) break;
        const Word word = nextWord(run.text);
        if (word.text.empty() && run.hasText()) break;
        if (run.hasText()) width += space + widthOf(run, word.text);
        if (word.text.size() < run.text.size()) break;
        space = run.space * run.height;
    }
    return width;
}

/// A word doesn't part where its format changes, unless it is wider than the line.
void DxMtextFlow::flowWords(std::span<const DxMtextRun> runs, double room) {
    const DxMtextRun& run = runs.front();
    std::string_view rest = run.text;
    DxLineSwitches lines;
    while (!rest.empty()) {
        const Word word = nextWord(rest);
        const double width = widthOf(run, word.text);
        const double widthOfAll = word.all.size() > word.text.size() ? widthOf(run, word.all) : width;
        double needed = width;
        if (beginsWord_) {
            const bool goesOn = word.text.size() == rest.size();
            const double whole = goesOn ? width + restOfWord(runs, room) : width;
            isWhole_ = whole <= room;
            if (isWhole_) needed = whole;
        }
        const bool mayBreak = beginsWord_ || !isWhole_;
        const bool isFull = open_ == &run && visible_ + word.visible > DX_PIECE_LIMIT;
        if (isFull || (mayBreak && x_ > 0 && x_ + needed > room)) nextLine();
        beginsWord_ = word.all.size() > word.text.size();
        append(run, word, width, lines.codes());
        block_.runs_.back().length = x_ + widthOfAll - block_.runs_.back().x;
        lines.follow(word.all);
        x_ += widthOfAll + run.space * run.height;
        rest.remove_prefix(word.all.size());
    }
}

/// Appends a word to the run that has its format, or begins one.
void DxMtextFlow::append(const DxMtextRun& run, const Word& word, double width, const std::string& lines) {
    if (open_ != &run) {
        DxMtextRun& piece = block_.runs_.emplace_back(run, x_, levelIn(run.y));
        piece.text = lines;
        piece.boxWidth = 0;
        open_ = &run;
        visible_ = 0;
    }
    DxMtextRun& piece = block_.runs_.back();
    piece.text += word.all;
    visibleEnd_ = x_ + width;
    piece.length = visibleEnd_ - piece.x; // blanks at the end don't widen the line
    piece.space = run.space;
    piece.measured = piece.text.size();
    visible_ += word.visible;
    block_.close();
}

/// Numerator and denominator stay together.
void DxMtextFlow::flowStack(const DxMtextRun* parts, std::size_t count, double room) {
    double left = parts[0].x, right = left;
    for (std::size_t i = 0; i < count; ++i) {
        left = std::min(left, parts[i].x);
        right = std::max(right, parts[i].right());
    }
    if (x_ > 0 && x_ + right - left > room) nextLine();
    const double drop = levelIn(parts[count - 1].y) - parts[count - 1].y; // the lower one stands on the line
    for (std::size_t i = 0; i < count; ++i) {
        DxMtextRun& piece = block_.runs_.emplace_back(parts[i]);
        piece.boxWidth = 0;
        piece.x += x_ - left;
        piece.y += drop;
        block_.close();
    }
    x_ += right - left + parts[0].space * parts[0].height;
    open_ = nullptr;
    beginsWord_ = true;
}
