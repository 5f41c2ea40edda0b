// Texts of the active pattern: parameters, measuring, adding, reading.
#include "ov_text.h"

#include "drawing/host_state.h"
#include "services/failure.h"
#include "text/layout.h"
#include "text/text_parm.h"

using namespace host;

int ovtextparamsttf(int op, OV_TEXT_PARM* parm) {
    if (callFails()) return errorNoMemory;
    Text& current = drawingState().textParameters;
    if (op == 5) {
        *parm = parmOf(current);
        return 0;
    }
    if (op != 6 || !isUsable(*parm)) return errorNotApplicable;
    setParm(current, *parm);
    return 0;
}

int ovtextparamext(int op, OV_TEXT_EXT* ext) {
    if (callFails()) return errorNoMemory;
    Text& current = drawingState().textParameters;
    if (op != 5 && op != 6) return errorNotApplicable;
    if (op == 5)
        *ext = extOf(current);
    else
        setExt(current, *ext);
    return 0;
}

int ovtextsize(const UtCString& text, double* width, double* height) {
    if (callFails()) return errorNoMemory;
    *width = *height = 0;
    if (text.IsEmpty()) return 0;
    const Text& current = drawingState().textParameters;
    TextFont& font = fontOf(current);
    const double perMillimetre = 1 / sheetMillimetres(openDrawing());
    std::string_view rest = text.str();
    std::size_t lines = 1;
    for (;; ++lines) {
        const std::size_t end = rest.find('\n');
        *width = std::max(*width, lineWidth(current, font, rest.substr(0, end)) * perMillimetre);
        if (end == std::string_view::npos) break;
        rest.remove_prefix(end + 1);
    }
    *height = static_cast<double>(lines) * current.lineDistance * current.height * perMillimetre;
    return 0;
}

int ovaddtext(const UtCString& text, double x, double y) {
    if (callFails()) return errorNoMemory;
    Pattern* pattern = openDrawing().active();
    if (!pattern) return errorNoSuchObject;
    Text& added = addText(*pattern, text.str());
    added.x = x;
    added.y = y;
    return 0;
}

/// The text in a row of a pattern; null when there is none.
static const Text* textAt(int patNo, int row) {
    const Pattern* pattern = openDrawing().find(patNo);
    const bool inside = pattern && row >= 0 && static_cast<std::size_t>(row) < pattern->texts.size();
    return inside ? &pattern->texts[row] : nullptr;
}

/// The lines that a text is broken into, each with what switches its lines along the text on at its start.
static void shownLines(const Text& text, std::vector<UtCString>& lines) {
    for (const LayoutLine& line : layoutText(text, sheetMillimetres(openDrawing())).lines) {
        std::string shown;
        for (char c = OV_SWITCH_UNDERLINE; c <= OV_SWITCH_STRIKE; ++c)
            if (line.switches >> (c - OV_SWITCH_UNDERLINE) & 1) shown += c;
        lines.emplace_back(shown.append(line.text));
    }
}

static int readText(const Text& text, OV_TEXT* out) {
    out->point = {text.x, text.y, text.z};
    out->lines.assign(text.lines.begin(), text.lines.end());
    out->parm = parmOf(text);
    out->ext = extOf(text);
    out->lineLength = text.lineLength;
    out->shownLines.clear();
    if (text.lineLength > 0) {
        shownLines(text, out->shownLines);
    } else {
        out->shownLines = out->lines;
    }
    setParm(drawingState().textParameters, out->parm);
    setExt(drawingState().textParameters, out->ext);
    return 0;
}

int ovtext(int op, int step, int patNo, int* row, OV_TEXT* text) {
    if (callFails()) return errorNoMemory;
    constexpr int walk = 24, read = 20, all = 0x8014;
    if (op == walk && (step == 1 || step == 2)) {
        int next = step == 1 ? 0 : *row + 1;
        const Text* at = textAt(patNo, next);
        while (at && at->dimType != 0) at = textAt(patNo, ++next);
        if (!at) return errorNoSuchObject;
        *row = next;
        return 0;
    }
    if (op != read || step != all) return errorNotApplicable;
    const Text* found = textAt(patNo, *row);
    return found ? readText(*found, text) : errorNoSuchObject;
}

int ovtextstringlen(int patNo, int row, int* length) {
    if (callFails()) return errorNoMemory;
    const Text* text = textAt(patNo, row);
    if (!text) return errorNoSuchObject;
    *length = static_cast<int>(joinLines(text->lines).Len());
    return 0;
}
