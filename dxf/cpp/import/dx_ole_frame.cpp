// OLEFRAME and OLE2FRAME: what other programs put into the drawing is read and dropped.
#include "../config/dx_pens.h"
#include "dx_entity_base.h"
#include "dx_images.h"

#include <algorithm>

namespace {

constexpr int BAD_HEXADECIMAL = 4009;

using R = DX_OLE_FRAME_TYPE;
constexpr auto fields = dxFields<R>({{70, &R::version}});

int digitOf(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

/// Takes the data, of which no more is kept than was announced.
class Data {
public:
    explicit Data(R& frame) : frame_(frame) {}

    void operator()(const DxPair& pair) {
        if (pair.code == 90)
            announced_ = static_cast<std::size_t>(std::max(DxAtoi(pair.text), 0));
        else if (pair.code == 310)
            decode(pair.text);
        else
            DxReadEntityBase(&frame_.base, pair.code, pair.text);
    }
    int error() const { return error_; }

private:
    void decode(std::string_view line) {
        for (std::size_t i = 0; i + 1 < line.size() && !error_; i += 2) {
            const int high = digitOf(line[i]), low = digitOf(line[i + 1]);
            if (high < 0 || low < 0) error_ = BAD_HEXADECIMAL;
            if (frame_.data.size() < announced_ && !error_)
                frame_.data.push_back(static_cast<unsigned char>(high * 16 + low));
        }
        frame_.size = static_cast<std::uint32_t>(frame_.data.size());
    }

    R& frame_;
    std::size_t announced_ = 0;
    int error_ = 0;
};

} // namespace

int DxReadOleFrame(DX_OLE_FRAME_TYPE* frame) {
    constexpr int longestValue = 2048;
    *frame = R{};
    DxInitEntityBase(&frame->base);
    Data data(*frame);
    const auto take = [&data](const DxPair& pair) { data(pair); };
    const int error = DxReadFields(*frame, fields, take, longestValue);
    return error ? error : data.error();
}

int DxDrawOleFrame(DX_OLE_FRAME_TYPE* frame, const Mat44 /*m*/) {
    int pen = 0, lineType = 0;
    if (DxPenLtToCAD(&frame->base, &pen, &lineType)) DxSetPenLt(pen, lineType);
    frame->data = {};
    frame->size = 0;
    return 0;
}
