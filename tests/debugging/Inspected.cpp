// The program that the scripts beside it look into, where it calls Stop.

#include "orv/events/Log.h"
#include "orv/files/FileName.h"
#include "orv/foundation/Numerics.h"
#include "orv/time/TimeAverager.h"
#include "orv/time/TimeOffset.h"
#include "orv/time/TimePeriod.h"
#include "orv/time/TimeString.h"

#include <cstddef>
#include <cstring>
#include <iterator>

using namespace Zan::Orv::Core::Service;

extern "C" void Stop()
{}

namespace {

struct Listener
{
    void OnMessage(LogMessageArgs* message)
    {
        messages += message->GetLogMessage().empty() ? 0 : 1;
        Stop();
    }

    int messages = 0;
};

} // namespace

int main()
{
    Time leap(2000, 2, 29, 12, 30, 0, 7);
    Time const& reference = leap;
    Time* pointer = &leap;
    Time* nowhere = nullptr;
    Time dates[] = {Time(1400, 12, 31, 0, 0, 0, 1), Time(1900, 2, 28, 23, 59, 59, 0),
                    Time(9999, 12, 31, 0, 0, 0, 0)};
    Time unset;
    Time end = Time::MaxTime();
    Time year10000 = end;
    year10000 += DAY;
    Time early = unset;
    early -= 1;
    Time late = end;
    late += 1'000'000 * DAY;

    TimeOffset offset(1, 2, -3, 4, 5, 6, 7);
    TimePeriod period(leap, end);
    TimeString text("now + \"3\" d");
    TimeString undefined;
    std::string letters;
    for (int i = 0; i < 1000; ++i)
        letters += "abc";
    TimeString longText(letters);

    TimeAverager none;
    TimeAverager rate;
    rate.addSamplePoint(leap, 120.5);
    rate.addSamplePoint(leap, 80);
    rate.addSamplePoint(Time(2000, 1, 1, 0, 0, 0, 0), NullValue);
    TimeAverager many;
    for (int i = 3000; i > 0; --i)
    {
        Time at(2000, 1, 1, 0, 0, 0, 0);
        at += i * DAY;
        many.addSamplePoint(at, i);
    }

    Directory directory("/data/models/../cases");
    Directory nothing;
    FileName file("/data/north.in.csv");
    FileName inRoot("/file");
    FileName unnamed("/data/");
    FileName alone("north");

    // Memory that holds no object: equal bytes, and addresses of itself.
    alignas(16) unsigned char zeros[128] = {};
    alignas(16) unsigned char bytes[128];
    std::memset(bytes, 0xAB, sizeof bytes);
    void* addresses[16];
    for (std::size_t i = 0; i < std::size(addresses); ++i)
        addresses[i] = &addresses[i * 4 % std::size(addresses)];
    Stop();

    Listener listener;
    Log::addEventHandler(
        new MemberFuncPtrDelegateHandler<Listener, LogMessageArgs>(&listener, &Listener::OnMessage));
    Log::LogW("59 weeks have no value");
    return listener.messages == 1 && reference == leap && pointer != nowhere && zeros[0] == 0 ? 0 : 1;
}
