#include "progress.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>

namespace tool {

static constexpr int kBarWidth = 40;

static bool isShown = false;

void showProgress(const std::string& status) {
    const std::size_t sign = status.find('%');
    if (sign == std::string::npos || !isatty(STDERR_FILENO)) return;
    std::size_t first = sign;
    while (first > 0 && status[first - 1] >= '0' && status[first - 1] <= '9') --first;
    const int percent =
        std::clamp(std::atoi(status.substr(first, std::min<std::size_t>(3, sign - first)).c_str()), 0, 100);
    const int full = percent * kBarWidth / 100;
    std::fprintf(stderr, "\r[%s%s] %3d%%", std::string(static_cast<std::size_t>(full), '#').c_str(),
                 std::string(static_cast<std::size_t>(kBarWidth - full), ' ').c_str(), percent);
    isShown = true;
}

void hideProgress() {
    if (isShown) std::fprintf(stderr, "\r%*s\r", kBarWidth + 8, "");
    isShown = false;
}

} // namespace tool
