// What both drivers put around their work: the host's state kept and given back, the macro variables of a
// run.
#pragma once

#include "ut_string.h"

/// Runs `work`; an exception out of it is the error number 2360.
template <class Work>
int DxGuarded(Work work) {
    try {
        return work();
    } catch (...) {
        return 2360;
    }
}

/// A macro variable's number; 0 when it isn't set.
double DxMacroNumber(const char* name);

/// The host's side of a run. begin() ahead of it, the others behind it, whatever came of it.
class DxDriverFrame {
public:
    /// Assembly update off, pens and texts kept, a context of its own, &DxfStat 1.
    void begin();
    /// Pens and texts back.
    void giveBack();
    /// Macro variables cleared, unit back.
    void endSession();
    /// Assembly update as it was.
    void endAssembly();
    /// A line on the host's output with a message and the file, for hosts that asked for it.
    void announce(int message, const UtCString& fileName) const;
    int contextId() const { return contextId_; }

private:
    int contextId_ = 0;
    int assemblyFlag_ = 0;
};
