// Draw stage of MULTILEADER: an arrow of the host for each line, then the text or the block.
#include "../config/dx_pens.h"
#include "../host/dx_host.h"
#include "../host/dx_host_arrow.h"
#include "../session/dx_documents.h"
#include "../session/dx_unicode.h"
#include "../session/session_state.h"
#include "../text/dx_text_import.h"
#include "dx_attributes.h"
#include "dx_blocks.h"
#include "dx_entity_base.h"
#include "dx_extents.h"
#include "dx_insert_import.h"
#include "dx_leader_curve.h"
#include "dx_mleader_import.h"
#include "dx_transform.h"
#include "mt.h"
#include "ov_arrow.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

using R = DX_MLEADER_TYPE;

/// The name of a block by its handle, empty when there is none.
std::string_view blockName(std::uint32_t handle) {
    const auto& records = DxDocuments.currentTables().blockRecords;
    const auto* found = std::find_if(records.begin(), records.end(), [&](const DX_BLOCK_RECORD_TYPE& record) {
        return record.handle == handle;
    });
    return handle == 0 || found == records.end() ? std::string_view() : found->name.view();
}

// ---- lines -------------------------------------------------------------------------------------------

struct Head {
    std::string_view block; ///< beginning of its name behind the underscore
    int kind;
    double length; ///< of the host's head, relative to the size
};
constexpr Head heads[] = {
    {"None", OV_ARROW_NONE, 1},    {"DotSmall", OV_ARROW_DOT, 0.25}, {"Dot", OV_ARROW_DOT, 0.5},
    {"Oblique", OV_ARROW_TICK, 1}, {"ArchTick", OV_ARROW_TICK, 1},   {"Small", OV_ARROW_DOT, 0.25},
    {"Origin", OV_ARROW_DOT, 0.5}, {"Integral", OV_ARROW_TICK, 1},
};

/// The host's head for a block; one that it hasn't is a filled triangle.
Head headOf(std::uint32_t handle) {
    constexpr auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
    std::string_view name = blockName(handle);
    if (name.starts_with('_')) name.remove_prefix(1);
    for (const Head& head : heads) {
        const bool fits = name.size() >= head.block.size() &&
                          std::equal(head.block.begin(), head.block.end(), name.begin(),
                                     [=](char a, char b) { return lower(a) == lower(b); });
        if (fits) return head;
    }
    return {"", OV_ARROW_FILLED, 1};
}

/// The points of a line from its head on; the landing belongs to the first line of a branch.
std::vector<RPT3> pointsOf(const R& rec, const DX_MLEADER_BRANCH& branch, const DX_MLEADER_LINE& line,
                           bool isFirst) {
    constexpr int spline = 2;
    std::vector<RPT3> points = line.vertices;
    if (branch.hasEnd) points.push_back(branch.end);
    if (rec.pathType == spline) return DxLeaderCurve(points);
    if (isFirst && branch.hasEnd && branch.hasLanding)
        points.push_back({branch.end.x + branch.direction.x * branch.landingLength,
                          branch.end.y + branch.direction.y * branch.landingLength,
                          branch.end.z + branch.direction.z * branch.landingLength});
    return points;
}

int drawLine(const R& rec, const DX_MLEADER_LINE& line, std::vector<RPT3> points, const Mat44 m) {
    for (RPT3& point : points) {
        DxTrans3DRpt(&point, m);
        if (!DxIsFinite(point)) return 0;
    }
    if (points.size() < 2) return 0;
    if (DxCheckPass) {
        for (const RPT3& point : points) DxCheckXYZ(point.x, point.y, point.z);
        return 0;
    }
    DX_ENTITY_BASE_TYPE base;
    DxCopyEntityBase(&base, &rec.base);
    DxTakeRawColour(&base, rec.lineColour);
    DxTakeRawColour(&base, line.colour);
    DxPenLt look;
    if (!DxPenLtToCAD(&base, &look.pen, &look.lineType)) return 0;
    if (const int error = DxStartDrawing(look.pen, look.lineType)) return error;
    const Head head = headOf(line.arrow ? line.arrow : rec.arrow);
    const double size = line.arrowSize >= 0 ? line.arrowSize : rec.arrowSize;
    return DxDrawArrowLine(points, head.kind, head.length * size * std::fabs(DxBlockScaleX), look);
}

int drawLines(const R& rec, const Mat44 m) {
    if (rec.pathType == 0) return 0;
    for (const DX_MLEADER_BRANCH& branch : rec.branches) {
        for (const DX_MLEADER_LINE& line : branch.lines) {
            const bool isFirst = &line == branch.lines.data();
            if (const int error = drawLine(rec, line, pointsOf(rec, branch, line, isFirst), m)) return error;
        }
    }
    return 0;
}

// ---- text --------------------------------------------------------------------------------------------

void setStyle(DX_TEXT_TYPE& text, std::uint32_t handle) {
    const auto& styles = DxDocuments.currentTables().styles;
    const auto* found = std::find_if(styles.begin(), styles.end(),
                                     [&](const DX_STYLE_TYPE& style) { return style.handle == handle; });
    if (handle && found != styles.end()) text.style = found->name;
}

