#include "text/text_parm.h"

#include "drawing/host_state.h"

#include <algorithm>
#include <cmath>

namespace host {

bool isUsable(const OV_TEXT_PARM& parm) {
    const double values[] = {parm.height, parm.width,        parm.angle,
                             parm.slant,  parm.lineDistance, parm.spacing};
    return std::all_of(std::begin(values), std::end(values), [](double v) { return std::isfinite(v); }) &&
           parm.height > 0 && parm.width >= 0 && parm.lineDistance >= 0;
}

void setParm(Text& text, const OV_TEXT_PARM& parm) {
    text.height = parm.height;
    text.width = parm.width > 0 ? parm.width : parm.height;
    text.angle = parm.angle;
    text.slant = parm.slant;
    text.font = parm.font;
    text.face = parm.face.str();
    text.styleBits = 0;
    for (int i = 0; i < 8; ++i) text.styleBits |= parm.bits[i] ? 1 << i : 0;
    text.pen = parm.pen;
    text.origin = parm.origin >= 1 && parm.origin <= 9 ? parm.origin : 1;
    text.justification = parm.justification >= 0 && parm.justification <= 2 ? parm.justification : 0;
    text.lineDistance = parm.lineDistance;
    text.spacing = parm.spacing;
}

void setExt(Text& text, const OV_TEXT_EXT& ext) {
    text.fillPen = ext.fillPen;
    text.backOn = ext.backOn != 0;
    text.backType = ext.backType;
}

OV_TEXT_PARM parmOf(const Text& text) {
    OV_TEXT_PARM parm;
    parm.pen = text.pen;
    parm.height = text.height;
    parm.width = text.width;
    parm.font = text.font;
    parm.angle = text.angle;
    parm.slant = text.slant;
    parm.origin = text.origin;
    parm.justification = text.justification;
    parm.lineDistance = text.lineDistance;
    parm.spacing = text.spacing;
    parm.face = text.face;
    for (int i = 0; i < 8; ++i) parm.bits[i] = text.styleBits >> i & 1;
    return parm;
}

OV_TEXT_EXT extOf(const Text& text) {
    return {text.fillPen, text.backOn ? 1 : 0, text.backType};
}

Text& addText(Pattern& pattern, std::string_view text) {
    Text& added = pattern.texts.emplace_back(drawingState().textParameters);
    added.lines = splitLines(text);
    ++openDrawing().elementCount;
    return added;
}

std::vector<std::string> splitLines(std::string_view text) {
    std::vector<std::string> lines(1);
    if (text.find('\n') == std::string_view::npos && text.find('\r') == std::string_view::npos) {
        lines[0] = text;
        return lines;
    }
    for (const char c : text) {
        if (c == '\n') {
            lines.emplace_back();
        } else if (c != '\r') {
            lines.back() += c;
        }
    }
    return lines;
}

UtCString joinLines(const std::vector<std::string>& lines) {
    std::string joined;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (i) joined += '\n';
        joined += lines[i];
    }
    return joined;
}

} // namespace host
