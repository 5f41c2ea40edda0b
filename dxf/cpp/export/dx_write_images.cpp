#include "dx_write_images.h"

#include "../config/config_state.h"
#include "../config/dx_layers.h"
#include "../host/dx_host.h"
#include "../import/dx_extents.h"
#include "../sections/dx_placeholders.h"
#include "../session/dx_documents.h"
#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"
#include "../session/dx_writer.h"
#include "../session/writer_state.h"
#include "ci_bitmap.h"
#include "dx_codes.h"
#include "dx_layer_choice.h"
#include "dx_pattern_walk.h"
#include "dx_unwritten.h"
#include "dx_write_blocks.h"
#include "dx_write_entities.h"
#include "ve.h"

namespace {

/// A picture of the host: upper left corner, edge along the top, edge down the left side.
struct Picture {
    RPT3 corner, along, down;
    int width, height;
};

RPT3 sum(const RPT3& a, const RPT3& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

bool isForeground(const DsCsr& cursor) {
    UtCString remark;
    return CiPat(DxCiContextId).GetAttr(cursor, "remark", &remark) == 0 && remark == "foreground";
}

/// The boundary of a picture in pixels, closed; empty when all of it shows.
std::vector<RPT> boundaryOf(CiBitmap& bitmaps, const DsCsr& cursor, const Picture& picture) {
    std::vector<RPT> points;
    RPT point;
    for (int i = 0; bitmaps.GetClip(cursor, i, &point) == 0; ++i)
        points.push_back({point.x * picture.width - 0.5, point.y * picture.height - 0.5});
    if (points.empty()) return points;
    const bool isClosed = points.front().x == points.back().x && points.front().y == points.back().y;
    if (!isClosed) points.push_back(points.front());
    return points;
}

/// Writes the picture file beside the target and gives its name.
UtCString exportFile(CiBitmap& bitmaps, const DsCsr& cursor, int pat, int number) {
    constexpr int tiff = 1, jpeg = 2;
    const bool isNew = DxMiscCheckVersion(DX_LEVEL_UTF8);
    const UtCString name = UtFormat("%s_%d_%d.%s", DxOutBase.c_str(), pat, number, isNew ? "tif" : "jpg");
    if (!isNew) DxProtoMsg(DxMsg(5774), 0);
    bitmaps.Export(cursor, UtPathJoin(DxOutDir, name), isNew ? tiff : jpeg, 2);
    return name;
}

int writeBitmap(CiBitmap& bitmaps, const DsCsr& cursor, int pat, int number, int* blockOpen) {
    Picture picture{};
    if (bitmaps.Get(cursor, &picture.corner, &picture.along, &picture.down, &picture.width,
                    &picture.height) ||
        picture.width <= 0 || picture.height <= 0) {
        ++DxUnwrittenCounts[DX_UNWRITTEN_BITMAP]; // there is no picture that could be shown
        return 0;
    }
    if (!*blockOpen)
        if (const int error = DxWriteBlockStart(*blockOpen)) return error;
    const UtCString file = exportFile(bitmaps, cursor, pat, number);
    RPT3 u, v;
    Ve3dSkalarMult(1.0 / picture.width, picture.along, &u);
    Ve3dSkalarMult(-1.0 / picture.height, picture.down, &v);
    v = sum(v, {0, 0, 0}); // no negative zeros
    const RPT3 at = sum(picture.corner, picture.down);
    return DxWriteImage(at.x, at.y, at.z, u.x, u.y, u.z, v.x, v.y, v.z, picture.width, picture.height, file,
                        file, boundaryOf(bitmaps, cursor, picture));
}

/// Another stream as the current one for the length of a scope.
class StreamScope {
public:
    explicit StreamScope(FILE* stream) : kept_(DxDocuments.currentStream()) { DxDocuments.select(stream); }
    StreamScope(const StreamScope&) = delete;
    StreamScope& operator=(const StreamScope&) = delete;
    ~StreamScope() { DxDocuments.select(kept_); }

private:
    FILE* kept_;
};

void writePoint(int code, double x, double y, double z) {
    DxWriteDouble(code, x);
    DxWriteDouble(code + 10, y);
    DxWriteDouble(code + 20, z);
}

void writeBoundary(int width, int height, const std::vector<RPT>& clip) {
    const std::vector<RPT> corners{{-0.5, -0.5}, {width - 0.5, height - 0.5}};
    const bool isPolygon = !clip.empty();
    const std::vector<RPT>& points = isPolygon ? clip : corners;
    DxWriteInt(71, isPolygon ? 2 : 1);
    DxWriteInt(91, static_cast<int>(points.size()));
    for (const RPT& p : points) {
        DxWriteDouble(14, p.x);
        DxWriteDouble(24, p.y);
    }
}

void writeDefinition(std::uint32_t image, std::uint32_t definition, std::uint32_t reactor, int width,
                     int height, const UtCString& file) {
    const StreamScope objects(DxImageStream1);
    DxWriteString(0, "IMAGEDEF_REACTOR");
    DxWriteVariableReference2(5, reactor);
    DxWriteVariableReference2(330, image);
    DxWriteSubClass("AcDbRasterImageDefReactor");
    DxWriteInt(90, 2);
    DxWriteVariableReference2(330, image);
    DxWriteString(0, "IMAGEDEF");
    DxWriteVariableReference2(5, definition);
    DxWriteString(102, "{ACAD_REACTORS");
    DxWriteVariableReference2(330, DxHandles.imageDict);
    DxWriteVariableReference2(330, reactor);
    DxWriteString(102, "}");
    DxWriteVariableReference2(330, DxHandles.imageDict);
    DxWriteSubClass("AcDbRasterImageDef");
    DxWriteInt(90, 0);
    DxWriteString(1, file);
    DxWriteDouble(10, width);
    DxWriteDouble(20, height);
    DxWriteDouble(11, 1.0 / width);
    DxWriteDouble(21, 1.0 / height);
    DxWriteInt(280, 1);
    DxWriteInt(281, 0);
}

} // namespace

int DxCiWritePatBitmap(int pat, int* blockOpen) {
    if (!DxMiscCheckVersion(DX_LEVEL_HANDLES)) return DxCountUnwritten(pat, DX_UNWRITTEN_BITMAP);
    DsCsr cursor;
    CiBitmap bitmaps(DxCiContextId);
    if (DsCursorFromPatNo(pat, &cursor) || isForeground(cursor) || bitmaps.First(cursor))
        return DxWriteError();
    if (const int error = DxPatSetLayerAttribs(pat, 0, DX_KIND_BITMAP)) return error;
    int number = 0;
    do {
        if (const int error = writeBitmap(bitmaps, cursor, pat, ++number, blockOpen)) return error;
    } while (bitmaps.Next(cursor) == 0);
    DxEntityCount += number;
    return DxAddLayer(DxActLayer.view());
}

int DxWriteImage(double x, double y, double z, double ux, double uy, double uz, double vx, double vy,
                 double vz, int width, int height, const UtCString& file, const UtCString& name,
                 const std::vector<RPT>& clip) {
    for (const RPT& part : {RPT{0, 0}, {1, 0}, {0, 1}, {1, 1}}) {
        const double along = part.x * width, up = part.y * height;
        DxStoreMaxXYZ(x + along * ux + up * vx, y + along * uy + up * vy, z + along * uz + up * vz);
    }
    const std::uint32_t image = DxGetNextReference(), definition = DxGetNextReference(),
                        reactor = DxGetNextReference();
    DxWriteEntityStart("IMAGE", DxActLayer.view(), image);
    DxWriteSubClass("AcDbRasterImage");
    if (DxFullGroups) DxWriteInt(90, 0);
    writePoint(10, x, y, z);
    writePoint(11, ux, uy, uz);
    writePoint(12, vx, vy, vz);
    DxWriteDouble(13, width);
    DxWriteDouble(23, height);
    DxWriteVariableReference2(340, definition);
    DxWriteInt(70, 7);
    DxWriteInt(280, clip.empty() ? 0 : 1);
    DxWriteInt(281, 50);
    DxWriteInt(282, 50);
    DxWriteInt(283, 0);
    DxWriteVariableReference2(360, reactor);
    writeBoundary(width, height, clip);
    writeDefinition(image, definition, reactor, width, height, file);
    DxWriteFileString(DxImageStream2, 3, name);
    const StreamScope entries(DxImageStream2);
    DxWriteVariableReference2(350, definition);
    return DxWriteError();
}
