// Runs a configuration reader over the bytes of a fuzz input.
#pragma once

#include "config/dx_config.h"
#include "services/session.h"
#include "session/dx_documents.h"
#include "session/dx_protocol.h"
#include "session/session_state.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <unistd.h>

/// A file of this process that holds one input after the other.
class InputFile {
public:
    InputFile()
        : path_((std::filesystem::temp_directory_path() / ("fuzz-config-" + std::to_string(::getpid())))
                    .string()) {}
    ~InputFile() { std::remove(path_.c_str()); }
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    const std::string& write(const std::uint8_t* data, std::size_t size) {
        FILE* file = std::fopen(path_.c_str(), "wb");
        if (!file || std::fwrite(data, 1, size, file) != size || std::fclose(file)) std::abort();
        return path_;
    }

private:
    std::string path_;
};

/// One session with one input, up to the tables that entities use. The size of the input decides its
/// direction and whether the keys count that have to be asked for.
template <class Read>
void runConfig(const std::uint8_t* data, std::size_t size, Read read) {
    static InputFile input;
    const int isExport = size & 1;
    host::session().messageArea.clear();
    host::session().numbers["&DxfParseExt"] = size & 2;
    DxProtoClose(isExport, 0);
    DxResetSessionState(isExport);
    DxResetConfigState();
    DxDocuments.tables.clear();
    read(input.write(data, size), isExport);
    if (DxBuildTables()) std::abort();
}
