#include "orv/serialization/Base64Buf.h"

#include "tests/serialization/StreamBuffers.h"
#include "tests/support/ExpectThrow.h"

#include <gtest/gtest.h>

#include <sstream>
#include <utility>

namespace Zan::Orv::Core::Service::Tests {

namespace {

TEST(Base64Buf, StandardText)
{
    std::string const line(64, 'A'), bytes(48, '\0');
    std::pair<std::string, std::string> const table[] = {
        {"", ""},
        {"f", "Zg=="},
        {"fo", "Zm8="},
        {"foo", "Zm9v"},
        {"\xFB\xFF\xBF", "+/+/"},
        {bytes.substr(1), line.substr(1) + "=\n"},
        {bytes + bytes + bytes[0], line + "\n" + line + "\nAA=="},
    };
    for (auto const& [plain, text] : table)
    {
        EXPECT_EQ(Wrap(plain, "6"), text);
        EXPECT_EQ(Unwrap(text, "6"), plain) << text;
    }
}

TEST(Base64Buf, ReadsAroundJunkAndBehindPadding)
{
    for (std::string const text :
         {"Zm9vYg==", " Z\nm\r\n9-v_Yg==", "Zm9vYg=.=\xFF", "Zg==bw==b2I=", "Zm9vYj=="})
        EXPECT_EQ(Unwrap(text, "6"), "foob") << text;
    EXPECT_EQ(Unwrap("Zm9v" + std::string(100'000, '\n') + "Yg==\r\n", "6"), "foob");

    for (std::string const text : {"Z", "Zg", "Zg=", "Z===", "====", "=m9v", "Zg=v", "Zm9vYg=\n", "Zg==b"})
        EXPECT_TRUE(Throws<std::runtime_error>([&] { Unwrap(text, "6"); }, "Ill-formed base64 encoding"))
            << text;
}

TEST(Base64Buf, WhatIsRefusedStays)
{
    LimitedTarget target(2);
    Base64Buf buffer(&target);
    buffer.sputn("foob", 4);
    EXPECT_EQ(buffer.pubsync(), -1);
    EXPECT_EQ(target.text, "Zm");
    target.limit = 100;
    EXPECT_EQ(buffer.pubsync(), 0);
    EXPECT_EQ(target.text, "ZmZm9vYg==");
    buffer.sputc('x');
    target.limit = 0;
    target.throws = true; // which the buffer keeps to itself at its end
}

TEST(Base64Buf, WhatDerivedClassesCall)
{
    struct Open : Base64Buf
    {
        using Base64Buf::Base64Buf;
        using Base64Buf::underflow;
    };
    std::stringbuf target("Zm9vYmFy");
    Open reader(&target);
    EXPECT_EQ(reader.sbumpc(), 'f');
    EXPECT_EQ(reader.underflow(), 'o'); // the first unread byte has gone
    EXPECT_EQ(reader.sgetc(), 'o');
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
