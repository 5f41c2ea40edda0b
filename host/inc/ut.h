// Files, paths, memory, date and lengths of the host.
#pragma once

#include "ut_string.h"

#include <cstddef>
#include <cstdio>

// ---- files -----------------------------------------------------------------------------------------

// In all paths "/" and "\\" separate, whatever the system; a path with a NUL byte names no file.

/// Opens a file with an fopen mode; null on failure. To be read, it must be what UtIsFile says; so neither
/// a directory nor a device. The caller closes it.
FILE* UtFileOpen(const UtCString& path, const char* mode);
/// Closes the stream. 0, or non-zero when buffered data couldn't be written.
int UtFileClose(FILE* stream);
/// Reads a line without its line end (LF, CR LF or CR) into `line`. Non-zero at the end of the file.
int UtReadLine(FILE* stream, std::string& line);
/// True for an existing regular file (or what can be read like one, such as a pipe).
bool UtIsFile(const UtCString& path);
/// The file that writing to `path` would change: the end of a chain of links, else `path` itself. Empty when
/// what is there already can't be written or is no regular file.
UtCString UtFileTarget(const UtCString& path);
/// Puts the bytes of file `path` behind those written to `stream`. 0; 9001 when there is no such file, 9000
/// when reading or writing fails.
int UtFileAppend(FILE* stream, const UtCString& path);
int UtFileRemove(const UtCString& path); ///< 0 on success.
/// Within a file system. Replaces an older `to`, whose permissions the file takes over.
int UtFileRename(const UtCString& from, const UtCString& to);
int UtFileMove(const UtCString& from, const UtCString& to); ///< Copies and removes where it must.
UtCString UtGetTempDir();
/// A name for a temporary file, unique on this machine: `directory`/`prefix`+random number. Creates nothing.
UtCString UtTempFileName(const UtCString& directory, const UtCString& prefix);

/// Read-only view of the whole file behind a stream, in memory. Valid until UtFileUnmap.
struct UT_FILE_VIEW {
    const char* data = nullptr; ///< null for an empty file
    std::size_t size = 0;
    void* handle = nullptr; ///< the host's own
};
/// Maps the file of `stream` (a pipe is read to its end first). 0 on success.
int UtFileMap(FILE* stream, UT_FILE_VIEW& view);
void UtFileUnmap(UT_FILE_VIEW& view);

// ---- paths -----------------------------------------------------------------------------------------

/// Directory of a path without the separator at its end; empty when the path has none. Both "/" and
/// "\\" separate.
UtCString UtPathDir(const UtCString& path);
UtCString UtPathFile(const UtCString& path);                       ///< What follows the last separator.
UtCString UtPathExt(const UtCString& path);                        ///< Extension, lower-cased, without ".".
UtCString UtPathJoin(const UtCString& dir, const UtCString& file); ///< Joined by the system's separator.
/// Expands "$NAME" by the environment; a name that isn't set stays.
UtCString UtPathEnvToAbs(const UtCString& path);

// ---- memory ----------------------------------------------------------------------------------------

/// Makes (`*block` null) or grows a block to `count` items of `size` bytes, keeping its content; new bytes
/// are zero. A block never shrinks. 0, or 1001 when there is no memory or count times size is no size, with
/// the old block untouched. Only UtFreeMemory frees it.
int UtAllocMemoryBlock(void** block, std::size_t count, std::size_t size, int grow, int flags);
/// Frees the block and clears the pointer.
void UtFreeMemory(void** block);
/// Sets the host's memory mode by name. The reference host has one mode only.
void UtSetMemoryParameter(const char* mode);

// ---- the rest --------------------------------------------------------------------------------------

UtCString UtDate(); ///< Today as "DD.MM.YYYY".
UtCString UtTime(); ///< Now as "HH:MM:SS".

/// A setting of the host in the drawing's unit. Code 50: the drawing tolerance, the length below which two
/// drawn points count as one; it is 0.001 mm in model size.
double UtConv(int code);

/// Converts DWG or binary DXF to text DXF, or text DXF to DWG, by the contents of `source`. A binary DXF that
/// is cut or damaged becomes a text DXF of the groups in front of the damage.
/// 0 on success; else an error number, and `target` doesn't exist: 9001 the source can't be opened, 9003 not
/// one group in it, 9000 writing failed, 3011 no converter for DWG, or it failed.
int UtConvertDwg2Dxf(const UtCString& source, const UtCString& target);
/// The byte of the binary DXF `source` behind the group that became the lines up to `line` of its text, from
/// 1; -1 when that isn't known, as for a DWG.
long long UtConvertedByte(const UtCString& source, long line);
