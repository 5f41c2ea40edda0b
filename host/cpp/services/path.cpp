// Paths, environment variables in them, date and time.
#include "os.h"
#include "uo.h"
#include "ut.h"

#include <array>
#include <cstdlib>
#include <ctime>
#include <functional>

static constexpr const char* separators = "/\\";

UtCString UtPathDir(const UtCString& path) {
    const std::string& text = path.str();
    const std::size_t at = text.find_last_of(separators);
    if (at == std::string::npos) return {};
    return text.substr(0, at == 0 ? 1 : at); // the root keeps its separator
}

UtCString UtPathFile(const UtCString& path) {
    const std::size_t at = path.str().find_last_of(separators);
    return at == std::string::npos ? path : UtCString(path.str().substr(at + 1));
}

UtCString UtPathExt(const UtCString& path) {
    const UtCString file = UtPathFile(path);
    const std::size_t dot = file.str().rfind('.');
    return dot == std::string::npos ? UtCString() : UtCString(file.str().substr(dot + 1)).Lower();
}

UtCString UtPathJoin(const UtCString& dir, const UtCString& file) {
    if (dir.IsEmpty()) return file;
    const char last = dir.str().back();
    return last == '/' || last == '\\' ? dir + file : dir + "/" + file;
}

static bool isNameCharacter(char c, bool first) {
    const bool letter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
    return letter || (!first && c >= '0' && c <= '9');
}

/// Replaces each "$NAME" by what `lookUp` gives for it; null leaves it as it stands.
static std::string expand(const std::string& text,
                          const std::function<const char*(const std::string&)>& lookUp) {
    std::string result;
    for (std::size_t i = 0; i < text.size();) {
        std::size_t end = i + 1;
        if (text[i] == '$')
            while (end < text.size() && isNameCharacter(text[end], end == i + 1)) ++end;
        const char* value = end > i + 1 ? lookUp(text.substr(i + 1, end - i - 1)) : nullptr;
        if (value)
            result += value;
        else
            result.append(text, i, end - i);
        i = end;
    }
    return result;
}

UtCString UtPathEnvToAbs(const UtCString& path) {
    return expand(path.str(), [](const std::string& name) { return std::getenv(name.c_str()); });
}

UtCString UoSubstOVPath(const UtCString& path) {
    return expand(path.str(), [](const std::string& name) -> const char* {
        if (const char* value = std::getenv(name.c_str())) return value;
        if (name == "HD_U") return "/u";
        if (name == "VE" && std::getenv("HD_VE")) return std::getenv("HD_VE");
        return name == "HD_VE" || name == "VE" ? "1700" : nullptr;
    });
}

UtCString OsGetEnvDflt(const char* name, const UtCString& dflt) {
    const char* value = std::getenv(name);
    return value && *value ? UtCString(value) : dflt;
}

static UtCString formatNow(const char* format) {
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    localtime_r(&now, &parts);
    std::array<char, 32> buffer;
    return std::string_view(buffer.data(), std::strftime(buffer.data(), buffer.size(), format, &parts));
}

UtCString UtDate() {
    return formatNow("%d.%m.%Y");
}

UtCString UtTime() {
    return formatNow("%H:%M:%S");
}
