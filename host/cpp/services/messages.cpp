// Translated messages, the status line and the message area.
#include "services/messages.h"

#include "ci.h"
#include "ov.h"
#include "services/failure.h"
#include "services/session.h"
#include "trt.h"
#include "uo.h"
#include "ut.h"

#include <charconv>
#include <unordered_map>

namespace host {
namespace {

/// One catalogue in one language.
struct Catalogue {
    bool loaded = false;
    std::string name, language;
    std::vector<std::string> paths;
    std::unordered_map<int, std::string> texts;
};

Catalogue catalogue; // NOLINT: the one in use

/// Takes a line "number<TAB>text"; anything else is a remark.
void takeLine(const std::string& line) {
    int number = 0;
    const char* end = line.data() + line.size();
    const auto [rest, error] = std::from_chars(line.data(), end, number);
    if (error != std::errc{} || rest == end || *rest != '\t') return;
    catalogue.texts.insert_or_assign(number, std::string(rest + 1, end));
}

bool readFile(const std::string& path) {
    FILE* stream = UtFileOpen(path, "rb");
    if (!stream) return false;
    std::string line;
    while (UtReadLine(stream, line) == 0) takeLine(line);
    UtFileClose(stream);
    return true;
}

/// "cad_msg.txt" in German is "cad_msg.de.txt".
std::string fileName(const std::string& name, const std::string& language) {
    const std::size_t dot = name.rfind('.');
    if (dot == std::string::npos) return name + "." + language;
    return name.substr(0, dot) + "." + language + name.substr(dot);
}

void load(const char* name) {
    const Session& s = session();
    if (catalogue.loaded && catalogue.name == name && catalogue.language == s.language &&
        catalogue.paths == s.cataloguePaths)
        return;
    catalogue = Catalogue{true, name, s.language, s.cataloguePaths, {}};
    std::vector<std::string> folders = s.cataloguePaths;
    if (folders.empty()) folders.push_back(UoSubstOVPath("$HD_U/$HD_VE/int/dxf/dflt").str());
    for (const std::string& folder : folders)
        if (readFile(UtPathJoin(folder, fileName(name, s.language)).str())) return;
}

void addMessage(const UtCString& text) {
    session().messageArea.push_back(text.str());
    if (session().onMessage) session().onMessage(text.str());
}

} // namespace

void forgetCatalogue() {
    catalogue = Catalogue{};
}

} // namespace host

using namespace host;

UtCString TrtMsgGet(const char* name, int number, const char* dflt) {
    load(name);
    const auto found = catalogue.texts.find(number);
    return found == catalogue.texts.end() ? UtCString(dflt) : UtCString(found->second);
}

void ovdisplay(const UtCString& text, int /*where*/) {
    session().statusLine = text.str();
    if (session().onStatus) session().onStatus(text.str());
}

void ovwritealpha(const UtCString& text) {
    addMessage(text);
}

int CiOutput::String(const UtCString& text) {
    if (callFails()) return 1001;
    addMessage(text);
    return 0;
}

int CiInput::SelectFileName(const UtCString& /*prompt*/, int /*mode*/, const UtCString& /*pattern*/,
                            const UtCString& /*extension*/, UtCString* name) {
    constexpr int stoppedByUser = 9009;
    if (callFails() || session().fileDialogAnswer.empty()) return stoppedByUser;
    *name = session().fileDialogAnswer;
    return 0;
}
