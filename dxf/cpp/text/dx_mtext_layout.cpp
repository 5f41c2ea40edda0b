#include "dx_mtext_layout.h"

#include "../config/config_state.h"
#include "../import/import_state.h"
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

/// The host scales a text with the x scale of an INSERT and the length of its lines with the y scale: where
/// these differ, it would break lines elsewhere than in the block.
static bool hostBreaksAlike() {
    constexpr double tolerance = 1e-6;
    const double x = std::fabs(DxBlockScaleX), y = std::fabs(DxBlockScaleY);
    return std::fabs(x - y) <= tolerance * x;
}

DxMtextBlock::DxMtextBlock(const DX_TEXT_TYPE& record, bool isMirrored)
    : record_(record), isMirrored_(isMirrored),
      attachment_(attachmentOf(record, isMirrored)), firstFont_{record.style,
                                                                &DxTextGetCharset(record.style.view(), {})},
      hostBox_(hostBreaksAlike() ? record.boxWidth : 0) {
    constexpr std::size_t usualRuns = 5;
    constexpr double toRadians = 0.017453292519943295;
    const double angle = std::fmod(record.rotation, 360.0) * toRadians;
    cos_ = std::cos(angle);
    sin_ = std::sin(angle);
    DxMtextLook look;
    look.font = &firstFont_;
    look.height = record.height;
    look.oblique = record.oblique;
    look.widthFactor = look.font->charset->widthFactor;
    look.charSpacing = record.charSpacing;
    look.color = record.base.color;
    look.trueColor = record.base.trueColor;
    look.boxWidth = hostBox_;
    runs_.reserve(usualRuns);
    runs_.emplace_back(look, 0, 0);
}

const DxMtextFont* DxMtextBlock::font(const DX_NAME& style) {
    const auto hasStyle = [&](const DxMtextFont& f) { return f.style.view() == style.view(); };
    if (hasStyle(firstFont_)) return &firstFont_;
    const auto known = std::find_if(otherFonts_.begin(), otherFonts_.end(), hasStyle);
    if (known != otherFonts_.end()) return &*known;
    return &otherFonts_.emplace_back(DxMtextFont{style, &DxTextGetCharset(style.view(), {})});
}

double DxMtextBlock::lineDistance() const {
    return DxMtextLineDist(runs_.back().height, record_);
}

DxTextMeasure DxMtextRun::measure(std::string_view characters) const {
    DxTextMeasure what = DxTextMeasureIn(*font->charset);
    what.text = characters;
    what.height = height;
    what.factor = widthFactor;
    return what;
}

/// What a character spacing adds to the length of a text in a face. In a font by number it narrows the
/// characters.
static double addedSpacing(const DxMtextRun& run) {
    if (run.charSpacing < 0 || run.font->charset->font != 0) return 0;
    double spacing = 1.0;
    DxCharSpacingFactor(run.charSpacing, &spacing);
    const double width = run.height * (run.widthFactor == 0 ? 1.0 : run.widthFactor);
    return std::max(DxTextStrlen(run.text) - 1, 0) * (spacing - 1) * width;
}

void DxMtextBlock::measure(DxMtextRun& run) {
    if (run.measured == run.text.size()) return;
    DxTextLength length;
    DxTextGetDxfFontLen(run.measure(run.text), &length);
    run.length = length.length + addedSpacing(run);
    run.space = length.space;
    run.measured = run.text.size();
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
    const double y = run.y;
    lineDepth_ = std::min(lineDepth_, y - run.height);
    lineExtra_ = std::max(lineExtra_, run.extraDepth);
    raiseLine(run.height * lineDistance() - y);
}

DxMtextRun& DxMtextBlock::add(double x) {
    const DxMtextLook look = runs_.back();
    const double y = runs_.back().y;
    return runs_.emplace_back(look, x, y);
}

void DxMtextBlock::split() {
    const DxMtextRun& run = runs_.back();
    if (run.hasText()) add(run.right() + run.space * run.height);
}

void DxMtextBlock::justify(int justification) {
    for (std::size_t i = lineFirst_; i < runs_.size(); ++i) runs_[i].justification = justification;
}

/// The highest top of the line's runs; `least` when none has text.
double DxMtextBlock::lineTop(double least) const {
    double top = least;
    for (std::size_t i = lineFirst_; i < runs_.size(); ++i) {
        if (runs_[i].hasText()) top = std::max(top, runs_[i].y);
    }
    return top;
}

/// How far letters reach below the line, relative to its height.
double DxMtextBlock::descent() const {
    if (DxFontTables.empty()) return 0;
    const bool hasDescender =
        std::any_of(runs_.begin() + static_cast<std::ptrdiff_t>(lineFirst_), runs_.end(),
                    [](const DxMtextRun& run) { return DxReachesBelow(run.text); });
    return hasDescender ? DxFontTables.front()->heightValue * 0.01 : 0;
}

void DxMtextBlock::endLine() {
    close();
    DxMtextFlow(*this).run();
    settleLine();
}

