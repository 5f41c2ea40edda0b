#include "dx_attributes.h"

#include "../config/config_state.h"
#include "../config/dx_layers.h"
#include "../config/dx_pens.h"
#include "../host/dx_active_pattern.h"
#include "../host/dx_host.h"
#include "../sections/sections_state.h"
#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"
#include "../session/dx_unicode.h"
#include "../session/session_state.h"
#include "blocks_state.h"
#include "dx_entity_base.h"
#include "import_state.h"
#include "uo.h"

#include <algorithm>
#include <optional>

namespace {

constexpr int INVISIBLE = 1, CONSTANT = 2;
constexpr double smallestHeight = 0.0001;
/// Characters of a value: each that is shown may be an escape of seven.
constexpr std::size_t longestValue = 7 * DX_TEXT_LIMIT;

using A = DX_ATTRIB_TYPE;
constexpr auto fields = dxFields<A>({
    {2, &A::tag},
    {7, &A::style, DX_UPPER},
    {10, &A::insertion},
    {11, &A::alignment},
    {40, &A::height},
    {41, &A::widthFactor},
    {50, &A::rotation},
    {51, &A::oblique},
    {70, &A::flags},
    {71, &A::generation},
    {210, &A::extrusion},
});

void init(DX_ATTRIB_TYPE& rec) {
    DxInitEntityBase(&rec.base);
    DxInitExtrusion(rec.extrusion);
    rec.horizontalJustify = rec.verticalJustify = 0;
    rec.value.clear();
    rec.style.assign("STANDARD");
    rec.insertion = {0, 0, 0};
    rec.alignment = {1, 0, 0};
    rec.height = rec.rotation = rec.oblique = rec.widthFactor = 0;
    rec.generation = rec.flags = 0;
    rec.tag.clear();
}

void takeJustification(const DxPair& pair, int most, int& field) {
    const int value = DxAtoi(pair.text);
    if (value >= 0 && value <= most)
        field = value;
    else
        DxProtoMsg(DxMsg(5748, pair.code, value), 1);
}

void takeGroup(DX_ATTRIB_TYPE& rec, const DxPair& pair) {
    switch (pair.code) {
    case 1:
        if (rec.value.size() < longestValue) rec.value += pair.text;
        break;
    case 72: takeJustification(pair, 5, rec.horizontalJustify); break;
    case 74: takeJustification(pair, 3, rec.verticalJustify); break;
    default: DxReadEntityBase(&rec.base, pair.code, pair.text);
    }
}

void trimTag(DX_NAME& tag) {
    std::string text(tag.view());
    UtTrim(text);
    tag.assign(text);
}

/// Sets the attribute under the host name that the configuration gives its tag, else under the tag itself.
void setOnPattern(const DX_ATTRIB_TYPE& rec) {
    const UtCString value = DxHostText(rec.value);
    DX_ATTR_PAIR* mapped = DxAttrIndex.find(DxAttrMap, rec.tag.view());
    if (!mapped) {
        if (!rec.tag.empty()) DxCiSetAttrSingle(DxActPat, rec.tag.view(), value, false);
        return;
    }
    if (mapped->host.empty() || DxCiSetAttrSingle(DxActPat, mapped->host.c_str(), value, true) == 0) return;
    DxProtoMsg(DxMsg(5731, rec.tag.c_str(), mapped->host.c_str()), 1);
    mapped->host.clear(); // told once
}

/// With INSERT_ATTR the first attribute of an INSERT makes a pattern for them all, which names block and
/// layer: on the pattern of a layer the next INSERT would overwrite them.
int beginAttributePattern() {
    if (!DxInsertAttr || DxBlockLevel == 0 || DxActLevel.hasAttributePat) return 0;
    DxPatternScope around;
    if (const int error = DxNewPat(0)) return error;
    DxActLevel.attributePat = DxActPatIndex;
    DxActLevel.hasAttributePat = 1;
    UoSetSingleAttr(DxActPat, DX_INSERT_ATTRIBUTE, DxActLevel.block->name.view());
    DxNameLayerOfPattern(DxActLevel.layer);
    return around.leave();
}

/// The pattern of the running INSERT is active for the time of an attribute, in a drawing pass; one that
/// holds nothing but attributes takes their texts too.
class AttributePattern {
public:
    AttributePattern() {
        if (DxCheckPass) return;
        error_ = beginAttributePattern();
        if (error_ || DxBlockPatIndex < 0) return;
        scope_.emplace(DxBlockPatIndex);
        error_ = scope_->error();
        DxActLevel.keepsPattern = DxInsertAttr && DxActLevel.hasAttributePat;
    }
    ~AttributePattern() { DxActLevel.keepsPattern = 0; }
    AttributePattern(const AttributePattern&) = delete;
    AttributePattern& operator=(const AttributePattern&) = delete;
    int error() const { return error_; }

private:
    std::optional<DxPatternScope> scope_;
    int error_ = 0;
};

/// Sets the attribute on the pattern of the running INSERT, whatever layer it stands on itself.
int setAttribute(const DX_ATTRIB_TYPE& rec) {
    DxEntityLayer layer;
    if (DxCheckPass || !DxFindEntityLayer(rec.base, layer)) return 0;
    if (const int error = DxNewElement(1)) return error;
    setOnPattern(rec);
    return 0;
}

} // namespace

