#include "orv/events/Log.h"
#include "orv/events/LogEnabler.h"
#include "orv/events/LogTracker.h"
#include "orv/events/MessageCapper.h"

#include <iostream>
#include <list>
#include <thread>

using namespace Zan::Orv::Core::Service;

// Runs on a thread of its own and hands its messages over at the end.
std::list<LogMessageArgs> RunCase(int number)
{
    LogTracker tracker(-1); // this thread's messages, all of them
    Log::LogIF("case %d begins", number);
    if (number == 2)
        Log::LogWF("case %d: the rate is negative and was set to %.1f m3/d", number, 0.0);
    {
        LogEnabler const quiet(false);
        Log::LogI("what a trial step says, nobody hears");
    }
    return tracker.GetLogs();
}

int main()
{
    LogTracker mine; // the main thread's messages, the last 50
    std::list<LogMessageArgs> first, second;
    std::thread one([&] { first = RunCase(1); });
    std::thread two([&] { second = RunCase(2); });
    one.join();
    two.join();

    std::cout << "the main thread has heard " << mine.GetLogs().size() << " messages\n";
    for (auto const* messages : {&first, &second})
        for (LogMessageArgs const& message : *messages)
            std::cout << (message.GetSeverity() == MessageSeverity::Warning ? "Warning: " : "Info: ")
                      << message.GetLogMessage() << '\n';

    // The same warning a thousand times is ten warnings. The capper is for one thread.
    for (int step = 0; step < 1000; ++step)
        MessageCapper::instance()->logW("The solver did not converge.");
    std::cout << mine.GetLogs().size() << " warnings of 1000\n"
              << mine.GetLogs().back().GetLogMessage() << '\n';
}
