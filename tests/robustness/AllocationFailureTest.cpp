#include "FailingAllocation.h"
#include "Graphs.h"
#include "orv/events/Log.h"
#include "orv/files/CombinedFilters.h"
#include "orv/files/ExtensionFilters.h"
#include "orv/files/FileName.h"
#include "orv/files/FilenameFilters.h"
#include "orv/files/FilteredFileFinder.h"
#include "orv/foundation/Exception.h"
#include "orv/foundation/Strings.h"
#include "orv/serialization/Factory.h"
#include "orv/time/ParseTime.h"
#include "orv/time/TimeAverager.h"
#include "orv/time/TimeFormat.h"
#include "orv/time/TimeSymbolTable.h"
#include "tests/serialization/StreamBuffers.h"
#include "tests/support/LogRecorder.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <new>
#include <optional>
#include <sstream>
#include <vector>

// Each operation is tried with its first allocation failing, then its second, until none is left that could fail.
// Every failure is reported, leaks nothing, and leaves behind what can be used and freed.

namespace Zan::Orv::Core::Service::Tests {
namespace {

struct Nothing
{
};

/// `State` is what an operation works on. It is made before the memory runs short, and outlives the shortage.
/// `attempt(state)` says whether it succeeded, as far as it does not throw. `check(state, succeeded)` looks at what it
/// left behind. `Expected` is what it may throw beside `std::bad_alloc`.
template<class State, class Expected = Nothing, class Attempt, class Check = void (*)(State&, bool)>
void FailEachAllocation(
    Attempt attempt, Check check = [](State&, bool) {})
{
    {
        // What is made at the first use stays.
        State state;
        ASSERT_TRUE(attempt(state));
        check(state, true);
    }
    for (Shortage const shortage : {Shortage::Once, Shortage::Lasting})
    {
        bool hasFailed = true;
        for (std::size_t nth = 1; hasFailed && !testing::Test::HasFailure(); ++nth)
        {
            SCOPED_TRACE(testing::Message()
                         << "allocation " << nth << (shortage == Shortage::Once ? "" : " on"));
            long long const before = LiveBlocks();
            {
                State state;
                bool succeeded = false;
                {
                    FailingAllocation const failing(nth, shortage);
                    try
                    {
                        succeeded = attempt(state);
                    }
                    catch (std::bad_alloc const&)
                    {}
                    catch (Expected const&)
                    {}
                    hasFailed = failing.HasFailed();
                }
                EXPECT_TRUE(succeeded || hasFailed);
                check(state, succeeded);
            }
            EXPECT_EQ(LiveBlocks(), before) << "a leak";
        }
    }
}

struct Graph : GraphGuard
{
    Graph() { Fill(plant); }

