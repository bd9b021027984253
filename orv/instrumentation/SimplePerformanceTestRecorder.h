#pragma once

#include "orv/Export.h"
#include "orv/instrumentation/IPerformanceTestRecorder.h"

#include <cstdint>
#include <iosfwd>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace Zan::Orv::Core::Service {

/// Adds up, for each test, a tree of its sections: how often each was entered, and its wall time in
/// milliseconds. `PerformanceTestControl` shows the use. The report is text, the tests in the order of the
/// bytes of their names:
///
///     PERFORMANCE RESULTS
///     TEST water flood
///         SECTION water flood, time 5210, hits 1
///             SECTION assemble, time 1375, hits 365
///             SECTION solve, time 3790, hits 365
///                 SECTION precondition, time 914, hits 2920
///
/// A section is told by its path: one label below two parents is two lines, in the order of first entry,
/// and a section that enters itself is its own child. A time holds those of the sections inside. The clock
/// ticks in milliseconds (on some hosts up to 16 of them), so that a short section may show 0 however often
/// it ran.
///
/// Entering a section searches those that its parent has, and leaving it takes the innermost one that is
/// open, whatever the id. A tree may be as deep as memory allows. Names are written as they are, line ends
/// included.
///
/// One thread at a time. Copies share the sections that they have in common: what one adds to them, all
/// show.
class ORV_API SimplePerformanceTestRecorder : public IPerformanceTestRecorder
{
public:
    SimplePerformanceTestRecorder() = default;
    SimplePerformanceTestRecorder(SimplePerformanceTestRecorder const&) = default;
    SimplePerformanceTestRecorder(SimplePerformanceTestRecorder&&) = default;
    SimplePerformanceTestRecorder& operator=(SimplePerformanceTestRecorder const&) = default;
    SimplePerformanceTestRecorder& operator=(SimplePerformanceTestRecorder&&) = default;
    ~SimplePerformanceTestRecorder() override;

    /// "SimplePerformanceTestRecorder"
    std::string name() const override;

    /// A test of the same name that ran before loses its sections. What is still open stays so, and a new
    /// test does not become a part of it.
    void startTest(std::string const& testName) override;
    /// Closes all that is open, whatever the name.
    void stopTest(std::string const& testName) override;

    /// Ids are numbers from 1 on, in the order of first use. Tests take theirs by their names, as sections
    /// do.
    void const* getSectionID(std::string const& label, char const* file, int line) override;
    /// "UNKNOWN" for what is no id.
    std::string getSectionLabel(void const* id) override;

    /// \{
    /// Nothing while no test runs.
    void startSection(void const* id) override;
    void stopSection(void const* id) override;
    /// \}

    /// Replaces the file by the report, or leaves it alone when there was no test. Changes nothing here:
    /// what is open counts up to its last stop. A failure is not reported. Indentation makes the report of a
    /// deep tree grow with the square of its depth.
    void writeResultsToFile(std::string const& fileName);

private:
    struct SectionRecord;
    struct TestRecord
    {
        std::string name;
        std::shared_ptr<SectionRecord> root;
    };

    void writeSection(SectionRecord const& section, std::ostream& out, int depth);
    static long long currentWallTimeMillis();

    std::map<std::string, TestRecord> tests_;
    std::vector<std::shared_ptr<SectionRecord>> stack_; // what is open, the innermost last
    std::unordered_map<std::string, std::uint64_t> sectionIds_;
    std::vector<std::string> labels_; // that of the id n at n - 1
};

} // namespace Zan::Orv::Core::Service
