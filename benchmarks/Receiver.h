#pragma once

#include "orv/events/Delegate.h"

struct Progress : Zan::Orv::Core::Service::DelegateArgs
{
    long long step = 1;
};

// A subscriber. Its function stands in another file, as those of programs do, so that no caller melts it into itself.
struct Receiver
{
    void OnProgress(Progress* args);

    long long total = 0;
};
