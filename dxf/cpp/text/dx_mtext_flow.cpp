#include "dx_mtext_flow.h"

#include "dx_text_codes.h"

#include <algorithm>
#include <cmath>
#include <iterator>

static constexpr std::string_view switchLetters = "uok";

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
    const DX_TEXT_TYPE& record = block_.record_;
    const double room = record.boxWidth > record.height ? record.boxWidth : HUGE_VAL;
    std::size_t withText = 0;
    if (!needsBreak(room, withText)) return;
    const auto first = block_.runs_.begin() + static_cast<std::ptrdiff_t>(block_.lineFirst_);
    std::vector<DxMtextRun> runs(std::make_move_iterator(first), std::make_move_iterator(block_.runs_.end()));
    block_.runs_.erase(first, block_.runs_.end());
    block_.lineWidth_ = block_.lineDepth_ = block_.lineExtra_ = block_.lineHeight_ = 0;
    DX_TEXT_TYPE last = runs.back().text; // what follows goes on in this format
    last.text.clear();
    if (withText == 1 && room < HUGE_VAL) {
        const auto only =
            std::find_if(runs.begin(), runs.end(), [](const DxMtextRun& run) { return run.hasText(); });
        flowOne(std::move(*only), room);
    } else {
        flowAll(std::move(runs), room);
    }
    last.second = block_.runs_.back().text.second;
    DxMtextRun end;
    end.text = std::move(last);
    block_.runs_.push_back(std::move(end));
}

bool DxMtextFlow::needsBreak(double room, std::size_t& withText) const {
    bool isLong = false;
    double right = 0;
    for (std::size_t i = block_.lineFirst_; i < block_.runs_.size(); ++i) {
        const DxMtextRun& run = block_.runs_[i];
        if (!run.hasText()) continue;
        ++withText;
        right = std::max(right, run.right());
        isLong =
            isLong || (run.text.text.size() > DX_PIECE_LIMIT && DxTextStrlen(run.text.text) > DX_PIECE_LIMIT);
    }
    return withText > 0 && (isLong || right > room);
}

DxMtextFlow::Word DxMtextFlow::nextWord(std::string_view text) {
    std::size_t pos = 0;
    int visible = 0;
    while (pos < text.size() && text[pos] != ' ' && visible < DX_PIECE_LIMIT) {
        const DxTextUnit unit = DxNextTextUnit(text, pos);
        if (unit.character) ++visible;
        pos += unit.length;
    }
    std::size_t end = pos;
    while (end < text.size() && text[end] == ' ') ++end;
    const int blanks = static_cast<int>(end - pos);
    return {text.substr(0, pos), text.substr(0, end), visible + blanks};
}

double DxMtextFlow::widthOf(const DxMtextRun& run, std::string_view text) const {
    DxTextMeasure what = DxTextMeasureOf(run.text, DxTextGetCharset(run.text.style.view(), {}));
    what.text = text;
    DxTextLength length;
    DxTextGetDxfFontLen(what, &length);
    return length.length;
}

/// Width with the space to what follows.
double DxMtextFlow::advanceOf(const DxMtextRun& run, std::string_view text) const {
    return text.empty() ? 0 : widthOf(run, text) + run.space * run.text.height;
}

/// Blanks at the end of a line are shown by its end; they would only shift a line that is held at its right.
void DxMtextFlow::trimLine() {
    DxMtextRun& last = block_.runs_.back();
    std::string& text = last.text.text;
    if (!open_ || text.empty() || text.back() != ' ') return;
    text.erase(text.find_last_not_of(' ') + 1);
    last.length = visibleEnd_ - last.text.second.x;
    last.measured = text.size();
}

void DxMtextFlow::nextLine() {
    trimLine();
    block_.settleLine();
    block_.startLine(0);
    block_.runs_.pop_back(); // the runs to come begin by themselves
    x_ = 0;
    open_ = nullptr;
}

std::vector<DxMtextFlow::HostLine> DxMtextFlow::hostLines(const DxMtextRun& run, double room) const {
    std::vector<HostLine> lines;
    const std::string_view all = run.text.text;
    std::size_t start = 0;
    HostLine line{{}, 0, 0};
    double x = 0;
    for (std::size_t pos = 0; pos < all.size();) {
        const Word word = nextWord(all.substr(pos));
        const double width = widthOf(run, word.text);
        if (pos > start && (x + width > room || line.visible + word.visible > DX_PIECE_LIMIT)) {
            line.text = all.substr(start, pos - start);
            lines.push_back(line);
            start = pos;
            x = 0;
            line = {{}, 0, 0};
        }
        line.width = x + width;
        line.visible += word.visible;
        x += advanceOf(run, word.all);
        pos += word.all.size();
    }
    line.text = all.substr(start);
    lines.push_back(line);
    return lines;
}

