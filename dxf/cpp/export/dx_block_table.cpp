#include "dx_block_table.h"

#include "../config/dx_names.h"
#include "../host/dx_host.h"
#include "../sections/dx_tables_import.h"
#include "../session/dx_documents.h"
#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"
#include "../session/dx_writer.h"
#include "block_table_state.h"
#include "dx_attributes_export.h"
#include "dx_codes.h"
#include "export_state.h"
#include "mt.h"

#include <cmath>
#include <string_view>

namespace {

/// A block's body as it is compared: names, handles and owners without their values, which differ between
/// equal blocks.
std::string comparableBody(std::string_view lines) {
    const auto takeLine = [&lines] {
        const std::string_view line = lines.substr(0, lines.find('\n') + 1);
        lines.remove_prefix(line.size());
        return line;
    };
    std::string body;
    while (!lines.empty()) {
        const std::string_view code = takeLine();
        const std::string_view value = takeLine();
        body += code;
        if (code != "  2\n" && code != "  5\n" && code != "330\n") body += value;
    }
    return body;
}

/// Base, scale and rotation of the INSERT are those of the pattern's own placement.
int placeByPattern(int pat, DX_WRITE_BLOCK& block) {
    Mat32 m;
    if (const int error = DxGetPatMatrix(pat, m, false)) return error;
    block.base[0] = m[2][0];
    block.base[1] = m[2][1];
    const double scale = MtGetScale(m);
    block.scale[0] = block.scale[2] = scale;
    block.scale[1] = MtIsMirrored(m) ? -scale : scale;
    block.rotation = MtGetRot(m) * DX_DEGREES;
    return 0;
}

} // namespace

int* DxFindBlockCounter(const UtCString& name) {
    const auto found = DxBlockByName.find(name.Upper().str());
    return found == DxBlockByName.end() ? nullptr : &DxBlockList[found->second].counter;
}

void DxCheckBlockname(UtCString& name) {
    DxCheckName(name);
    if (name.IsEmpty()) name = "B"; // as a pattern without a name
    const std::string base = name.str();
    int* counter = DxFindBlockCounter(name);
    while (DxFindBlockCounter(name) && counter) {
        std::string tail(1, '-');
        tail += std::to_string(++*counter);
        std::string text = base;
        DxCutUtf8(text, DxNameLimit() - tail.size());
        name = text.append(tail);
    }
}

int DxAddBlock(const UtCString& name, const UtCString& layer, int pat) {
    DX_WRITE_BLOCK block;
    block.name = name;
    block.layer = layer;
    block.pattern = pat;
    DxAttribMove(&block.attribs);
    if (!DxBlockBufferWanted || !DxBlockLines) {
        DxBlockByName.emplace(name.Upper().str(), DxBlockList.size());
        DxBlockList.push_back(std::move(block));
        return 0;
    }
    int error = placeByPattern(pat, block);
    const auto [earlier, isNew] = DxBlockByBody.emplace(comparableBody(*DxBlockLines), DxBlockList.size());
    if (isNew) {
        if (!error) error = DxWriteBytes(DxBlockLines->data(), DxBlockLines->size());
        if (!error) error = DxTableAddBlockRecord(name.str(), DxOwnerHandle, 0, 0);
        DxBlockByName.emplace(name.Upper().str(), DxBlockList.size());
    } else {
        block.name = DxBlockList[earlier->second].name;
        ++DxBlockList[earlier->second].copies;
    }
    DxBlockLines->clear();
    DxBlockList.push_back(std::move(block));
    return error;
}

void DxFreeBlockTable() {
    int total = 0;
    for (const DX_WRITE_BLOCK& block : DxBlockList) {
        if (block.copies == 0) continue;
        total += block.copies;
        DxProtoMsg(DxMsg(11668, block.name.c_str(), block.copies + 1), 0);
    }
    if (total > 0) DxProtoMsg(DxMsg(11669, total), 0);
    DxBlockList.clear();
    DxBlockByName.clear();
    DxBlockByBody.clear();
}
