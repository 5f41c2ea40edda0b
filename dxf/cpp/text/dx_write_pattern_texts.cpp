// The texts of a pattern, and the attributes that texts stand for.
#include "../config/config_state.h"
#include "../config/dx_layers.h"
#include "../export/dx_attributes_export.h"
#include "../export/dx_layer_choice.h"
#include "../export/dx_origin_walk.h"
#include "../export/dx_pattern_walk.h"
#include "../export/dx_write_blocks.h"
#include "../host/host_state.h"
#include "../import/dx_extents.h"
#include "../session/dx_numbers.h"
#include "../session/session_state.h"
#include "dx_codes.h"
#include "dx_write_text.h"
#include "ov.h"
#include "uo.h"

#include <algorithm>

namespace {

constexpr int WALK = 24, FIRST = 1, NEXT = 2, READ = 20, READ_STEP = 0x8014;

struct Attribute {
    UtCString name, value;
    bool used = false;
};

std::vector<Attribute> attributesOf(int pat) {
    std::vector<Attribute> list;
    Attribute attribute;
    for (int i = 0; UoGetAttr(pat, i, &attribute.name, &attribute.value) == 0; ++i) list.push_back(attribute);
    return list;
}

bool holdsAttributesOfInsert(const std::vector<Attribute>& attributes) {
    return DxInsertAttr && std::any_of(attributes.begin(), attributes.end(),
                                       [](const Attribute& a) { return a.name == DX_INSERT_ATTRIBUTE; });
}

/// A text "%Name" or "#Name" stands for the attribute of that name; among the attributes of an INSERT it
/// shows the value of one.
auto attributeOfText(const std::string& line, std::vector<Attribute>& attributes) {
    if (line[0] == '%' || line[0] == '#') {
        const std::string name = line[0] == '%' ? line.substr(1) : line;
        const auto found = std::find_if(attributes.begin(), attributes.end(),
                                        [&](const Attribute& a) { return a.name.str() == name; });
        if (found != attributes.end()) return found;
    }
    if (!holdsAttributesOfInsert(attributes)) return attributes.end();
    return std::find_if(attributes.begin(), attributes.end(), [&](const Attribute& a) {
        return !a.used && a.name.str().starts_with(DxAttrPrefix) && a.value.str() == line;
    });
}

void findAttribute(DX_WRITE_TEXT& text, std::vector<Attribute>& attributes) {
    if (text.lines.size() != 1 || text.lines[0].empty()) return;
    const auto found = attributeOfText(text.lines[0], attributes);
    if (found == attributes.end()) return;
    found->used = true;
    text.tag = DxAttribConvert(found->name).str();
    if (text.tag.empty()) return;
    text.kind = DX_WRITE_ATTRIBUTE;
    text.lines[0] = found->value.str();
}

int openBlock() {
    if (DxBlockOpen) return 0;
    const int error = DxWriteBlockStart(DxBlockOpen);
    DxBlockLayer = UtCString(DxActLayer.view());
    return error;
}

int writeText(int pat, int row, std::vector<Attribute>& attributes) {
    if (const int error = DxPatSetLayerAttribs(pat, row, DX_KIND_TEXT)) return error;
    DX_WRITE_TEXT text;
    if (const int error = DxReadPatText(pat, row, DxTextColor, text)) return error;
    if (text.lines.empty()) return 0;
    if (const int error = openBlock()) return error;
    findAttribute(text, attributes);
    if (const int error = DxWriteBalloon(pat, row, text.ext)) return error;
    if (const int error = DxWriteText(text)) return error;
    ++DxEntityCount;
    return DxAddLayer(DxActLayer.view());
}

/// The entity that the texts from `row` on were made from.
int writeKept(int pat, int row, const std::vector<DX_KEPT_ENTITY>& entities) {
    if (const int error = DxPatSetLayerAttribs(pat, row, DX_KIND_TEXT)) return error;
    if (const int error = openBlock()) return error;
    DxStoreMaxXY(DxAtof(entities.front().value(10)), DxAtof(entities.front().value(20)));
    if (const int error = DxWriteKept(entities, {})) return error;
    ++DxEntityCount;
    return DxAddLayer(DxActLayer.view());
}

/// The rectangle of what the pattern holds; one that holds nothing has it at the origin.
int rectangleOf(int pat, double rect[4]) {
    int code = 256;
    const int error = ovpatrect(&code, &pat, rect);
    if (error != DX_ERR_NO_MORE) return error;
    std::fill(rect, rect + 4, 0.0);
    return 0;
}

/// Attributes without a text go out invisibly, one below the other.
int writeAttributes(int pat, const std::vector<Attribute>& attributes) {
    if (attributes.empty()) return 0;
    double rect[4] = {0, 0, 0, 0};
    if (const int error = rectangleOf(pat, rect)) return error;
    if (DxEntityCount == 0) // nothing of this pattern has settled a layer yet
        if (const int error = DxPatSetLayerAttribs(pat, 0, DX_KIND_TEXT)) return error;
    for (std::size_t i = 0; i < attributes.size(); ++i) {
        const Attribute& attribute = attributes[i];
        const UtCString tag = attribute.used ? UtCString() : DxAttribConvert(attribute.name);
        if (tag.IsEmpty()) continue;
        DX_WRITE_TEXT text;
        text.kind = DX_WRITE_INVISIBLE_ATTRIBUTE;
        text.lines = {attribute.value.str()};
        text.tag = tag.str();
        text.pat = pat;
        text.x = (rect[0] + rect[2]) * 0.5;
        text.y = rect[3] - static_cast<double>(i) / DxScale * (1.88 / DxDrawUnit);
        text.parm.height = 1.0;
        text.parm.width = 0.6;
        text.parm.origin = 5;
        if (const int error = openBlock()) return error;
        if (const int error = DxWriteText(text)) return error;
        ++DxEntityCount;
        if (const int error = DxAddLayer(DxActLayer.view())) return error;
    }
    return 0;
}

} // namespace

int DxReadPatText(int pat, int row, int pen, DX_WRITE_TEXT& out) {
    OV_TEXT read;
    int at = row;
    if (const int error = ovtext(READ, READ_STEP, pat, &at, &read)) return error;
    if (!(read.parm.height > 0)) return 0;
    for (const UtCString& line : read.lines) out.lines.push_back(line.str());
    out.pat = pat;
    out.x = read.point.x;
    out.y = read.point.y;
    out.parm = read.parm;
    out.ext = read.ext;
    out.lineLength = read.lineLength;
    for (const UtCString& line : read.shownLines) out.shownLines.push_back(line.str());
    if (out.parm.font == 0 && out.parm.face.IsEmpty()) { // a text without a font
        out.parm.font = 1;
        out.parm.width = out.parm.height * 0.6;
        out.parm.slant = 0;
    }
    if (pen) out.parm.pen = pen;
    return 0;
}

int DxWritePatText(int pat) {
    std::vector<Attribute> attributes = attributesOf(pat);
    int row = 0;
    DxOriginWalk origins(pat, OV_TEXTS);
    int keptRow = -1;
    int error = ovtext(WALK, FIRST, pat, &row, nullptr);
    for (int place = 0; !error; ++place) {
        const OV_ORIGIN* const origin = origins.at(place);
        if (!origin)
            error = writeText(pat, row, attributes);
        else if (origin->first != keptRow)
            error = writeKept(pat, row, origins.entities());
        keptRow = origin ? origin->first : -1;
        if (!error) error = ovtext(WALK, NEXT, pat, &row, nullptr);
    }
    return error == DX_ERR_NO_MORE ? writeAttributes(pat, attributes) : error;
}
