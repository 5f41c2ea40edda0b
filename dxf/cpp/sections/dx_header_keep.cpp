#include "dx_header_keep.h"

#include "../host/dx_host.h"
#include "../session/dx_reader.h"
#include "../session/dx_unicode.h"
#include "../session/session_state.h"
#include "dx_codes.h"
#include "dx_template.h"
#include "ov_text.h"
#include "pattern.h"
#include "sections_state.h"
#include "uo.h"
#include "uo_text.h"
#include "ut.h"

#include <algorithm>
#include <set>
#include <string>

namespace {

constexpr std::size_t MOST_LINES = 400;
constexpr std::size_t LONGEST_LINE = 80;

/// The variables that may be kept, a name a line.
bool readNames(std::set<std::string, std::less<>>& names) {
    FILE* file = UtFileOpen(DxTemplatePath("Dxf.var"), "r");
    if (!file) return false;
    std::string line;
    while (UtReadLine(file, line) == 0) names.insert(line);
    UtFileClose(file);
    return true;
}

/// Reads the values of a variable up to the next pair with code 9 or 0, which is handed back.
int readValues(std::string& line) {
    DxPair pair;
    bool first = true;
    for (;;) {
        if (const int error = DxReadPair(pair)) return error;
        if (pair.code == 9 || pair.code == 0) {
            DxUnGetLine();
            return 0;
        }
        if (!first) line += ',';
        first = false;
        line += DxHostText(pair.text).str();
    }
}

int collect(const std::set<std::string, std::less<>>& names, std::vector<std::string>& lines) {
    DxPair pair;
    for (;;) {
        if (const int error = DxReadPair(pair)) return error;
        if (pair.code == 0 && pair.text == "ENDSEC") return 0;
        if (pair.code != 9 || names.count(pair.text) == 0 || lines.size() >= MOST_LINES) continue;
        std::string line(pair.text);
        line += '=';
        if (const int error = readValues(line)) return error;
        DxCutChars(line, LONGEST_LINE);
        lines.push_back(std::move(line));
    }
}

void store(const std::vector<std::string>& lines) {
    int pattern = 0;
    if (Dxovpat(211, &pattern) != 0) return;
    DxHeaderPat = pattern;
    UoSetSingleAttr(pattern, "#M", DX_HEADER_PATTERN);
    UoTextSetParamsSimple(2.5, 1.5);
    std::string text;
    for (const std::string& line : lines) text += (text.empty() ? "" : "\n") + line;
    Dxovaddtext(text, DxShiftX, DxShiftY);
    UoPatSetVisible(pattern, false);
    Dxovpat(211, &pattern); // nothing else is to land in the pattern of the header
}

} // namespace

int DxHeaderMakeDrawingHeader() {
    std::set<std::string, std::less<>> names;
    std::vector<std::string> lines;
    if (!readNames(names)) return 0;
    const int error = collect(names, lines);
    if (!lines.empty()) store(lines);
    return error;
}

/// "$NAME=value": what store() puts down. A user's own pattern of that name holds something else.
static bool isKeptLine(const UtCString& line) {
    return line.str().size() > 1 && line.str()[0] == '$' && line.str().find('=') != std::string::npos;
}

int DxHeaderReadDrawingHeader(std::vector<UtCString>* lines) {
    lines->clear();
    DxHeaderPat = -1;
    int row = 0;
    int pattern = -1;
    int error = UoFiltPatPerAttr("#M", DX_HEADER_PATTERN, &pattern);
    if (!error) error = UoFirstText(pattern, &row);
    std::vector<UtCString> found;
    if (!error) error = UoTextGetMultiLines(pattern, row, &found);
    if (error) return error == DX_ERR_NO_MORE ? 0 : error;
    if (found.empty() || !std::all_of(found.begin(), found.end(), isKeptLine)) return 0;
    *lines = std::move(found);
    DxHeaderPat = pattern;
    return 0;
}
