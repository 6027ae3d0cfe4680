#ifndef TAVRIN_TESTS_ENGINE_HANDLETABLE_H
#define TAVRIN_TESTS_ENGINE_HANDLETABLE_H

#include "EngineError.h"
#include "TestEngineControl.h"

#include <map>
#include <string>
#include <utility>

namespace TestKelo {

// The engine's records of one kind (buffers or images), known by the handle that the engine
// keeps in the record's reserved field.
template <typename Record, typename State> class HandleTable {
public:
    using Handle = decltype(Record::reserved);

    HandleTable(Handle firstHandle, std::string kind)
        : nextHandle_(firstHandle)
        , kind_(std::move(kind)) {}

    // A record still held keeps its handle, so initialising it again takes nothing new.
    State& init(Record* record) {
        if (!record) {
            refuse();
        }
        Handle handle = states_.count(record->reserved) ? record->reserved : nextHandle_++;
        *record = Record{};
        record->reserved = handle;
        return states_[handle] = State{};
    }

    State& held(Record* record) {
        auto found = record ? states_.find(record->reserved) : states_.end();
        if (found == states_.end()) {
            refuse();
        }
        return found->second;
    }

    void release(Record* record) {
        held(record);
        states_.erase(record->reserved);
        record->reserved = 0;
    }

    int outstanding() const { return static_cast<int>(states_.size()); }
    int invalidUses() const { return invalidUses_; }

private:
    [[noreturn]] void refuse() {
        ++invalidUses_;
        throw EngineError(TESTKELO_INVALID_HANDLE, kind_ + " is not held by the engine");
    }

    std::map<Handle, State> states_;
    Handle nextHandle_;
    std::string kind_;
    int invalidUses_ = 0;
};

} // namespace TestKelo

#endif
