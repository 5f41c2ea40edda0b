#include "dx_block_table.h"

#include "../config/dx_names.h"
#include "../host/dx_host.h"
#include "../sections/dx_tables_import.h"
#include "../session/dx_documents.h"
#include "../session/dx_messages.h"
#include "../session/dx_numbers.h"
#include "../session/dx_protocol.h"
#include "../session/dx_unicode.h"
#include "../session/dx_writer.h"
#include "block_table_state.h"
#include "dx_attributes_export.h"
#include "export_state.h"
#include "ut.h"

#include <cmath>
#include <string_view>

namespace {

/// A pair as it stands in a body.
struct BodyPair {
    std::string_view code, value; ///< with their line feeds
    int number = 0;
};

bool takePair(std::string_view& lines, BodyPair& pair) {
    if (lines.empty()) return false;
    const auto takeLine = [&lines] {
        const std::string_view line = lines.substr(0, lines.find('\n') + 1);
        lines.remove_prefix(line.size());
        return line;
    };
    pair.code = takeLine();
    pair.value = takeLine();
    pair.number = DxAtoi(pair.code);
    return true;
}

/// Grid that values of a group are compared on, 0 for values that must be equal. Copies that were taken back
/// through different matrices differ in their last digits.
double gridOf(int code) {
    constexpr double fine = 1e-9;
    if (code == 42 || (code >= 50 && code <= 59) || (code >= 210 && code <= 239)) return fine;
    const bool isLength = (code >= 10 && code <= 59) || (code >= 110 && code <= 149);
    return isLength ? UtConv(50) * 0.01 : 0;
}

void addComparable(std::string& body, const BodyPair& pair) {
    body += pair.code;
    if (pair.number == 2 || pair.number == 5 || pair.number == 330) return;
    const double grid = gridOf(pair.number);
    if (grid == 0) {
        body += pair.value;
        return;
    }
    long long value = std::llround(DxAtof(pair.value) / grid);
    const bool isAngle = pair.number >= 50 && pair.number <= 59;
    const long long turn = std::llround(360 / grid);
    if (isAngle) value = (value % turn + turn) % turn; // 0 and 360 are one
    body += std::to_string(value) + '\n';
}

/// A block's body as it is compared: names, handles and owners without their values, which differ between
/// equal blocks. Of a definition of an attribute tag and flags count: where and what it is says the INSERT's
/// own attribute.
std::string comparableBody(std::string_view lines) {
    std::string body;
    bool isDefinition = false;
    for (BodyPair pair; takePair(lines, pair);) {
        if (pair.number == 0) isDefinition = pair.value == "ATTDEF\n";
        if (!isDefinition)
            addComparable(body, pair);
        else if (pair.number == 0 || pair.number == 2 || pair.number == 70)
            body.append(pair.code).append(pair.value);
    }
    return body;
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
        DxCutChars(text, DxNameLimit() - tail.size());
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
    int error = 0;
    if (DxBlockMatrixMode) error = DxPlacementOfPattern(pat, block.place);
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