/// The width that breaks the line. To the host a box is none when it is narrower than the text is high.
double DxMtextBlock::lineRoom() const {
    double lowest = HUGE_VAL;
    for (std::size_t i = lineFirst_; i < runs_.size(); ++i) {
        if (runs_[i].hasText()) lowest = std::min(lowest, runs_[i].height);
    }
    return record_.boxWidth > lowest ? record_.boxWidth : HUGE_VAL;
}

/// The host centres a single run in its box or moves it to the right. All else is done here, with the runs of
/// a line together.
void DxMtextBlock::justifyRuns() {
    const double room = lineRoom();
    if (room == HUGE_VAL) return;
    const auto first = runs_.begin() + static_cast<std::ptrdiff_t>(lineFirst_);
    const auto hasText = [](const DxMtextRun& run) { return run.hasText(); };
    const bool isSingle = std::count_if(first, runs_.end(), hasText) == 1;
    const bool hasBox = isSingle && std::find_if(first, runs_.end(), hasText)->boxWidth > 0;
    const int justification = runs_.back().justification;
    if (hasBox && justification != 0) return;
    const double shift = justification < 0 ? 0 : (justification - column()) * 0.5 * (room - lineWidth_);
    for (auto run = first; run != runs_.end(); ++run) {
        run->x += shift;
        if (hasBox)
            run->column = 0;
        else
            run->boxWidth = 0;
    }
}

void DxMtextBlock::settleLine() {
    justifyRuns();
    if (isFirstLine_) return settleFirstLine();
    lineRaise_ = lineTop(0);
    const double drop = yOffset_ + lineRaise_;
    const double shift = column() * 0.5 * (firstWidth_ - lineWidth_);
    for (std::size_t i = lineFirst_; i < runs_.size(); ++i) {
        runs_[i].x += shift;
        runs_[i].y -= drop;
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
    run.y = 0;
    run.boxWidth = hostBox_;
    run.lineDistance = 0;
    yOffset_ += lineHeight_ + lineRaise_ + before;
    lineWidth_ = lineDepth_ = lineExtra_ = lineHeight_ = lineRaise_ = 0;
    isFirstLine_ = false;
    lineFirst_ = runs_.size() - 1;
}

/// A vector of the block from a point, in object coordinates.
RPT3 DxMtextBlock::atBlock(const RPT3& from, double x, double y) const {
    if (isMirrored_) x = -x;
    return {from.x + cos_ * x - sin_ * y, from.y + sin_ * x + cos_ * y, from.z};
}

void DxMtextBlock::place(const RPT3& insertion) {
    constexpr int exactSpacing = 2;
    const double x = column() * (left_ - right_) * 0.5 - left_;
    double y = row() * (top_ - bottom_) * 0.5 - top_;
    // Exact spacing leaves a third of a line out above the first one, however many there are: a third of the
    // whole block would move a long text off its place.
    if (record_.verAlign == exactSpacing) y += (top_ - firstBottom_) / 3;
    origin_ = atBlock(insertion, x, y);
    runs_.pop_back(); // the text ended with a line's end
    const auto isEmpty = [](const DxMtextRun& run) { return DxIsBlankText(run.text); };
    const bool keepsEmpty = DxJoinTexts && !std::all_of(runs_.begin(), runs_.end(), isEmpty);
    if (!keepsEmpty) std::erase_if(runs_, isEmpty);
}

DX_TEXT_TYPE DxMtextBlock::firstPiece() const {
    DX_TEXT_TYPE piece = record_;
    const int up = (9 - attachment_) / 3; // 2 top, 1 middle, 0 bottom
    piece.verAlign = up == 0 ? 0 : up + 1;
    piece.attachment = attachment_;
    piece.isMtext = 0;
    return piece;
}

void DxMtextBlock::take(std::size_t index, DX_TEXT_TYPE* piece) {
    DxMtextRun& run = runs_[index];
    measure(run);
    const int up = (9 - attachment_) / 3;
    const int column = run.column >= 0 ? run.column : this->column();
    const double below = up == 0 ? run.extraDepth : 0; // its lowest line counts
    const double half = up == 1 ? run.extraDepth / 2 : 0;
    piece->text = std::move(run.text);
    piece->base.color = run.color;
    piece->base.trueColor = run.trueColor;
    piece->style = run.font->style;
    piece->height = run.height;
    piece->oblique = run.oblique;
    piece->widthFactor = run.widthFactor;
    piece->charSpacing = run.charSpacing;
    piece->horAlign = isMirrored_ ? 2 - column : column; // is changed once more when it is drawn
    piece->justification = std::max(run.justification, 0);
    piece->boxWidth = run.boxWidth;
    const bool isFilled = record_.backFlag != 0; // grounds of lines meet, cells being as high as lines apart
    piece->lineDistance =
        run.lineDistance == 0 && isFilled ? DxMtextLineDist(run.height, record_) : run.lineDistance;
    piece->point = atBlock(atBlock(origin_, run.x, run.y), 0, -run.height - below);
    piece->second = atBlock(piece->point, column * 0.5 * run.length, up * run.height * 0.5 - half);
}
