#include "CallRecorder.h"

#include "EntryPointTable.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <utility>

namespace TestKelo {
namespace {

#define TESTKELO_NAME_TEXT(name) #name,
constexpr std::array<const char*, 28> entryPointNames{TESTKELO_ENTRY_POINTS(TESTKELO_NAME_TEXT)};
#undef TESTKELO_NAME_TEXT

bool isEntryPoint(const std::string& name) {
    return std::find(entryPointNames.begin(), entryPointNames.end(), name) != entryPointNames.end();
}

} // namespace

void CallLog::record(const std::string& entryPoint,
                     std::initializer_list<LoggedArgument> arguments) {
    std::string text = entryPoint + "(";
    for (const LoggedArgument& argument : arguments) {
        text += (&argument == arguments.begin() ? "" : ",") + argument.text();
    }
    calls_.push_back({entryPoint, text + ")"});
}

const std::string& CallLog::entry(int index) const {
    if (index < 0 || index >= size()) {
        throw std::out_of_range("no call " + std::to_string(index) + " in the log of " +
                                std::to_string(size()));
    }
    return calls_[static_cast<std::size_t>(index)].text;
}

int CallLog::count(const std::string& entryPoint) const {
    return static_cast<int>(std::count_if(calls_.begin(), calls_.end(), [&](const Call& call) {
        return call.entryPoint == entryPoint;
    }));
}

void FaultPlan::add(Fault fault) {
    if (!isEntryPoint(fault.entryPoint)) {
        throw std::invalid_argument("'" + fault.entryPoint + "' is no entry point of the engine");
    }
    if (fault.remainingCalls < 1) {
        throw std::invalid_argument("a fault needs a call from 1 on");
    }
    pending_.push_back(std::move(fault));
}

std::optional<Fault> FaultPlan::due(const std::string& entryPoint) {
    std::optional<Fault> firing;
    for (Fault& fault : pending_) {
        if (fault.entryPoint == entryPoint && --fault.remainingCalls == 0 && !firing) {
            firing = fault;
        }
    }
    pending_.erase(std::remove_if(pending_.begin(), pending_.end(),
                                  [](const Fault& fault) { return fault.remainingCalls == 0; }),
                   pending_.end());
    return firing;
}

void CallGate::hold(std::string entryPoint, std::chrono::milliseconds limit) {
    if (!isEntryPoint(entryPoint)) {
        throw std::invalid_argument("'" + entryPoint + "' is no entry point of the engine");
    }
    std::lock_guard<std::mutex> lock(mutex_);
    entryPoint_ = std::move(entryPoint);
    limit_ = limit;
    open_ = false;
}

void CallGate::release() {
    std::lock_guard<std::mutex> lock(mutex_);
    open_ = true;
    released_.notify_all();
}

bool CallGate::holding() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return holding_;
}

void CallGate::pass(const std::string& entryPoint) {
    std::unique_lock<std::mutex> lock(mutex_);
    if (entryPoint_ != entryPoint) {
        return;
    }
    entryPoint_.reset();
    holding_ = true;
    released_.wait_for(lock, limit_, [this] { return open_; });
    holding_ = false;
}

} // namespace TestKelo
