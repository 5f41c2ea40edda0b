// The active pattern of the import for a scope.
#pragma once

#include "host_state.h"

/// Behind the scope the pattern is active again that was so ahead of it, number and table entry together;
/// where it has become full in between, that is the pattern which goes on. All that makes another pattern
/// active for a time does it within such a scope.
class DxPatternScope {
public:
    DxPatternScope() = default;
    /// Makes the entry's pattern active for the scope.
    explicit DxPatternScope(int entry);
    ~DxPatternScope() { leave(); }
    DxPatternScope(const DxPatternScope&) = delete;
    DxPatternScope& operator=(const DxPatternScope&) = delete;

    int error() const { return error_; } ///< of entering
    int leave();                         ///< Ends the scope. 0 or the host's error.

private:
    int number_ = DxActPat;
    int entry_ = DxActPatIndex;
    bool isLeft_ = false;
    int error_ = 0;
};
