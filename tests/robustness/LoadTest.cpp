#include "Graphs.h"
#include "orv/events/Log.h"
#include "orv/files/ExtensionFilters.h"
#include "orv/files/FilteredFileFinder.h"
#include "orv/foundation/Exception.h"
#include "orv/time/ParseTime.h"
#include "orv/time/TimeFormat.h"
#include "orv/time/TimeSymbolTable.h"
#include "tests/support/LogRecorder.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace Zan::Orv::Core::Service::Tests {
namespace {

// Enough for any stack; a program of its own measures what comes back.
TYPED_TEST(FormTest, LongChains)
{
    for (int const length : {1'000, 100'000})
    {
        try
        {
            EXPECT_EQ(PassChain<TypeParam>(length), length);
        }
        catch (SerializeException const& e)
        {
            EXPECT_GT(length, 1'000) << "fits on any stack";
            EXPECT_NE(std::string(e.what()).find("as deep as the stack allows"), std::string::npos)
                << e.what();
        }
    }
}

template<class Form>
void PassDocument(std::string const& name)
{
    auto const time = std::make_shared<TimeString>("START + " + name + " days");
    std::map<std::string, std::vector<std::shared_ptr<TimeString>>> written{{name, {time, nullptr, time}}};
    auto read = written;
    Form::Read(Form::Write(written), read);
    auto const& times = read[name];
    ASSERT_EQ(times.size(), 3U);
    EXPECT_EQ(*times[0], *time);
    EXPECT_EQ(times[1], nullptr);
    EXPECT_EQ(times[2], times[0]);
    EXPECT_NE(times[0], time);
}

/// One thread's share: everything that the library keeps for a thread or for all of them, with values of its own.
void Work(int number, FileCatalog const& catalog, std::shared_ptr<PathFilter const> const& filter)
{
    std::string const name = std::to_string(number);
    FilteredFileFinder const finder(name, catalog);
    for (int round = 0; round < 40; ++round)
    {
        LogRecorder const recorder;
        Log::LogWF("thread %d, round %d of %.1f", number, round, 1.5);
        ASSERT_EQ(recorder.messages.size(), 1U);
        EXPECT_EQ(recorder.messages[0], "2:thread " + name + ", round " + std::to_string(round) + " of 1.5");

        Time const expected(2000 + number, 1 + round % 12, 25, 14, 30, 0, 0);
        std::ostringstream text;
        text << TimeFormat("%d/%m/%Y %H:%M")(expected);
        TimeSymbolTable table;
        table["START"] = TimeString(text.str());
        EXPECT_EQ(ParseTime(TimeString("START + 1 day - 24 hours"), &table, true), expected) << text.str();

        PassDocument<XMLForm>(name);
        PassDocument<BinaryForm>(name);
        PassDocument<TextForm>(name);
        EXPECT_EQ(finder.GetFiles(filter).size(), 4U);
    }
}

TEST(Load, SixteenThreadsDoEverythingAtOnce)
{
    TemporaryDirectory const folder;
    for (int i = 0; i < 20; ++i)
        folder.Write("tank" + std::to_string(i) + ".x000" + std::to_string(i % 10));
    FileCatalog const catalog(folder.Name());
    auto const filter = ExtensionFilter::Create(".x0001", ".x0002");

    std::vector<std::thread> threads;
    for (int number = 0; number < 16; ++number)
        threads.emplace_back([&, number] { Work(number, catalog, filter); });
    for (std::thread& thread : threads)
        thread.join();
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
