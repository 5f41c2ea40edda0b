#include "dx_mtext_layout.h"

#include "../config/config_state.h"
#include "dx_mtext_flow.h"
#include "dx_text_codes.h"
#include "dx_text_import.h"
#include "mt.h"

#include <algorithm>
#include <cmath>

double DxMtextLineDist(double height, const DX_TEXT_TYPE& text) {
    const double inverse = height > 0 && text.height > 0 ? text.height / height : 1.0;
    const double distance = inverse < 1 ? inverse / 3 + 4.0 / 3 : inverse * 2 / 3 + 1;
    return text.lineSpacing > 0 ? distance * text.lineSpacing : distance;
}

static int attachmentOf(const DX_TEXT_TYPE& record, bool isMirrored) {
    const int a = record.attachment >= 1 && record.attachment <= 9 ? record.attachment : 1;
    return isMirrored ? a + 2 * (1 - (a - 1) % 3) : a;
}

DxMtextBlock::DxMtextBlock(const DX_TEXT_TYPE& record, bool isMirrored)
    : record_(record), isMirrored_(isMirrored), attachment_(attachmentOf(record, isMirrored)) {
    constexpr std::size_t usualRuns = 8;
    runs_.reserve(usualRuns);
    DxMtextRun& first = runs_.emplace_back();
    first.text = record;
    first.text.text.clear();
    first.text.isMtext = 0;
    first.text.horAlign = 0;
    first.text.verAlign = 3;
    first.text.justification = 0;
    first.text.attachment = 0;
    first.text.widthFactor = DxTextGetCharset(record.style.view(), {}).widthFactor;
    first.text.second = {0, 0, 0};
}

double DxMtextBlock::lineDistance() const {
    return DxMtextLineDist(runs_.back().text.height, record_);
}

/// What a character spacing adds to the length of a text in a face. In a font by number it narrows the
/// characters.
static double addedSpacing(const DX_TEXT_TYPE& text) {
    if (text.charSpacing < 0 || DxTextGetCharset(text.style.view(), {}).font != 0) return 0;
    DX_TEXT_TYPE probe;
    probe.charSpacing = text.charSpacing;
    double spacing = 1.0;
    DxCharSpacingToCAD(&probe, &spacing);
    const double width = text.height * (text.widthFactor == 0 ? 1.0 : text.widthFactor);
    return std::max(DxTextStrlen(text.text) - 1, 0) * (spacing - 1) * width;
}

void DxMtextBlock::measure(DxMtextRun& run) {
    if (run.measured == run.text.text.size()) return;
    DxTextLength length;
    DxTextGetDxfLen(run.text, &length);
    run.length = length.length + addedSpacing(run.text);
    run.space = length.space;
    run.measured = run.text.text.size();
}

void DxMtextBlock::widenLine(const DxMtextRun& run) {
    if (run.hasText()) lineWidth_ = std::max(lineWidth_, run.right());
}

void DxMtextBlock::raiseLine(double height) {
    lineHeight_ = std::max(lineHeight_, height);
}

void DxMtextBlock::close() {
    DxMtextRun& run = runs_.back();
    measure(run);
    widenLine(run);
    const double y = run.text.second.y;
    lineDepth_ = std::min(lineDepth_, y - run.text.height);
    lineExtra_ = std::max(lineExtra_, run.extraDepth);
    raiseLine(run.text.height * lineDistance() - y);
}

DxMtextRun& DxMtextBlock::add(double x) {
    DxMtextRun run;
    std::string text;
    text.swap(runs_.back().text.text); // all is copied but the characters
    run.text = runs_.back().text;
    runs_.back().text.text.swap(text);
    run.text.second.x = x;
    return runs_.emplace_back(std::move(run));
}

void DxMtextBlock::split() {
    const DxMtextRun& run = runs_.back();
    if (run.hasText()) add(run.right() + run.space * run.text.height);
}

void DxMtextBlock::justify(int justification) {
    for (std::size_t i = lineFirst_; i < runs_.size(); ++i) runs_[i].text.justification = justification;
}

/// The highest top of the line's runs; `least` when none has text.
double DxMtextBlock::lineTop(double least) const {
    double top = least;
    for (std::size_t i = lineFirst_; i < runs_.size(); ++i) {
        if (runs_[i].hasText()) top = std::max(top, runs_[i].text.second.y);
    }
    return top;
}

/// How far letters reach below the line, relative to its height.
double DxMtextBlock::descent() const {
    if (DxFontTables.empty()) return 0;
    const bool hasDescender = std::any_of(
        runs_.begin() + static_cast<std::ptrdiff_t>(lineFirst_), runs_.end(),
        [](const DxMtextRun& run) { return run.text.text.find_first_of("gjpqy") != std::string::npos; });
    return hasDescender ? DxFontTables.front()->heightValue * 0.01 : 0;
}

void DxMtextBlock::endLine() {
    close();
    DxMtextFlow(*this).run();
    settleLine();
}

