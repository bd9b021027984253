#include "orv/files/internal/FileComparison.h"

#include "orv/files/internal/TolerantComparison.h"

#include <boost/filesystem/operations.hpp>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace Zan::Orv::Core::Service::Internal {

namespace {

constexpr std::size_t blockSize = 1 << 16; // two of them stay in a core's cache

// ---- bytes ----

class BinaryFile
{
public:
    explicit BinaryFile(std::string const& name) : name_(name), stream_(name, std::ios::binary)
    {
        // A POSIX host opens a directory, and only refuses to read it.
        boost::system::error_code ignored;
        if (!stream_ || boost::filesystem::is_directory(name, ignored))
            Fail("opening");
    }

    std::streamoff Size()
    {
        stream_.seekg(0, std::ios::end);
        std::streamoff const size = stream_.tellg();
        stream_.seekg(0, std::ios::beg);
        if (!stream_)
            Fail("reading");
        return size;
    }

    void Read(char* to, std::streamsize count)
    {
        if (!stream_.read(to, count))
            Fail("reading");
    }

    void Close()
    {
        stream_.close();
        if (!stream_)
            Fail("closing");
    }

private:
    [[noreturn]] void Fail(char const* what) const
    {
        throw std::runtime_error(std::string("Problem ") + what + " file: " + name_);
    }

    std::string const& name_;
    std::ifstream stream_;
};

// ---- lines ----

// A file in text mode as a window of bytes: it widens at its end by reading, and narrows at its front.
class TextWindow
{
public:
    explicit TextWindow(std::string const& name) : stream_(name), buffer_(blockSize) {}

    bool IsGood() const { return stream_.good(); }
    // A disk error, or a directory.
    bool HasFailed() const { return stream_.bad(); }

    std::string_view Bytes() const { return {buffer_.data() + begin_, end_ - begin_}; }
    void Drop(std::size_t count) { begin_ += count; }

    // False when there is nothing more to read.
    bool Widen()
    {
        if (!stream_.good())
            return false;
        MakeRoom();
        stream_.read(buffer_.data() + end_, static_cast<std::streamsize>(buffer_.size() - end_));
        auto const count = static_cast<std::size_t>(stream_.gcount());
        end_ += count;
        return count != 0;
    }

    struct Line
    {
        std::string_view text;
        bool endsFile; // there is no newline behind it
    };

    // The line at the front, which stays there.
    Line FirstLine()
    {
        std::size_t searched = 0;
        for (;;)
        {
            std::string_view const bytes = Bytes();
            std::size_t const newline = bytes.find('\n', searched);
            if (newline != std::string_view::npos)
                return {bytes.substr(0, newline), false};
            searched = bytes.size();
            if (!Widen())
                return {Bytes(), true};
        }
    }

private:
    void MakeRoom()
    {
        if (begin_ != 0)
        {
            std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
            end_ -= begin_;
            begin_ = 0;
        }
        // Doubled while more than half full, so that a long line is moved as seldom as it doubles.
        if (end_ > buffer_.size() / 2)
            buffer_.resize(buffer_.size() * 2);
    }

    std::ifstream stream_;
    std::vector<char> buffer_;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
};

// The first place from `from` on where the two differ or one of them ends, eight bytes at a time.
std::size_t FirstDifference(std::string_view a, std::string_view b, std::size_t from)
{
    std::size_t const end = std::min(a.size(), b.size());
    std::size_t at = from;
    for (; end - at >= sizeof(std::uint64_t); at += sizeof(std::uint64_t))
    {
        std::uint64_t x = 0;
        std::uint64_t y = 0;
        std::memcpy(&x, a.data() + at, sizeof x);
        std::memcpy(&y, b.data() + at, sizeof y);
        if (x != y)
            break;
    }
    while (at < end && a[at] == b[at])
        ++at;
    return at;
}

// Walks through two windows. At each step both begin with a line of the same number, and the first `equal_`
// bytes, which hold no newline, are the same in both.
class LineComparison
{
public:
    LineComparison(TextWindow& a, TextWindow& b, bool tolerant) : a_(a), b_(b), tolerant_(tolerant) {}

    bool Run()
    {
        for (;;)
        {
            DropEqualLines();
            bool const aGoesOn = GoesOn(a_);
            bool const bGoesOn = GoesOn(b_);
            if (!aGoesOn && !bGoesOn)
                return AreRead();
            if (aGoesOn && bGoesOn && a_.Bytes()[equal_] == b_.Bytes()[equal_])
                continue;

            if (!tolerant_)
                return false;
            TextWindow::Line const x = a_.FirstLine();
            TextWindow::Line const y = b_.FirstLine();
            if (x.endsFile != y.endsFile || !TolerantEqual(x.text, y.text))
                return false;
            if (x.endsFile)
                return AreRead();
            a_.Drop(x.text.size() + 1);
            b_.Drop(y.text.size() + 1);
            equal_ = 0;
        }
    }

private:
    void DropEqualLines()
    {
        std::string_view const bytes = a_.Bytes();
        std::size_t const before = equal_;
        equal_ = FirstDifference(bytes, b_.Bytes(), before);
        std::size_t const newline = bytes.substr(before, equal_ - before).rfind('\n');
        if (newline == std::string_view::npos)
            return;
        std::size_t const lines = before + newline + 1;
        a_.Drop(lines);
        b_.Drop(lines);
        equal_ -= lines;
    }

    // Whether there is a byte behind the equal ones.
    bool GoesOn(TextWindow& window) const { return equal_ < window.Bytes().size() || window.Widen(); }

    bool AreRead() const { return !a_.HasFailed() && !b_.HasFailed(); }

    TextWindow& a_;
    TextWindow& b_;
    bool tolerant_;
    std::size_t equal_ = 0;
};

} // namespace

bool EqualBytes(std::string const& a, std::string const& b)
{
    BinaryFile first(a);
    BinaryFile second(b);
    std::streamoff const size = first.Size();
    if (size != second.Size())
        return false;

    std::vector<char> ofFirst(blockSize);
    std::vector<char> ofSecond(blockSize);
    for (std::streamoff left = size; left > 0;)
    {
        auto const count = std::min(left, static_cast<std::streamoff>(blockSize));
        first.Read(ofFirst.data(), count);
        second.Read(ofSecond.data(), count);
        if (std::memcmp(ofFirst.data(), ofSecond.data(), static_cast<std::size_t>(count)) != 0)
            return false;
        left -= count;
    }
    first.Close();
    second.Close();
    return true;
}

bool EqualLines(std::string const& a, std::string const& b, bool tolerant)
{
    TextWindow first(a);
    TextWindow second(b);
    return first.IsGood() && second.IsGood() && LineComparison(first, second, tolerant).Run();
}

} // namespace Zan::Orv::Core::Service::Internal
