#include "dx_reader.h"

#include "dx_documents.h"
#include "dx_line_scan.h"
#include "dx_messages.h"
#include "dx_protocol.h"
#include "dx_unicode.h"
#include "os.h"
#include "session_state.h"

#include <algorithm>
#include <cstring>

int DxLineTrim = 0;
const DxfDocument* DxReadEnded = nullptr;

namespace {

/// Longest physical line; what is longer counts as several lines.
constexpr std::ptrdiff_t LINE_LIMIT = 1'048'575;

/// The current pair. Its texts lie in the mapping of a document or in `buffer`.
struct Line {
    std::string_view text;  ///< UTF-8 for strings, cut to the limit of the call that read it
    std::string_view bytes; ///< as in the file
    int code = 0;
    int next = 1;          ///< 0: the next call delivers this pair again
    bool isPadded = false; ///< 16 bytes can be read at the text, whatever its length
    std::string buffer;    ///< texts that stand in no file as they are
};

Line line;
std::int32_t DxFileSize = 0;
int DxLastPercent = 0;
std::int64_t nextPercentPosition = 0; ///< the display doesn't change ahead of this position

bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

std::string_view trimmed(std::string_view text, bool left, bool right) {
    while (left && !text.empty() && isBlank(text.front())) text.remove_prefix(1);
    while (right && !text.empty() && isBlank(text.back())) text.remove_suffix(1);
    return text;
}

/// Takes a line off the front of [at, end): what fgets and the C string functions would see of it. A 0 byte
/// ends the text, but not the line.
inline std::string_view takeLine(const char*& at, const char* end) {
    const char* const start = at;
    const char* const limit = end - start > LINE_LIMIT ? start + LINE_LIMIT : end;
    const char* const stop = DxScanLineStop(start, limit);
    const char* lineFeed = stop;
    if (stop != limit && *stop == 0) {
        const void* const found = std::memchr(stop, '\n', static_cast<std::size_t>(limit - stop));
        lineFeed = found ? static_cast<const char*>(found) : limit;
    }
    at = lineFeed == limit ? limit : lineFeed + 1;
    const char* textEnd = stop;
    while (textEnd != start && textEnd[-1] == '\r') --textEnd;
    return {start, static_cast<std::size_t>(textEnd - start)};
}

/// Branches that follow the digits are foretold well, and let the processor run ahead of them.
int takeCode(const char*& at, const char* end) {
    const char* p = at;
    if (end - p >= 16) {
        while (*p == ' ' && p - at < 8) ++p;
        int code = 0;
        const char* const digits = p;
        for (; *p >= '0' && *p <= '9' && p - digits < 4; ++p) code = code * 10 + (*p - '0');
        if (*p == '\r') ++p;
        if (*p == '\n') {
            at = p + 1;
            return code;
        }
    }
    return DxAtoi(takeLine(at, end));
}

bool isStringCode(int code) {
    return code >= 1 && code <= 9;
}

/// Names have their escapes resolved, so that each has one form. In other strings they are part of the codes
/// that those who read texts take apart.
bool isNameCode(int code) {
    return code == 2 || (code >= 6 && code <= 8);
}

/// Bytes of the strings of a document as UTF-8. They are that already from AC1021 on; bytes that aren't after
/// all are most likely of the code page.
std::string decoded(const DxfDocument& document, std::string_view bytes) {
    const int version = document.version ? document.version : DxFileVersion;
    if (version >= 1021 && DxIsUtf8(bytes)) return std::string(bytes);
    return DxFromCodePage(bytes, document.codePage ? document.codePage : DxCodePage);
}

/// True for strings that need more than a look: most are plain ASCII.
bool needsDecoding(int code, std::string_view bytes) {
    const bool isName = isNameCode(code);
    return std::any_of(bytes.begin(), bytes.end(),
                       [&](char c) { return (c & 0x80) != 0 || (isName && c == '\\'); });
}

void decodeLine(const DxfDocument& document) {
    line.buffer = decoded(document, line.bytes);
    if (isNameCode(line.code)) line.buffer = DxWithoutEscapes(line.buffer);
    line.text = line.buffer;
    line.isPadded = false;
}

/// Reads the next pair from the current document. False at its end, with the current pair as it was.
inline bool readLine(int maxLength) {
    DxfDocument* const document = DxDocuments.current_;
    if (!document) return false;
    const char* const data = document->view.data;
    const std::size_t size = document->view.size;
    if (document->position >= size) {
        DxReadEnded = document;
        return false;
    }
    const char* at = data + document->position;
    const char* const end = data + size;
    const int code = takeCode(at, end);
    if (at == end) {
        document->position = size;
        DxReadEnded = document;
        return false;
    }
    line.bytes = line.text = takeLine(at, end);
    // Zeros are all that is left where somebody made the file shorter.
    if (line.text.empty() && UtFileShrank(document->view)) {
        DxReadEnded = document;
        return false;
    }
    document->position = static_cast<std::size_t>(at - data);
    line.code = code;
    line.isPadded = end - line.text.data() >= 16;
    if (isStringCode(code) && needsDecoding(code, line.bytes)) decodeLine(*document);
    const auto limit = static_cast<std::size_t>(maxLength - 1);
    if (line.text.size() > limit) {
        const std::size_t length = isStringCode(code) ? DxCharsLength(line.text, limit) : limit;
        if (line.bytes.data() == line.text.data()) line.bytes = line.bytes.substr(0, length);
        line.text = line.text.substr(0, length);
    }
    return true;
}

/// Smallest position whose percentage is above the last one shown.
void setNextPercentPosition() {
    nextPercentPosition = (static_cast<std::int64_t>(DxLastPercent) + 1) * DxFileSize / 100;
}

void showProgress() {
    const auto position =
        static_cast<std::int64_t>(DxDocuments.current_ ? DxDocuments.current_->position : 0);
    if (!DxFileSize || position < nextPercentPosition) return;
    const int percent = static_cast<int>(static_cast<double>(position) * 100.0 / DxFileSize);
    if (percent > DxLastPercent) {
        DxDisplay(DxMsg(5749, percent));
        DxLastPercent = percent;
    }
    setNextPercentPosition();
}

inline std::string_view trimmedByOption(std::string_view text) {
    return DxLineTrim ? trimmed(text, DxLineTrim & 6, DxLineTrim & 5) : text;
}

/// Settings in a comment: "SCALE a:b" and "FORMAT word".
void readComment(std::string_view text) {
    if (text.starts_with("SCALE")) {
        text.remove_prefix(5);
        double above = 0, below = 0;
        const std::size_t used = DxScanNumber(text, above);
        if (!used || used >= text.size() || text[used] != ':') return;
        if (DxScanNumber(text.substr(used + 1), below) && below != 0) DxFileScale = above / below;
    } else if (text.starts_with("FORMAT")) {
        const std::string_view word = trimmed(text.substr(6), true, false);
        const auto* const end = std::find_if(word.begin(), word.end(), isBlank);
        if (end != word.begin()) DxFileFormat = UtCString(std::string_view(word.begin(), end));
    }
}

} // namespace

