#include "orv/foundation/Exception.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

namespace Zan::Orv::Core::Service::Tests {

namespace {

template<class E>
class ExceptionTest : public ::testing::Test
{
};

using Exceptions = ::testing::Types<ServiceException, DirectoryException, SerializeException, TimeException>;
TYPED_TEST_SUITE(ExceptionTest, Exceptions);

} // namespace

TYPED_TEST(ExceptionTest, KeepsItsTextThroughCopiesAndMoves)
{
    std::string const text = "a text that no small string can hold";
    TypeParam assigned("other");
    auto original = std::make_unique<TypeParam>(text);
    TypeParam const moved(std::move(*original));
    assigned = std::move(*original);
    EXPECT_EQ(original->what(), text) << "a move leaves the words in place";
    original.reset();
    EXPECT_EQ(moved.what(), text);
    try
    {
        throw assigned;
    }
    catch (Exception const& e)
    {
        EXPECT_EQ(e.what(), text);
        EXPECT_NE(dynamic_cast<TypeParam const*>(&e), nullptr);
    }
}

TEST(ServiceExceptionTest, NamesItselfWithoutAText)
{
    EXPECT_STREQ(ServiceException().what(), "ServiceException");
}

} // namespace Zan::Orv::Core::Service::Tests
