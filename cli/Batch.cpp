#include "cli/Batch.h"

#include "cli/BatchResults.h"
#include "cli/ConsoleReporter.h"
#include "cli/Failures.h"
#include "cli/Messages.h"
#include "cli/Options.h"
#include "cli/Worker.h"
#include "platform/ChildProcess.h"
#include "platform/OutputFile.h"
#include "platform/Process.h"
#include "platform/Processors.h"
#include "platform/StopSignals.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <csignal>
#include <deque>
#include <list>
#include <mutex>
#include <set>
#include <thread>

namespace belvor {
namespace {

using Texts = std::vector<std::string>;

unsigned processCount(const Options& options)
{
    unsigned count = options.processes;
    if (count == 0) {
        count = usableProcessors();
        unsigned granted = 0;   // by the scheduler of a cluster
        const std::string text = environmentValue("SLURM_CPUS_PER_TASK");
        std::from_chars(text.data(), text.data() + text.size(), granted);
        if (granted != 0) count = std::min(count, granted);
    }
    return static_cast<unsigned>(std::min<std::size_t>(count, std::max<std::size_t>(1, options.jobs.size())));
}

/// The run of one call: threads that each keep a worker process busy.
class Batch {
public:
    Batch(const Options& given, Results& results) : options(given), all(results), count(processCount(given))
    {
        Texts arguments = options.arguments, views;
        const unsigned threads = std::max(1u, usableProcessors() / count);
        // Before the others: "--" may end the options.
        if (options.threads == 0) arguments.insert(arguments.begin(), "--threads=" + std::to_string(threads));
        for (const ChosenView& view : options.chosenViews) views.push_back(view.bytes);
        greeting = packed(arguments) + packed(views);
    }

    /// Throws what a thread could not do.
    void run()
    {
        std::list<JoinedThread> threads;
        try {
            for (unsigned i = 0; i < count; ++i) threads.emplace_back([this] { serve(); });
            waitForThreads();
        } catch (...) {
            endAll();
            throw;
        }
        threads.clear();
        if (failure) std::rethrow_exception(failure);
        if (stopSignal() != 0) throw Reporter::Abandoned();
    }

private:
    /// A worker and its jobs, the one that it draws first.
    struct Turn {
        std::unique_ptr<ChildProcess> worker;
        std::deque<const Job*> jobs;
        std::size_t told = 0;   // jobs that the worker knows of
        std::chrono::steady_clock::duration latest{};
    };

    /// One thread: jobs in turn, until there are none or the run is to end.
    void serve() noexcept
    {
        try {
            Turn turn;
            while (takeJobs(turn)) {
                Result result = runJob(turn);
                const bool failed = result.status != 0;
                if (ending()) break;
                all.add(turn.jobs.front()->number, std::move(result));
                turn.jobs.pop_front();
                if (failed && options.failFast) takeNoMore();
            }
            if (turn.worker) leave(turn.worker);
        } catch (...) {
            const std::lock_guard guard(lock);
            if (!failure) failure = std::current_exception();
            stopping = true;
        }
        const std::lock_guard guard(lock);
        ++ended;
    }

    /// Small jobs are told one ahead, so that no worker waits for the next; a large one would keep that from
    /// other workers. False when there are none.
    bool takeJobs(Turn& turn)
    {
        constexpr auto small = std::chrono::milliseconds(50);
        const bool ahead = !options.failFast && turn.latest != turn.latest.zero() && turn.latest < small;
        while (turn.jobs.size() < (ahead ? 2 : 1)) {
            const Job* const job = next();
            if (!job) break;
            turn.jobs.push_back(job);
        }
        return !turn.jobs.empty();
    }

    const Job* next()
    {
        const std::lock_guard guard(lock);
        return stopping || nextJob == options.jobs.size() ? nullptr : &options.jobs[nextJob++];
    }
    void takeNoMore()
    {
        const std::lock_guard guard(lock);
        nextJob = options.jobs.size();
    }
    bool ending()
    {
        const std::lock_guard guard(lock);
        return stopping;
    }

