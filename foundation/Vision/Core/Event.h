#pragma once

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
template <class... Args> class Event {
public:
    Event() = default;
    // An object's copy starts with no receivers of its own.
    Event(Event const&) {}
    Event& operator=(Event const&) { return *this; }

    template <class Receiver, class Method>
    Connection Connect(std::shared_ptr<Receiver> const& receiver, Method method) {
        Receiver* target = receiver.get();
        typename Signal::slot_type slot(
            [target, method](Args... args) { (target->*method)(std::forward<Args>(args)...); });
        return signal_.connect(0, slot.track_foreign(receiver));
    }

    Connection Connect(std::function<void(Args...)> handler) {
        return signal_.connect(0, std::move(handler));
    }

    void Raise(Args... args) { signal_(std::forward<Args>(args)...); }
    void operator()(Args... args) { Raise(std::forward<Args>(args)...); }

    std::size_t SlotCount() const { return signal_.num_slots(); }
    bool Empty() const { return signal_.empty(); }

private:
    using Signal = boost::signals2::signal<void(Args...)>;
    Signal signal_;
};

} // namespace Tavrin::Brnt
