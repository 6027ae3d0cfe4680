#include "Batch.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <map>

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <nlohmann/json.hpp>

#include "Failure.h"
#include "Interruption.h"

namespace TavrinCli {
namespace {

using nlohmann::json;

json ToJson(const Answer& answer) {
    return {answer.tool, answer.type, answer.answer, answer.score};
}

Answer AnswerFromJson(const json& json) {
    return {json.at(0), json.at(1), json.at(2), json.at(3)};
}

json ToJson(const BatchSetup& setup) {
    json threshold = setup.threshold ? json(*setup.threshold) : json(nullptr);
    return {{"stream", setup.stream},
            {"tool", setup.tool},
            {"tool_type", setup.toolType},
            {"threshold", threshold}};
}

BatchSetup SetupFromJson(const json& json) {
    BatchSetup setup{json.at("stream"), json.at("tool"), json.at("tool_type"), std::nullopt};
    if (!json.at("threshold").is_null())
        setup.threshold = json.at("threshold").get<double>();
    return setup;
}

json ToJson(const ImageOutcome& outcome) {
    if (outcome.error)
        return {{"error", *outcome.error}};
    json answers = json::array();
    for (const Answer& answer : outcome.answers)
        answers.push_back(ToJson(answer));
    return {{"line", outcome.jsonLine},
            {"answers", answers},
            {"tool_answer", ToJson(outcome.toolAnswer)},
            {"tags", outcome.tagNames},
            {"overlay", json::binary(outcome.overlay)}};
}

ImageOutcome OutcomeFromJson(const json& json) {
    ImageOutcome outcome;
    if (json.contains("error")) {
        outcome.error = json.at("error").get<std::string>();
        return outcome;
    }
    outcome.jsonLine = json.at("line");
    for (const auto& answer : json.at("answers"))
        outcome.answers.push_back(AnswerFromJson(answer));
    outcome.toolAnswer = AnswerFromJson(json.at("tool_answer"));
    outcome.tagNames = json.at("tags").get<std::vector<std::string>>();
    outcome.overlay = json.at("overlay").get_binary();
    return outcome;
}

json ToJson(const BenchFigures& figures) {
    return {{"runs", figures.runs},
            {"engine_seconds", figures.engineSeconds},
            {"seconds", figures.seconds},
            {"worker_seconds", figures.workerSeconds}};
}

BenchFigures BenchFromJson(const json& json) {
    return {json.at("runs"), json.at("engine_seconds"), json.at("seconds"),
            json.at("worker_seconds")};
}

// Messages between the tool and its workers: a length, then the message in CBOR.
// Repeats read or write until every byte has moved; false once the other side has gone.
template <class Byte, class Io> bool TransferAll(int fd, Byte* bytes, std::size_t size, Io io) {
    while (size > 0) {
        const ssize_t moved = io(fd, bytes, size);
        if (moved < 0 && errno == EINTR)
            continue;
        if (moved <= 0)
            return false;
        bytes += moved;
        size -= static_cast<std::size_t>(moved);
    }
    return true;
}

bool WriteAll(int fd, const std::uint8_t* bytes, std::size_t size) {
    return TransferAll(fd, bytes, size, ::write);
}

bool ReadAll(int fd, std::uint8_t* bytes, std::size_t size) {
    return TransferAll(fd, bytes, size, ::read);
}

bool Send(int fd, const json& message) {
    const std::vector<std::uint8_t> body = json::to_cbor(message);
    const auto size = static_cast<std::uint32_t>(body.size());
    return WriteAll(fd, reinterpret_cast<const std::uint8_t*>(&size), sizeof size) &&
           WriteAll(fd, body.data(), body.size());
}

// Nothing when the other side has gone.
std::optional<json> Receive(int fd) {
    std::uint32_t size = 0;
    if (!ReadAll(fd, reinterpret_cast<std::uint8_t*>(&size), sizeof size))
        return std::nullopt;
    std::vector<std::uint8_t> body(size);
    if (!ReadAll(fd, body.data(), body.size()))
        return std::nullopt;
    return json::from_cbor(body);
}

json FailuresJson(const std::vector<ImageFailure>& failures) {
    json list = json::array();
    for (const ImageFailure& failure : failures)
        list.push_back({failure.image.string(), failure.reason});
    return list;
}

std::vector<ImageFailure> FailuresFromJson(const json& list) {
    std::vector<ImageFailure> failures;
    for (const auto& failure : list)
        failures.push_back({failure.at(0).get<std::string>(), failure.at(1)});
    return failures;
}

// Answers the tool's requests until it closes them: an image to analyse, or a bench to prepare
// and, at the word, to measure. The setup's failure is the first and last message.
int ServeRequests(Analyser& analyser, int requests, int replies) {
    while (const auto request = Receive(requests)) {
        if (request->contains("image")) {
            const std::filesystem::path image = request->at("image").get<std::string>();
            if (!Send(replies, ToJson(analyser.Analyse(image))))
                return 1;
            continue;
        }
        const auto files = request->at("bench").get<std::vector<std::string>>();
        const auto failures = analyser.PrepareBench({files.begin(), files.end()});
        if (!Send(replies, FailuresJson(failures)) || !Receive(requests))
            return 1;
        if (!Send(replies, ToJson(analyser.MeasureBench(request->at("seconds").get<double>()))))
            return 1;
    }
    return 0;
}

int WorkerMain(const Options& options, int requests, int replies) {
    try {
        Analyser analyser(options);
        if (!Send(replies, {{"setup", ToJson(analyser.Setup())}}))
            return 1;
        return ServeRequests(analyser, requests, replies);
    } catch (const UsageError& error) {
        Send(replies, {{"error", error.what()}, {"status", 2}});
    } catch (const std::exception& error) {
        Send(replies, {{"error", error.what()}, {"status", 1}});
    }
    return 1;
}

std::string HowItEnded(int status) {
    if (WIFSIGNALED(status))
        return "killed by signal " + std::to_string(WTERMSIG(status)) + " (" +
               strsignal(WTERMSIG(status)) + ")";
    return "exited with status " + std::to_string(WEXITSTATUS(status));
}

} // namespace

Batch::Batch(const Options& options, std::size_t jobs)
    : options_(options) {
    CatchInterruptions();
    if (jobs <= 1) {
        local_.emplace(options);
        setup_ = local_->Setup();
        return;
    }
    // A worker writing to a tool that has gone, or the tool to a worker that died, gets an
    // error instead of dying of it.
    std::signal(SIGPIPE, SIG_IGN);
    try {
        for (std::size_t i = 0; i < jobs; ++i)
            workers_.push_back(Spawn());
        for (Worker& worker : workers_)
            setup_ = TakeSetup(worker);
    } catch (...) {
        for (Worker& worker : workers_)
            Stop(worker, true);
        throw;
    }
}

Batch::~Batch() {
    for (Worker& worker : workers_)
        Stop(worker, worker.image || std::uncaught_exceptions() > 0);
}

Batch::Worker Batch::Spawn() {
    int requests[2];
    int replies[2];
    if (pipe(requests) != 0 || pipe(replies) != 0)
        throw CommandError(std::string("cannot start a worker: ") + std::strerror(errno));
    Worker worker;
    worker.pid = fork();
    if (worker.pid < 0)
        throw CommandError(std::string("cannot start a worker: ") + std::strerror(errno));
    if (worker.pid == 0) {
        // The other workers' pipes must close with the tool's ends, or they would never learn
        // that the batch is over.
        for (const Worker& other : workers_)
            for (const int fd : {other.requests, other.replies})
                if (fd >= 0)
                    close(fd);
        close(requests[1]);
        close(replies[0]);
        for (const int signal : {SIGINT, SIGTERM, SIGPIPE})
            std::signal(signal, SIG_DFL);
        // Leaves at once: the tool's own objects, such as its half-written output, stay its own.
        _exit(WorkerMain(options_, requests[0], replies[1]));
    }
    close(requests[0]);
    close(replies[1]);
    worker.requests = requests[1];
    worker.replies = replies[0];
    return worker;
}

BatchSetup Batch::TakeSetup(Worker& worker) {
    const auto reply = Receive(worker.replies);
    ThrowIfInterrupted();
    if (!reply)
        throw CommandError("a worker ended before it was set up");
    if (reply->contains("setup"))
        return SetupFromJson(reply->at("setup"));
    const std::string message = reply->at("error");
    if (reply->at("status") == 2)
        throw UsageError(message);
    throw CommandError(message);
}

void Batch::Assign(Worker& worker, const std::vector<std::filesystem::path>& files,
                   std::size_t& next) {
    if (next == files.size())
        return;
    // A worker gone already shows when its replies end.
    Send(worker.requests, {{"image", files[next].string()}});
    worker.image = next++;
}

void Batch::Stop(Worker& worker, bool killIt) {
    if (worker.pid < 0)
        return;
    close(worker.requests);
    close(worker.replies);
    if (killIt)
        kill(worker.pid, SIGKILL);
    while (waitpid(worker.pid, nullptr, 0) < 0 && errno == EINTR) {
    }
    worker.pid = -1;
}

ImageOutcome Batch::Replace(Worker& worker, bool imagesLeft) {
    close(worker.requests);
    close(worker.replies);
    // The numbers may come again with the next pipe, which a new worker must keep open.
    worker.requests = worker.replies = -1;
    int status = 0;
    while (waitpid(worker.pid, &status, 0) < 0 && errno == EINTR) {
    }
    worker.pid = -1;
    ThrowIfInterrupted();
    if (WIFSIGNALED(status) && WTERMSIG(status) == SIGINT)
        throw Interrupted(SIGINT);
    ImageOutcome lost;
    lost.error = "the worker analysing it ended: " + HowItEnded(status);
    worker.image.reset();
    if (imagesLeft) {
        worker = Spawn();
        setup_ = TakeSetup(worker);
    }
    return lost;
}

void Batch::ForEach(const std::vector<std::filesystem::path>& files, const Use& use) {
    if (local_) {
        for (std::size_t i = 0; i < files.size(); ++i) {
            ThrowIfInterrupted();
            use(i, local_->Analyse(files[i]));
        }
        return;
    }
    std::size_t next = 0;
    std::size_t handedOn = 0;
    std::map<std::size_t, ImageOutcome> waiting;
    for (Worker& worker : workers_)
        Assign(worker, files, next);
    while (handedOn < files.size()) {
        std::vector<pollfd> busy;
        for (const Worker& worker : workers_)
            if (worker.image)
                busy.push_back({worker.replies, POLLIN, 0});
        const int ready = poll(busy.data(), busy.size(), -1);
        ThrowIfInterrupted();
        if (ready < 0)
            continue;
        for (Worker& worker : workers_) {
            const auto polled = std::find_if(busy.begin(), busy.end(), [&](const pollfd& p) {
                return p.fd == worker.replies && worker.image && p.revents != 0;
            });
            if (polled == busy.end())
                continue;
            const std::size_t image = *worker.image;
            if (const auto reply = Receive(worker.replies)) {
                waiting[image] = OutcomeFromJson(*reply);
                worker.image.reset();
            } else {
                waiting[image] = Replace(worker, next < files.size());
            }
            if (worker.pid >= 0)
                Assign(worker, files, next);
        }
        for (auto first = waiting.begin(); first != waiting.end() && first->first == handedOn;
             first = waiting.erase(first))
            use(handedOn++, first->second);
    }
}

BenchOutcome Batch::Bench(const std::vector<std::filesystem::path>& files, double seconds) {
    BenchOutcome outcome;
    if (local_) {
        outcome.failures = local_->PrepareBench(files);
        outcome.figures = local_->MeasureBench(seconds);
        return outcome;
    }
    std::vector<std::string> names;
    for (const auto& file : files)
        names.push_back(file.string());
    // All prepare first, so that no engine's start falls into another's measurement.
    const auto askAll = [&](const json& request) {
        std::vector<json> replies;
        for (Worker& worker : workers_)
            if (!Send(worker.requests, request))
                throw CommandError("a bench worker ended");
        for (Worker& worker : workers_) {
            auto reply = Receive(worker.replies);
            ThrowIfInterrupted();
            if (!reply)
                throw CommandError("a bench worker ended");
            replies.push_back(std::move(*reply));
        }
        return replies;
    };
    outcome.failures = FailuresFromJson(askAll({{"bench", names}, {"seconds", seconds}}).front());
    for (const json& reply : askAll({{"go", true}})) {
        const BenchFigures figures = BenchFromJson(reply);
        outcome.figures.runs += figures.runs;
        outcome.figures.engineSeconds += figures.engineSeconds;
        outcome.figures.workerSeconds += figures.workerSeconds;
        outcome.figures.seconds = std::max(outcome.figures.seconds, figures.seconds);
    }
    return outcome;
}

} // namespace TavrinCli
