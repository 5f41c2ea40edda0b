// Characters between the two sides, by the tables of the configuration.
//
// The tables speak of codes: of the file's code page on the DXF side, of Windows 1252 on the host's. Codes
// above 255 are Unicode on either side.
#include "../config/config_state.h"
#include "../session/dx_numbers.h"
#include "dx_text_codes.h"
#include "dx_text_fonts.h"

#include <algorithm>
#include <cstdlib>

namespace {

constexpr std::size_t convertedLimit = 2208;

char32_t fileSide(int code) {
    return code > 255 ? static_cast<char32_t>(code) : DxFileChar(code);
}
char32_t hostSide(int code) {
    return code > 255 ? static_cast<char32_t>(code) : DxHostChar(code);
}

/// Set 1 serves the special font, set 0 all others.
int setForCad(int font) {
    return font == DxSpecialCadFont ? 1 : 0;
}
int setForDxf(std::string_view font) {
    return !DxSpecialDxfFont.IsEmpty() && font == DxSpecialDxfFont.str() ? 1 : 0;
}

/// A "%%" code that gives the character of its own number means that of the file's code page.
bool isOwnNumber(std::string_view text, int code) {
    return text.size() == 5 && text.starts_with("%%") && DxAtoi(text.substr(2)) == code;
}

DxCharSequence sequenceOf(const DX_CHAR_TEXT& record) {
    const std::string_view text = record.text.view();
    return {std::string(text),
            isOwnNumber(text, record.code) ? DxFileChar(record.code) : DxHostChar(record.code)};
}

/// The pairs of a set in the session's direction. A later pair for the same character wins.
DxCharMap& charMap(int set, bool toCad) {
    DxCharMap& map = DxCharMaps[static_cast<std::size_t>(set)];
    if (map.isBuilt) return map;
    map.isBuilt = true;
    for (const DX_CHAR_PAIR& pair : DxCharPairs[set]) {
        const char32_t dxf = fileSide(pair.dxf), host = hostSide(pair.host);
        if (dxf && host) map.pairs.insert_or_assign(toCad ? dxf : host, toCad ? host : dxf);
    }
    for (const DX_CHAR_TEXT& record : DxCharTexts[set]) {
        if (record.code > 255 || record.text.empty()) continue;
        const DxCharSequence& sequence = map.sequences.emplace_back(sequenceOf(record));
        map.startsText[static_cast<unsigned char>(sequence.text.front())] = true;
    }
    map.startsCode = map.startsText;
    map.startsCode['\\'] = true;
    return map;
}

void convertPairs(std::string& text, const DxCharMap& map) {
    if (map.pairs.empty()) return;
    std::string out;
    out.reserve(text.size());
    for (std::size_t pos = 0; pos < text.size();) {
        const char32_t c = DxNextChar(text, pos);
        const auto pair = map.pairs.find(c);
        DxAppendChar(out, pair == map.pairs.end() ? c : pair->second);
    }
    text.swap(out);
}

/// The sequence of a set that stands at the start of `rest`; null when there is none.
const DxCharSequence* sequenceAt(std::string_view rest, const DxCharMap& map) {
    if (!map.startsText[static_cast<unsigned char>(rest.front())]) return nullptr;
    const auto found =
        std::find_if(map.sequences.begin(), map.sequences.end(),
                     [&](const DxCharSequence& sequence) { return rest.starts_with(sequence.text); });
    return found == map.sequences.end() ? nullptr : &*found;
}

/// Length of an escape for a character up to U+00FF at the start of `rest`, 0 for anything else.
std::size_t shortEscape(std::string_view rest, char32_t& character) {
    if (!rest.starts_with("\\U+00") && !rest.starts_with("\\u+00")) return 0;
    const DxTextUnit unit = DxNextTextUnit(rest, 0);
    character = unit.character;
    return unit.length == 7 ? 7 : 0;
}

void convertTexts(std::string& text, const DxCharMap& map) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t pos = 0; pos < text.size();) {
        const std::size_t plain = pos;
        while (pos < text.size() && !map.startsCode[static_cast<unsigned char>(text[pos])]) ++pos;
        out.append(text, plain, pos - plain);
        if (pos == text.size()) break;
        const std::string_view rest = std::string_view(text).substr(pos);
        char32_t c = 0;
        if (const DxCharSequence* sequence = sequenceAt(rest, map)) {
            c = sequence->character;
            pos += sequence->text.size();
        } else if (const std::size_t length = shortEscape(rest, c)) {
            pos += length;
        } else {
            c = DxNextChar(text, pos);
        }
        if (c) DxAppendChar(out, c);
    }
    text.swap(out);
}

