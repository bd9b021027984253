#include "orv/serialization/EnumWrapper.h"

#include "tests/serialization/Documents.h"
#include "tests/support/ExpectThrow.h"
#include "tests/support/Model.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace Zan::Orv::Core::Service::Tests {

namespace {

std::string FailureOf(std::string const& conversion, std::string const& value)
{
    return "Failed to convert " + conversion +
           " [type='enum Zan::Orv::Core::Service::Tests::Phase::Enum' value='" + value + "']";
}

TEST(EnumWrapperTest, IsAValueWithOneNamedField)
{
    EXPECT_EQ(PhaseWrapper().Get(), Phase::Oil);

    PhaseWrapper written(Phase::Gas);
    EXPECT_EQ(XMLForm::Write(written), XML("<x ><value>Gas &amp; condensate</value></x>"));
    EXPECT_EQ(TextForm::Write(written), "# -1\nGas & condensate\n");

    PhaseWrapper read;
    XMLForm::Read(XML("<x ><value>Gas &amp; condensate</value></x>"), read);
    EXPECT_EQ(read.Get(), Phase::Gas);
    TextForm::Read("# -1\nWater\n", read);
    EXPECT_EQ(read.Get(), Phase::Water);
}

TEST(EnumWrapperTest, ConvertsExactNamesOnly)
{
    for (auto const value : {Phase::Oil, Phase::Water, Phase::Gas})
        EXPECT_EQ(PhaseConverter::FromString(PhaseConverter::ToString(value)), value);

    for (std::string const name : {"", "oil", "OIL", "Oil ", " Oil", "Oi", "0"})
    {
        EXPECT_TRUE(Throws<std::runtime_error>([&] { PhaseConverter::FromString(name); },
                                               FailureOf("string to enum", name)));
        PhaseWrapper wrapper(Phase::Water);
        EXPECT_TRUE(Throws<std::runtime_error>([&] { TextForm::Read("# -1\n" + name + "\n", wrapper); },
                                               FailureOf("string to enum", name)));
        EXPECT_EQ(wrapper.Get(), Phase::Water);
    }
    PhaseWrapper wrapper;
    EXPECT_TRUE(Throws<std::runtime_error>([&] { XMLForm::Read(XML(""), wrapper); },
                                           FailureOf("string to enum", "")));
    PhaseWrapper nameless(static_cast<Phase::Enum>(3));
    EXPECT_TRUE(
        Throws<std::runtime_error>([&] { TextForm::Write(nameless); }, FailureOf("enum to string", "3")));
}

} // namespace

} // namespace Zan::Orv::Core::Service::Tests
