// The small layout engine behind DxMtextToTexts.
#pragma once

#include "dx_mtext.h"
#include "dx_text_fonts.h"

#include <list>
#include <string>
#include <string_view>
#include <vector>

/// A font of a block: a style, and what it means.
struct DxMtextFont {
    DX_NAME style;
    const DxCharset* charset;
};

/// In what the runs of a block differ, but for their characters and their place.
struct DxMtextLook {
    const DxMtextFont* font = nullptr;
    double height = 0;
    double oblique = 0; ///< degrees
    double widthFactor = 1.0;
    double charSpacing = -1.0; ///< -1: the font's own
    int color = 0, trueColor = -1;
    int justification = -1;  ///< 0 left 1 centre 2 right, -1: as the block is attached
    double boxWidth = 0;     ///< to which the host breaks it, 0: not at all
    double lineDistance = 0; ///< between the lines that the host makes of it, 0: by the font
};

/// A run of one format on its way to a piece.
struct DxMtextRun : DxMtextLook {
    enum Part { Plain, Numerator, Denominator };

    DxMtextRun(const DxMtextLook& look, double left, double top) : DxMtextLook(look), x(left), y(top) {}

    std::string text;
    double x, y;              ///< its top left corner in the block
    double length = 0;        ///< measured, or the room that it takes when its box breaks it
    double space = 0;         ///< behind a character, relative to the height
    double extraDepth = 0;    ///< of the lines behind the first, when its box breaks it
    std::size_t measured = 0; ///< length of the text that `length` belongs to
    int column = -1;          ///< of its own place: 0 left 1 centre 2 right, -1: that of the block
    Part part = Plain;

    bool hasText() const { return !text.empty(); }
    double right() const { return x + length; }
    DxTextMeasure measure(std::string_view characters) const; ///< of a part of its text
};

/// Runs of the block, and the line that is being filled. Coordinates are relative to the block: x to the
/// right, y upward, the first line's top at 0.
class DxMtextBlock {
public:
    DxMtextBlock(const DX_TEXT_TYPE& record, bool isMirrored);

    DxMtextRun& current() { return runs_.back(); }
    DxMtextRun& previous() { return runs_[runs_.size() - 2]; }
    /// The font of a style.
    const DxMtextFont* font(const DX_NAME& style);
    const DxMtextFont* firstFont() const { return &firstFont_; }
    /// Measures the current run and widens the line by it.
    void close();
    /// Begins a run behind the current one, of the same format, unless that is still empty.
    void split();
    /// Appends a run of the current format at `x`.
    DxMtextRun& add(double x);
    /// Measures a run whatever it is, without a look at the line.
    void measure(DxMtextRun& run);
    void widenLine(const DxMtextRun& run);
    void raiseLine(double height);

    /// Ends the line: breaks it where box or length demand it, and gives its runs their place.
    void endLine();
    /// Begins a line `before` below the usual distance.
    void startLine(double before);
    /// Justification of all runs of the line.
    void justify(int justification);
    double lineDistance() const; ///< factor for the height of the current run

    /// Ends the block, which hangs from `insertion` (object coordinates), and drops runs that show nothing.
    void place(const RPT3& insertion);
    std::size_t count() const { return runs_.size(); }
    /// A piece of a placed block: what it differs in from the pieces before it goes to `piece`, which began
    /// as firstPiece(). Its run gives its text away.
    void take(std::size_t index, DX_TEXT_TYPE* piece);
    DX_TEXT_TYPE firstPiece() const;
    const DxCharset& charset(std::size_t index) const { return *runs_[index].font->charset; }

private:
    friend class DxMtextFlow;

    void settleLine();
    void settleFirstLine();
    double lineTop(double least) const;
    void justifyRuns();
    double descent() const;
    double lineRoom() const;
    int column() const { return (attachment_ + 2) % 3; }
    int row() const { return (attachment_ - 1) / 3; }

    RPT3 atBlock(const RPT3& from, double x, double y) const;

    const DX_TEXT_TYPE& record_;
    bool isMirrored_;
    int attachment_;        ///< 1 … 9, as it is read: left and right changed in a plane that is turned over
    DxMtextFont firstFont_; ///< that of the record
    std::list<DxMtextFont> otherFonts_; ///< of its codes
    std::vector<DxMtextRun> runs_;
    std::size_t lineFirst_ = 0; ///< first run of the line
    double hostBox_ = 0;        ///< box in which the host breaks a text, 0: all lines are broken here
    double lineWidth_ = 0;      ///< right end of the line so far
    double lineDepth_ = 0;      ///< lowest bottom of the line's runs
    double lineExtra_ = 0;      ///< depth of the lines that a box makes of it, behind the first
    double lineHeight_ = 0;     ///< distance to the next line
    double lineRaise_ = 0;      ///< how far the line's runs rise above it, 0 for the first line
    bool isFirstLine_ = true;
    double firstWidth_ = 0;  ///< width of the first line
    double firstBottom_ = 0; ///< bottom of the first line
    double yOffset_ = 0;     ///< how far the line lies below the first
    double left_ = 0, top_ = 0, right_ = 0, bottom_ = 0;
    double cos_, sin_; ///< of the rotation
    RPT3 origin_{0, 0, 0};
};

/// Lays the text of an MTEXT out in a block made from it. `text` is changed as DxMtextToTexts says.
void DxMtextLayOut(DX_TEXT_TYPE* text, DxMtextBlock* block);
