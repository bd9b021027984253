#include "orv/events/CErrLogService.h"

#include "orv/events/Log.h"

#include <gtest/gtest.h>

#include <iostream>
#include <sstream>
#include <streambuf>

namespace Zan::Orv::Core::Service::Tests {

namespace {

// Stands in for the standard error stream, and ends the service.
struct CapturedCErr : std::ostringstream
{
    std::streambuf* const previous = std::cerr.rdbuf(rdbuf());

    ~CapturedCErr() override
    {
        CErrLogService::Stop();
        std::cerr.rdbuf(previous);
    }
};

} // namespace

TEST(CErrLogServiceTest, WritesEachMessageOnce)
{
    CapturedCErr const captured;
    Log::LogE("before");
    CErrLogService::Start();
    CErrLogService::Start();
    Log::LogE("no file");
    Log::LogW("old");
    Log::LogI("");
    Log::SendLogMessage("plain", MessageSeverity::Plain);
    Log::SendLogMessage("own", static_cast<MessageSeverity>(4));
    Log::SendLogMessage("negative", static_cast<MessageSeverity>(-1));
    CErrLogService::Stop();
    CErrLogService::Stop();
    Log::LogE("between");
    CErrLogService::Start();
    Log::LogE("again");
    EXPECT_EQ(captured.str(), "Error: no file\nWarning: old\nInfo: \nplain\nownnegativeError: again\n");
}

} // namespace Zan::Orv::Core::Service::Tests
