// 3DSOLID, REGION, SURFACE, BODY: reading and queueing.
#include "../import/dx_entity_base.h"
#include "../import/import_state.h"
#include "../session/dx_fields.h"
#include "../session/session_state.h"
#include "dx_acis_import.h"
#include "mt.h"
#include "solid_state.h"

namespace {

using R = DX_3DSOLID_TYPE;
constexpr auto fields = dxFields<R>({{70, &R::version}});
constexpr int maxLine = 2048;
constexpr char cipher = static_cast<char>(159);

/// Puts the lines of the model together.
class ModelText {
public:
    void add(std::string_view line) {
        constexpr std::size_t fullLine = 255;
        const std::size_t before = text_.size();
        text_ += line;
        std::size_t length = line.size();
        DxAcisDecodeString(text_.data() + before, &length);
        text_.resize(before + length);
        // A full line goes on in the next pair.
        if (length < fullLine || text_.back() == '#') text_ += '\n';
    }
    std::shared_ptr<const std::string> finish() {
        if (text_.empty()) return nullptr;
        text_ += "End-of-ACIS-data\n";
        return std::make_shared<const std::string>(std::move(text_));
    }

private:
    std::string text_;
};

} // namespace

void DxAcisDecodeString(char* text, std::size_t* length) {
    std::size_t used = 0;
    char before = 0;
    for (std::size_t i = 0; i < *length; ++i) {
        const char c = text[i];
        const bool stays = c == ' ' || c == '\t';
        const char decoded = stays ? c : static_cast<char>(cipher - c);
        if (decoded != ' ' || before != 'A') text[used++] = decoded;
        before = decoded;
    }
    *length = used;
}

std::string DxAcisEncodeString(std::string_view text) {
    std::string line;
    line.reserve(text.size());
    for (const char c : text) {
        line += c == ' ' || c == '\t' ? c : static_cast<char>(cipher - c);
        if (c == 'A') line += ' ';
    }
    return line;
}

int DxRead3dSolid(DX_3DSOLID_TYPE* solid) {
    DxInitEntityBase(&solid->base);
    solid->version = 0;
    solid->text = nullptr;
    Mt44Ident(solid->matrix);
    ModelText text;
    const auto take = [&](const DxPair& pair) {
        if (pair.code == 1 || pair.code == 3)
            text.add(pair.bytes);
        else
            DxReadEntityBase(&solid->base, pair.code, pair.text);
    };
    if (const int error = DxReadFields(*solid, fields, take, maxLine)) return error;
    solid->text = text.finish();
    return 0;
}

int DxDraw3dSolidEntity(const DX_3DSOLID_TYPE* solid, const Mat44 matrix) {
    DX_3DSOLID_TYPE placed = *solid;
    Mt44Copy(matrix, placed.matrix);
    return DxAcisAddSolid(&placed);
}

int DxAcisAddSolid(const DX_3DSOLID_TYPE* solid) {
    if (DxCheckPass) return 0;
    DxSolidQueue.push_back(*solid);
    DxEntityDrawn = 1;
    return 0;
}
