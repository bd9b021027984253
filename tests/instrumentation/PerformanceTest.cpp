#include "orv/instrumentation/PerformanceTestTimer.h"
#include "orv/instrumentation/SimplePerformanceTestRecorder.h"
#include "orv/instrumentation/internal/WallClock.h"

#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <locale>
#include <memory>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <utility>

namespace Zan::Orv::Core::Service::Tests {
namespace {

using Recorder = SimplePerformanceTestRecorder;

// As text: the host has its own line ends.
std::string Content(std::string const& name)
{
    std::ifstream file(name);
    return {std::istreambuf_iterator<char>(file), {}};
}

// The report but for its heading.
std::string Report(Recorder& recorder)
{
    TemporaryDirectory const folder;
    recorder.writeResultsToFile(folder / "report");
    std::string const report = Content(folder / "report");
    std::string const heading = "PERFORMANCE RESULTS\n";
    return report.starts_with(heading) ? report.substr(heading.size()) : "no heading: " + report;
}

// Plays a script of steps "<time> <verb> <name>". The steps say what time it is.
void Play(Recorder& recorder, std::string const& script)
{
    static long long now = 0;
    auto* const clock = std::exchange(Internal::wallTimeMillis, [] { return now; });
    std::istringstream steps(script);
    for (std::string verb, name; steps >> now >> verb >> name;)
    {
        if (verb == "test")
            recorder.startTest(name);
        else if (verb == "end")
            recorder.stopTest(name);
        else if (verb == "in")
            recorder.startSection(recorder.getSectionID(name, nullptr, 0));
        else
            recorder.stopSection(recorder.getSectionID(name, nullptr, 0));
    }
    Internal::wallTimeMillis = clock;
}

// Writes numbers in groups.
struct Grouping : std::numpunct<char>
{
    std::string do_grouping() const override { return "\3"; }
};

// By plain numbers, in any locale.
TEST(SimplePerformanceTestRecorder, ReportsTheTreeOfEachTest)
{
    std::locale const before = std::locale::global(std::locale(std::locale::classic(), new Grouping));
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
        // What is open counts up to its last stop.
        {"0 test t 1 in a 1234568 out a 1234569 in a",
         "TEST t\n    SECTION t, time 0, hits 1\n        SECTION a, time 1234567, hits 2\n"},
        // A test that starts inside another is none of its sections. Both end together.
        {"0 test t 1 in a 2 test u 3 in a 5 end u 6 in b",
         "TEST t\n    SECTION t, time 5, hits 1\n        SECTION a, time 4, hits 1\n"
         "TEST u\n    SECTION u, time 3, hits 1\n        SECTION a, time 2, hits 1\n"}};
    for (auto const& [script, report] : cases)
    {
        Recorder recorder;
        Play(recorder, script);
        EXPECT_EQ(Report(recorder), report) << script;
    }
    std::locale::global(before);
}

TEST(SimplePerformanceTestRecorder, NumbersLabelsFromOne)
{
    Recorder recorder;
    EXPECT_EQ(recorder.name(), "SimplePerformanceTestRecorder");
    recorder.startTest("t");
    EXPECT_EQ(recorder.getSectionID("t", nullptr, 0), reinterpret_cast<void const*>(std::uintptr_t{1}));
    EXPECT_EQ(recorder.getSectionID("a", "other file", 2), reinterpret_cast<void const*>(std::uintptr_t{2}));
    std::string const labels[] = {"UNKNOWN", "t", "a", "UNKNOWN"};
    for (std::uintptr_t id = 0; id < std::size(labels); ++id)
        EXPECT_EQ(recorder.getSectionLabel(reinterpret_cast<void const*>(id)), labels[id]) << id;
}

TEST(SimplePerformanceTestRecorder, CopiesShareTheirSections)
{
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
    TemporaryDirectory const folder;
    std::string const file = folder / "report";
    Recorder recorder;
    recorder.writeResultsToFile(file);
    EXPECT_FALSE(std::ifstream(file).is_open());

    recorder.startTest("t");
    recorder.writeResultsToFile(file + "/no folder"); // not reported
    recorder.writeResultsToFile(file);
    EXPECT_EQ(Content(file), "PERFORMANCE RESULTS\nTEST t\n    SECTION t, time 0, hits 1\n");
}

// Each level would take some hundred bytes of the stack if the tree were walked by calls.
TEST(SimplePerformanceTestRecorder, SurvivesDeepTrees)
{
    Recorder recorder;
    recorder.startTest("t");
    void const* const id = recorder.getSectionID("a", nullptr, 0);
    for (int level = 0; level < 2'000; ++level)
        recorder.startSection(id);
    EXPECT_TRUE(
        Report(recorder).ends_with('\n' + std::string(4 * 2'001, ' ') + "SECTION a, time 0, hits 1\n"));
    Recorder copy = recorder;
    for (int level = 0; level < 100'000; ++level) // whose report would have 20 GB
        copy.startSection(id);
}

// The recorder in use while it lives. Notes the calls. Its ids are addresses in itself, good for nobody else.
class Journal : public IPerformanceTestRecorder
{
public:
    ~Journal() override { PerformanceTestControl::setRecorder(nullptr); }

    std::string name() const override { return "Journal"; }
    void startTest(std::string const& testName) override { calls += "test " + testName + ", "; }
    void stopTest(std::string const& testName) override { calls += "end " + testName + ", "; }
    void const* getSectionID(std::string const& label, char const* file, int line) override
    {
        calls += "look up " + label + (file == std::string(__FILE__) && line > 0 ? ", " : " nowhere, ");
        return &*labels.insert(label).first;
    }
    std::string getSectionLabel(void const* id) override
    {
        auto const found = std::find_if(labels.begin(), labels.end(),
                                        [id](std::string const& label) { return &label == id; });
        return found != labels.end() ? *found : "FOREIGN";
    }
    void startSection(void const* id) override { calls += getSectionLabel(id) + " starts, "; }
    void stopSection(void const* id) override { calls += getSectionLabel(id) + " stops, "; }

    std::string calls;
    std::set<std::string> labels;
};

void RunMarkedPlace()
{
    ORV_TIME_SECTION("outer");
    ORV_TIME_SECTION("inner");
}

TEST(PerformanceTestTimer, ScopesForwardInTheirOrder)
{
    EXPECT_EQ(PerformanceTestControl::getSectionID("a", __FILE__, __LINE__), nullptr);
    std::optional<PerformanceTestControl> unheard("t");
    Journal journal;
    PerformanceTestControl::setRecorder(&journal);
    {
        PerformanceTestControl const test("t");
        PerformanceTestTimer const byLabel("a", __FILE__, __LINE__);
        void const* const id = PerformanceTestControl::getSectionID("b", __FILE__, __LINE__);
        for (int i = 0; i < 2; ++i)
            PerformanceTestTimer const byId(id);
    }
    unheard.reset();
    std::optional<PerformanceTestControl> first("t");
    std::optional<PerformanceTestControl> second("u");
    first.reset(); // stops what runs
    second.reset();
    EXPECT_EQ(journal.calls, "test t, look up a, a starts, look up b, b starts, b stops, b starts, b stops, "
                             "a stops, end t, "
                             "test t, end t, test u, end u, ");
}

TEST(PerformanceTestTimer, MarkedPlaceNeverGivesAnIdToAnotherRecorder)
{
    std::optional<Journal> first;
    for (int round = 0; round < 3; ++round)
    {
        RunMarkedPlace(); // must not remember that there was nobody
        Journal second;
        first.emplace(); // another one, where the one before was
        for (Journal* const journal : {&*first, &second, &*first})
        {
            PerformanceTestControl::setRecorder(journal);
            journal->calls.clear();
            RunMarkedPlace();
            RunMarkedPlace();
            EXPECT_EQ(journal->calls,
                      "look up outer, outer starts, look up inner, inner starts, inner stops, outer stops, "
                      "outer starts, inner starts, inner stops, outer stops, ");
        }
    }
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
