#include "orv/instrumentation/SimplePerformanceTestRecorder.h"
#include "orv/instrumentation/internal/WallClock.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <locale>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <utility>

namespace Zan::Orv::Core::Service::Tests {
namespace {

using Recorder = SimplePerformanceTestRecorder;

// Lets the test say what time it is.
class SetClock
{
public:
    SetClock()
    {
        Internal::wallTimeMillis = [] { return now; };
    }
    SetClock(SetClock const&) = delete;
    SetClock& operator=(SetClock const&) = delete;
    ~SetClock() { Internal::wallTimeMillis = before_; }

    static inline long long now = 0;

private:
    long long (*before_)() = Internal::wallTimeMillis;
};

struct TemporaryFile
{
    std::filesystem::path const path =
        std::filesystem::temp_directory_path() / ("orv-report-" + std::to_string(std::random_device()()));
    ~TemporaryFile() { std::filesystem::remove(path); }

    std::string Read() const
    {
        std::ifstream in(path);
        return {std::istreambuf_iterator<char>(in), {}};
    }
};

// The report but for its heading.
std::string Report(Recorder& recorder)
{
    TemporaryFile const file;
    recorder.writeResultsToFile(file.path.string());
    std::string const heading = "PERFORMANCE RESULTS\n";
    std::string const report = file.Read();
    EXPECT_EQ(report.substr(0, heading.size()), heading);
    return report.substr(std::min(heading.size(), report.size()));
}

void const* Id(std::uintptr_t number)
{
    return reinterpret_cast<void const*>(number);
}

// Plays a script of steps "<time> <verb> <name>".
void Play(Recorder& recorder, std::string const& script)
{
    std::istringstream steps(script);
    for (std::string verb, name; steps >> SetClock::now >> verb >> name;)
    {
        if (verb == "test")
            recorder.startTest(name);
        else if (verb == "end")
            recorder.stopTest(name);
        else if (verb == "in")
            recorder.startSection(recorder.getSectionID(name, nullptr, 0));
        else if (verb == "out")
            recorder.stopSection(recorder.getSectionID(name, nullptr, 0));
        else
            FAIL() << verb;
    }
}

TEST(SimplePerformanceTestRecorder, ReportsTheTreeOfEachTest)
{
    SetClock const clock;
    std::pair<char const*, char const*> const cases[] = {
        // A path is a line, a label is not. A section may be inside itself.
        {"10 test t 20 in a 21 in b 23 out b 30 out a 31 in b 35 in b 36 out b 41 out b"
         " 50 in a 51 in c 52 out c 53 in b 57 out b 60 out a 110 end t",
         "TEST t\n    SECTION t, time 100, hits 1\n        SECTION a, time 20, hits 2\n"
         "            SECTION b, time 6, hits 2\n            SECTION c, time 1, hits 1\n"
         "        SECTION b, time 10, hits 1\n            SECTION b, time 1, hits 1\n"},
        // Tests are sorted, and the latest of a name stands.
        {"0 test b 1 in x 2 end b 3 test a 4 end a 5 test B 6 end B 7 test b 9 end b",
         "TEST B\n    SECTION B, time 1, hits 1\nTEST a\n    SECTION a, time 1, hits 1\n"
         "TEST b\n    SECTION b, time 2, hits 1\n"},
        // The innermost section stops, whatever is named. The end of a test closes all of them.
        {"0 test t 1 in a 2 in b 5 out a 6 in c 9 end other",
         "TEST t\n    SECTION t, time 9, hits 1\n        SECTION a, time 8, hits 1\n"
         "            SECTION b, time 3, hits 1\n            SECTION c, time 3, hits 1\n"},
        // Outside of a test nothing counts.
        {"0 in a 1 in b 2 out b 3 test t 4 end t 5 in a 6 out a 7 out a",
         "TEST t\n    SECTION t, time 1, hits 1\n"},
        // What is open counts up to its last stop.
        {"0 test t 1 in a 3 out a 4 in a",
         "TEST t\n    SECTION t, time 0, hits 1\n        SECTION a, time 2, hits 2\n"},
        // A test that starts inside another is none of its sections. Both end together.
        {"0 test t 1 in a 2 test u 3 in a 5 end u 6 in b",
         "TEST t\n    SECTION t, time 5, hits 1\n        SECTION a, time 4, hits 1\n"
         "TEST u\n    SECTION u, time 3, hits 1\n        SECTION a, time 2, hits 1\n"}};
    for (auto const& [script, report] : cases)
    {
        Recorder recorder;
        Play(recorder, script);
        for (int i = 0; i < 2; ++i)
            EXPECT_EQ(Report(recorder), report) << script;
    }
}

TEST(SimplePerformanceTestRecorder, NumbersLabelsFromOne)
{
    Recorder recorder;
    EXPECT_EQ(recorder.name(), "SimplePerformanceTestRecorder");
    recorder.startTest("t");
    EXPECT_EQ(recorder.getSectionID("a", "file", 1), Id(2));
    EXPECT_EQ(recorder.getSectionID("", nullptr, 0), Id(3));
    EXPECT_EQ(recorder.getSectionID("a", "other file", 2), Id(2));
    EXPECT_EQ(recorder.getSectionID("t", nullptr, 0), Id(1));
    std::string const labels[] = {"UNKNOWN", "t", "a", "", "UNKNOWN"};
    for (std::uintptr_t number = 0; number < std::size(labels); ++number)
        EXPECT_EQ(recorder.getSectionLabel(Id(number)), labels[number]) << number;
    EXPECT_EQ(recorder.getSectionLabel(&recorder), "UNKNOWN");
}

TEST(SimplePerformanceTestRecorder, LetsADerivedRecorderSpeak)
{
    struct Derived : Recorder
    {
        std::string getSectionLabel(void const* id) override { return Recorder::getSectionLabel(id) + "!"; }
        void stopSection(void const* id) override
        {
            stopped += getSectionLabel(id);
            Recorder::stopSection(id);
        }
        std::string stopped;
    };
    SetClock const clock;
    Derived recorder;
    Play(recorder, "0 test t 0 in a 0 end t");
    EXPECT_EQ(recorder.stopped, "a!t!");
    EXPECT_EQ(Report(recorder),
              "TEST t\n    SECTION t!, time 0, hits 1\n        SECTION a!, time 0, hits 1\n");
}

TEST(SimplePerformanceTestRecorder, CopiesShareTheirSections)
{
    SetClock const clock;
    auto original = std::make_unique<Recorder>();
    Play(*original, "0 test t 1 in a");
    Recorder copy(*original);
    Play(*original, "3 out a 4 in b 5 test u");
    original.reset();
    EXPECT_EQ(Report(copy), "TEST t\n    SECTION t, time 0, hits 1\n        SECTION a, time 2, hits 1\n"
                            "        SECTION UNKNOWN, time 0, hits 1\n")
        << "labels and tests are its own";
}

TEST(SimplePerformanceTestRecorder, TouchesNoFileWithoutATest)
{
    TemporaryFile const file;
    Recorder recorder;
    recorder.writeResultsToFile(file.path.string());
    EXPECT_FALSE(std::filesystem::exists(file.path));

    std::ofstream(file.path) << std::string(1000, '?');
    recorder.writeResultsToFile(file.path.string());
    EXPECT_EQ(file.Read().size(), 1000u);
    recorder.startTest("t");
    recorder.writeResultsToFile((file.path / "no folder").string()); // not reported
    recorder.writeResultsToFile(file.path.string());
    EXPECT_EQ(file.Read(), "PERFORMANCE RESULTS\nTEST t\n    SECTION t, time 0, hits 1\n");
}

TEST(SimplePerformanceTestRecorder, WritesPlainNumbersInAnyLocale)
{
    struct Grouping : std::numpunct<char>
    {
        std::string do_grouping() const override { return "\3"; }
    };
    SetClock const clock;
    Recorder recorder;
    Play(recorder, "0 test t 1234567 end t");
    std::locale const before = std::locale::global(std::locale(std::locale::classic(), new Grouping));
    EXPECT_EQ(Report(recorder), "TEST t\n    SECTION t, time 1234567, hits 1\n");
    std::locale::global(before);
}

// Each level would take some hundred bytes of the stack if the tree were walked by calls.
TEST(SimplePerformanceTestRecorder, SurvivesDeepTrees)
{
    TemporaryFile const file;
    for (int const depth : {2'000, 100'000})
    {
        Recorder recorder;
        recorder.startTest("t");
        void const* const id = recorder.getSectionID("a", nullptr, 0);
        for (int level = 2; level <= depth; ++level)
            recorder.startSection(id);
        Recorder const copy = recorder;
        if (depth == 2'000) // the report of the other would have 20 GB
            recorder.writeResultsToFile(file.path.string());
    }
    std::string const report = file.Read();
    EXPECT_EQ(std::count(report.begin(), report.end(), '\n'), 2 + 2'000);
    EXPECT_NE(report.find('\n' + std::string(4 * 2'000, ' ') + "SECTION a, time 0, hits 1\n"),
              std::string::npos);
}

TEST(SimplePerformanceTestRecorder, ClockCountsMillisecondsOfWallTime)
{
    auto const now = [] {
        auto const sinceEpoch = std::chrono::steady_clock::now().time_since_epoch();
        return std::chrono::duration_cast<std::chrono::milliseconds>(sinceEpoch).count();
    };
    constexpr long long tick = 20; // more than that of any host
    auto const before = now();
    long long const start = Internal::wallTimeMillis();
    auto const after = now();
    while (now() - after < 50)
        ;
    auto const atLeast = now() - after;
    long long const counted = Internal::wallTimeMillis() - start;
    EXPECT_GE(start, 0);
    EXPECT_GE(counted, atLeast - tick);
    EXPECT_LE(counted, now() - before + tick);
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
