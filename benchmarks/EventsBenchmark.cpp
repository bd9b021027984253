#include "Batch.h"
#include "Receiver.h"

#include "orv/events/Delegate.h"
#include "orv/events/Log.h"
#include "orv/events/LogEnabler.h"

#include <boost/signals2/signal.hpp>
#include <spdlog/sinks/null_sink.h>
#include <spdlog/spdlog.h>

#include <list>
#include <memory>
#include <string>
#include <vector>

// A multicast call to 1 and to 8 handlers, and a line of the log, thrown away and delivered.

using namespace OrvBenchmark;
using namespace Zan::Orv::Core::Service;

namespace {

// A receiver for each handler, and what they must have got after one call.
std::vector<Receiver> MakeReceivers(benchmark::State const& state)
{
    return std::vector<Receiver>(static_cast<std::size_t>(state.range(0)));
}

bool EachReceivedOne(std::vector<Receiver> const& receivers)
{
    for (Receiver const& receiver : receivers)
        if (receiver.total != 1)
            return false;
    return true;
}

template<class Call>
void MeasureCall(benchmark::State& state, std::vector<Receiver>& receivers, Call call)
{
    Progress args;
    call(&args);
    if (!Holds(state, EachReceivedOne(receivers)))
        return;
    RunBatch(state, [&](std::size_t) {
        call(&args);
        benchmark::ClobberMemory();
    });
    benchmark::DoNotOptimize(receivers.data());
}

void InvokeOurs(benchmark::State& state)
{
    auto receivers = MakeReceivers(state);
    DelegateBase delegate;
    for (Receiver& receiver : receivers)
        delegate.AddDelegateHandler(
            new MemberFuncPtrDelegateHandler<Receiver, Progress>(&receiver, &Receiver::OnProgress));
    MeasureCall(state, receivers, [&](Progress* args) { delegate.Invoke(args); });
}
BENCHMARK(InvokeOurs)->Name("delegate.invoke/ours")->Arg(1)->Arg(8);

void InvokeSignals(benchmark::State& state)
{
    auto receivers = MakeReceivers(state);
    boost::signals2::signal<void(Progress*)> signal;
    for (Receiver& receiver : receivers)
        signal.connect([&receiver](Progress* args) { receiver.OnProgress(args); });
    MeasureCall(state, receivers, [&](Progress* args) { signal(args); });
}
BENCHMARK(InvokeSignals)->Name("delegate.invoke/signals2")->Arg(1)->Arg(8);

class Handler
{
public:
    virtual ~Handler() = default;
    virtual void Invoke(Progress* args) = 0;
};

class ReceiverHandler : public Handler
{
public:
    explicit ReceiverHandler(Receiver& receiver) : receiver_(receiver) {}
    void Invoke(Progress* args) override { receiver_.OnProgress(args); }

private:
    Receiver& receiver_;
};

// Never called. With one class of handlers alone, the compiler would turn the virtual calls into direct ones.
class ResettingHandler : public Handler
{
public:
    explicit ResettingHandler(Receiver& receiver) : receiver_(receiver) {}
    void Invoke(Progress*) override { receiver_.total = 0; }

private:
    Receiver& receiver_;
};

void InvokeList(benchmark::State& state)
{
    auto receivers = MakeReceivers(state);
    bool resetting = false;
    benchmark::DoNotOptimize(resetting);
    std::list<std::unique_ptr<Handler>> handlers;
    for (Receiver& receiver : receivers)
    {
        if (resetting)
            handlers.push_back(std::make_unique<ResettingHandler>(receiver));
        else
            handlers.push_back(std::make_unique<ReceiverHandler>(receiver));
    }
    MeasureCall(state, receivers, [&](Progress* args) {
        for (auto const& handler : handlers)
            handler->Invoke(args);
    });
}
BENCHMARK(InvokeList)->Name("delegate.invoke/list")->Arg(1)->Arg(8);

void DisabledOurs(benchmark::State& state)
{
    LogEnabler const quiet(false);
    RunBatch(state, [&](std::size_t) { Log::SendLogMessage("a message", MessageSeverity::Info); });
}
BENCHMARK(DisabledOurs)->Name("log.disabled/ours");

void DisabledSpdlog(benchmark::State& state)
{
    spdlog::logger logger("benchmark", std::make_shared<spdlog::sinks::null_sink_st>());
    logger.set_level(spdlog::level::off);
    RunBatch(state, [&](std::size_t) { logger.info("a message"); });
}
BENCHMARK(DisabledSpdlog)->Name("log.disabled/spdlog");

// A front end that finds its logger by itself, as ours does.
void DisabledSpdlogDefault(benchmark::State& state)
{
    auto const previous = spdlog::default_logger();
    auto const logger =
        std::make_shared<spdlog::logger>("benchmark", std::make_shared<spdlog::sinks::null_sink_st>());
    logger->set_level(spdlog::level::off);
    spdlog::set_default_logger(logger);
    RunBatch(state, [&](std::size_t) { spdlog::info("a message"); });
    spdlog::set_default_logger(previous);
}
BENCHMARK(DisabledSpdlogDefault)->Name("log.disabled/spdlog_default");

// A line of an integer, a string and a double with all its digits, the same text from both.
constexpr char Well[] = "North-4";
constexpr char FirstLine[] = "step 0 of well North-4: 137.036";

double RateOf(int step)
{
    return 137.035999084 * (step + 1);
}

struct LineReader
{
    void OnLogEvent(LogMessageArgs* args)
    {
        if (lines++ == 0)
            first = args->GetLogMessage();
        benchmark::DoNotOptimize(args->GetLogMessage().data());
    }

    long long lines = 0;
    std::string first;
};

void LineOurs(benchmark::State& state)
{
    using LineHandler = MemberFuncPtrDelegateHandler<LineReader, LogMessageArgs>;
    LineReader reader;
    Log::addEventHandler(new LineHandler(&reader, &LineReader::OnLogEvent));
    auto const log = [well = std::string(Well)](std::size_t i) {
        auto const step = static_cast<int>(i);
        Log::LogIF("step %d of well %s: %g", step, well.c_str(), RateOf(step));
    };
    log(0);
    if (Holds(state, reader.first == FirstLine))
        RunBatch(state, log);
    Log::removeEventHandler(new LineHandler(&reader, &LineReader::OnLogEvent));
}
BENCHMARK(LineOurs)->Name("log.line/ours");

class FirstLineSink : public spdlog::sinks::null_sink_st
{
public:
    std::string first;

private:
    void sink_it_(spdlog::details::log_msg const& message) override
    {
        first.assign(message.payload.data(), message.payload.size());
    }
};

void LineSpdlog(benchmark::State& state)
{
    auto const logTo = [well = std::string(Well)](spdlog::logger& logger, std::size_t i) {
        auto const step = static_cast<int>(i);
        logger.info("step {} of well {}: {:g}", step, well, RateOf(step));
    };

    auto const firstLine = std::make_shared<FirstLineSink>();
    spdlog::logger checked("checked", firstLine);
    logTo(checked, 0);
    if (!Holds(state, firstLine->first == FirstLine))
        return;

    spdlog::logger logger("benchmark", std::make_shared<spdlog::sinks::null_sink_st>());
    RunBatch(state, [&](std::size_t i) { logTo(logger, i); });
}
BENCHMARK(LineSpdlog)->Name("log.line/spdlog");

} // namespace
