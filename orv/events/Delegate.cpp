#include "orv/events/Delegate.h"

#include <memory>

namespace Zan::Orv::Core::Service {

DelegateArgs::~DelegateArgs() = default;

IDelegateHandler::~IDelegateHandler() = default;

DelegateBase::~DelegateBase()
{
    for (IDelegateHandler* handler : handlers_)
        delete handler;
}

void DelegateBase::AddDelegateHandler(IDelegateHandler* handler)
{
    std::unique_ptr<IDelegateHandler> owned(handler);
    if (FindHandler(handler, false))
        return;
    handlers_.push_back(handler);
    static_cast<void>(owned.release());
}

void DelegateBase::RemoveDelegateHandler(IDelegateHandler* handler)
{
    std::unique_ptr<IDelegateHandler> const probe(handler);
    FindHandler(handler, true);
}

bool DelegateBase::FindHandler(IDelegateHandler* handler, bool remove)
{
    for (auto it = handlers_.begin(); it != handlers_.end(); ++it)
    {
        IDelegateHandler* const stored = *it;
        if (stored == nullptr || !stored->Equals(handler))
            continue;
        if (remove)
        {
            // Out of the list first: the handler's destructor may come back to this delegate.
            handlers_.erase(it);
            delete stored;
        }
        return true;
    }
    return false;
}

void DelegateBase::Invoke(void* args) const
{
    Invoke(static_cast<DelegateArgs*>(args));
}

void DelegateBase::Invoke(DelegateArgs* args) const
{
    // No snapshot: the next position is read after the call, so that a handler can add and remove others.
    for (auto it = handlers_.begin(); it != handlers_.end(); ++it)
        (*it)->Invoke(args);
}

} // namespace Zan::Orv::Core::Service
