// The reader of group-code pairs: any bytes as a file, pairs delivered, handed back, saved and restored.
#include "session/dx_documents.h"
#include "session/session_state.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

static const std::string& inputPath() {
    static const std::string path =
        (std::filesystem::temp_directory_path() / ("torva-fuzz-reader-" + std::to_string(getpid()))).string();
    return path;
}

/// Reads all pairs; what is read decides where the walk turns back, so that the input steers it.
static void walk() {
    DX_SAVE save{};
    int returns = 0;
    UtCString wide;
    char text[161];
    int code = 0;
    DxSaveActPos(&save);
    while (DxGetLineVar(&code, text, 1 + (code & 127), true, code & 1 ? &wide : nullptr) == 0) {
        DxfReadConvDouble(text);
        DxHexToU32(text);
        if (code == 3) DxUnGetLine();
        if (code == 3 && ++returns > 100) DxGetLineVar(&code, text, sizeof text, false, nullptr);
        if (code == 5) DxSaveActPos(&save);
        if (code == 7 && ++returns < 100) DxRestoreActPos(&save);
    }
    DxReadSeek(0);
    DxReadUntil(0, "SECTION");
    DxIgnoreSections();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::ofstream(inputPath(), std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    for (const int version : {1009, 1032}) {
        DxResetSessionState(0);
        DxFileVersion = version;
        DxLineTrim = version == 1032 ? 4 : 0;
        if (DxReadOpen(inputPath().c_str()) == 0) walk();
        DxReadClose();
    }
    std::filesystem::remove(inputPath());
    return 0;
}
