// Breaking a line of an MTEXT where its box is too narrow for it or a run too long for the host.
#pragma once

#include "dx_mtext_layout.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Lines along a text that "%%u" and its like have switched on up to a place.
class DxLineSwitches {
public:
    /// Follows a part of the text, codes of which aren't divided.
    void follow(std::string_view text);
    std::string codes() const; ///< what switches the same lines on at the start of a text

private:
    bool isOn_[3] = {};
};

/// Works on the current line of a block, whose runs are measured, ahead of its placing.
///
/// A line of one run that is wider than its box stays one piece, which the host breaks by itself; the lines
/// that this takes are reserved. Runs of several formats are broken here, since each is a text of its own. No
/// piece gets more than DX_PIECE_LIMIT visible characters; breaks are at blanks where there are any.
class DxMtextFlow {
public:
    explicit DxMtextFlow(DxMtextBlock& block) : block_(block) {}
    void run();

private:
    /// A word with the blanks behind it.
    struct Word {
        std::string_view text; ///< without the blanks
        std::string_view all;
        int visible; ///< characters of `all`
    };
    static Word nextWord(std::string_view text);
    /// Words of a run that stand in one text of the host, and the lines that the host breaks it into.
    struct HostPiece {
        std::size_t words = 0;
        std::size_t lines = 0;
        std::size_t lastLine = 0; ///< words ahead of the last line
        double width = 0;         ///< of the widest line
    };

    bool needsBreak(double room, std::size_t& withText) const;
    static double widthOf(const DxMtextRun& run, std::string_view text);

    void flowOne(const DxMtextRun& run, double room);
    static std::string_view textOf(std::span<const Word> words, bool endsRun);
    static HostPiece hostPiece(const DxMtextRun& run, std::span<const Word> words, bool endsRun, double room);
    static HostPiece nextPiece(const DxMtextRun& run, std::span<const Word> words, double room);
    void flowAll(std::vector<DxMtextRun> runs, double room);
    void flowWords(std::span<const DxMtextRun> runs, double room);
    static double restOfWord(std::span<const DxMtextRun> runs, double room);
    void flowStack(const DxMtextRun* parts, std::size_t count, double room);
    void append(const DxMtextRun& run, const Word& word, double width, const std::string& lines);
    void trimLine();
    void nextLine();
    double levelIn(double y);

    DxMtextBlock& block_;
    double x_ = 0;                     ///< where the next word stands
    double visibleEnd_ = 0;            ///< where the last word ended
    const DxMtextRun* open_ = nullptr; ///< source of the run that words are being appended to
    int visible_ = 0;                  ///< characters of that run
    bool beginsWord_ = true;           ///< what follows is no part of the word before it
    bool isWhole_ = true;              ///< the present word fits in a line
    bool beginsLine_ = false;          ///< behind a break
    double level_ = 0;                 ///< y of the first run of the line
};
