#include "orv/files/FileName.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

namespace Zan::Orv::Core::Service::Tests {

namespace {

template<class T>
std::size_t CountIn(std::initializer_list<T> values, T const& wanted)
{
    return std::unordered_set<T>(values).count(wanted);
}

TEST(HashTest, of_a_path_does_not_look_at_case)
{
    EXPECT_EQ(CountIn<Directory>({{"/Data/Cases"}}, {"/DATA/models/../cases/"}), 1);
    EXPECT_EQ(CountIn<Directory>({{"/Data/Cases"}}, {"/Data/Case"}), 0);
    EXPECT_EQ(CountIn<FileName>({{"/Data/North.In.CSV"}}, {"/data/NORTH.in.csv"}), 1);
    EXPECT_EQ(CountIn<FileName>({{"/Data/North.csv"}}, {"/Data/South.csv"}), 0);
    EXPECT_EQ(CountIn<FileName>({{"/Data/North.csv"}}, {"/Data/North.in"}), 0);
}

// Names that were composed in other ways are equal by their pieces, and not by their full names.
TEST(HashTest, of_a_name_is_that_of_its_pieces)
{
    FileName pieces("/data/x");
    pieces.SetRootName("a.b");
    pieces.SetExtension("c");
    FileName const whole("/data/a.b.c");
    EXPECT_EQ(CountIn<FileName>({whole}, pieces), 1);

    FileName other("/data/a");
    other.SetExtension("b.c");
    EXPECT_EQ(other.GetFullName(), whole.GetFullName());
    EXPECT_EQ(CountIn<FileName>({whole}, other), 0);
}

// Every byte beside every other one.
TEST(HashTest, folds_the_bytes_that_equality_folds)
{
    std::vector<FileName> names(256);
    for (std::size_t byte = 0; byte < names.size(); ++byte)
        names[byte].SetRootName(std::string(1, static_cast<char>(byte)));
    std::hash<FileName> const hash;
    for (FileName const& a : names)
        for (FileName const& b : names)
            ASSERT_EQ(hash(a) == hash(b), a == b) << a.GetFileName() << ' ' << b.GetFileName();
}

} // namespace

} // namespace Zan::Orv::Core::Service::Tests
