// The lines of a configuration file.
#pragma once

#include "ut.h"

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

struct DxCloseFile {
    void operator()(FILE* file) const { UtFileClose(file); }
};
using DxConfigFile = std::unique_ptr<FILE, DxCloseFile>;

/// Reads the next line without its line end ("\n" or "\r\n"). A line that isn't UTF-8 is taken to be of the
/// code page that drawing files without a word on it have. Of an endless line only the first 64 KiB are kept.
/// False at the end of the file.
bool DxReadConfigLine(FILE* file, std::string& line);
/// Passes over a byte order mark at the start of the file.
void DxSkipByteOrderMark(FILE* file);
