// The element queue: elements gather here and go to the host a pattern at a time.
#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"
#include "dx_host.h"
#include "dx_host_origin.h"

#include "ci.h"

namespace {

constexpr short GROWTH = 100;
/// The queue's count is a 16-bit number: a queue of this size is handed over, to be continued.
constexpr short FULL = 32000;

/// Parallel arrays, in the order in which the host takes them.
struct Queue {
    int* type = nullptr;
    short* direction = nullptr;
    RPT3* first = nullptr;
    RPT3* second = nullptr;
    int* pen = nullptr;
    short* lineType = nullptr;
    unsigned char* info = nullptr;
    short count = 0;
    short capacity = 0;
};

Queue queue;

template <class T>
int grow(T*& array, short capacity) {
    void* block = array;
    const int error = UtAllocMemoryBlock(&block, static_cast<std::size_t>(capacity), sizeof(T), 1, 0);
    if (!error) array = static_cast<T*>(block);
    return error;
}

/// Room for GROWTH more elements. 0 or the first error; arrays that have grown by then stay usable.
int growAll() {
    const auto capacity = static_cast<short>(queue.capacity + GROWTH);
    int error = grow(queue.type, capacity);
    if (!error) error = grow(queue.direction, capacity);
    if (!error) error = grow(queue.first, capacity);
    if (!error) error = grow(queue.second, capacity);
    if (!error) error = grow(queue.pen, capacity);
    if (!error) error = grow(queue.lineType, capacity);
    if (!error) error = grow(queue.info, capacity);
    if (!error) queue.capacity = capacity;
    return error;
}

template <class T>
void release(T*& array) {
    void* block = array;
    if (block) UtFreeMemory(&block);
    array = nullptr;
}

struct Kind {
    int type;
    short direction;
};

Kind kindOf(int op) {
    switch (op) {
    case 1: return {2, 0};
    case 2: return {1, 0};
    case 3: return {3, -1};
    case 4: return {3, 1};
    case 22: return {3, -1};
    default: DxProtoMsg(DxMsg(5754, op), 1); return {1, 0};
    }
}

int append(int op, double x1, double y1, double x2, double y2, unsigned char info) {
    if (queue.count == queue.capacity) {
        if (const int error = growAll()) return error;
    }
    const short i = queue.count++;
    ++DxElemsOut;
    const Kind kind = kindOf(op);
    queue.type[i] = kind.type;
    queue.direction[i] = kind.direction;
    queue.first[i] = {x1, y1, 0};
    queue.second[i] = {x2, y2, 0};
    queue.pen[i] = DxElemPen;
    queue.lineType[i] = static_cast<short>(DxElemLineType);
    queue.info[i] = info;
    return 0;
}

/// Hands over what waits for another pattern. A figure that goes on with `op` begins anew at its last point.
int changePattern(int op) {
    const bool continues = queue.count > 0 && op != 2;
    const RPT3 from = continues ? queue.second[queue.count - 1] : RPT3{};
    const unsigned char info = continues ? queue.info[queue.count - 1] : static_cast<unsigned char>(0);
    if (const int error = DxCiElemDrawPat()) return error;
    DxElemQueuePat = DxActPat;
    return continues ? append(2, 0, 0, from.x, from.y, info) : 0;
}

} // namespace

int DxCiElemAddElem(int op, double x1, double y1, double x2, double y2, unsigned char info) {
    if (DxActPat != DxElemQueuePat) {
        if (const int error = changePattern(op)) return error;
    } else if (queue.count >= FULL) {
        if (const int error = DxCiElemDrawPat()) return error;
    }
    return append(op, x1, y1, x2, y2, info);
}

int DxCiElemWaiting() {
    return queue.count;
}

int DxCiElemDrawPat() {
    const short count = queue.count;
    queue.count = 0;
    if (!count) return 0;
    DsCsr cursor;
    if (const int error = DsCursorFromPatNo(DxElemQueuePat, &cursor)) return error;
    const int error =
        CiPat(DxCiContextId)
            .AddElemsColLtAttrInfo(cursor, 0, count, queue.type, queue.direction, queue.first, queue.second,
                                   queue.pen, queue.lineType, nullptr, nullptr, queue.info);
    return error ? error : DxOriginHandOver(DxElemQueuePat);
}

void DxCiElemSetPenLt(int pen, int lineType) {
    DxElemPen = pen;
    DxElemLineType = lineType;
}

void DxCiElemReset() {
    release(queue.type);
    release(queue.direction);
    release(queue.first);
    release(queue.second);
    release(queue.pen);
    release(queue.lineType);
    release(queue.info);
    queue.count = queue.capacity = 0;
    DxElemQueuePat = -1;
}

int DxCiChgLastElemInfo(int patNo, unsigned char info) {
    DsCsr cursor;
    int type = 0;
    CiElem elements(DxCiContextId);
    if (DsCursorFromPatNo(patNo, &cursor) == 0 && elements.Last(cursor, &type) == 0)
        elements.ChgInfo(cursor, info);
    return 0;
}

int DxCiGetElemInfo(int patNo, int elRow, int* type, int* isGroup) {
    *isGroup = 0;
    if (const int error = DsElemGetTypeInfo(patNo, elRow, type)) {
        *type = 0;
        return error;
    }
    *isGroup = DsElemTypeIsElemGroup(*type) ? 1 : 0;
    return 0;
}
