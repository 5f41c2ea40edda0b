#include "dx_sink.h"

#include "dx_documents.h"
#include "ut.h"

#include <algorithm>
#include <utility>

int DxWriteError() {
    return DxPending.error;
}

int DxWriteFail(int error) {
    if (!DxPending.error) DxPending.error = error;
    return DxPending.error;
}

int DxWriteFlush() {
    const std::size_t size = std::exchange(DxPending.size, 0);
    if (size == 0 || DxPending.error) return DxPending.error;
    return std::fwrite(DxPending.bytes, 1, size, DxPending.stream) == size ? 0 : DxWriteFail();
}

char* DxSinkRoom(FILE* stream, std::size_t size) {
    if (DxPending.stream != stream || sizeof DxPending.bytes - DxPending.size < size) {
        DxWriteFlush();
        DxPending.stream = stream;
        if (!stream) DxWriteFail();
    }
    return DxPending.bytes + DxPending.size;
}

void DxSinkTake(FILE* stream, const char* end) {
    if (DxPending.error) return;
    const char* start = DxPending.bytes + DxPending.size;
    const auto size = static_cast<std::size_t>(end - start);
    if (DxBlockBuffering && DxBlockLines && stream == DxBodyStream)
        DxBlockLines->append(start, size);
    else
        DxPending.size += size;
}

void DxSinkPut(FILE* stream, std::string_view bytes) {
    while (!bytes.empty()) {
        const std::string_view slice = bytes.substr(0, DX_SINK_MOST);
        bytes.remove_prefix(slice.size());
        char* at = DxSinkRoom(stream, slice.size());
        DxSinkTake(stream, std::copy(slice.begin(), slice.end(), at));
    }
}

int DxWriteBytes(const char* bytes, std::size_t size) {
    if (DxWriteFlush()) return DxWriteError();
    FILE* stream = DxDocuments.currentStream();
    return stream && std::fwrite(bytes, 1, size, stream) == size ? 0 : DxWriteFail();
}

void DxWriteDropStream(FILE*& stream) {
    if (!stream) return;
    if (DxPending.stream == stream) {
        DxPending.stream = nullptr;
        DxPending.size = 0;
    }
    UtFileClose(stream);
    stream = nullptr;
}

int DxWriteCloseStream(FILE*& stream) {
    if (!stream) return DxWriteError();
    if (DxPending.stream == stream) {
        DxWriteFlush();
        DxPending.stream = nullptr;
    }
    if (UtFileClose(stream) != 0) DxWriteFail();
    stream = nullptr;
    return DxWriteError();
}
