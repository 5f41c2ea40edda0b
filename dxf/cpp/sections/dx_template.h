// Template files of the export: lists of DXF pairs with placeholders.
#pragma once

#include "ut.h"

#include <string>
#include <string_view>

/// Reads a template pair by pair. Values are cut to 160 bytes and trimmed as DxLineTrim says.
class DxTemplate {
public:
    /// Opens the template `name` of the installation ("header_32", "vport" …); isOpen() says whether it
    /// could.
    explicit DxTemplate(const char* name);
    ~DxTemplate();
    DxTemplate(const DxTemplate&) = delete;
    DxTemplate& operator=(const DxTemplate&) = delete;

    bool isOpen() const { return stream_ != nullptr; }
    /// The next pair; false at the end of the file, or where only half a pair is left.
    bool next(int& code, std::string& value);
    void handBack() { waiting_ = true; } ///< The next call gives the last pair again.

private:
    bool nextLine(std::string_view& line);

    FILE* stream_ = nullptr;
    UT_FILE_VIEW view_;
    std::size_t at_ = 0;
    bool waiting_ = false;
    int code_ = 0;
    std::string value_;
};

/// Path of a file of the installation's default folder.
UtCString DxTemplatePath(const char* name);
