// Where the bytes of an export go. Pairs gather in memory until there are enough to be worth a call. While a
// block is kept back, what is meant for the body goes to DxBlockLines instead; other streams are written as
// ever.
//
// The first failure is remembered until the session ends, and nothing is written behind it. So a writer puts
// out all it has without looking at each result, and asks DxWriteError() at its end.
#pragma once

#include "dx_codes.h"
#include "writer_state.h"

#include <cstddef>
#include <cstdio>
#include <string_view>

/// 0, or the export's first failure: 9000 for a write that failed.
int DxWriteError();
/// Lets the export end with this error, unless it fails already. Gives DxWriteError().
int DxWriteFail(int error = DX_ERR_WRITE);

/// Most bytes that DxSinkRoom gives at a time.
inline constexpr std::size_t DX_SINK_MOST = sizeof DX_PENDING::bytes / 2;
/// Room for `size` bytes that `stream` is to receive next. Never null: behind a failure, and without a
/// stream, which is one, the bytes are dropped.
char* DxSinkRoom(FILE* stream, std::size_t size);
/// Takes what was put into the room, up to `end`.
void DxSinkTake(FILE* stream, const char* end);
/// Bytes of any number.
void DxSinkPut(FILE* stream, std::string_view bytes);

/// Bytes as they stand into the current stream, behind what was written so far, even while a block is kept
/// back. 0 or the export's error.
int DxWriteBytes(const char* bytes, std::size_t size);
/// Hands over to its stream what waits. Whoever uses a stream by other means than these functions calls this
/// first. 0 or the export's error.
int DxWriteFlush();
/// Closes a stream, with all that waits for it, and clears the pointer. Null is closed already. A failure is
/// the export's. 0 or the export's error.
int DxWriteCloseStream(FILE*& stream);
/// As DxWriteCloseStream for a stream whose content is no longer wanted.
void DxWriteDropStream(FILE*& stream);
