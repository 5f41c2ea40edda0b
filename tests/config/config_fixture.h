// A session without a drawing file: state at its start, a folder of its own, configurations given as text.
#pragma once

#include "config/dx_config.h"
#include "host/host_state.h"
#include "import/import_state.h"
#include "services/session.h"
#include "session/dx_documents.h"
#include "session/dx_protocol.h"
#include "session/session_state.h"
#include "uo.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <vector>

class ConfigSession : public testing::Test {
protected:
    void SetUp() override {
        folder = std::filesystem::temp_directory_path() /
                 ("config-" + std::to_string(::getpid()) + "-" +
                  testing::UnitTest::GetInstance()->current_test_info()->name());
        std::filesystem::create_directories(folder);
        setenv("HD_WORK_DIR", folder.c_str(), 1);
        setenv("HD_U", folder.c_str(), 1);
        setenv("HD_VE", "ve", 1);
        setenv("VE", "ve", 1);
        host::resetSession();
        start(0);
    }
    void TearDown() override {
        DxProtoClose(0, 0);
        DxDocuments.closeAll(false);
        DxDocuments.tables.clear();
        for (const char* name : {"HD_WORK_DIR", "HD_U", "HD_VE", "VE"}) unsetenv(name);
        std::filesystem::remove_all(folder);
    }

    void start(int isExport) {
        DxProtoOpen(isExport);
        DxResetSessionState(isExport);
        DxResetConfigState();
        DxResetHostState();
        DxResetImportState();
        DxDocuments.tables.clear();
        DxModus = 2;
        DxBeginInsertStack(7, {});
    }
    std::string write(const std::string& name, const std::string& text) {
        const std::filesystem::path path = folder / name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << text;
        return path.string();
    }
    int readDxd(const std::string& text, int isExport = 0) {
        DxIsExport = isExport;
        return DxReadConfig(write("test.dxd", text), isExport);
    }
    /// The lines of a flags section, in a session of its own.
    int readFlags(const std::string& lines, int isExport = 0) {
        start(isExport);
        return readDxd("#FLAGS-START\n" + lines + "\n#FLAGS-END\n#EOF\n", isExport);
    }
    int readConf(const std::string& text, int isExport = 0) {
        start(isExport);
        return DxReadDefaultFile(write("Dxf.conf", text), isExport);
    }
    static const std::vector<std::string>& messages() { return host::session().messageArea; }
    std::string protocol() const {
        std::fflush(nullptr);
        std::ifstream file(folder / "dxf.proto");
        return {std::istreambuf_iterator<char>(file), {}};
    }

    std::filesystem::path folder;
};
