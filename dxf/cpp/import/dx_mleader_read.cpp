// Reader of MULTILEADER. Its groups mean what the braces around them say:
//
//   300 CONTEXT_DATA{   302 LEADER{   304 LEADER_LINE{ … 305 }   303 }   301 }   groups of its own
#include "dx_entity_base.h"
#include "dx_mleader_import.h"
#include "dx_text.h"

#include "../session/dx_unicode.h"

#include <optional>

namespace {

using R = DX_MLEADER_TYPE;
constexpr auto contextFields = dxFields<R>({
    {11, &R::textNormal}, {12, &R::textPoint},   {13, &R::textDirection}, {14, &R::blockNormal},
    {15, &R::blockPoint}, {16, &R::blockScale},  {41, &R::textHeight},    {42, &R::textRotation},
    {43, &R::boxWidth},   {45, &R::lineSpacing}, {46, &R::blockRotation}, {90, &R::textColour},
    {91, &R::backColour}, {93, &R::blockColour}, {140, &R::arrowSize},    {141, &R::backScale},
    {171, &R::alignment}, {290, &R::hasText},    {291, &R::isWindowBack}, {292, &R::isBackFill},
    {296, &R::hasBlock},  {340, &R::textStyle},  {341, &R::block},
});
constexpr auto ownFields = dxFields<R>({
    {91, &R::lineColour},
    {170, &R::pathType},
    {292, &R::hasFrame},
    {342, &R::arrow},
});

using B = DX_MLEADER_BRANCH;
constexpr auto branchFields = dxFields<B>({
    {10, &B::end},
    {11, &B::direction},
    {40, &B::landingLength},
    {290, &B::hasEnd},
    {291, &B::hasLanding},
});

using L = DX_MLEADER_LINE;
constexpr auto lineFields = dxFields<L>({
    {40, &L::arrowSize},
    {92, &L::colour},
    {341, &L::arrow},
});

constexpr int byBlock = static_cast<int>(0xC1000000U);

void init(R& rec) {
    rec = R{};
    DxInitEntityBase(&rec.base);
    DxInitExtrusion(rec.textNormal);
    DxInitExtrusion(rec.blockNormal);
    rec.textDirection = {1, 0, 0};
    rec.blockScale = {1, 1, 1};
    rec.lineSpacing = 1;
    rec.backScale = 1.5;
    rec.textColour = rec.backColour = rec.blockColour = rec.lineColour = byBlock;
    rec.pathType = 1;
}

/// Takes each group where its braces put it. Braces that don't match end what is open: nothing is counted,
/// so no announced number matters.
class MLeaderReader {
public:
    explicit MLeaderReader(R& rec) : rec_(rec) {}

    int read() {
        DxPair pair;
        for (;;) {
            if (const int error = DxReadPair(pair, static_cast<int>(DX_TEXT_LIMIT) + 1, DxShowsPercent()))
                return error;
            if (pair.code == 0) break;
            take(pair);
        }
        DxUnGetLine();
        DxCutChars(rec_.text, DX_MTEXT_LIMIT);
        return 0;
    }

private:
    enum class Place { Entity, Context, Branch, Line };

    void take(const DxPair& pair) {
        if (opens(pair) || closes(pair)) return;
        switch (place_) {
        case Place::Entity: takeOwn(pair); break;
        case Place::Context: takeContext(pair); break;
        case Place::Branch: branchFields.store(rec_.branches.back(), pair.code, pair.text); break;
        case Place::Line: takeLine(rec_.branches.back().lines.back(), pair); break;
        }
    }

    bool opens(const DxPair& pair) {
        if (pair.code == 300 && pair.text.starts_with("CONTEXT_DATA")) {
            place_ = Place::Context;
            hasContext_ = true;
        } else if (pair.code == 302 && pair.text.starts_with("LEADER{") && place_ != Place::Entity) {
            rec_.branches.emplace_back();
            place_ = Place::Branch;
        } else if (pair.code == 304 && pair.text.starts_with("LEADER_LINE{") && place_ >= Place::Branch) {
            rec_.branches.back().lines.emplace_back().colour = byBlock;
            place_ = Place::Line;
        } else {
            return false;
        }
        return true;
    }

    bool closes(const DxPair& pair) {
        if (pair.text != "}") return false;
        switch (pair.code) {
        case 301: place_ = Place::Entity; return true;
        case 303:
            if (place_ != Place::Entity) place_ = Place::Context;
            return true;
        case 305:
            if (place_ == Place::Line) place_ = Place::Branch;
            return true;
        default: return false;
        }
    }

    void takeContext(const DxPair& pair) {
        if (pair.code != 304)
            contextFields.store(rec_, pair.code, pair.text);
        else if (rec_.text.size() < 4 * DX_MTEXT_LIMIT)
            rec_.text += DxReadDecoded(pair.text);
    }

    void takeOwn(const DxPair& pair) {
        if (pair.code == 330 && hasContext_) { // ahead of it: the owner
            rec_.attributes.emplace_back().definition = DxHexToU32(pair.text);
        } else if (pair.code == 302) {
            if (!rec_.attributes.empty()) rec_.attributes.back().text = DxReadDecoded(pair.text);
        } else if (!ownFields.store(rec_, pair.code, pair.text)) {
            DxReadEntityBase(&rec_.base, pair.code, pair.text);
        }
    }

    /// Groups 11 and 12 are breaks, which aren't drawn: the line stays whole.
    static void takeLine(L& line, const DxPair& pair) {
        if (pair.code == 10)
            line.vertices.push_back({DxfReadConvDouble(pair.text), 0, 0});
        else if ((pair.code == 20 || pair.code == 30) && !line.vertices.empty())
            (pair.code == 20 ? line.vertices.back().y : line.vertices.back().z) =
                DxfReadConvDouble(pair.text);
        else
            lineFields.store(line, pair.code, pair.text);
    }

    R& rec_;
    Place place_ = Place::Entity;
    bool hasContext_ = false;
};

} // namespace

int DxReadMLeader(R* rec) {
    init(*rec);
    return MLeaderReader(*rec).read();
}

void DxTakeRawColour(DX_ENTITY_BASE_TYPE* base, int raw) {
    const auto bits = static_cast<unsigned>(raw);
    constexpr int byLayer = 256, white = 7;
    switch (bits >> 24) {
    case 0xC0: base->color = byLayer, base->trueColor = -1; break;
    case 0xC2: base->color = white, base->trueColor = static_cast<int>(bits & 0xffffff); break;
    case 0xC3: base->color = static_cast<int>(bits & 0xff), base->trueColor = -1; break;
    default: break; // ByBlock: the colour of the entity
    }
}
