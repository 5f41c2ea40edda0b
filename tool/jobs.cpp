#include "jobs.h"

#include "interrupt.h"
#include "options.h"
#include "streams.h"
#include "tell.h"
#include "words.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <sys/wait.h>
#include <unistd.h>

namespace tool {

namespace {

using File = std::unique_ptr<FILE, int (*)(FILE*)>;

/// What a job writes to one of its streams, kept until its turn: in a file without a name, and from its end
/// on in memory where it is short, so that jobs behind a slow one don't use up the system's files.
class Kept {
public:
    int descriptor() const { return fileno(file_.get()); }
    bool isOpen() const { return file_ != nullptr; }
    void take() {
        constexpr long most = 1 << 16;
        if (std::fseek(file_.get(), 0, SEEK_END) != 0 || std::ftell(file_.get()) > most) return;
        text_.resize(static_cast<std::size_t>(std::ftell(file_.get())));
        std::rewind(file_.get());
        if (std::fread(text_.data(), 1, text_.size(), file_.get()) == text_.size()) file_.reset();
    }
    void tell(FILE* to) {
        if (!file_) {
            std::fwrite(text_.data(), 1, text_.size(), to);
            std::fflush(to);
            return;
        }
        std::rewind(file_.get());
        copyStream(file_.get(), to);
        file_.reset();
    }

private:
    File file_{std::tmpfile(), std::fclose};
    std::string text_;
};

/// An input in a process of its own.
struct Job {
    Kept output, errors;
    pid_t process = -1;
    bool done = false;
    int status = STATUS_FAILED;
};

} // namespace

static void startJob(Job& job, const std::string& input, const std::function<int(const std::string&)>& work) {
    std::cout.flush();
    std::fflush(nullptr);
    if (!job.output.isOpen() || !job.errors.isOpen()) return;
    job.process = fork();
    if (job.process != 0) return;
    dup2(job.output.descriptor(), STDOUT_FILENO);
    dup2(job.errors.descriptor(), STDERR_FILENO);
    const int status = work(input);
    std::cout.flush();
    std::fflush(nullptr);
    // The parent's objects are none of this process's business: no destructors of theirs here.
    _exit(status);
}

static void finishJob(Job& job, const std::string& input) {
    if (job.process < 0) {
        fail(input, words::say("can't start a process"));
        return;
    }
    job.output.tell(stdout);
    job.errors.tell(stderr);
    if (WIFEXITED(job.status)) {
        job.status = WEXITSTATUS(job.status);
        return;
    }
    job.status = fail(input, words::say("its process ended by signal {}", WTERMSIG(job.status)));
}

/// Waits for any process to end. False when there is none.
static bool waitForOne(std::vector<Job>& jobs) {
    int status = 0;
    const pid_t process = waitpid(-1, &status, 0);
    const auto job =
        std::find_if(jobs.begin(), jobs.end(), [&](const Job& j) { return j.process == process; });
    if (process < 0 || job == jobs.end()) return process >= 0 || errno == EINTR; // a signal, or none of ours
    job->status = status;
    job->done = true;
    job->output.take();
    job->errors.take();
    return true;
}

/// Jobs that are through, wait for their turn and hold files open: their output is long.
static bool manyWait(const std::vector<Job>& jobs) {
    constexpr long most = 50;
    return std::count_if(jobs.begin(), jobs.end(), [](const Job& job) {
               return job.done && (job.output.isOpen() || job.errors.isOpen());
           }) >= most;
}

static void stopAll(const std::vector<Job>& jobs) {
    for (const Job& job : jobs)
        if (!job.done && job.process > 0) kill(job.process, SIGTERM);
}

/// "27 of 30; failed: a.dxf, b.dxf", where any failed.
static void tellFailed(const std::vector<std::string>& inputs, const std::vector<Job>& jobs) {
    std::string failed;
    std::size_t count = 0;
    for (std::size_t i = 0; i < jobs.size(); ++i) {
        if (jobs[i].status == STATUS_DONE) continue;
        failed += (count++ == 0 ? "" : ", ") + inputs[i];
    }
    if (count > 0)
        fail(words::say("{} of {} done; failed: {}", inputs.size() - count, inputs.size(), failed));
}

int forEachInput(const std::vector<std::string>& inputs, int jobs,
                 const std::function<int(const std::string& input)>& work) {
    if (inputs.size() == 1) return work(inputs[0]);
    std::vector<Job> all;
    all.reserve(inputs.size());
    std::size_t told = 0;
    int running = 0, worst = STATUS_DONE;
    while (told < inputs.size()) {
        if (isInterrupted()) {
            stopAll(all);
            return STATUS_FAILED;
        }
        while (all.size() < inputs.size() && running < std::max(1, jobs) && !manyWait(all)) {
            const std::string& input = inputs[all.size()];
            startJob(all.emplace_back(), input, work);
            all.back().done = all.back().process < 0;
            running += !all.back().done;
        }
        if (running > 0 && !all[told].done) {
            if (!waitForOne(all)) break;
            running =
                static_cast<int>(std::count_if(all.begin(), all.end(), [](const Job& j) { return !j.done; }));
        }
        for (; told < all.size() && all[told].done; ++told) {
            finishJob(all[told], inputs[told]);
            worst = std::max(worst, all[told].status);
        }
    }
    tellFailed(inputs, all);
    return worst;
}

} // namespace tool
