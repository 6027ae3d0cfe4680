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

void ChangedEventShareableBase::OnChanged_(std::shared_ptr<ChangedEventArgs> args) {
    if (suspended_ > 0) {
        pendingBits_ |= args->ChangedBits();
        return;
    }
    changedEvent_.Raise(args);
}

void ChangedEventShareableBase::OnChanged_(long long changedBits) {
    OnChanged_(std::make_shared<ChangedEventArgs>(changedBits));
}

} // namespace Tavrin::Vision
