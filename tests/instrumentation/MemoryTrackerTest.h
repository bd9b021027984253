#pragma once

#include "orv/instrumentation/MemoryTracker.h"

#include "orv/platform/SystemFacts.h"
#include "tests/support/ScopedCurrentDirectory.h"
#include "tests/support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace Zan::Orv::Core::Service::Tests {

/// Works in a new folder, where the log goes.
class MemoryTrackerTest : public ::testing::Test
{
protected:
    ~MemoryTrackerTest() override { MemoryTracker::instance().reset_threshold(MemoryTracker::THRESHOLD); }

    static std::string FileName()
    {
        return "memory_tracker_" + std::to_string(Platform::ProcessId()) + ".csv";
    }

    /// The log of this test so far.
    static std::string Text()
    {
        std::ifstream file(FileName());
        return {std::istreambuf_iterator<char>(file), {}};
    }

    static std::vector<std::string> Lines()
    {
        std::istringstream text(Text());
        std::vector<std::string> lines;
        for (std::string line; std::getline(text, line);)
            lines.push_back(line);
        return lines;
    }

    /// What a line says of a block, up to the total before. To be made while tracking is off: the text is a block itself.
    static std::string Event(std::string const& what, unsigned long size, std::uintptr_t address)
    {
        std::uintptr_t const volatile number =
            address; // or the compiler knows the block again, and that it is freed
        char text[100];
        std::snprintf(text, sizeof text, "%s %lu bytes at %p, was, ", what.c_str(), size,
                      reinterpret_cast<void const*>(number));
        return text;
    }

    static std::uintptr_t Address(void const* block) { return reinterpret_cast<std::uintptr_t>(block); }

private:
    TemporaryDirectory folder_;
    ScopedCurrentDirectory current_{folder_.Name()};
};

} // namespace Zan::Orv::Core::Service::Tests
