#include "services/session.h"

#include "drawing/host_state.h"
#include "services/failure.h"
#include "services/messages.h"

namespace host {

static Session theSession; // NOLINT: one host, one session

Session& session() {
    return theSession;
}

void resetSession() {
    theSession = Session{};
    resetDrawingState();
    forgetCatalogue();
    failCall(0);
}

} // namespace host
