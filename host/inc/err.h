// Errors that don't end what is being done.
#pragma once

/// Records errors of a place in the program with the host, which keeps them for its own report.
class ErrClassErrType {
public:
    explicit ErrClassErrType(const char* source) : source_(source) {}
    void Set(int error); ///< 0 is no error.

private:
    const char* source_;
};
