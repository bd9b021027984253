#include "orv/instrumentation/PerformanceTestTimer.h"

#include <gtest/gtest.h>

#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace Zan::Orv::Core::Service::Tests {
namespace {

// The recorder in use while it lives. Notes the calls. Its ids are addresses in itself, good for nobody else.
class Journal : public IPerformanceTestRecorder
{
public:
    ~Journal() override { PerformanceTestControl::setRecorder(nullptr); }

    std::string name() const override { return "Journal"; }
    void startTest(std::string const& testName) override { calls_.push_back("test " + testName); }
    void stopTest(std::string const& testName) override { calls_.push_back("end test " + testName); }
    void const* getSectionID(std::string const& label, char const* file, int line) override
    {
        calls_.push_back("look up " + label + (file == std::string(__FILE__) && line > 0 ? "" : " nowhere"));
        return &*labels_.insert(label).first;
    }
    std::string getSectionLabel(void const* id) override
    {
        for (std::string const& label : labels_)
            if (&label == id)
                return label;
        return "FOREIGN";
    }
    void startSection(void const* id) override { calls_.push_back("start " + getSectionLabel(id)); }
    void stopSection(void const* id) override { calls_.push_back("stop " + getSectionLabel(id)); }

    std::vector<std::string> TakeCalls() { return std::exchange(calls_, {}); }

private:
    std::vector<std::string> calls_;
    std::set<std::string> labels_;
};

using Calls = std::vector<std::string>;

void RunMarkedPlace()
{
    ORV_TIME_SECTION("outer");
    ORV_TIME_SECTION("inner");
}

TEST(PerformanceTestTimer, DoesNothingWithoutRecorder)
{
    EXPECT_EQ(PerformanceTestControl::recorder(), nullptr);
    EXPECT_EQ(PerformanceTestControl::getSectionID("a", __FILE__, __LINE__), nullptr);
    PerformanceTestControl const test("t");
    {
        PerformanceTestTimer const byLabel("a", __FILE__, __LINE__);
        PerformanceTestTimer const byId(nullptr);
        RunMarkedPlace();
    }
    Journal journal;
    PerformanceTestControl::setRecorder(&journal);
    EXPECT_EQ((std::optional<PerformanceTestControl>("u").reset(), journal.TakeCalls()),
              (Calls{"test u", "end test u"}))
        << "t never ran";
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
    EXPECT_EQ(journal.TakeCalls(),
              (Calls{"test t", "look up a", "start a", "look up b", "start b", "stop b", "start b", "stop b",
                     "look up a", "start a", "stop a", "stop a", "end test t"}));

    std::optional<PerformanceTestControl> first("t");
    std::optional<PerformanceTestControl> second("u");
    first.reset(); // stops what runs
    second.reset();
    EXPECT_EQ(journal.TakeCalls(), (Calls{"test t", "end test t", "test u", "end test u"}));
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
            RunMarkedPlace();
            EXPECT_EQ(journal->TakeCalls(), (Calls{"look up outer", "start outer", "look up inner",
                                                   "start inner", "stop inner", "stop outer"}));
            RunMarkedPlace();
            EXPECT_EQ(journal->TakeCalls(),
                      (Calls{"start outer", "start inner", "stop inner", "stop outer"}));
        }
    }
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
