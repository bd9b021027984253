#include "tests/serialization/StreamBuffers.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/support/Texts.h"

#include <gtest/gtest.h>

#include <cstdlib>

// Other programs read what we write, and we read what they write. Not part of the build for Windows, which
// lacks these programs.

namespace Zan::Orv::Core::Service::Tests {

namespace {

std::string Python(std::string const& module, std::string const& call)
{
    return "python3 -c 'import sys, " + module + "; sys.stdout.buffer.write(" + call +
           "(sys.stdin.buffer.read()))'";
}

TEST(ForeignTools, UnderstandEachOther)
{
    struct
    {
        char const* kinds;
        std::string wrap, unwrap;
    } const tools[] = {
        {"z", "bzip2 -c", "bzip2 -dc"},
        {"z", Python("bz2", "bz2.compress"), Python("bz2", "bz2.decompress")},
        {"6", "base64", "base64 -d"},
        {"6", Python("base64", "base64.b64encode"), Python("base64", "base64.b64decode")},
        {"z6", "bzip2 -1 | base64 -w 60", "base64 -d | bzip2 -d"},
    };
    TemporaryDirectory const folder;
    auto const run = [&](std::string const& command) {
        std::string const line = "(" + command + ") <'" + folder / "in" + "' >'" + folder / "out" + "'";
        EXPECT_EQ(std::system(line.c_str()), 0) << command;
    };
    for (auto const& [kinds, wrap, unwrap] : tools)
    {
        for (std::string const& bytes :
             {std::string(), RandomBytes(1), RandomBytes(100'000), std::string(1'000'000, 'x')})
        {
            SCOPED_TRACE(testing::Message() << bytes.size() << " bytes, " << unwrap);
            folder.Write("in", Wrap(bytes, kinds));
            run(unwrap);
            EXPECT_TRUE(ReadFile(folder / "out") == bytes);

            folder.Write("in", bytes);
            run(wrap);
            std::ifstream theirs(folder / "out", std::ios::binary);
            Stack stack(*theirs.rdbuf(), kinds);
            EXPECT_TRUE(std::string(std::istreambuf_iterator<char>(stack.Top()), {}) == bytes);
        }
    }
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
