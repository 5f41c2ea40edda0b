// The configuration partner, dialogs and masks.
#include "co.h"
#include "go.h"

#include "services/failure.h"
#include "services/session.h"

using namespace host;

static constexpr int errorFailed = 1001;
static constexpr int errorNoSuchObject = 1005;

static std::string partnerKey(const char* section, const char* group, const char* key) {
    return std::string(section) + "/" + group + "/" + key;
}

int CoConnectPartner(int /*partner*/, int /*flags*/) {
    return callFails() ? errorFailed : 0;
}

int CoGetStringFromPartner(int /*partner*/, const char* section, const char* group, const char* key,
                           UtCString* value) {
    const auto found = session().partner.find(partnerKey(section, group, key));
    if (callFails() || found == session().partner.end()) return errorNoSuchObject;
    *value = found->second;
    return 0;
}

int CoChgStringFromPartner(int /*partner*/, const char* section, const char* group, const char* key,
                           const UtCString& value) {
    if (callFails()) return errorFailed;
    session().partner[partnerKey(section, group, key)] = value.str();
    return 0;
}

int GoPartnerOpenEx(int /*partner*/, const char* /*name*/) {
    return callFails() ? errorFailed : 0;
}

int GoRsrcSetProgramEx(int /*partner*/, const char* /*program*/, const char* /*a*/, const char* /*b*/,
                       const char* /*c*/, const char* /*d*/, const char* /*e*/, const char* /*f*/,
                       const char* /*g*/, const char* /*h*/) {
    return callFails() ? errorFailed : 0;
}

int GoDoGetMdiClientPosEx(int /*partner*/, int* x, int* y) {
    if (callFails()) return errorFailed;
    *x = *y = 0;
    return 0;
}

int GoMaskGetIdOrCreateEx(int /*partner*/, const char* /*parent*/, const char* name, int* id) {
    if (callFails()) return errorFailed;
    const std::vector<DialogMask>& masks = session().masks;
    for (std::size_t i = 0; i < masks.size(); ++i) {
        if (masks[i].name != name) continue;
        *id = static_cast<int>(i) + 1;
        return 0;
    }
    return errorNoSuchObject;
}

static DialogMask* findMask(int id) {
    std::vector<DialogMask>& masks = session().masks;
    if (callFails() || id < 1 || static_cast<std::size_t>(id) > masks.size()) return nullptr;
    return &masks[static_cast<std::size_t>(id) - 1];
}

int GoMaskSetPixelEx(int /*partner*/, int id, int x, int y, int /*width*/, int /*height*/) {
    DialogMask* mask = findMask(id);
    if (!mask) return errorNoSuchObject;
    mask->x = x;
    mask->y = y;
    return 0;
}

int GoMaskShowEx(int /*partner*/, int id) {
    DialogMask* mask = findMask(id);
    if (!mask) return errorNoSuchObject;
    ++mask->shown;
    return 0;
}

int GoDoShowInformationEx(int /*partner*/, const UtCString& title, const UtCString& heading,
                          const UtCString& text) {
    if (callFails()) return errorFailed;
    session().dialogs.push_back(title.str() + "\n" + heading.str() + "\n" + text.str());
    return 0;
}

int GoDoShowErrorEx(int /*partner*/, const UtCString& text) {
    if (callFails()) return errorFailed;
    session().dialogs.push_back(text.str());
    return 0;
}
