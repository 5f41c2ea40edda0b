#include "streams.h"

#include "options.h"
#include "tell.h"
#include "words.h"

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <iostream>
#include <memory>
#include <poll.h>
#include <unistd.h>
#include <vector>

namespace tool {

using File = std::unique_ptr<FILE, int (*)(FILE*)>;

void guardStreams() {
    // Opened the wrong way round, so that their use is an error still.
    constexpr int modes[] = {O_WRONLY, O_RDONLY, O_RDONLY};
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream)
        if (fcntl(stream, F_GETFD) == -1 && open("/dev/null", modes[stream]) != stream) _exit(STATUS_FAILED);
    // Writing beyond what the system allows is an error like any other.
    for (const int signal : {SIGPIPE, SIGXFSZ}) std::signal(signal, SIG_IGN);
}

bool copyStream(FILE* from, FILE* to) {
    std::vector<char> buffer(1 << 16);
    while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), from))
        if (std::fwrite(buffer.data(), 1, count, to) != count) return false;
    return !std::ferror(from) && std::fflush(to) == 0;
}

bool isStream(const std::string& name) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(name, error);
    return name == "-" || is_fifo(status) || is_character_file(status);
}

bool copyToStream(const std::string& path, const std::string& name) {
    const File from(std::fopen(path.c_str(), "rb"), std::fclose);
    if (!from) return false;
    if (name == "-") return copyStream(from.get(), stdout);
    const File to(std::fopen(name.c_str(), "wb"), std::fclose);
    return to && copyStream(from.get(), to.get());
}

static bool hasReader() {
    pollfd output{STDOUT_FILENO, POLLOUT, 0};
    return poll(&output, 1, 0) < 0 || !(output.revents & POLLERR);
}

int finishOutput(int status) {
    const bool isWritten = std::cout.flush() && std::fflush(stdout) == 0 && !std::ferror(stdout);
    if (isWritten) return status;
    if (hasReader()) fail(words::say("can't write to standard output"));
    return std::max<int>(status, STATUS_FAILED);
}

} // namespace tool
