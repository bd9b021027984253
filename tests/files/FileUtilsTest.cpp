#include "orv/files/FileUtils.h"
#include "tests/files/DiskTest.h"
#include "tests/support/ScopedCurrentDirectory.h"

#include <limits>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace Zan::Orv::Core::Service::Tests {
namespace {

using namespace std::string_literals;

bool Close(std::string const& a, std::string const& b)
{
    std::string x = a;
    std::string y = b;
    bool const close = FileUtils::FloatTolerantCompare(x, y);
    EXPECT_TRUE(x == a && y == b);
    return close;
}

TEST(FileUtils, WordsAreSplitAtThreeBlanks)
{
    std::vector<std::string> words{"kept"};
    for (std::string text : {""s, " \t\n"s, " a\tbc\r \n d\v"s, "\0 e"s})
        FileUtils::GetWords(text, words);
    EXPECT_EQ(words, (std::vector<std::string>{"kept", "a", "bc\r", "d\v", std::string(1, '\0'), "e"}));
}

TEST(FileUtils, NamesAreOrderedWithoutRegardToCase)
{
    FileUtils::FileNameLess const less;
    EXPECT_TRUE(less("a.dat", "B.dat") && less("A.dat", "b.dat"));
    EXPECT_FALSE(less("a.dat", "A.DAT") || less("A.DAT", "a.dat"));
}

TEST(FileUtils, LinesAreCloseWhenTheirNumbersAre)
{
    std::pair<std::string, std::string> const close[] = {
        {"", " \t"},          {"1000000000000", "1000000000001"}, // what lies on the border is inside
        {"+1", "1.e0"},       {"+-1", "."},                       // neither is a number
        {"1e+", "1"},                                             // as much as makes sense
        {"1e999", "1E+1000"},                                     // their difference is no number
        {"1e999", "5"},                                           // an infinite tolerance
        {"1e-400", "0"},
    };
    for (auto const& [a, b] : close)
        EXPECT_TRUE(Close(a, b)) << a << " and " << b;

    std::pair<std::string, std::string> const apart[] = {
        {"1 2", "1"},     {"1000000000000", "1000000000001.001"},
        {"1e-300", "0"},  {"5", "1e999"},
        {"1\r", "1.0\r"}, // a carriage return is of no number
        {"0x10", "16"},   {"1\0"s, "1.0"},
    };
    for (auto const& [a, b] : apart)
        EXPECT_FALSE(Close(a, b)) << a << " and " << b;
}

class FileUtilsTest : public DiskTest
{
protected:
    FileName const a{place / "a"};
    FileName const b{place / "b"};
    FileName const missing{place / "missing"};
    FileName const directory{place.Make("directory")};
};

// Lines that are longer than what is read at once, and ends of blocks within lines of other lengths.
TEST_F(FileUtilsTest, ComparesLineByLine)
{
    std::string const line(100'000, 'x');
    std::string blocks;
    std::string longerBlocks;
    for (int i = 0; i < 9'000; ++i)
    {
        blocks += "1.5 1.50\n";
        longerBlocks += "1.50 1.5 \n";
    }
    struct
    {
        std::string x, y;
        bool close;
    } const rows[] = {
        {"1", "1.0\n", false},
        {"1\n", "1\n ", true},
        {"1\n2\n3\n", "1 \n2.0\n3\n", true},
        {"1 2\n3", "1\n2 3\n", false},
        {"a\0b 1\n"s, "a\0b 1.0\n"s, true},
        {line + " 1\n1", line + " 1.0\n1.0", true},
        {line + "\n1", line + "y\n1", false},
        {"1 " + line + "\n" + line, "1.0 " + line + "\n" + line, true},
        {blocks + "1\n2", longerBlocks + "1.0\n2", true},
        {blocks + "1\n2", longerBlocks + "1\n3", false},
    };
    for (auto const& row : rows)
    {
        SCOPED_TRACE(row.x.substr(0, 20));
        place.Write("a", row.x);
        place.Write("b", row.y);
        for (auto const& [x, y] : {std::pair{a, b}, {b, a}})
        {
            EXPECT_FALSE(FileUtils::CompareFiles(x, y, false, true));
            EXPECT_FALSE(FileUtils::CompareFiles(x, y, true, false));
            EXPECT_EQ(FileUtils::CompareFiles(x, y, true, true), row.close);
            EXPECT_TRUE(FileUtils::CompareFiles(x, x, false, false));
        }
    }
    place.Write("a", "1\r\n");
    place.Write("b", "1\n");
    EXPECT_EQ(FileUtils::CompareFiles(a, b, true, true), Directory::NativeSeparator() == '\\')
        << "what ends a line is the host's affair";
}

TEST_F(FileUtilsTest, TellsWhatItCannotCompare)
{
    place.Write("a");
    for (auto const& [x, y] : {std::pair{missing, a}, {a, directory}})
    {
        std::string const text = "Problem opening file: " + (y == a ? x : y).GetFullName();
        EXPECT_TRUE(Throws<std::runtime_error>(
            [&x = x, &y = y] { FileUtils::CompareFiles(x, y, false, false); }, text));
        EXPECT_FALSE(FileUtils::CompareFiles(x, y, true, true));
    }
}

TEST_F(FileUtilsTest, CopiesFilesAndStreams)
{
    std::string content(25'000, 'x');
    content += "\r\n\x1A\n"; // what a text mode would change
    place.Write("a", content);

    EXPECT_TRUE(FileUtils::Copy(a, b, false));
    EXPECT_EQ(Content(place / "b"), content);
    EXPECT_TRUE(FileUtils::Copy(a, b, true));
    EXPECT_EQ(Content(place / "b"), content + content);
    std::istringstream stream("one two");
    stream.seekg(4);
    EXPECT_TRUE(FileUtils::Copy(stream, b, false, true));

    EXPECT_FALSE(FileUtils::Copy(stream, b, false, true)); // it has failed at its end
    EXPECT_FALSE(FileUtils::Copy(missing, b, false));
    EXPECT_EQ(Content(place / "b"), "two");
    EXPECT_FALSE(FileUtils::Copy(a, directory, true));
    EXPECT_FALSE(FileUtils::Copy(a, FileName(place / "missing/to"), false));

    // Itself, under whichever name.
    fs::create_hard_link(place / "a", place / "alias");
    for (bool const append : {false, true})
        for (std::string const name : {"a", "directory/../a", "alias"})
            EXPECT_FALSE(FileUtils::Copy(a, FileName(place / name), append)) << name;
    EXPECT_EQ(Content(place / "a"), content);
}

TEST_F(FileUtilsTest, FindsAFreeName)
{
    auto const unique = [&](std::string const& name) {
        return FileUtils::ConstructUniqueName(FileName(place / name)).GetFileName();
    };
    EXPECT_EQ(unique("run.dat"), "run.dat");
    // Nothing behind the number, other numbers, and another name.
    for (std::string const name : {"run.dat", "run_2", "run_02.dat", "run_22.dat", "my_run_1.dat"})
        place.Write(name);
    EXPECT_EQ(unique("run.dat"), "run_1.dat");
    place.Write("RUN_1.txt");
    place.Make("run_2z"); // of the class's three characters
    EXPECT_EQ(unique("run.dat"), "run_3.dat");

    // Where it does not look: no directory part, none that exists, and one that is a file.
    ScopedCurrentDirectory const here(place.Name());
    for (std::string const& name : {"run.dat"s, place / "missing/run.dat", place / "run.dat/run.dat"})
        EXPECT_EQ(FileUtils::ConstructUniqueName(FileName(name)), FileName(name)) << name;
}

TEST_F(FileUtilsTest, ReadsARootNameAsAnExpression)
{
    auto const unique = [&](std::string const& name) {
        return FileUtils::ConstructUniqueName(FileName(place.Write(name))).GetFileName();
    };
    for (std::string const name : {"axb_1.txt", "c1_1.txt", "c1_2.txt"})
        place.Write(name);
    EXPECT_EQ(unique("a.b.dat"), "a.b_2.dat");
    EXPECT_EQ(unique("c(1).dat"), "c(1)_3.dat");
    EXPECT_THROW(unique("e(.dat"), std::regex_error);
    EXPECT_TRUE(Throws<std::runtime_error>(
        [&] { unique("f[.dat"); }, "FileUtils::ConstructUniqueName: \"f[\" finds a name with any number"));
}

TEST_F(FileUtilsTest, TellsAsciiFromOthers)
{
    place.Write("a", "0123456789\x80");
    EXPECT_TRUE(FileUtils::IsAscii(a, 10));
    for (int const count : {11, 0, -1, std::numeric_limits<int>::max()})
        EXPECT_FALSE(FileUtils::IsAscii(a, count)) << count;
    EXPECT_FALSE(FileUtils::IsAscii(directory, 0));
    EXPECT_TRUE(FileUtils::IsAccessible(a.GetFullName()) && FileUtils::IsAccessible("there is none"));
}

TEST_F(FileUtilsTest, CountsLinesUpToAPosition)
{
    place.Write("a", "a\n\nbc\nlast");
    long long const expected[] = {1, 1, 2, 3, 3, 3, -1, -1, -1, -1, -1};
    for (int at = 0; at <= 10; ++at)
        EXPECT_EQ(FileUtils::ComputeLineNumber(a, at), expected[at]) << at;
    EXPECT_EQ(FileUtils::ComputeLineNumber(a, -1), -1);
}

TEST(ExtensionMatcher, WantsTheLetterBehindTheExtension)
{
    FileUtils::ExtensionMatcher matcher({"dat", "r.s"});
    for (std::string const name : {"a.datZ", "a.DATz", "x/y.z.resZ", ".datZ"})
        EXPECT_TRUE(matcher(name)) << name;
    for (std::string const name : {"a.dat", "adatZ", "a.datZ ", "", "a\n.datZ"})
        EXPECT_FALSE(matcher(name)) << name;

    EXPECT_THROW(matcher.SetMatchCriteria({"("}, true), std::regex_error);
    EXPECT_TRUE(matcher("a.datz"));
    matcher.SetMatchCriteria({"dat"}, true);
    EXPECT_FALSE(matcher("a.datz"));

    EXPECT_TRUE(FileUtils::ExtensionMatcher()("x.Z"));
}

TEST(ExtensionMatcher, IsNotLedAstray)
{
    auto const matches = [](std::string const& extension, std::string const& name) {
        return FileUtils::ExtensionMatcher({extension})("." + name + "Z");
    };
    EXPECT_TRUE(matches("(x|y)*", std::string(100'000, 'x')));
    EXPECT_FALSE(matches("(x*)*y", std::string(100, 'x')));
    EXPECT_TRUE(matches(R"((x+)-\2)", "xx-xx"));
    EXPECT_FALSE(matches(R"((x+)-\2)", "xx-x"));
    EXPECT_THROW(matches(R"((x+)-\2)", std::string(499, 'x')), std::regex_error);

    EXPECT_TRUE(matches(R"(\d{4}-\d{2}-\d{2} \d{2}:\d{2}:\d{2}[({]{1,255})", "2000-02-29 12:30:00({("));
    EXPECT_TRUE(matches(std::string(3980, 'x'), std::string(3980, 'x')));
    EXPECT_TRUE(matches(std::string(499, '(') + std::string(499, ')'), ""));
    for (std::string const& large :
         {std::string(4000, 'x'), std::string(500, '(') + std::string(500, ')'),
          std::string("((x?){70}){60}"), std::string("x{4000}"), std::string("x{1,99999999999999999999}")})
        EXPECT_THROW(matches(large, "x"), std::regex_error) << large;
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
