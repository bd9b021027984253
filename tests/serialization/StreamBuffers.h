#pragma once

#include "orv/serialization/BZip2Buf.h"
#include "orv/serialization/Base64Buf.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <memory>
#include <random>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <utility>
#include <vector>

/// What tests of stream buffers share: stacks of them, and what they write and write to.

namespace Zan::Orv::Core::Service::Tests {

/// Buffers on each other, named from the outside in: 'z' compresses, '6' encodes. They end in that order.
class Stack
{
public:
    Stack(std::streambuf& target, std::string const& kinds) : top_(&target)
    {
        for (auto kind = kinds.rbegin(); kind != kinds.rend(); ++kind)
        {
            if (*kind == 'z')
                buffers_.push_back(std::make_unique<BZip2Buf>(top_, 1, false));
            else
                buffers_.push_back(std::make_unique<Base64Buf>(top_));
            top_ = buffers_.back().get();
        }
    }
    ~Stack()
    {
        while (!buffers_.empty())
            buffers_.pop_back();
    }

    std::streambuf* Top() { return top_; }

private:
    std::streambuf* top_;
    std::vector<std::unique_ptr<std::streambuf>> buffers_;
};

/// Takes `limit` characters and then refuses, by an exception where it `throws`.
class LimitedTarget : public std::streambuf
{
public:
    explicit LimitedTarget(std::size_t capacity = std::string::npos, bool throwing = false)
        : limit(capacity), throws(throwing)
    {}

    std::string text;
    std::size_t limit;
    bool throws;
    int syncs = 0;

protected:
    int_type overflow(int_type c) override
    {
        if (text.size() < limit)
            text += traits_type::to_char_type(c);
        else if (throws)
            throw std::runtime_error("full");
        else
            return traits_type::eof();
        return c;
    }

    int sync() override
    {
        ++syncs;
        return 0;
    }
};

/// A buffer of few characters, or of none, over a text that is read or written.
class SmallBuffer : public std::streambuf
{
public:
    explicit SmallBuffer(std::size_t size, std::string content = "")
        : text(std::move(content)), area_(size, '\0')
    {
        setp(area_.data(), area_.data() + area_.size());
        setg(text.data(), text.data(), text.data());
    }
    /// How far it has been read.
    std::ptrdiff_t Position() const { return gptr() - text.data(); }

    std::string text;
    std::streamsize mostAsked = 0;

private:
    int_type overflow(int_type c) override
    {
        sync();
        text += traits_type::to_char_type(c);
        return c;
    }

    int sync() override
    {
        text.append(pbase(), pptr());
        setp(area_.data(), area_.data() + area_.size());
        return 0;
    }

    int_type underflow() override
    {
        std::ptrdiff_t const left = text.data() + text.size() - egptr();
        setg(eback(), gptr(), egptr() + std::min(left, std::max(std::ssize(area_), std::ptrdiff_t{1})));
        return left == 0 ? traits_type::eof() : traits_type::to_int_type(*gptr());
    }

    std::streamsize xsgetn(char* to, std::streamsize count) override
    {
        mostAsked = std::max(mostAsked, count);
        return std::streambuf::xsgetn(to, count);
    }

    std::string area_;
};

inline std::string Wrap(std::string const& bytes, std::string const& kinds)
{
    LimitedTarget target;
    Stack(target, kinds).Top()->sputn(bytes.data(), std::ssize(bytes));
    return target.text;
}

inline std::string Unwrap(std::string const& stored, std::string const& kinds)
{
    std::stringbuf source(stored, std::ios::in);
    Stack stack(source, kinds);
    return {std::istreambuf_iterator<char>(stack.Top()), {}};
}

/// Bytes that compression does not make fewer, the same ones in every run.
inline std::string RandomBytes(std::size_t size, unsigned seed = 0)
{
    std::mt19937 dice(seed);
    std::string bytes(size, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(dice());
    return bytes;
}

} // namespace Zan::Orv::Core::Service::Tests
