#include "ut_hex.h"

#include "services/failure.h"
#include "ut.h"

#include "err.h"

static int valueOf(char digit) {
    if (digit >= '0' && digit <= '9') return digit - '0';
    const char lower = static_cast<char>(digit | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : 0;
}

void UtHexToByte(std::string_view digits, std::string& bytes) {
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2)
        bytes += static_cast<char>(valueOf(digits[i]) * 16 + valueOf(digits[i + 1]));
}

int UtFileToStringList(const UtCString& path, UtCStringList& list, const char* word) {
    constexpr int notOpened = 9001;
    FILE* const stream = host::callFails() ? nullptr : UtFileOpen(path, "rb");
    if (!stream) return notOpened;
    std::string line;
    while (UtReadLine(stream, line) == 0)
        if (line.find(word) != line.npos) list.AddUnique(UtCString(line));
    UtFileClose(stream);
    return 0;
}
