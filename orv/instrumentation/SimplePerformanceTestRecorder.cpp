#include "orv/instrumentation/SimplePerformanceTestRecorder.h"

#include "orv/instrumentation/internal/WallClock.h"
#include "orv/platform/Clock.h"

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <utility>

namespace Zan::Orv::Core::Service {

long long (*Internal::wallTimeMillis)() = &Platform::WallMilliseconds;

struct SimplePerformanceTestRecorder::SectionRecord
{
    SectionRecord() = default;
    SectionRecord(SectionRecord const&) = delete;
    SectionRecord& operator=(SectionRecord const&) = delete;
    ~SectionRecord();

    void const* id = nullptr;
    std::int64_t start = 0; // of the clock; 0 when the section is not open
    std::int64_t time = 0;
    std::int64_t hits = 0;
    std::vector<std::shared_ptr<SectionRecord>> children; // in the order of first entry
};

// Takes the tree below apart from a list. By recursion, a deep one would overflow the stack.
SimplePerformanceTestRecorder::SectionRecord::~SectionRecord()
{
    auto doomed = std::move(children);
    while (!doomed.empty())
    {
        auto const section = std::move(doomed.back());
        doomed.pop_back();
        if (section.use_count() > 1)
            continue;
        for (auto& child : std::exchange(section->children, {}))
            doomed.push_back(std::move(child));
    }
}

SimplePerformanceTestRecorder::~SimplePerformanceTestRecorder() = default;

std::string SimplePerformanceTestRecorder::name() const
{
    return "SimplePerformanceTestRecorder";
}

void SimplePerformanceTestRecorder::startTest(std::string const& testName)
{
    long long const now = currentWallTimeMillis();
    auto const root = std::make_shared<SectionRecord>();
    root->hits = 1;
    root->id = getSectionID(testName, nullptr, 0);
    root->start = now;
    tests_[testName] = {testName, root};
    stack_.push_back(root);
}

void SimplePerformanceTestRecorder::stopTest(std::string const&)
{
    while (!stack_.empty())
        stopSection(stack_.back()->id);
}

void const* SimplePerformanceTestRecorder::getSectionID(std::string const& label, char const*, int)
{
    // No pointer to anything, but the number of the label.
    auto const idOf = [](std::uint64_t number) {
        return reinterpret_cast<void const*>(static_cast<std::uintptr_t>(number));
    };
    auto const known = sectionIds_.find(label);
    if (known != sectionIds_.end())
        return idOf(known->second);
    labels_.push_back(label);
    return idOf(sectionIds_.emplace(label, labels_.size()).first->second);
}

std::string SimplePerformanceTestRecorder::getSectionLabel(void const* id)
{
    auto const index = reinterpret_cast<std::uintptr_t>(id) - 1; // of the id 0, the largest one
    return index < labels_.size() ? labels_[index] : "UNKNOWN";
}

void SimplePerformanceTestRecorder::startSection(void const* id)
{
    if (stack_.empty())
        return;
    long long const now = currentWallTimeMillis();
    auto& siblings = stack_.back()->children;
    auto entered = std::find_if(siblings.begin(), siblings.end(),
                                [id](auto const& sibling) { return sibling->id == id; });
    if (entered == siblings.end())
    {
        entered = siblings.insert(entered, std::make_shared<SectionRecord>());
        (*entered)->id = id;
    }
    ++(*entered)->hits;
    (*entered)->start = now;
    stack_.push_back(*entered);
}

void SimplePerformanceTestRecorder::stopSection(void const*)
{
    if (stack_.empty())
        return;
    SectionRecord& section = *stack_.back();
    section.time += currentWallTimeMillis() - section.start;
    section.start = 0;
    stack_.pop_back();
}

void SimplePerformanceTestRecorder::writeResultsToFile(std::string const& fileName)
{
    if (tests_.empty())
        return;
    std::ofstream out(fileName);
    out << "PERFORMANCE RESULTS\n";
    for (auto const& [name, test] : tests_)
    {
        out << "TEST " << name << '\n';
        writeSection(*test.root, out, 1);
    }
}

// By a list of what is still to be written, since the tree may be deep.
void SimplePerformanceTestRecorder::writeSection(SectionRecord const& section, std::ostream& out, int depth)
{
    std::vector<std::pair<SectionRecord const*, int>> pending = {{&section, depth}};
    std::string line;
    while (!pending.empty())
    {
        auto const [record, level] = pending.back();
        pending.pop_back();
        line.assign(std::size_t{4} * static_cast<std::size_t>(level), ' ');
        line += "SECTION " + getSectionLabel(record->id);
        // Digits alone. A stream would group them as the program's locale does.
        line += ", time " + std::to_string(record->time) + ", hits " + std::to_string(record->hits) + '\n';
        out << line;
        for (auto child = record->children.rbegin(); child != record->children.rend(); ++child)
            pending.emplace_back(child->get(), level + 1);
    }
}

long long SimplePerformanceTestRecorder::currentWallTimeMillis()
{
    return Internal::wallTimeMillis();
}

} // namespace Zan::Orv::Core::Service
