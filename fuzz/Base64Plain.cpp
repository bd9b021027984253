#include "fuzz/Input.h"
#include "orv/serialization/Base64Buf.h"
#include "tests/serialization/StreamBuffers.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace Zan::Orv::Core::Service::Fuzz {

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

// Room for a few lines, for some areas, or for all.
std::size_t AnyLimit(Input& input)
{
    return input.Flag() ? std::string::npos : input.Number<std::uint16_t>() % 30'000u;
}

// More than the input holds: areas are of some thousand characters.
std::string LongText(Input& input)
{
    unsigned const times = 1 + input.Below(64);
    std::string const text = input.Text();
    std::string all;
    for (unsigned i = 0; i < times; ++i)
        all += text;
    return all;
}

// Any calls, on targets that refuse early or late: what they say and what the target holds.
void Write(Input& input)
{
    Tests::LimitedTarget target(AnyLimit(input)), plainTarget(target.limit);
    Base64Buf buffer(&target);
    PlainBase64Buf plain(&plainTarget);
    for (int call = 0; call < 20 && !input.IsEmpty(); ++call)
    {
        std::string const bytes = input.Flag() ? LongText(input) : input.Text();
        Require(buffer.sputn(bytes.data(), std::ssize(bytes)) == plain.sputn(bytes.data(), std::ssize(bytes)),
                "as many bytes are taken");
        if (input.Flag())
            Require(buffer.pubsync() == plain.pubsync(), "flushing ends alike");
        Require(target.text == plainTarget.text, "the same text is written");
        Require(target.syncs == plainTarget.syncs, "the target is flushed as often");
        if (input.Flag()) // room again, for what was refused
            target.limit = plainTarget.limit = target.text.size() + input.Number<std::uint16_t>() % 8000u;
    }
    target.throws = true; // which the buffer keeps to itself at its end
}

// Up to so many bytes, or the failure.
std::string Read(std::streambuf& from, std::size_t size)
{
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
}

// Good and bad text that arrives in pieces of any size: what comes out, how it fails, and how far the target
// has been read each time.
void Read(Input& input)
{
    unsigned const mostArea = input.Flag() ? 5 : 20'000;
    std::size_t const area = 1 + input.Number<std::uint16_t>() % mostArea;
    std::array<std::size_t, 4> counts{};
    for (std::size_t& count : counts)
        count = 1 + input.Number<std::uint16_t>() % 3000u;
    std::string text;
    for (int piece = 0; piece < 20 && !input.IsEmpty(); ++piece)
        text += input.Flag() ? Tests::Wrap(LongText(input), "6") : LongText(input);

    Tests::SmallBuffer source(area, text), plainSource(area, text);
    Base64Buf buffer(&source);
    PlainBase64Buf plain(&plainSource);
    for (int call = 0; call < 20; ++call)
    {
        std::size_t const count = counts[static_cast<std::size_t>(call) % counts.size()];
        Require(Read(buffer, count) == Read(plain, count), "the same bytes or failure are read");
        Require(source.Position() == plainSource.Position(), "the source is read as far");
    }
}

} // namespace

// Each call against the plain form.
void Run(Input& input)
{
    if (input.Flag())
        Write(input);
    else
        Read(input);
}

} // namespace Zan::Orv::Core::Service::Fuzz
