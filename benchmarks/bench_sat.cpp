// Solid models: reading and writing at version 700, text and binary, against a pass that only splits tokens.
#include "solid/sat/acis_file.h"
#include "timing.h"

#include "ut.h"

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <unistd.h>

namespace {

/// Bodies of one spline face each, with as many points.
std::string model(std::size_t bytes) {
    std::string text = "700 0 1 0\n@4 test @4 test @24 Thu Jan  1 00:00:00 2004\n1 1e-06 1e-10\n";
    std::string net = "{ exactsur full nubs 3 3 open open none none 18 2 0 3";
    for (int i = 1; i < 17; ++i) net += " " + std::to_string(i) + " 1";
    net += " 17 3 0 3 1 3";
    for (int i = 0; i < 80; ++i) net += " 1." + std::to_string(1000000007 + i * 7919) + " 2.5e-3 -17.25";
    net += " 0 0 0 0 0 0 0 }";
    for (std::size_t first = 0; text.size() < bytes; first += 5) {
        const auto to = [first](std::size_t i) { return "$" + std::to_string(first + i); };
        text += "body $-1 -1 $-1 " + to(1) + " $-1 $-1 #\nlump $-1 -1 $-1 $-1 " + to(2) + " " + to(0) +
                " #\nshell $-1 -1 $-1 $-1 $-1 " + to(3) + " $-1 " + to(1) + " #\nface $-1 -1 $-1 $-1 $-1 " +
                to(2) + " $-1 " + to(4) + " forward double out #\nspline-surface $-1 -1 $-1 forward " + net +
                " I I I I #\n";
    }
    return text + "End-of-ACIS-data\n";
}

/// The floor: every token found, every number read.
double split(const std::string& text) {
    double sum = 0;
    const char *at = text.data(), *const end = at + text.size();
    while (at < end) {
        while (at < end && *at <= ' ') ++at;
        const char* const from = at;
        while (at<end&& * at> ' ') ++at;
        double number = 0;
        if (std::from_chars(from, at, number).ec == std::errc()) sum += number;
    }
    return sum;
}

/// Of this process, in megabytes.
double memoryInUse() {
    double total = 0, resident = 0;
    if (std::FILE* const stream = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(stream, "%lf %lf", &total, &resident) != 2) resident = 0;
        std::fclose(stream);
    }
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1 << 20);
}

/// A conversion from file to file, read and written apart. 1 when it fails.
int measure(const char* what, const UtCString& source, const UtCString& target, std::uint32_t form,
            double size, double floor, int runs) {
    ACIS::File file;
    bool isDone = true;
    const double before = memoryInUse();
    double memory = 0;
    const double read = bench::secondsOf(runs, [&] {
        OdRdFileBuf in(source);
        isDone &= file.read(in, nullptr, 1);
        memory = memoryInUse() - before;
    });
    const double write = bench::secondsOf(runs, [&] {
        OdWrFileBuf out(target);
        isDone &= file.write(out, form | 700, 1);
        out.flush();
    });
    std::printf(
        "%-7s read %.3f s, written %.3f s: %.1f times the tokens; memory with the mapped file %.1f times "
        "the text\n",
        what, read, write, (read + write) / floor, memory / size);
    return isDone ? 0 : 1;
}

} // namespace

int main(int argc, char**) {
    const bool isSmoke = argc > 1; // "--smoke"
    constexpr std::size_t megabyte = 1 << 20;
    const char* const size = std::getenv("TORVA_BENCH_MB");
    const std::size_t bytes = (size      ? static_cast<std::size_t>(std::atoi(size))
                               : isSmoke ? 1
                                         : 50) *
                              megabyte;
    const std::string text = model(bytes);
    constexpr int runs = 5;
    double sum = 0;
    const double floor = bench::secondsOf(runs, [&] { sum = split(text); });
    const UtCString folder = UtGetTempDir(), asText = UtTempFileName(folder, "sat"),
                    asBinary = UtTempFileName(folder, "sab");
    std::printf("%.0f MB of text, tokens %.3f s (%g)\n", static_cast<double>(text.size()) / megabyte, floor,
                sum);
    {
        OdWrFileBuf out(asText);
        out.putBytes(text.data(), text.size());
        out.flush();
    }
    const double megabytes = static_cast<double>(text.size()) / megabyte;
    const int lost = measure("text", asText, asBinary, ACIS::VERSION_BINARY, megabytes, floor, 1) +
                     measure("text", asText, asText, ACIS::VERSION_TEXT, megabytes, floor, runs) +
                     measure("binary", asBinary, asBinary, ACIS::VERSION_BINARY, megabytes, floor, runs);
    UtFileRemove(asText);
    UtFileRemove(asBinary);
    return lost;
}