/// A line of several runs can't be justified by the host, run by run: they are moved together.
void DxMtextBlock::justifyRuns() {
    const auto first = runs_.begin() + static_cast<std::ptrdiff_t>(lineFirst_);
    const auto count = std::count_if(first, runs_.end(), [](const DxMtextRun& run) { return run.hasText(); });
    if (count < 2 || record_.boxWidth <= record_.height) return;
    const int justification = runs_.back().text.justification;
    const double shift =
        justification ? (justification - column()) * 0.5 * (record_.boxWidth - lineWidth_) : 0.0;
    for (std::size_t i = lineFirst_; i < runs_.size(); ++i) {
        runs_[i].text.boxWidth = 0;
        runs_[i].text.second.x += shift;
    }
}

void DxMtextBlock::settleLine() {
    justifyRuns();
    if (isFirstLine_) return settleFirstLine();
    lineRaise_ = lineTop(0);
    const double drop = yOffset_ + lineRaise_;
    const double shift = column() * 0.5 * (firstWidth_ - lineWidth_);
    for (std::size_t i = lineFirst_; i < runs_.size(); ++i) {
        runs_[i].text.second.x += shift;
        runs_[i].text.second.y -= drop;
    }
    left_ = std::min(left_, shift);
    right_ = std::max(right_, lineWidth_ + shift);
    bottom_ = lineDepth_ - lineExtra_ - drop - (lineRaise_ - lineDepth_) * descent();
}

/// The first line stays where it is: what rises above it raises the top of the block.
void DxMtextBlock::settleFirstLine() {
    constexpr double none = -HUGE_VAL;
    firstWidth_ = lineWidth_;
    const double top = lineTop(none);
    if (top != none) top_ = top;
    right_ = lineWidth_;
    firstBottom_ = lineDepth_ - (std::max(top_, 0.0) - lineDepth_) * descent();
    bottom_ = firstBottom_ - lineExtra_;
}

void DxMtextBlock::startLine(double before) {
    DxMtextRun& run = add(0);
    run.text.second.y = 0;
    run.text.boxWidth = record_.boxWidth;
    run.text.lineDistance = 0;
    yOffset_ += lineHeight_ + lineRaise_ + before;
    lineWidth_ = lineDepth_ = lineExtra_ = lineHeight_ = lineRaise_ = 0;
    isFirstLine_ = false;
    lineFirst_ = runs_.size() - 1;
}

namespace {

/// Turns vectors of the block into object coordinates.
struct Rotation {
    double c, s, xSense;
    Rotation(double degrees, bool isMirrored) : xSense(isMirrored ? -1 : 1) {
        constexpr double toRadians = 0.017453292519943295;
        const double angle = std::fmod(degrees, 360.0) * toRadians;
        c = std::cos(angle);
        s = std::sin(angle);
    }
    RPT3 from(const RPT3& origin, double x, double y) const {
        x *= xSense;
        return {origin.x + c * x - s * y, origin.y + s * x + c * y, origin.z};
    }
};

bool isBlank(std::string_view text) {
    return text.find_first_not_of(" \t") == std::string_view::npos;
}

} // namespace

std::vector<DX_TEXT_TYPE> DxMtextBlock::place(const RPT3& insertion) {
    constexpr int exactSpacing = 2;
    const Rotation rotation(record_.rotation, isMirrored_);
    const double x = column() * (left_ - right_) * 0.5 - left_;
    double y = row() * (top_ - bottom_) * 0.5 - top_;
    if (record_.verAlign == exactSpacing) y += (top_ - firstBottom_) / 3; // the first line begins higher
    const RPT3 origin = rotation.from(insertion, x, y);
    const int up = (9 - attachment_) / 3; // 2 top, 1 middle, 0 bottom
    std::vector<DX_TEXT_TYPE> pieces;
    pieces.reserve(runs_.size());
    runs_.pop_back(); // the text ended with a line's end
    const auto says = [](const DxMtextRun& run) { return !isBlank(run.text.text); };
    const bool keepsBlank = DxJoinTexts && std::any_of(runs_.begin(), runs_.end(), says);
    for (DxMtextRun& run : runs_) {
        if (!keepsBlank && !says(run)) continue;
        measure(run);
        DX_TEXT_TYPE& piece = pieces.emplace_back(std::move(run.text));
        const RPT3 corner = rotation.from(origin, piece.second.x, piece.second.y);
        const double below = up == 0 ? run.extraDepth : 0; // its lowest line counts
        const double half = up == 1 ? run.extraDepth / 2 : 0;
        piece.point = rotation.from(corner, 0, -piece.height - below);
        piece.second =
            rotation.from(piece.point, column() * 0.5 * run.length, up * piece.height * 0.5 - half);
        piece.horAlign = isMirrored_ ? 2 - column() : column(); // is changed once more when it is drawn
        piece.verAlign = up == 0 ? 0 : up + 1;
        piece.attachment = attachment_;
    }
    return pieces;
}