/// True when neither a record nor an escape can stand in the text: then nothing has to be copied.
bool isPlain(std::string_view text, const DxCharMap& map) {
    return std::none_of(text.begin(), text.end(),
                        [&](char c) { return map.startsCode[static_cast<unsigned char>(c)]; });
}

const DX_CHAR_TEXT* recordOf(int code, int set) {
    const auto& records = DxCharTexts[set];
    const auto* found = std::find_if(records.begin(), records.end(),
                                     [&](const DX_CHAR_TEXT& record) { return record.code == code; });
    return found == records.end() || code < 0 ? nullptr : found;
}

/// True when a percent sign of the text would stand beside another one in the file, so that it could be taken
/// for a code. Where the tables write no codes, those of the text are the file's own.
bool needsPercentCode(std::string_view text, std::size_t pos, int set, const DxCharMap& map) {
    if (text[pos] != '%' || !map.startsText['%']) return false;
    if (pos > 0 && text[pos - 1] == '%') return true;
    if (++pos == text.size()) return false;
    if (text[pos] == '%') return true;
    const DX_CHAR_TEXT* next = recordOf(DxHostCode(DxNextChar(text, pos)), set);
    return next && next->text.view().starts_with("%%");
}

} // namespace

void DxConvTextToCAD(std::string& text, const DxCharset& charset) {
    const int set = setForCad(charset.font);
    const DxCharMap& map = charMap(set, true);
    convertPairs(text, map);
    if (!isPlain(text, map)) convertTexts(text, map);
    DxCutChars(text, convertedLimit);
}

bool DxShowsAtStart(std::string_view text, const DxCharset& charset) {
    if (text.empty() || text.front() <= ' ' || text.front() == 127) return false;
    const DxCharMap& map = charMap(setForCad(charset.font), true);
    const auto first = static_cast<unsigned char>(text.front());
    return !map.startsCode[first] && !map.pairs.contains(first);
}

const DX_STYLE_TYPE* DxConvTextToDXF(std::string& text, int font, const UtCString& face,
                                     const int bits[DX_BIT_COUNT]) {
    const DX_STYLE_TYPE* style = DxTextGetDXFStyle(font, face, bits);
    const int set = style ? setForDxf(style->fontFile.view()) : 0;
    const DxCharMap& map = charMap(set, false);
    std::string out;
    for (std::size_t pos = 0; pos < text.size();) {
        const std::size_t at = pos;
        const char32_t c = DxNextChar(text, pos);
        if (const DX_CHAR_TEXT* record = recordOf(DxHostCode(c), set))
            out += record->text.view();
        else if (needsPercentCode(text, at, set, map))
            out += "%%%";
        else
            DxAppendChar(out, c);
    }
    DxCutChars(out, DX_TEXT_LIMIT);
    convertPairs(out, map);
    text.swap(out);
    return style;
}

bool DxTextIsPercentCode(std::string_view text, std::size_t pos, std::string_view font) {
    if (text[pos] != '%') return false;
    const int set = setForDxf(font);
    return !recordOf('%', set) && needsPercentCode(text, pos, set, charMap(set, false));
}

int DxTextTableCode(char32_t character, std::string_view font) {
    const int set = setForDxf(font);
    const int host = DxHostCode(character);
    if (const DX_CHAR_TEXT* record = recordOf(host, set)) {
        const std::string_view text = record->text.view();
        if (text.starts_with("%%") && text.size() > 2) {
            const DxTextUnit unit = DxNextTextUnit(text, 0);
            return unit.length > 1 ? unit.code : std::atoi(text.data() + 2);
        }
    }
    for (const DX_CHAR_PAIR& pair : DxCharPairs[set]) {
        if (hostSide(pair.host) == character) return pair.dxf;
    }
    return host >= 0 ? host : static_cast<int>(character);
}
