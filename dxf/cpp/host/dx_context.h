// A host context for the length of a scope.
#pragma once

#include "ci.h"

/// Opens a context with unit "m"; its end deletes it.
class DxTempContext {
public:
    DxTempContext() {
        result_ = CiContext::Add(&id_);
        if (result_) return;
        isOpen_ = true;
        result_ = CiContext::SetUnit(id_, "m");
    }
    ~DxTempContext() {
        if (isOpen_) CiContext::Del(id_);
    }
    DxTempContext(const DxTempContext&) = delete;
    DxTempContext& operator=(const DxTempContext&) = delete;

    int id() const { return id_; }
    int result() const { return result_; } ///< 0 when the context can be used.

private:
    int id_ = 0;
    int result_ = 0;
    bool isOpen_ = false;
};
