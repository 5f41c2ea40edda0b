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

std::string quoted(std::string_view text) {
    static constexpr char digits[] = "0123456789ABCDEF";
    constexpr unsigned char firstOfC1 = 0xC2, afterC1 = 0xA0, rubout = 0x7F;
    std::string plain;
    const auto put = [&plain](unsigned char byte) {
        plain.append({'\\', 'x', digits[byte >> 4], digits[byte & 15]});
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : ' ');
        if (byte == firstOfC1 && next >= 0x80 && next < afterC1)
            put(byte), put(next), ++i;
        else if ((byte < ' ' && byte != '\n' && byte != '\t') || byte == rubout)
            put(byte);
        else
            plain += text[i];
    }
    return plain;
}

namespace {

class QuotingBuffer : public std::streambuf {
public:
    explicit QuotingBuffer(std::streambuf* to) : to_(to) {}

protected:
    int_type overflow(int_type c) override {
        const char text = traits_type::to_char_type(c);
        return traits_type::eq_int_type(c, traits_type::eof()) || xsputn(&text, 1) == 1 ? c
                                                                                        : traits_type::eof();
    }
    std::streamsize xsputn(const char* text, std::streamsize size) override {
        const std::string plain = quoted({text, static_cast<std::size_t>(size)});
        const auto length = static_cast<std::streamsize>(plain.size());
        return to_->sputn(plain.data(), length) == length ? size : 0;
    }
    int sync() override { return to_->pubsync(); }

private:
    std::streambuf* to_;
};

} // namespace

QuotedOutput::QuotedOutput(std::ostream& out)
    : out_(out), before_(out.rdbuf()), buffer_(std::make_unique<QuotingBuffer>(before_)) {
    out_.rdbuf(buffer_.get());
}

QuotedOutput::~QuotedOutput() {
    out_.rdbuf(before_);
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
