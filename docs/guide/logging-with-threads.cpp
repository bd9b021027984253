#include "orv/events/Log.h"
#include "orv/events/LogEnabler.h"
#include "orv/events/LogTracker.h"
#include "orv/events/MessageCapper.h"

#include <iostream>
#include <list>
#include <mutex>
#include <ostream>
#include <sstream>
#include <thread>

using namespace Zan::Orv::Core::Service;

// One file for the warnings and errors of all threads. Each subscribes for itself; the lock is the program's affair.
class Journal
{
public:
    explicit Journal(std::ostream& file) : file_(file) {}

    // For the thread that calls. A subscription is known by being equal.
    void Subscribe() { Log::addEventHandler(MakeHandler()); }
    void Unsubscribe() { Log::removeEventHandler(MakeHandler()); }

private:
    DelegateHandler<LogMessageArgs>* MakeHandler()
    {
        return new MemberFuncPtrDelegateHandler<Journal, LogMessageArgs>(this, &Journal::OnMessage);
    }

    void OnMessage(LogMessageArgs* message)
    {
        if (message->GetSeverity() < MessageSeverity::Warning)
            return;
        std::lock_guard<std::mutex> const lock(mutex_);
        file_ << message->GetLogMessage() << '\n';
    }

    std::ostream& file_;
    std::mutex mutex_;
};

// Runs on a thread of its own and hands its messages over at the end.
std::list<LogMessageArgs> RunCase(int number, Journal& journal)
{
    LogTracker tracker(-1); // this thread's messages, all of them
    journal.Subscribe();
    Log::LogIF("case %d begins", number);
    if (number == 2)
        Log::LogWF("case %d: the rate is negative and was set to %.1f m3/d", number, 0.0);
    {
        LogEnabler const quiet(false);
        Log::LogI("what a trial step says, nobody hears");
    }
    journal.Unsubscribe();
    return tracker.GetLogs();
}

int main()
{
    LogTracker mine; // the main thread's messages, the last 50
    std::ostringstream file;
    Journal journal(file);
    std::list<LogMessageArgs> first, second;
    std::thread one([&] { first = RunCase(1, journal); });
    std::thread two([&] { second = RunCase(2, journal); });
    one.join();
    two.join();

    std::cout << "the main thread has heard " << mine.GetLogs().size() << " messages\n";
    for (auto const* messages : {&first, &second})
        for (LogMessageArgs const& message : *messages)
            std::cout << (message.GetSeverity() == MessageSeverity::Warning ? "Warning: " : "Info: ")
                      << message.GetLogMessage() << '\n';
    std::cout << "the journal: " << file.str();

    // The same warning a thousand times is ten warnings. The capper is for one thread.
    for (int step = 0; step < 1000; ++step)
        MessageCapper::instance()->logW("The solver did not converge.");
    std::cout << mine.GetLogs().size() << " warnings of 1000\n"
              << mine.GetLogs().back().GetLogMessage() << '\n';
}
