// MTEXT: flattening and layout of any text. The first bytes choose box, attachment and style.
#include "config/config_state.h"
#include "drawing/drawing.h"
#include "session/dx_session.h"
#include "session/dx_unicode.h"
#include "session/session_state.h"
#include "text/dx_mtext.h"
#include "text/dx_text_codes.h"
#include "text/dx_text_import.h"

#include "services/session.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 3) return 0;
    host::resetSession();
    DxfInit("", 0);
    DxfInit2(1);
    DX_TEXT_TYPE text;
    DxInitText(&text, 1);
    text.height = 2.5;
    text.boxWidth = data[0];
    text.attachment = data[1] % 11 - 1;
    text.rotation = data[1];
    if (data[2] & 1) text.extrusion[2] = -1;
    DxJoinTexts = data[2] >> 2 & 1;
    text.text = DxFromCodePage({reinterpret_cast<const char*>(data + 3), size - 3}, DxCodePage);
    DxCutChars(text.text, DX_MTEXT_LIMIT);
    std::vector<DX_TEXT_TYPE> pieces;
    if (DxMtextToTexts(&text, &pieces, (data[2] & 2) != 0) != 0) std::abort();
    for (const DX_TEXT_TYPE& piece : pieces) {
        const bool isPlaced = std::isfinite(piece.point.x) && std::isfinite(piece.point.y);
        const bool hasSize = piece.height > 0 && std::isfinite(piece.height);
        if (!isPlaced || !hasSize || DxTextStrlen(piece.text) > DX_PIECE_LIMIT) std::abort();
    }
    DxClose();
    DxfInit2(0);
    return 0;
}
