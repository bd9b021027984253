#include "orv/files/FileUtils.h"
#include "tests/support/ExpectThrow.h"
#include "tests/support/ScopedCurrentDirectory.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <limits>
#include <random>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace Zan::Orv::Core::Service::Tests {
namespace {

std::string Content(std::string const& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

bool Close(std::string a, std::string b)
{
    std::string const aBefore = a;
    std::string const bBefore = b;
    bool const close = FileUtils::FloatTolerantCompare(a, b);
    EXPECT_EQ(a, aBefore);
    EXPECT_EQ(b, bBefore);
    return close;
}

TEST(FileUtils, WordsAreSplitAtThreeBlanks)
{
    using namespace std::string_literals;
    std::vector<std::string> words{"kept"};
    for (std::string text : {""s, " \t\n"s, " a\tbc\r \n d\v"s, "\0 e"s})
        FileUtils::GetWords(text, words);
    EXPECT_EQ(words, (std::vector<std::string>{"kept", "a", "bc\r", "d\v", std::string(1, '\0'), "e"}));
}

TEST(FileUtils, LinesAreCloseWhenTheirNumbersAre)
{
    std::pair<std::string, std::string> const close[] = {
        {"", " \t"},
        {"1.0  2.0", " 1.0\t2.0 "},
        {"1.0000000000001", "1.0000000000002"},
        {"1 abc", "1.0 abc"},
        {"+1", "1.e0"},
        {"-.5", "-5e-1"},
        {"0", "-0.0"},
        {"+-", "E"}, // neither is a number
        {"+-1", "."},
        {"1e+", "1"}, // as much as makes sense
        {"1-2", "1.0.5"},
        {"1e5e", "100000"},
        {"1e999", "1E+1000"}, // their difference is no number
        {"1e999", "5"},       // an infinite tolerance
        {"-1e999", "1e999"},
        {"1e-400", "0"},
        {std::string(100'000, '9') + "e-100000", "1"},
        {"0." + std::string(100'000, '0') + "1e100001", "1"},
    };
    for (auto const& [a, b] : close)
        EXPECT_TRUE(Close(a, b)) << a.substr(0, 50) << " and " << b;

    std::pair<std::string, std::string> const apart[] = {
        {"1 2", "1"},    {"", "0"},        {"1.000001", "1.000002"},
        {"0", "1e-300"}, {"1e-300", "0"},  {"5", "1e999"},
        {"abc", "abd"},  {"1\r", "1.0\r"}, // a carriage return is of no number
        {"1,5", "1,50"}, {"0x10", "16"},   {"inf", "infinity"},
        {"nan", "NaN"},  {"1d0", "1"},     {std::string("1\0", 2), "1.0"},
    };
    for (auto const& [a, b] : apart)
        EXPECT_FALSE(Close(a, b)) << a << " and " << b;

    // What lies on the border is inside.
    EXPECT_TRUE(Close("1000000000000", "1000000000001"));
    EXPECT_FALSE(Close("1000000000000", "1000000000001.001"));
}

struct Comparison
{
    TemporaryDirectory place;
    FileName a{place / "a"};
    FileName b{place / "b"};

    void Write(std::string const& first, std::string const& second) const
    {
        place.Write("a", first);
        place.Write("b", second);
    }
    bool Lines(bool tolerant) const { return FileUtils::CompareFiles(a, b, true, tolerant); }
    bool Bytes() const { return FileUtils::CompareFiles(a, b, false, true); }
};

TEST(FileUtils, ComparesBytesAndLines)
{
    struct Case
    {
        std::string a, b;
        bool bytes, lines, tolerant;
    };
    using namespace std::string_literals;
    std::string const line(200'000, 'x'); // longer than what is read at once
    Case const cases[] = {
        {"x\n", "x\n", true, true, true},
        {"x\n", "x", false, false, false},
        {"1\n", "1\n\n", false, false, false},
        {"1\n\n", "1\n ", false, false, false},
        {"1\n", "1\n ", false, false, true}, // a last line without a word
        {"1 2\n3", "1.0 2\n3.0", false, false, true},
        {"1\n2\n3\n", "1\n2 3\n", false, false, false},
        {"a\0b 1\n"s, "a\0b 1.0\n"s, false, false, true},
        {line + "\n1", line + "\n1", true, true, true},
        {line + " 1\n1", line + " 1.0\n1.0", false, false, true},
        {line + " 1\n1", line + "y 1\n1", false, false, false},
        {"1 " + line + "\n" + line, "1.0 " + line + "\n" + line, false, false, true},
    };
    Comparison const files;
    for (Case const& c : cases)
    {
        SCOPED_TRACE(c.a.substr(0, 20) + " and " + c.b.substr(0, 20));
        files.Write(c.a, c.b);
        EXPECT_EQ(files.Bytes(), c.bytes);
        EXPECT_EQ(files.Lines(false), c.lines);
        EXPECT_EQ(files.Lines(true), c.tolerant);
        files.Write(c.b, c.a);
        EXPECT_EQ(files.Lines(true), c.tolerant);
    }
    files.Write("1\r\n", "1\n");
    EXPECT_EQ(files.Lines(true), Directory::NativeSeparator() == '\\')
        << "what ends a line is the host's affair";
}

// The walk in blocks against two loops of std::getline.
TEST(FileUtils, ComparesAsLineByLine)
{
    auto const lineByLine = [](std::string const& a, std::string const& b) {
        std::istringstream first(a);
        std::istringstream second(b);
        for (std::string x, y;;)
        {
            std::getline(first, x);
            std::getline(second, y);
            if (first.eof() != second.eof() || (x != y && !FileUtils::FloatTolerantCompare(x, y)))
                return false;
            if (first.eof())
                return true;
        }
    };
    std::mt19937 random(1);
    Comparison const files;
    int equal = 0;
    for (int round = 0; round < 300; ++round)
    {
        std::string a;
        std::string b;
        // Now and then over the end of a block, in each with another length.
        if (round % 60 == 0)
            for (int i = 0; i < 9'000; ++i)
            {
                a += "1.5 1.50\n";
                b += "1.50 1.5 \n";
            }
        for (auto words = random() % 12; words > 0; --words)
        {
            char const* const endings[] = {" ", "\n", "\t", "\n\n", ""};
            char const* const ending = endings[random() % 5];
            a += (random() % 2 != 0 ? "1" : "1.0") + std::string(ending);
            b += (random() % 2 != 0 ? "1" : "1.0") + std::string(random() % 20 != 0 ? ending : "\n");
        }
        files.Write(a, b);
        bool const expected = lineByLine(a, b);
        equal += expected;
        ASSERT_EQ(files.Lines(true), expected) << a.substr(0, 100) << "\nand\n" << b.substr(0, 100);
    }
    EXPECT_GT(equal, 50);
    EXPECT_LT(equal, 250);
}

TEST(FileUtils, TellsWhatItCannotCompare)
{
    Comparison const files;
    files.place.Write("a");
    files.place.Make("directory");
    FileName const directory(files.place / "directory");
    auto const compare = [](FileName const& a, FileName const& b) {
        return [=] { FileUtils::CompareFiles(a, b, false, false); };
    };
    for (FileName const& bad : {files.b, directory})
    {
        std::string const text = "Problem opening file: " + bad.GetFullName();
        EXPECT_TRUE(Throws<std::runtime_error>(compare(bad, files.a), text));
        EXPECT_TRUE(Throws<std::runtime_error>(compare(files.a, bad), text));
        EXPECT_FALSE(FileUtils::CompareFiles(bad, files.a, true, true));
        EXPECT_FALSE(FileUtils::CompareFiles(files.a, bad, true, true));
        EXPECT_FALSE(FileUtils::CompareFiles(bad, bad, true, true));
    }
}

TEST(FileUtils, CopiesFilesAndStreams)
{
    TemporaryDirectory const place;
    std::string content(25'000, 'x');
    content += "\r\n\x1A\n"; // what a text mode would change
    FileName const from(place.Write("from", content));
    FileName const to(place / "to");
    FileName const directory(place.Make("directory"));

    EXPECT_TRUE(FileUtils::Copy(from, to, false));
    EXPECT_EQ(Content(to.GetFullName()), content);
    EXPECT_TRUE(FileUtils::Copy(from, to, true));
    EXPECT_EQ(Content(to.GetFullName()), content + content);
    std::istringstream stream("one two");
    stream.seekg(4);
    EXPECT_TRUE(FileUtils::Copy(stream, to, false, true));
    EXPECT_EQ(Content(to.GetFullName()), "two");

    EXPECT_FALSE(FileUtils::Copy(stream, to, false, true)); // it has failed at its end
    EXPECT_FALSE(FileUtils::Copy(FileName(place / "missing"), to, false));
    EXPECT_FALSE(FileUtils::Copy(directory, to, false));
    EXPECT_FALSE(FileUtils::Copy(from, directory, true));
    EXPECT_FALSE(FileUtils::Copy(from, FileName(place / "missing/to"), false));
    EXPECT_EQ(Content(to.GetFullName()), "two");

    // Itself, under whichever name.
    boost::filesystem::create_hard_link(from.GetFullName(), place / "alias");
    for (bool const append : {false, true})
        for (std::string const name : {"from", "directory/../from", "alias"})
            EXPECT_FALSE(FileUtils::Copy(from, FileName(place / name), append)) << name;
    EXPECT_EQ(Content(from.GetFullName()), content);
}

TEST(FileUtils, AFullDiskEndsACopyUnnoticed)
{
    FileName const full("/dev/full");
    if (!full.IsFile())
        GTEST_SKIP() << "needs /dev/full";
    EXPECT_TRUE(FileUtils::Copy(FileName("/dev/zero"), full, false)); // a source without end
}

TEST(FileUtils, FindsAFreeName)
{
    TemporaryDirectory const place;
    auto const unique = [&](std::string const& name) {
        return FileUtils::ConstructUniqueName(FileName(place / name)).GetFileName();
    };
    EXPECT_EQ(unique("run.dat"), "run.dat");
    place.Write("run.dat");
    place.Write("run_2"); // nothing behind the number
    place.Write("run_02.dat");
    place.Write("run_22.dat");
    place.Write("my_run_1.dat");
    EXPECT_EQ(unique("run.dat"), "run_1.dat");
    place.Write("RUN_1.txt");
    place.Make("run_2z"); // of the class's three characters
    EXPECT_EQ(unique("run.dat"), "run_3.dat");
    EXPECT_EQ(unique("run_1.dat"), "run_1.dat");

    // Where it does not look: no directory part, none that exists, and one that is a file.
    ScopedCurrentDirectory const here(place.Name());
    for (std::string const& name :
         {std::string("run.dat"), place / "missing/run.dat", place / "run.dat/run.dat"})
        EXPECT_EQ(FileUtils::ConstructUniqueName(FileName(name)), FileName(name)) << name;

    // A thousand names are taken, all but one.
    for (int i = 1; i <= 1'000; ++i)
        if (i != 777)
            place.Write("many/run_" + std::to_string(i) + ".log", "");
    place.Write("many/run.dat");
    EXPECT_EQ(unique("many/run.dat"), "run_777.dat");
}

TEST(FileUtils, ReadsARootNameAsAnExpression)
{
    TemporaryDirectory const place;
    auto const unique = [&](std::string const& name) {
        return FileUtils::ConstructUniqueName(FileName(place.Write(name))).GetFileName();
    };
    place.Write("axb_1.txt");
    place.Write("c1_1.txt");
    place.Write("c1_2.txt");
    EXPECT_EQ(unique("a.b.dat"), "a.b_2.dat");
    EXPECT_EQ(unique("c(1).dat"), "c(1)_3.dat");
    EXPECT_EQ(unique("d[5].dat"), "d[5]_1.dat");
    EXPECT_THROW(unique("e(.dat"), std::regex_error);
    EXPECT_TRUE(Throws<std::runtime_error>(
        [&] { unique("f[.dat"); }, "FileUtils::ConstructUniqueName: \"f[\" finds a name with any number"));
}

TEST(FileUtils, TellsAsciiFromOthers)
{
    TemporaryDirectory const place;
    std::string const tail = "0123456789\x80";
    FileName const file(place.Write("file", tail));
    EXPECT_TRUE(FileUtils::IsAscii(file, 10));
    for (int const count : {11, 0, -1, std::numeric_limits<int>::max()})
        EXPECT_FALSE(FileUtils::IsAscii(file, count)) << count;
    std::string const blocks(200'000, '\x7F');
    FileName const large(place.Write("large", blocks + tail));
    EXPECT_TRUE(FileUtils::IsAscii(large, 200'010));
    EXPECT_FALSE(FileUtils::IsAscii(large, 200'011));
    EXPECT_TRUE(FileUtils::IsAscii(FileName(place.Write("empty", "")), 0));
    EXPECT_FALSE(FileUtils::IsAscii(FileName(place / "missing"), 0));
    EXPECT_FALSE(FileUtils::IsAscii(FileName(place.Name()), 0));
}

TEST(FileUtils, CountsLinesUpToAPosition)
{
    TemporaryDirectory const place;
    auto const lines = [&](std::string const& text, std::streamoff position) {
        return FileUtils::ComputeLineNumber(FileName(place.Write("text", text)), position);
    };
    std::string const text = "a\n\nbc\nlast";
    long long const expected[] = {1, 1, 2, 3, 3, 3, -1, -1, -1, -1, -1};
    for (std::streamoff at = 0; at <= std::ssize(text); ++at)
        EXPECT_EQ(lines(text, at), expected[at]) << at;
    EXPECT_EQ(lines(text, -1), -1);
    EXPECT_EQ(FileUtils::ComputeLineNumber(FileName(place.Name()), 0), -1);

    std::string const block = std::string(65'535, 'x') + "\n"; // newlines at the ends of what is read at once
    for (auto const& [at, line] : {std::pair{65'535, 1}, {65'536, 2}, {131'071, 2}, {131'072, 3}})
        EXPECT_EQ(lines(block + block + block, at), line) << at;
}

TEST(FileUtils, AccessIsAskedAndNotExistence)
{
    TemporaryDirectory const place;
    EXPECT_TRUE(FileUtils::IsAccessible(place / "missing"));
    EXPECT_TRUE(FileUtils::IsAccessible(""));
    boost::filesystem::permissions(place.Make("closed"), boost::filesystem::no_perms);
    boost::system::error_code error;
    if (boost::filesystem::status(place / "closed/in", error).type() == boost::filesystem::file_not_found)
        GTEST_SKIP() << "no directory is closed to this user";
    EXPECT_FALSE(FileUtils::IsAccessible(place / "closed/in"));
}

TEST(ExtensionMatcher, WantsTheLetterBehindTheExtension)
{
    FileUtils::ExtensionMatcher matcher({"dat", "r.s"});
    for (std::string const name : {"a.datZ", "a.DATz", "x/y.z.resZ", ".datZ"})
        EXPECT_TRUE(matcher(name)) << name;
    for (std::string const name : {"a.dat", "adatZ", "a.datZ ", "", "a\n.datZ"})
        EXPECT_FALSE(matcher(name)) << name;

    FileUtils::ExtensionMatcher const copy = matcher;
    EXPECT_THROW(matcher.SetMatchCriteria({"("}, true), std::regex_error);
    EXPECT_TRUE(matcher("a.datZ"));
    matcher.SetMatchCriteria({"dat"}, true);
    EXPECT_FALSE(matcher("a.datz"));
    EXPECT_TRUE(copy("a.datz"));

    EXPECT_TRUE(FileUtils::ExtensionMatcher()("x.Z"));
    EXPECT_FALSE(FileUtils::ExtensionMatcher()("x.dat"));
    FileUtils::ExtensionMatcher const taken = std::move(matcher);
    EXPECT_TRUE(taken("a.datZ"));
    EXPECT_FALSE(matcher("a.datZ")); // NOLINT: what is left after a move is told
    EXPECT_THROW(taken(std::string(1'000'000, 'a')), std::regex_error);
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