    /// What the turn's first job comes to.
    Result runJob(Turn& turn)
    {
        const Job& job = *turn.jobs.front();
        for (;;) {
            const auto began = std::chrono::steady_clock::now();
            tellJobs(turn);
            const std::optional<Texts> answer = receive(turn.worker->output());
            turn.latest = std::chrono::steady_clock::now() - began;
            if (!answer || answer->size() != 5) return afterDeath(job, turn.worker);
            --turn.told;
            Result result;
            std::from_chars((*answer)[0].data(), (*answer)[0].data() + (*answer)[0].size(), result.status);
            // Memory that a process has used it does not give back wholly.
            if (result.status == noMemory || result.status == tooMuchMemory) leave(turn.worker);
            if ((*answer)[4] == "again" && !ending()) continue;
            result.kind = (*answer)[1] == "drawn"     ? Result::Kind::drawn
                          : (*answer)[1] == "skipped" ? Result::Kind::skipped
                                                      : Result::Kind::failed;
            result.told = (*answer)[2];
            result.line = (*answer)[3];
            return result;
        }
    }

    /// A worker that has ended is told nothing; its answers tell.
    void tellJobs(Turn& turn)
    {
        if (!turn.worker) {
            start(turn.worker);
            turn.told = 0;
        }
        for (; turn.told < turn.jobs.size(); ++turn.told) {
            const Job& job = *turn.jobs[turn.told];
            Texts ask{std::to_string(job.number), job.model};
            all.addEarlier(job, ask);
            turn.worker->send(packed(ask));
        }
    }

    void start(std::unique_ptr<ChildProcess>& worker)
    {
        worker = std::make_unique<ChildProcess>(workerArgument);
        {
            const std::lock_guard guard(lock);
            workers.insert(worker.get());
            if (stopping) worker->closeInput();
        }
        worker->send(greeting);
    }

    /// Lets a process end by itself. Its status.
    int leave(std::unique_ptr<ChildProcess>& worker)
    {
        worker->closeInput();
        const int status = worker->wait();
        const std::lock_guard guard(lock);
        workers.erase(worker.get());
        worker.reset();
        return status;
    }

    /// The result of a job whose process has ended without an answer.
    Result afterDeath(const Job& job, std::unique_ptr<ChildProcess>& worker)
    {
        const int end = leave(worker);
        std::vector<std::string> outputs;
        forEachOutput(job, [&](const std::string& name) { outputs.push_back(name); });
        removeAbandonedFiles(outputs);
        if (end == timedOut) return all.failed(job, timedOut, tooLongText(options, job));
        if (end == -9) return all.failed(job, noMemory, filledText(Text::workerKilled, {job.model}));
        const std::string how =
            filledText(end < 0 ? Text::workerSignal : Text::workerStatus, {std::to_string(std::abs(end))});
        const bool asked = end == -SIGINT || end == -SIGTERM || end == -1 || end == stopped;
        const int status = end == stopped ? stopped : asked ? 128 - end : internalError;
        return all.failed(job, status, filledText(Text::workerEnded, {job.model, how}));
    }

    void endAll()
    {
        const std::lock_guard guard(lock);
        stopping = true;
        for (ChildProcess* const worker : workers) worker->closeInput();
    }

    /// Returns when all threads have ended. A stop that is asked for goes to the workers; after five seconds
    /// they are killed.
    void waitForThreads()
    {
        constexpr int patience = 500;
        for (int waited = 0;;) {
            {
                const std::lock_guard guard(lock);
                if (ended == count) return;
                if (stopping && ++waited == patience)
                    for (ChildProcess* const worker : workers) worker->kill();
            }
            if (stopSignal() != 0 || ending()) endAll();
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
    }

    const Options& options;
    Results& all;
    const unsigned count;
    std::string greeting;   // what a worker is told first

    std::mutex lock;   // of all below
    std::size_t nextJob = 0;
    bool stopping = false;
    unsigned ended = 0;
    std::set<ChildProcess*> workers;
    std::exception_ptr failure;
};

/// What processes that are gone have left beside the names of this call.
void removeLeftovers(const Options& options)
{
    std::vector<std::string> outputs;
    for (const Job& job : options.jobs)
        forEachOutput(job, [&](const std::string& name) { outputs.push_back(name); });
    removeAbandonedFiles(outputs);
}

}   // namespace

int drawAll(Options& options, ConsoleReporter& reporter)
{
    readViews(options.chosenViews, options.changes, reporter);
    removeLeftovers(options);
    Results results(options);
    Batch(options, results).run();
    results.finish();
    return results.status();
}

}   // namespace belvor