void setBack(DX_TEXT_TYPE& text, const R& rec) {
    constexpr int colour = 1, sheet = 2, frame = 16;
    if (rec.isBackFill) text.backFlag = rec.isWindowBack ? colour | sheet : colour;
    if (rec.hasFrame) text.backFlag |= frame;
    text.backScale = rec.backScale;
    DX_ENTITY_BASE_TYPE back;
    DxCopyEntityBase(&back, &rec.base);
    DxTakeRawColour(&back, rec.backColour);
    text.backColor = back.color;
    text.backTrueColor = back.trueColor;
}

int drawText(const R& rec, const Mat44 m) {
    if (!rec.hasText || rec.text.empty()) return 0;
    DX_TEXT_TYPE text;
    DxInitText(&text, 1);
    DxCopyEntityBase(&text.base, &rec.base);
    DxTakeRawColour(&text.base, rec.textColour);
    std::copy_n(rec.textNormal, 3, text.extrusion);
    setStyle(text, rec.textStyle);
    text.text = rec.text;
    text.point = rec.textPoint;
    text.second = rec.textDirection;
    text.height = rec.textHeight;
    const bool isTurned = rec.textDirection.x != 1 || rec.textDirection.y != 0;
    const double angle = isTurned ? std::atan2(rec.textDirection.y, rec.textDirection.x) : rec.textRotation;
    text.rotation = angle * 180 / std::numbers::pi;
    text.attachment = std::clamp(rec.alignment, 1, 3); // at its top
    text.boxWidth = rec.boxWidth;
    text.lineSpacing = rec.lineSpacing;
    setBack(text, rec);
    return DxDrawMtext(&text, m);
}

// ---- block -------------------------------------------------------------------------------------------

RPT3 toObject(const RPT3& point, const double normal[3]) {
    Mat44 toWorld, inverse;
    RPT3 result = point;
    if (normal[0] == 0 && normal[1] == 0 && normal[2] == 1) return result;
    DxArbaxis(normal[0], normal[1], normal[2], toWorld);
    if (Mt44Invert(toWorld, inverse) == 0) DxTrans3DRpt(&result, inverse);
    return result;
}

/// Puts a definition where the block stands, with its text.
DX_ATTRIB_TYPE placed(const DX_ATTRIB_TYPE& definition, const DX_INSERT_TYPE& insert, const Mat44 matrix) {
    DX_ATTRIB_TYPE attrib = definition;
    DxTrans3DRpt(&attrib.insertion, matrix);
    DxTrans3DRpt(&attrib.alignment, matrix);
    attrib.height *= std::fabs(insert.scaleX);
    attrib.rotation += insert.rotation;
    return attrib;
}

/// Collects the attributes that the entity gives texts, from the definitions in the block.
int takeAttributes(const R& rec, DX_INSERT_TYPE& insert) {
    DX_SAVE save;
    DxSaveActPos(&save);
    DxfEntityFileReference reference;
    DxGetBlock(insert.blockName.view(), reference);
    if (!reference.block) return DxRestoreActPos(&save);
    Mat44 matrix, world;
    DxArbaxis(0, 0, 1, world);
    int error = DxInsertBlockTrans(&insert, reference.block, world, matrix);
    for (DxPair pair; !error;) {
        if (DxReadPair(pair, 161, DxShowsPercent()) != 0) break;
        if (pair.code != 0) continue;
        if (DxEndsEntities(pair.text, "ENDBLK")) break;
        if (pair.text != "ATTDEF") continue;
        DX_ATTRIB_TYPE definition;
        if (DxReadAttrib(&definition) != 0) break;
        for (const DX_MLEADER_ATTRIBUTE& given : rec.attributes) {
            if (given.definition != definition.base.handle) continue;
            definition.value = given.text;
            insert.attribs.push_back(placed(definition, insert, matrix));
        }
    }
    if (!error) error = DxRestoreActPos(&save);
    reference.place->Disarm();
    return error;
}

int drawBlock(const R& rec, const Mat44 m) {
    const std::string_view name = blockName(rec.block);
    if (!rec.hasBlock || name.empty()) return 0;
    DX_INSERT_TYPE insert{};
    DxCopyEntityBase(&insert.base, &rec.base);
    DxTakeRawColour(&insert.base, rec.blockColour);
    std::copy_n(rec.blockNormal, 3, insert.extrusion);
    insert.blockName.assign(name);
    insert.position = toObject(rec.blockPoint, rec.blockNormal);
    insert.scaleX = rec.blockScale.x, insert.scaleY = rec.blockScale.y, insert.scaleZ = rec.blockScale.z;
    insert.rotation = rec.blockRotation * 180 / std::numbers::pi;
    if (!rec.attributes.empty())
        if (const int error = takeAttributes(rec, insert)) return error;
    return DxDrawInsert(&insert, m, 0);
}

} // namespace

int DxDrawMLeader(const R* rec, const Mat44 m) {
    DxPenLt look;
    if (!DxPenLtToCAD(&rec->base, &look.pen, &look.lineType)) return 0;
    int error = drawLines(*rec, m);
    if (!error) error = drawText(*rec, m);
    return error ? error : drawBlock(*rec, m);
}
