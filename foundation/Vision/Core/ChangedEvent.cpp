#include "Vision/Core/ChangedEvent.h"

namespace Tavrin::Vision {

void ChangedEventShareableBase::ResumeAndRaiseChangedEvent() {
    if (suspended_ == 0)
        return;
    if (--suspended_ > 0 || pendingBits_ == 0)
        return;
    long long const gathered = pendingBits_;
    pendingBits_ = 0;
    OnChanged_(std::make_shared<ChangedEventArgs>(gathered));
}

bool ChangedEventShareableBase::Deferred(long long changedBits) {
    if (suspended_ == 0)
        return false;
    pendingBits_ |= changedBits;
    return true;
}

void ChangedEventShareableBase::OnChanged_(std::shared_ptr<ChangedEventArgs> args) {
    if (!Deferred(args->ChangedBits()))
        changedEvent_.Raise(args);
}

void ChangedEventShareableBase::OnChanged_(long long changedBits) {
    // Most objects are never listened to; they are spared building the arguments.
    if (!Deferred(changedBits) && !changedEvent_.Empty())
        OnChanged_(std::make_shared<ChangedEventArgs>(changedBits));
}

} // namespace Tavrin::Vision
