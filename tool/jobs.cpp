#include "jobs.h"

#include "options.h"
#include "streams.h"
#include "tell.h"
#include "words.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <sys/wait.h>
#include <unistd.h>

namespace tool {

namespace {

using File = std::unique_ptr<FILE, int (*)(FILE*)>;

/// An input in a process of its own; what it writes is kept until its turn.
struct Job {
    File output{std::tmpfile(), std::fclose}, errors{std::tmpfile(), std::fclose};
    pid_t process = -1;
    bool done = false;
    int status = STATUS_FAILED;
};

} // namespace

static void startJob(Job& job, const std::string& input, const std::function<int(const std::string&)>& work) {
    std::cout.flush();
    std::fflush(nullptr);
    if (!job.output || !job.errors) return;
    job.process = fork();
    if (job.process != 0) return;
    dup2(fileno(job.output.get()), STDOUT_FILENO);
    dup2(fileno(job.errors.get()), STDERR_FILENO);
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
    for (const auto& [from, to] : {std::pair(job.output.get(), stdout), {job.errors.get(), stderr}}) {
        std::rewind(from);
        copyStream(from, to);
    }
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
    if (process < 0 || job == jobs.end()) return process >= 0 || errno == EINTR;
    job->status = status;
    job->done = true;
    return true;
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
        while (all.size() < inputs.size() && running < std::max(1, jobs)) {
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
            all[told].output.reset();
            all[told].errors.reset();
        }
    }
    tellFailed(inputs, all);
    return worst;
}

} // namespace tool
