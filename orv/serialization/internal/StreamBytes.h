#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <istream>
#include <ostream>
#include <streambuf>
#include <string_view>

/// Bytes on streams, as `write` and `read` put and take them. A few bytes that lie within the stream's buffer are
/// copied on the spot: the calls into the stream cost several times as much as the copy. Everything else (a
/// stream that is tied, unbuffered, failed, or at the edge of its buffer) goes through the stream's own calls.

namespace Zan::Orv::Core::Service::Internal {

/// What `sputc` and `sbumpc` use of any stream buffer, for several characters at a time. The language shows it to derived
/// classes alone, but lets these name the members for use on every buffer.
struct BufferAreas : std::streambuf
{
    static constexpr std::size_t most = 8192; // far from what `pbump` and `gbump` can count

    /// Takes room for `count` characters, which the caller fills. Null when there is less.
    static char* Room(std::streambuf& buffer, std::size_t count)
    {
        char* const next = (buffer.*&BufferAreas::pptr)();
        if (count > most || (buffer.*&BufferAreas::epptr)() - next < static_cast<std::ptrdiff_t>(count))
            return nullptr;
        (buffer.*&BufferAreas::pbump)(static_cast<int>(count));
        return next;
    }

    /// What can be read without a call of the buffer's.
    static std::string_view Ready(std::streambuf const& buffer)
    {
        char const* const next = (buffer.*&BufferAreas::gptr)();
        return {next, static_cast<std::size_t>((buffer.*&BufferAreas::egptr)() - next)};
    }

    /// Passes over characters that are ready, `most` of them or fewer.
    static void Consume(std::streambuf& buffer, std::size_t count)
    {
        (buffer.*&BufferAreas::gbump)(static_cast<int>(count));
    }

    /// Takes the next `count` characters. Null when fewer lie in the buffer.
    static char const* Ahead(std::streambuf& buffer, std::size_t count)
    {
        std::string_view const ready = Ready(buffer);
        if (count > most || ready.size() < count)
            return nullptr;
        Consume(buffer, count);
        return ready.data();
    }

    static std::streamsize Known(std::streambuf& buffer)
    {
        // The first tells of what is buffered alone, the second knows the length of a file where it can.
        return std::max(buffer.in_avail(), (buffer.*&BufferAreas::showmanyc)());
    }
};

/// `stream.write(bytes, count)`
inline void WriteBytes(std::ostream& stream, char const* bytes, std::size_t count)
{
    bool const isPlain =
        stream.good() && stream.tie() == nullptr && (stream.flags() & std::ios::unitbuf) == 0;
    if (char* const room = isPlain ? BufferAreas::Room(*stream.rdbuf(), count) : nullptr)
        std::memcpy(room, bytes, count);
    else
        stream.write(bytes, static_cast<std::streamsize>(count));
}

/// The next `count` bytes, read, where they lie until the stream is used again. Null, and nothing read, when
/// they do not lie within the stream's buffer.
inline char const* TakeBytes(std::istream& stream, std::size_t count)
{
    bool const isPlain = stream.good() && stream.tie() == nullptr;
    return isPlain ? BufferAreas::Ahead(*stream.rdbuf(), count) : nullptr;
}

/// `stream.read(bytes, count)`, but for `gcount`. False when not all of them came.
inline bool ReadBytes(std::istream& stream, char* bytes, std::size_t count)
{
    char const* const ahead = TakeBytes(stream, count);
    if (ahead == nullptr)
        return !stream.read(bytes, static_cast<std::streamsize>(count)).fail();
    std::memcpy(bytes, ahead, count);
    return true;
}

/// How many bytes the stream is known to have left, 0 when nothing is known.
inline std::size_t BytesAhead(std::istream& stream)
{
    std::streamsize const known = stream.good() ? BufferAreas::Known(*stream.rdbuf()) : 0;
    return known > 0 ? static_cast<std::size_t>(known) : 0;
}

} // namespace Zan::Orv::Core::Service::Internal
