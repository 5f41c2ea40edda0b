// The converter of the session and its services.
#pragma once

#include "isat_converter.h"

#include <memory>

/// What the converter needs beyond its files. The standard library and the host have it all, so that starting
/// and stopping only count.
class ExSystemServices {
public:
    void start() { isRunning_ = true; }
    void stop() { isRunning_ = false; }
    bool isRunning() const { return isRunning_; }

private:
    bool isRunning_ = false;
};

extern ExSystemServices DxOdServices;
extern std::unique_ptr<ISATConverter> DxOdConverter; ///< null until the first use
