#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <utility>

#include <boost/signals2/connection.hpp>
#include <boost/signals2/shared_connection_block.hpp>
#include <boost/signals2/signal.hpp>

namespace Tavrin::Brnt {

using Connection = boost::signals2::connection;
using ScopedConnection = boost::signals2::scoped_connection;

// A signal with its own mutex over its slot list. Slots run in connection order on the
// raising thread. A receiver connected through a shared pointer is held weakly: once it has
// died its slot is skipped and dropped.
//
// Most objects are never listened to, and a signal allocates as it is built, so the signal is
// made at the first connection; until then raising costs one load.
template <class... Args> class Event {
public:
    Event() = default;
    // An object's copy starts with no receivers of its own.
    Event(Event const&) {}
    Event& operator=(Event const&) { return *this; }
    ~Event() { delete signal_.load(std::memory_order_acquire); }

    template <class Receiver, class Method>
    Connection Connect(std::shared_ptr<Receiver> const& receiver, Method method) {
        Receiver* target = receiver.get();
        typename Signal::slot_type slot(
            [target, method](Args... args) { (target->*method)(std::forward<Args>(args)...); });
        return MadeSignal().connect(0, slot.track_foreign(receiver));
    }

    Connection Connect(std::function<void(Args...)> handler) {
        return MadeSignal().connect(0, std::move(handler));
    }

    void Raise(Args... args) {
        if (Signal* signal = signal_.load(std::memory_order_acquire))
            (*signal)(std::forward<Args>(args)...);
    }
    void operator()(Args... args) { Raise(std::forward<Args>(args)...); }

    std::size_t SlotCount() const {
        Signal const* signal = signal_.load(std::memory_order_acquire);
        return signal ? signal->num_slots() : 0;
    }
    bool Empty() const {
        Signal const* signal = signal_.load(std::memory_order_acquire);
        return !signal || signal->empty();
    }

private:
    using Signal = boost::signals2::signal<void(Args...)>;

    // Two threads connecting at once both build one; the first to publish wins.
    Signal& MadeSignal() {
        Signal* signal = signal_.load(std::memory_order_acquire);
        if (signal)
            return *signal;
        auto made = std::make_unique<Signal>();
        if (signal_.compare_exchange_strong(signal, made.get(), std::memory_order_acq_rel,
                                            std::memory_order_acquire))
            return *made.release();
        return *signal;
    }

    std::atomic<Signal*> signal_{nullptr};
};

} // namespace Tavrin::Brnt