int DxReadPair(DxPair& pair, int maxLength, bool showPercent) {
    if (line.next && !readLine(maxLength)) return 9003;
    if (showPercent) showProgress();
    pair.code = line.code;
    pair.text = trimmedByOption(line.text);
    pair.bytes = trimmedByOption(line.bytes);
    line.next = 1;
    return 0;
}

int DxGetLineVar(int* code, char* text, int maxLength, bool showPercent, UtCString* wide) {
    DxPair pair;
    if (const int error = DxReadPair(pair, maxLength, showPercent)) return error;
    std::string_view fitting = pair.text.substr(0, static_cast<std::size_t>(maxLength - 1));
    if (fitting.size() < pair.text.size() && isStringCode(pair.code)) {
        std::size_t edge = fitting.size();
        while (edge > 0 && !DxBeginsChar(pair.text[edge])) --edge;
        fitting = fitting.substr(0, edge);
    }
    if (fitting.size() <= 16 && line.isPadded && !DxLineTrim && maxLength >= 16)
        std::memcpy(text, fitting.data(), 16); // cheaper than the few bytes that most values have
    else
        std::copy(fitting.begin(), fitting.end(), text);
    text[fitting.size()] = 0;
    *code = pair.code;
    if (wide) *wide = isStringCode(pair.code) ? UtCString(pair.text) : DxReadDecoded(pair.text);
    return 0;
}

std::string DxReadDecoded(std::string_view bytes) {
    const DxfDocument* const document = DxDocuments.current_;
    return !document || DxIsAscii(bytes) ? std::string(bytes) : decoded(*document, bytes);
}

void DxUnGetLine() {
    line.next = 0;
}

void DxReadDropPending() {
    line.next = 1;
}

void DxReadForget() {
    line.text = line.bytes = {};
    line.code = 0;
    line.next = 1;
    line.isPadded = false;
    DxReadEnded = nullptr;
    line.buffer.clear();
    line.buffer.shrink_to_fit();
}

