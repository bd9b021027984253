#include "orv/instrumentation/PerformanceTestTimer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>

namespace Zan::Orv::Core::Service::Tests {
namespace {

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

TEST(PerformanceTestTimer, DoesNothingWithoutRecorder)
{
    EXPECT_EQ(PerformanceTestControl::recorder(), nullptr);
    EXPECT_EQ(PerformanceTestControl::getSectionID("a", __FILE__, __LINE__), nullptr);
    {
        PerformanceTestControl const test("t");
        PerformanceTestTimer const byLabel("a", __FILE__, __LINE__);
        PerformanceTestTimer const byId(nullptr);
        RunMarkedPlace();
    }
    Journal journal;
    PerformanceTestControl::setRecorder(&journal);
    std::optional<PerformanceTestControl>("u").reset();
    EXPECT_EQ(journal.calls, "test u, end u, ") << "t never ran";
}

TEST(PerformanceTestTimer, ScopesForwardInTheirOrder)
{
    Journal journal;
    PerformanceTestControl::setRecorder(&journal);
    try
    {
        PerformanceTestControl const test("t");
        PerformanceTestTimer const byLabel("a", __FILE__, __LINE__);
        void const* const id = PerformanceTestControl::getSectionID("b", __FILE__, __LINE__);
        for (int i = 0; i < 2; ++i)
            PerformanceTestTimer const byId(id);
        PerformanceTestTimer const again("a", __FILE__, __LINE__);
        throw std::runtime_error("through the open sections");
    }
    catch (std::runtime_error const&)
    {}
    std::optional<PerformanceTestControl> first("t");
    std::optional<PerformanceTestControl> second("u");
    first.reset(); // stops what runs
    second.reset();
    EXPECT_EQ(journal.calls, "test t, look up a, a starts, look up b, b starts, b stops, b starts, b stops, "
                             "look up a, a starts, a stops, a stops, end t, "
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
