#include "dx_reader.h"

#include "dx_documents.h"
#include "dx_encoding.h"
#include "dx_fixed.h"
#include "dx_line_scan.h"
#include "dx_messages.h"
#include "dx_protocol.h"
#include "os.h"
#include "session_state.h"

#include <algorithm>
#include <cstring>

int DxLineTrim = 0;

namespace {

/// Longest physical line; what is longer counts as several lines.
constexpr std::ptrdiff_t LINE_LIMIT = 1'048'575;

/// The current pair. Its text lies in the mapping of a document or in `buffer`.
struct Line {
    std::string_view text; ///< bytes of the file's code page, cut to the limit of the call that read it
    int code = 0;
    int next = 1;          ///< 0: the next call delivers this pair again
    bool isPadded = false; ///< 16 bytes can be read at the text, whatever its length
    bool isUtf8 = false;   ///< the file has the text as `utf8`
    std::string_view utf8;
    std::string buffer;    ///< texts that stand in no file as they are
    std::string converted; ///< `utf8` where the file has the text in another form
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

/// Whether the strings of groups 1 to 9 need more than a look at their bytes: they are UTF-8 from AC1021 on,
/// and an external reference may have a code page of its own.
bool decodesStrings(const DxfDocument& document) {
    return DxFileVersion >= 1021 || document.version >= 1021 ||
           (document.codePage != 0 && document.codePage != DxCodePage);
}

/// A string of a document as UTF-8; `converted` holds it where the document isn't. A character that the cut
/// has halved goes.
std::string_view utf8Of(const DxfDocument& document, std::string_view bytes, bool isCut,
                        std::string& converted) {
    const int version = document.version ? document.version : DxFileVersion;
    if (version >= 1021) return isCut ? DxWithoutCutUtf8(bytes) : bytes;
    converted = UtCString(bytes, OsUserCodePageIdToTorvaCodePage(document.codePage)).str();
    return converted;
}

/// Makes the decoded string the text of the pair. Bytes that aren't UTF-8 after all stay as they are: they
/// are most likely of the file's code page.
void decodeLine(const DxfDocument& document, std::string_view bytes, bool isCut, std::size_t limit) {
    bytes = utf8Of(document, bytes, isCut, line.converted);
    if (!DxIsUtf8(bytes)) return;
    line.isUtf8 = true;
    line.utf8 = bytes;
    line.buffer = DxUtf8ToFile(bytes);
    line.text = std::string_view(line.buffer).substr(0, DxFittingLength(line.buffer, limit));
    line.isPadded = false;
}

bool isAscii(std::string_view bytes) {
    return std::none_of(bytes.begin(), bytes.end(), [](char c) { return c & 0x80; });
}

/// Reads the next pair from the current document. False at its end, with the current pair as it was.
inline bool readLine(int maxLength) {
    DxfDocument* const document = DxDocuments.current_;
    if (!document) return false;
    const char* const data = document->view.data;
    const std::size_t size = document->view.size;
    if (document->position >= size) return false;
    const char* at = data + document->position;
    const char* const end = data + size;
    const int code = takeCode(at, end);
    if (at == end) {
        document->position = size;
        return false;
    }
    std::string_view bytes = takeLine(at, end);
    document->position = static_cast<std::size_t>(at - data);
    const auto limit = static_cast<std::size_t>(maxLength - 1);
    const bool isCut = bytes.size() > limit;
    if (isCut) bytes = bytes.substr(0, DxFittingLength(bytes, limit));
    line.code = code;
    line.text = bytes;
    line.isPadded = end - bytes.data() >= 16;
    line.isUtf8 = false;
    if (isStringCode(code) && decodesStrings(*document) && !isAscii(bytes))
        decodeLine(*document, bytes, isCut, limit);
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

UtCString wideText(std::string_view text) {
    if (line.isUtf8) return trimmedByOption(line.utf8);
    return {text, DxFileHostCodePage()};
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

int DxReadPair(DxPair& pair, int maxLength, bool showPercent, UtCString* wide) {
    if (line.next && !readLine(maxLength)) return 9003;
    if (showPercent) showProgress();
    pair.code = line.code;
    pair.text = trimmedByOption(line.text);
    pair.isUtf8 = line.isUtf8;
    line.next = 1;
    if (wide) *wide = wideText(pair.text);
    return 0;
}

int DxGetLineVar(int* code, char* text, int maxLength, bool showPercent, UtCString* wide) {
    DxPair pair;
    if (const int error = DxReadPair(pair, maxLength, showPercent, wide)) return error;
    // A pair handed back may have been read with a larger limit than this buffer's.
    const std::size_t n = std::min(pair.text.size(), static_cast<std::size_t>(maxLength - 1));
    if (n <= 16 && line.isPadded && !DxLineTrim && maxLength >= 16)
        std::memcpy(text, pair.text.data(), 16); // cheaper than the few bytes that most values have
    else if (n)
        std::memcpy(text, pair.text.data(), n);
    text[n] = 0;
    *code = pair.code;
    return 0;
}

std::string DxReadDecoded(std::string_view bytes) {
    const DxfDocument* const document = DxDocuments.current_;
    if (!document || !decodesStrings(*document)) return std::string(bytes);
    std::string converted;
    const std::string_view utf8 = utf8Of(*document, bytes, false, converted);
    return DxIsUtf8(utf8) ? DxUtf8ToFile(utf8) : std::string(bytes);
}

void DxUnGetLine() {
    line.next = 0;
}

void DxReadDropPending() {
    line.next = 1;
}

void DxReadForget() {
    line.text = line.utf8 = {};
    line.code = 0;
    line.next = 1;
    line.isUtf8 = line.isPadded = false;
    line.buffer.clear();
    line.buffer.shrink_to_fit();
    line.converted.clear();
    line.converted.shrink_to_fit();
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
    const std::size_t n = std::min(line.text.size(), sizeof save->text - 1);
    if (n) std::memcpy(save->text, line.text.data(), n);
    save->text[n] = 0;
    save->position = DxReadTell();
    save->code = line.code;
    save->next = line.next;
    save->stream = DxDocuments.currentStream();
}

int DxRestoreActPos(DX_SAVE* save) {
    if (!save) return 3011;
    DxDocuments.select(save->stream);
    const int error = DxReadSeek(save->position);
    line.buffer = save->text;
    line.text = line.buffer;
    line.code = save->code;
    line.next = save->next;
    line.isPadded = false;
    line.isUtf8 = isStringCode(line.code) && DxDocuments.current_ && decodesStrings(*DxDocuments.current_);
    if (line.isUtf8) line.converted = DxHostText(line.text).str(); // with characters that the page lacks
    line.utf8 = line.converted;
    return error;
}

std::int32_t DxReadTell() {
    return DxDocuments.current_ ? static_cast<std::int32_t>(DxDocuments.current_->position) : 0;
}

long DxReadLineNumber() {
    const DxfDocument* const document = DxDocuments.current_;
    if (!document) return 0;
    const char* const data = document->view.data;
    const char* const end = data + document->position;
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