/// As many lines of the host as a piece may hold stand in one; the next ones below it.
void DxMtextFlow::flowOne(DxMtextRun run, double room) {
    const std::vector<HostLine> lines = hostLines(run, room);
    const double distance = DxMtextLineDist(run.text.height, block_.record_);
    const double step = distance * run.text.height;
    std::size_t next = 0;
    DxLineSwitches switches;
    while (next < lines.size()) {
        if (next) nextLine();
        DxMtextRun& piece = block_.runs_.emplace_back(run);
        piece.text.second.x = 0;
        if (next) piece.text.second.y = 0;
        piece.text.text = switches.codes();
        piece.length = piece.extraDepth = 0;
        int visible = 0;
        for (; next < lines.size() && (visible == 0 || visible + lines[next].visible <= DX_PIECE_LIMIT);
             ++next) {
            if (visible) piece.extraDepth += step;
            visible += std::max(lines[next].visible, 1);
            piece.text.text += lines[next].text;
            switches.follow(lines[next].text);
            piece.length = std::max(piece.length, lines[next].width);
        }
        if (piece.extraDepth > 0) piece.text.lineDistance = distance;
        piece.measured = piece.text.text.size();
        block_.close();
        block_.raiseLine(step + piece.extraDepth - piece.text.second.y);
    }
}

void DxMtextFlow::flowAll(std::vector<DxMtextRun> runs, double room) {
    for (std::size_t i = 0; i < runs.size(); ++i) {
        if (runs[i].part == DxMtextRun::Plain) {
            if (runs[i].hasText()) flowWords(runs[i], room);
            continue;
        }
        const std::size_t count = i + 1 < runs.size() && runs[i + 1].part != DxMtextRun::Plain ? 2 : 1;
        flowStack(&runs[i], count, room);
        i += count - 1;
    }
    if (block_.runs_.size() == block_.lineFirst_) append(runs.back(), {}, 0, {});
}

void DxMtextFlow::flowWords(const DxMtextRun& run, double room) {
    std::string_view rest = run.text.text;
    DxLineSwitches lines;
    while (!rest.empty()) {
        const Word word = nextWord(rest);
        const double width = widthOf(run, word.text);
        const bool isFull = open_ == &run && visible_ + word.visible > DX_PIECE_LIMIT;
        if (isFull || (x_ > 0 && x_ + width > room)) nextLine();
        append(run, word, width, lines.codes());
        lines.follow(word.all);
        x_ += advanceOf(run, word.all);
        rest.remove_prefix(word.all.size());
    }
}

/// Appends a word to the run that has its format, or begins one.
void DxMtextFlow::append(const DxMtextRun& run, const Word& word, double width, const std::string& lines) {
    if (open_ != &run) {
        DxMtextRun piece;
        piece.text = run.text;
        piece.text.text = lines;
        piece.text.boxWidth = 0;
        piece.text.second.x = x_;
        if (!block_.isFirstLine_) piece.text.second.y = std::max(run.text.second.y, 0.0);
        block_.runs_.push_back(std::move(piece));
        open_ = &run;
        visible_ = 0;
    }
    DxMtextRun& piece = block_.runs_.back();
    piece.text.text += word.all;
    visibleEnd_ = x_ + width;
    piece.length = visibleEnd_ - piece.text.second.x; // blanks at the end don't widen the line
    piece.space = run.space;
    piece.measured = piece.text.text.size();
    visible_ += word.visible;
    block_.close();
    if (word.all.size() > word.text.size()) piece.length = x_ + widthOf(run, word.all) - piece.text.second.x;
}

/// Numerator and denominator stay together.
void DxMtextFlow::flowStack(const DxMtextRun* parts, std::size_t count, double room) {
    double left = parts[0].text.second.x, right = left;
    for (std::size_t i = 0; i < count; ++i) {
        left = std::min(left, parts[i].text.second.x);
        right = std::max(right, parts[i].right());
    }
    if (x_ > 0 && x_ + right - left > room) nextLine();
    for (std::size_t i = 0; i < count; ++i) {
        DxMtextRun& piece = block_.runs_.emplace_back(parts[i]);
        piece.text.boxWidth = 0;
        piece.text.second.x += x_ - left;
        block_.close();
    }
    x_ += right - left + parts[0].space * parts[0].text.height;
    open_ = nullptr;
}