// ---- files -----------------------------------------------------------------------------------------

int DxReadOpen(const UtCString& name) {
    FILE* const stream = DxDocuments.open(name, "rb");
    if (!stream) return 9001;
    DxfDocument& document = *DxDocuments.byStream.at(stream);
    document.position = 0;
    DxFileSize = static_cast<std::int32_t>(document.view.size);
    setNextPercentPosition();
    return 0;
}

int DxReadClose() {
    DxDocuments.closeAll(DxDocuments.keepsTables);
    DxFileSize = 0;
    DxResetPercent();
    return 0;
}

void DxResetPercent() {
    DxLastPercent = 0;
    setNextPercentPosition();
}

bool DxShowsPercent() {
    return DxDocuments.current_ && !DxDocuments.current_->parent.Get();
}

// ---- places ----------------------------------------------------------------------------------------

void DxSaveActPos(DX_SAVE* save) {
    if (!save) return;
    save->text.assign(line.text);
    save->position = DxReadTell();
    save->code = line.code;
    save->next = line.next;
    save->stream = DxDocuments.currentStream();
}

int DxRestoreActPos(DX_SAVE* save) {
    if (!save) return 3011;
    DxDocuments.select(save->stream);
    const int error = DxReadSeek(save->position);
    line.buffer = save->text.view();
    line.text = line.bytes = line.buffer;
    line.isPadded = false;
    line.code = save->code;
    line.next = save->next;
    return error;
}

std::int32_t DxReadTell() {
    return DxDocuments.current_ ? static_cast<std::int32_t>(DxDocuments.current_->position) : 0;
}

/// Where the line of the next group 0 at or behind `at` begins, in front of which pairs stand.
static std::size_t nextEntity(std::string_view file, std::size_t at) {
    const char* const end = file.data() + file.size();
    const char* here = file.data() + at;
    for (;;) {
        const char* const pair = here;
        if (here == end || takeCode(here, end) == 0 || here == end)
            return static_cast<std::size_t>(pair - file.data());
        takeLine(here, end);
    }
}

std::string_view DxReadBytesFrom(std::int32_t start) {
    const DxfDocument* const document = DxDocuments.current_;
    if (!document) return {};
    const std::string_view file(document->view.data, document->view.size);
    const auto from = static_cast<std::size_t>(start);
    if (line.next) {
        const std::size_t next = nextEntity(file, document->position);
        return next > from ? file.substr(from, next - from) : std::string_view();
    }
    std::size_t end = document->position; // behind the pair, whose two lines don't count
    for (int lines = 0; lines < 2 && end > 0; ++lines) {
        const std::size_t lineFeed = end > 1 ? file.rfind('\n', end - 2) : std::string_view::npos;
        end = lineFeed == std::string_view::npos ? 0 : lineFeed + 1;
    }
    return end > from ? file.substr(from, end - from) : std::string_view();
}

long DxReadLineNumber(const DxfDocument& document) {
    const char* const data = document.view.data;
    const char* const end = data + document.position;
    const bool isCut = end != data && end[-1] != '\n';
    return static_cast<long>(std::count(data, end, '\n')) + isCut;
}

int DxReadSeek(std::int32_t position) {
    DxfDocument* const document = DxDocuments.current_;
    if (!document || position < 0 || static_cast<std::size_t>(position) > document->view.size) return 9005;
    document->position = static_cast<std::size_t>(position);
    line.next = 1;
    return 0;
}

// ---- searching -------------------------------------------------------------------------------------

int DxReadUntil(int code, const char* value) {
    const std::string_view wanted(value);
    DxPair pair;
    while (true) {
        if (const int error = DxReadPair(pair)) return error;
        const std::string_view text = trimmed(pair.text, true, true);
        if (pair.code == 999) readComment(text);
        if (pair.code == code && text == wanted) return 0;
    }
}

int DxIgnoreSections() {
    static constexpr std::string_view READ_SECTIONS[] = {"HEADER", "TABLES",   "OBJECTS",
                                                         "BLOCKS", "ACDSDATA", "ENTITIES"};
    DxPair pair;
    const int error = DxReadPair(pair);
    const bool isRead =
        std::find(std::begin(READ_SECTIONS), std::end(READ_SECTIONS), pair.text) != std::end(READ_SECTIONS);
    if (!error && pair.code == 2 && !isRead) return DxReadUntil(0, "SECTION");
    DxUnGetLine();
    return error;
}
