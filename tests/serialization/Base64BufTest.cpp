#include "orv/serialization/Base64Buf.h"

#include "tests/serialization/StreamBuffers.h"
#include "tests/support/ExpectThrow.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sstream>
#include <utility>

namespace Zan::Orv::Core::Service::Tests {

namespace {

std::string const alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

[[noreturn]] void Refuse()
{
    throw std::runtime_error("Ill-formed base64 encoding");
}

// The same buffer in its plainest form: each character goes to the target, or comes from there, by itself.
class PlainBase64Buf : public std::streambuf
{
public:
    explicit PlainBase64Buf(std::streambuf* target) : target_(target) { setp(put_, std::end(put_)); }

protected:
    int_type overflow(int_type c) override
    {
        return WriteGroups(3) ? sputc(static_cast<char>(c)) : traits_type::eof();
    }

    int sync() override { return WriteGroups(3) && WriteGroups(1) ? target_->pubsync() : -1; }

    int_type underflow() override
    {
        char* to = get_;
        while (std::end(get_) - to >= 3 && target_->sgetc() != traits_type::eof())
        {
            std::string const group = ReadGroup();
            auto const size = std::min<std::size_t>(group.find('='), 4);
            if (group.empty())
                break;
            if (size < 2 || (size == 2 && group[3] != '='))
                Refuse();
            unsigned bits = 0;
            for (char const c : group)
                bits = bits << 6 | (alphabet.find(c) & 63);
            for (std::size_t i = 1; i < size; ++i)
                *to++ = static_cast<char>(bits >> (24 - 8 * i));
        }
        setg(get_, get_, to);
        return to == get_ ? traits_type::eof() : traits_type::to_int_type(*get_);
    }

private:
    // As long as there are `least` bytes. After a refusal all of them stay.
    bool WriteGroups(std::size_t least)
    {
        std::string const bytes(pbase(), pptr());
        std::size_t at = 0;
        for (; at + least <= bytes.size(); at += 3)
            if (!WriteGroup(bytes.substr(at, 3)))
                return false;
        setp(put_, std::end(put_));
        for (; at < bytes.size(); ++at)
            sputc(bytes[at]);
        return true;
    }

    bool WriteGroup(std::string const& bytes)
    {
        unsigned bits = 0;
        for (std::size_t i = 0; i < 3; ++i)
            bits = bits << 8 | (i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0u);
        for (std::size_t i = 0; i < 4; ++i)
            if (target_->sputc(i > bytes.size() ? '=' : alphabet[bits >> (18 - 6 * i) & 63]) ==
                traits_type::eof())
                return false;
        return ++groups_ % 16 != 0 || target_->sputc('\n') != traits_type::eof();
    }

    std::string ReadGroup()
    {
        std::string group;
        while (group.size() < 4)
        {
            int const c = target_->sbumpc();
            if (c == traits_type::eof())
                return group.empty() ? group : (Refuse(), group);
            if (c == '=' || alphabet.find(static_cast<char>(c)) != std::string::npos)
                group += static_cast<char>(c);
        }
        return group;
    }

    std::streambuf* target_;
    int groups_ = 0;
    char put_[4096];
    char get_[4096];
};

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

// Any calls, on targets that refuse early or late: what they say and what the target holds.
TEST(Base64Buf, WritesLikeItsPlainForm)
{
    for (unsigned seed = 0; seed < 200; ++seed)
    {
        std::mt19937 dice(seed);
        LimitedTarget target(seed % 2 == 0 ? std::string::npos : dice() % 30'000), plainTarget(target.limit);
        Base64Buf buffer(&target);
        PlainBase64Buf plain(&plainTarget);
        for (int call = 0; call < 20; ++call)
        {
            SCOPED_TRACE(testing::Message() << "seed " << seed << ", call " << call);
            std::string const bytes = RandomBytes(dice() % (dice() % 2 == 0 ? 6 : 6000), seed);
            ASSERT_EQ(buffer.sputn(bytes.data(), std::ssize(bytes)),
                      plain.sputn(bytes.data(), std::ssize(bytes)));
            bool const synchronises = dice() % 3 == 0;
            ASSERT_TRUE(!synchronises || buffer.pubsync() == plain.pubsync());
            ASSERT_EQ(target.text, plainTarget.text);
            ASSERT_EQ(target.syncs, plainTarget.syncs);
            if (dice() % 8 == 0) // room again, for what was refused
                target.limit = plainTarget.limit = target.text.size() + dice() % 8000;
        }
        target.throws = true; // which the buffer keeps to itself at its end
    }
}

// Good and bad text that arrives in pieces of any size: what comes out, how it fails, and how far the target
// has been read each time.
TEST(Base64Buf, ReadsLikeItsPlainForm)
{
    std::string const pieces[] = {"=", "\n", "-", "A", "Zg==", "Zm8=", std::string(9000, ' ')};
    auto const read = [](std::streambuf& from, std::size_t size) {
        std::string bytes(size, '\0');
        try
        {
            bytes.resize(static_cast<std::size_t>(from.sgetn(bytes.data(), std::ssize(bytes))));
        }
        catch (std::runtime_error const& e)
        {
            bytes = e.what();
        }
        return bytes;
    };
    for (unsigned seed = 0; seed < 300; ++seed)
    {
        std::mt19937 dice(seed);
        std::string text = Wrap(RandomBytes(dice() % 10'000), "6");
        for (auto count = dice() % 8; count != 0; --count)
            text.insert(dice() % (text.size() + 1), pieces[dice() % (seed % 2 == 0 ? 3 : std::size(pieces))]);

        std::size_t const size = 1 + dice() % (dice() % 2 == 0 ? 5 : 20'000);
        SmallBuffer source(size, text), plainSource(size, text);
        Base64Buf buffer(&source);
        PlainBase64Buf plain(&plainSource);
        for (int call = 0; call < 20; ++call)
        {
            auto const count = 1 + dice() % 3000;
            ASSERT_EQ(read(buffer, count), read(plain, count)) << "seed " << seed << ", call " << call;
            ASSERT_EQ(source.Position(), plainSource.Position()) << "seed " << seed << ", call " << call;
        }
    }
}

TEST(Base64Buf, WhatDerivedClassesCall)
{
    struct Open : Base64Buf
    {
        using Base64Buf::Base64Buf;
        using Base64Buf::overflow;
        using Base64Buf::underflow;
    };
    std::stringbuf target("Zm9vYmFy");
    {
        Open reader(&target);
        EXPECT_EQ(reader.sbumpc(), 'f');
        EXPECT_EQ(reader.underflow(), 'o'); // the first unread byte has gone
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(&reader), {}), "obar");
    }
    EXPECT_EQ(target.str(), "Zm9vYmFy"); // a reader writes nothing

    target.str("");
    Open writer(&target);
    writer.sputn("foob", 4);
    EXPECT_EQ(writer.overflow(), std::char_traits<char>::eof());
    EXPECT_EQ(target.str(), "Zm9v"); // flushed all the same
}

} // namespace
} // namespace Zan::Orv::Core::Service::Tests
