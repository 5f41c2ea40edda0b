#include "dx_template.h"

#include "../session/dx_reader.h"
#include "uo.h"

#include <cstring>

UtCString DxTemplatePath(const char* name) {
    return UoSubstOVPath(UtFormat("$HD_U/%s/int/dxf/dflt/%s", "1700", name));
}

DxTemplate::DxTemplate(const char* name) : stream_(UtFileOpen(DxTemplatePath(name), "r")) {
    if (stream_ && UtFileMap(stream_, view_) != 0) {
        UtFileClose(stream_);
        stream_ = nullptr;
    }
}

DxTemplate::~DxTemplate() {
    if (!stream_) return;
    UtFileUnmap(view_);
    UtFileClose(stream_);
}

bool DxTemplate::nextLine(std::string_view& line) {
    if (!stream_ || at_ >= view_.size) return false;
    const char* start = view_.data + at_;
    const auto rest = view_.size - at_;
    const auto* end = static_cast<const char*>(std::memchr(start, '\n', rest));
    line = {start, end ? static_cast<std::size_t>(end - start) : rest};
    at_ += line.size() + (end ? 1 : 0);
    while (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    return true;
}

bool DxTemplate::next(int& code, std::string& value) {
    if (!waiting_) {
        std::string_view codeLine;
        std::string_view valueLine;
        if (!nextLine(codeLine) || !nextLine(valueLine)) return false;
        code_ = DxAtoi(codeLine);
        value_ = valueLine.substr(0, 160);
        if (DxLineTrim & 5) UtRtrim(value_);
        if (DxLineTrim & 6) UtLtrim(value_);
    }
    waiting_ = false;
    code = code_;
    value = value_;
    return true;
}
