#include "Graphs.h"
#include "orv/events/Log.h"
#include "orv/files/CombinedFilters.h"
#include "orv/files/ExtensionFilters.h"
#include "orv/files/FilenameFilters.h"
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
#include <utility>
#include <vector>

namespace Zan::Orv::Core::Service::Tests {
namespace {

struct Sample : ISerializable
{
    int well = 0;
    double rate = 0.0;

    void Serialize(Serializer& serializer) override
    {
        serializer.Serialize(well, "well");
        serializer.Serialize(rate, "rate");
    }
};

#ifdef NDEBUG
constexpr int manySamples = 1'000'000;
constexpr int rounds = 200;
#else
constexpr int manySamples = 50'000;
constexpr int rounds = 40;
#endif

TYPED_TEST(FormTest, ManyObjectsComeBack)
{
    std::vector<Sample> samples(manySamples);
    for (int i = 0; i < manySamples; ++i)
    {
        samples[static_cast<std::size_t>(i)].well = i;
        samples[static_cast<std::size_t>(i)].rate = i / 3.0;
    }
    std::vector<Sample> read;
    TypeParam::Read(TypeParam::Write(samples), read);
    ASSERT_EQ(read.size(), samples.size());
    for (std::size_t i = 0; i < samples.size(); ++i)
    {
        ASSERT_EQ(read[i].well, samples[i].well);
        // The forms of text keep fifteen digits or so.
        ASSERT_NEAR(read[i].rate, samples[i].rate, 1e-9 * samples[i].rate);
    }
}

/// Writes a chain of nodes, reads it, and counts. -1 when the form has refused it for its depth.
template<class Form>
long PassChain(long length)
{
    GraphGuard const guard;
    RawNode* first = nullptr;
    for (long i = 0; i < length; ++i)
    {
        auto* const node = new RawNode;
        node->left = std::exchange(first, node);
    }
    try
    {
        RawNode* read = nullptr;
        Form::Read(Form::Write(first), read);
        long found = 0;
        for (; read != nullptr; read = read->left)
            ++found;
        return found;
    }
    catch (SerializeException const& e)
    {
        EXPECT_NE(std::string(e.what()).find("as deep as the stack allows"), std::string::npos) << e.what();
        return -1;
    }
}

TYPED_TEST(FormTest, LongChains)
{
    EXPECT_EQ(PassChain<TypeParam>(1000), 1000);
    for (long const length : {10'000L, 100'000L})
    {
        long const found = PassChain<TypeParam>(length);
        EXPECT_TRUE(found == length || found == -1) << found << " of " << length;
    }
}

/// One thread's share: everything that the library keeps for a thread or for all of them, with values of its own.
class Worker
{
public:
    Worker(int number, FileCatalog const& catalog, std::shared_ptr<PathFilter const> filter)
        : number_(number), name_(std::to_string(number)), finder_(name_, catalog), filter_(std::move(filter))
    {}

    void Run()
    {
        for (int round = 0; round < rounds; ++round)
        {
            CheckLog(round);
            CheckTimes(round);
            CheckDocument<XMLForm>();
            CheckDocument<BinaryForm>();
            CheckDocument<TextForm>();
            EXPECT_EQ(finder_.GetFiles(filter_).size(), 4U);
        }
    }

private:
    void CheckLog(int round)
    {
        LogRecorder const recorder;
        Log::LogWF("thread %d, round %d of %.1f", number_, round, 1.5);
        ASSERT_EQ(recorder.messages.size(), 1U);
        EXPECT_EQ(recorder.messages[0], "2:thread " + name_ + ", round " + std::to_string(round) + " of 1.5");
    }

    void CheckTimes(int round)
    {
        Time const expected(2000 + number_, 1 + round % 12, 25, 14, 30, 0, 0);
        TimeFormat const format("%d/%m/%Y %H:%M");
        std::ostringstream text;
        text << format(expected);
        TimeSymbolTable table;
        table["START"] = TimeString(text.str());
        EXPECT_EQ(ParseTime(TimeString("START + 1 day - 24 hours"), &table, true), expected) << text.str();
    }

    template<class Form>
    void CheckDocument()
    {
        auto const time = std::make_shared<TimeString>("START + " + name_ + " days");
        std::map<std::string, std::vector<std::shared_ptr<TimeString>>> written{
            {name_, {time, nullptr, time}}};
        auto read = written;
        Form::Read(Form::Write(written), read);
        auto const& times = read[name_];
        ASSERT_EQ(times.size(), 3U);
        EXPECT_EQ(*times[0], *time);
        EXPECT_EQ(times[1], nullptr);
        EXPECT_EQ(times[2], times[0]);
        EXPECT_NE(times[0], time);
    }

    int number_;
    std::string name_;
    FilteredFileFinder finder_;
    std::shared_ptr<PathFilter const> filter_;
};

TEST(Load, SixteenThreadsDoEverythingAtOnce)
{
    TemporaryDirectory const folder;
    for (int i = 0; i < 20; ++i)
        folder.Write("tank" + std::to_string(i) + ".x000" + std::to_string(i % 10));
    FileCatalog const catalog(folder.Name());
    auto const filter = AndFilter::Create(
        OrFilter::Create(ExtensionFilter::Create(".x0001"), ExtensionFilter::Create(".x0002")),
        NotFilter::Create(FilenameExactNoCaseFilter::Create("nobody")));

    std::vector<std::thread> threads;
    for (int number = 0; number < 16; ++number)
        threads.emplace_back([&, number] { Worker(number, catalog, filter).Run(); });
    for (std::thread& thread : threads)
        thread.join();
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