int DxReadAttrib(DX_ATTRIB_TYPE* rec) {
    init(*rec);
    const bool showPercent = DxShowsPercent();
    DxPair pair;
    for (bool takes = true;;) {
        if (const int error = DxReadPair(pair, static_cast<int>(longestValue) + 1, showPercent)) return error;
        if (pair.code == 0) break;
        if (pair.code == 101) takes = false; // an embedded object has groups of its own
        if (takes && !fields.store(*rec, pair.code, pair.text)) takeGroup(*rec, pair);
    }
    DxUnGetLine();
    trimTag(rec->tag);
    if (rec->height < smallestHeight) rec->flags |= INVISIBLE;
    return 0;
}

const char* DxAttributeOfOrder(int order, const char* ownName) {
    static constexpr const char* NAMES[] = {"#G", "#E", "#K", "#M"};
    if (order >= DX_ORDER_GROUP && order <= DX_ORDER_NAME) return NAMES[order];
    return order == DX_ORDER_ATTR ? ownName : nullptr;
}

void DxNameLayerOfPattern(const DX_NAME& layer) {
    const char* name = DxAttributeOfOrder(DxLayerOrder, "layer");
    if (!DxLayerToPattern || !name) return;
    DX_NAME hostName = layer;
    DxTableConvLayer(1, &hostName);
    UoSetSingleAttr(DxActPat, name, hostName.view());
}

void DxAttribCopyToText(const DX_ATTRIB_TYPE* rec, DX_TEXT_TYPE* text) {
    DxInitText(text, 0);
    text->base = rec->base;
    std::copy(rec->extrusion, rec->extrusion + 3, text->extrusion);
    text->horAlign = rec->horizontalJustify;
    text->verAlign = rec->verticalJustify;
    text->text = DxHostText(rec->value).str();
    text->style = rec->style;
    text->point = rec->insertion;
    text->height = rec->height;
    text->rotation = rec->rotation;
    text->oblique = rec->oblique;
    text->second = rec->alignment;
    text->widthFactor = rec->widthFactor;
    text->generation = rec->generation;
}

int DxDrawAttrib(const DX_ATTRIB_TYPE* rec, const Mat44 m) {
    const AttributePattern pattern;
    if (pattern.error()) return pattern.error();
    if (const int error = setAttribute(*rec)) return error;
    if (DxAttMode != 2 && !(DxAttMode == 1 && !(rec->flags & INVISIBLE))) return 0;
    DX_TEXT_TYPE text;
    DxAttribCopyToText(rec, &text);
    return DxDrawText(&text, m, DX_TEXT_OF_ENTITY, 0);
}

int DxDrawAttdef(const DX_ATTRIB_TYPE* rec, const Mat44 m) {
    if (DxBlockLevel == 0 && !(rec->flags & INVISIBLE)) {
        DX_TEXT_TYPE text;
        DxAttribCopyToText(rec, &text);
        text.text = rec->tag.view();
        return DxDrawText(&text, m, DX_TEXT_OF_ENTITY, 0);
    }
    if (rec->flags & CONSTANT) return DxDrawAttrib(rec, m);
    DxNoteReason(DxReason::Definition);
    return 0;
}
