#pragma once

#include "orv/Export.h"

#include <cstddef>
#include <memory>
#include <streambuf>

namespace Zan::Orv::Core::Service {

/// A stream buffer that encodes what is written and decodes what is read, on the way to and from another
/// stream buffer, in the standard base64 of RFC 4648.
///
///     std::ofstream file("model.b64", std::ios::binary);
///     {
///         Base64Buf text(file.rdbuf());
///         BZip2Buf packed(&text, 9, false);  // buffers stack, and end from the outside in
///         std::ostream stream(&packed);
///         stream << "text";
///     }                                      // here the last characters reach the file
///
/// A `BZip2Buf` above flushes before its end: it tells what that means for the text.
///
/// Lines have 64 characters. Each line feed stands behind a full line, so that a shorter last line has none.
///
/// Flushing ends a group of three bytes that is not full by padding, and what follows begins a new one. Such
/// text is read back whole: reading goes on behind padding. Other readers may stop there, so flush only at
/// the end of what is meant for them.
///
/// Reading skips every character outside the alphabet, line feeds included, and never takes more of the
/// target than the groups that it decodes and what it skips before them.
///
/// A target that refuses characters shows as a failed write, as with every stream buffer. One that throws
/// does so through these calls. One thread at a time, target included.
class ORV_API Base64Buf : public std::streambuf
{
public:
    /// `target` is borrowed, and must outlive this object.
    explicit Base64Buf(std::streambuf* target);
    Base64Buf(Base64Buf const&) = delete;
    Base64Buf& operator=(Base64Buf const&) = delete;

    /// Writes what is left, and synchronises the target. What goes wrong then is lost; flush first to hear of
    /// it.
    ~Base64Buf() override;

protected:
    /// Encodes what the put area holds.
    int_type overflow(int_type c = traits_type::eof()) override;

    /// \throws std::runtime_error for text that ends within a group, and for padding where none can be. What
    ///     was decoded of the same block is lost.
    int_type underflow() override;

    /// Encodes what was written, with padding where a group is not full, and synchronises the target.
    int sync() override;

private:
    int FlushPutBuffer();
    bool Write(char const* text, std::size_t size);

    std::streambuf* target_;
    std::size_t groupsOnLine_ = 0; // below 16
    std::unique_ptr<char[]> putBuffer_;
    std::unique_ptr<char[]> getBuffer_;
};

} // namespace Zan::Orv::Core::Service