    Plant plant, read;
    std::string document;
};

TYPED_TEST(FormTest, WritingAndReadingWithoutMemory)
{
    std::string const whole = WholeDocument<TypeParam>();
    FailEachAllocation<Graph, std::runtime_error>(
        [](Graph& graph) {
            std::ostringstream out;
            TypeParam::WriteTo(out, graph.plant);
            graph.document = out.str();
            std::istringstream in(graph.document);
            TypeParam::ReadFrom(in, graph.read);
            return out.good() && !in.bad() && !(in.fail() && !in.eof());
        },
        [&](Graph& graph, bool succeeded) {
            EXPECT_TRUE(!succeeded || graph.document == whole) << graph.document;
            EXPECT_EQ(TypeParam::Write(graph.plant), whole);
            if (!succeeded)
                TypeParam::Read(whole, graph.read);
            EXPECT_EQ(TypeParam::Write(graph.read), whole);
        });
}

// The object that no pointer takes is freed before anybody hears of it.
TEST(AllocationFailure, AnObjectOfTheWrongClass)
{
    FailEachAllocation<GraphGuard>(
        [](GraphGuard&) {
            RawLeaf* leaf = nullptr;
            try
            {
                TextForm::Read("Tests::RawNode 1\n0\n# 0\n# 0\n", leaf);
            }
            catch (SerializeException const&)
            {
                return true;
            }
            return false;
        },
        [](GraphGuard&, bool) { EXPECT_TRUE(RawNode::Living().empty()); });
}

// The tables of names and of types mirror each other, whichever of them could not grow.
TEST(AllocationFailure, RegisteringAClass)
{
    struct Late : RawNode
    {
    };
    FailEachAllocation<std::optional<FactoryRegistrar<Late>>>([](auto& registrar) {
        registrar.emplace("a class whose name is long and takes memory");
        return Factory::GetFactory().GetClassName(typeid(Late)).size() == 43;
    });
}

TEST(AllocationFailure, StreamBuffers)
{
    std::string const bytes = RandomBytes(5000);
    FailEachAllocation<Nothing, std::runtime_error>(
        [&](Nothing&) { return Unwrap(Wrap(bytes, "z6"), "z6") == bytes; });
}

TEST(AllocationFailure, SymbolicTimesAndTimesAsText)
{
    struct Symbols
    {
        Symbols()
        {
            table["THE_START_OF_ALL_THE_MEASUREMENTS"] = TimeString("1 JAN 2000 14:30");
            table["REVIEW"] = TimeString("THE_START_OF_ALL_THE_MEASUREMENTS + 6 months - 2 days");
        }
        TimeSymbolTable table;
    };
    FailEachAllocation<Symbols, TimeException>(
        [](Symbols& symbols) {
            Time read = ParseTime(TimeString("REVIEW + 1 day"), &symbols.table, true);
            TimeFormat const format("%A, %d %B %Y, at %H:%M:%S.%L of the day");
            std::stringstream stream;
            stream << format(read);
            EXPECT_TRUE(!stream.good() || stream.str() == "Friday, 30 June 2000, at 14:30:00.000 of the day");
            return stream.good() && (stream >> format(read)).good();
        },
        [](Symbols& symbols, bool) {
            EXPECT_TRUE(TimeSymbolTable::IsValid(symbols.table, nullptr));
            EXPECT_EQ(symbols.table.size(), 2U);
        });
}

// The user's locale is kept for the next date: a failure in making it must not be.
TEST(AllocationFailure, TheUsersLocale)
{
    struct NewLocale : ScopedEnvironment
    {
        NewLocale() : ScopedEnvironment("LC_ALL", "C")
        {
            ParseTime("1 JAN 2000", true);
            SetEnvVariable("LC_ALL", "POSIX");
        }
    };
    FailEachAllocation<NewLocale, std::runtime_error>(
        [](NewLocale&) { return ParseTime("2000-12-31", true) == Time(2000, 12, 31, 0, 0, 0, 0); },
        [](NewLocale&, bool) { EXPECT_EQ(ParseTime("2000-12-31", true), Time(2000, 12, 31, 0, 0, 0, 0)); });
}

// Enough samples to split a block.
TEST(AllocationFailure, Averages)
{
    constexpr int count = 3000;
    auto const at = [](int i) { return Time(2000, 1, 1 + i / 1440, i / 60 % 24, i % 60, 0, 0); };
    auto const average = [&](TimeAverager& averager) {
        return averager.getAverageValue(at(0), at(count), TimeAverager::TimeAverageStyle::Point);
    };
    FailEachAllocation<TimeAverager>(
        [&](TimeAverager& averager) {
            for (int i = 0; i < count; ++i)
                averager.addSamplePoint(at(i * 7919 % count), i * 7919 % count);
            TimeAverager copy = averager;
            return average(copy) == (count - 1) / 2.0;
        },
        [&](TimeAverager& averager, bool) {
            for (int i = 0; i < count; ++i)
                averager.addSamplePoint(at(i), i);
            EXPECT_EQ(average(averager), (count - 1) / 2.0);
        });
}

TEST(AllocationFailure, StringsAndPaths)
{
    struct Texts
    {
        std::string text = "a first piece of text, and another one that is long";
        std::vector<std::string> pieces{"what was there before, and has to stay there"};
        Directory directory{"/data/models of every kind, and many of them"};
        FileName file{"/data/models of every kind, and many of them/north.in.csv"};
    };
    FailEachAllocation<Texts>(
        [](Texts& texts) {
            StringSplit(Texts().text, texts.pieces, ",", true);
            texts.directory.Append("../of the south, and of the coldest of regions/.");
            texts.directory.Set("/data/models/north/../south wells\\", true);
            texts.file.Set("//host/another place/that is/far/../away\\south.in.dat", true);
            texts.file.SetExtension("an extension that is longer than most");
            StringReplace(texts.text, "piece", "piece, and nothing else,");
            return texts.directory.LeafName() == "south wells" && texts.file.GetRootName() == "south.in";
        },
        [](Texts& texts, bool succeeded) {
            EXPECT_EQ(texts.pieces.front(), Texts().pieces.front());
            EXPECT_TRUE(!succeeded || texts.pieces.size() == 3);
            EXPECT_EQ(texts.text.size(), Texts().text.size() + (succeeded ? 19 : 0)) << texts.text;
            EXPECT_FALSE(texts.directory.Name().empty() || texts.file.GetFullName().empty());
        });
}

TEST(AllocationFailure, CatalogsAndFinders)
{
    TemporaryDirectory const folder;
    for (int i = 0; i < 20; ++i)
        folder.Write("a file with a long name " + std::to_string(i) + ".x000" + std::to_string(i % 10));
    std::string const root = folder.Name();
    using Found = std::vector<std::string>;
    FailEachAllocation<Found>(
        [&](Found& found) {
            FileCatalog const catalog(root);
            FilteredFileFinder const finder("every file of the directory, as it is", catalog,
                                            NumberedExtensionFilter::Create('x', 4));
            found = finder.GetFilesInFilterPriority(
                {FilenameExactNoCaseFilter::Create("a file with a long name that is not there"),
                 OrFilter::Create(ExtensionFilter::Create(".x0001"), ExtensionFilter::Create(".x0002"))});
            return true;
        },
        [](Found& found, bool succeeded) { EXPECT_EQ(found.size(), succeeded ? 4U : 0U); });
}

TEST(AllocationFailure, LogMessages)
{
    FailEachAllocation<std::optional<LogRecorder>>([](auto& recorder) {
        recorder.emplace();
        Log::LogWF("%d weeks of a series that is long have no value", 59);
        return recorder->messages.size() == 1;
    });
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
