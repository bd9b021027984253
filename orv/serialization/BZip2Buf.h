#pragma once

#include "orv/Export.h"

#include <memory>
#include <streambuf>

namespace Zan::Orv::Core::Service {

/// A stream buffer that compresses what is written and decompresses what is read, on the way to and from
/// another stream buffer, in the format of bzip2.
///
///     std::ofstream file("model.bz2", std::ios::binary);
///     BZip2Buf buffer(file.rdbuf(), 9, false);
///     std::ostream stream(&buffer);
///     stream << "text";
///     stream.flush();                // tells whether the target took it all so far
///     buffer.close();                // the rest, and the stream's end
///     file.flush();
///     bool const isWhole = buffer.good() && file.good();
///
/// One object is one bzip2 stream, written or read. Reading ends with that stream, also where the target goes
/// on with another one; by then up to 4,095 bytes behind it are taken off the target. There is no seeking and
/// no putting back across a block of 4,096 bytes.
///
/// What is compressed rests in the compressor until a block is full or the buffer is closed: flushing hands
/// over what there is and ends nothing. A target that was read to the end of its bzip2 stream is left as it
/// is by closing; one that was not gets the end of an empty stream, as if nothing had been written.
///
/// Closing synchronises the target before the stream's end. Over a `Base64Buf` this closes a group of its text,
/// with padding, where more than a block was compressed: the library and `base64 -d` read on behind that, and
/// readers that stop at the first "=" do not.
///
/// A target that refuses bytes shows as a failed write, as with every stream buffer, and in `good`. The
/// compressed bytes that it refused are lost, and the stream with them. One that throws does so through these
/// calls.
///
/// Memory: about 8 times the block size, from the construction on and also where it is only read; reading
/// adds 4 times the block size of what it reads, or 2.5 with `small`. One thread at a time, target included.
class ORV_API BZip2Buf : public std::streambuf
{
public:
    /// `target` is borrowed, and must outlive this object. `blockSize100k` is the size of bzip2's blocks in
    /// units of 100,000 bytes, from 1 to 9. `small` decompresses in less memory and at half the speed.
    /// \throws std::runtime_error for another block size, or without the memory.
    BZip2Buf(std::streambuf* target, int blockSize100k, bool small);
    BZip2Buf(BZip2Buf const&) = delete;
    BZip2Buf& operator=(BZip2Buf const&) = delete;

    /// Closes. What goes wrong then is lost; close first to hear of it.
    ~BZip2Buf() override;

    /// Writes what is left, synchronises the target, and writes the stream's end, which may rest in the target
    /// until that is flushed; the target stays open. Closing again does nothing. Afterwards, writing fails as
    /// soon as the put area is full, synchronising fails, and reading ends with the bytes that were
    /// decompressed already.
    ///
    /// A refused byte is told by `good`. When the target throws, so does this, and the buffer is closed.
    void close();

    /// False once the target has refused bytes or failed to synchronise: what it holds is not the whole stream.
    bool good() const { return good_; }

protected:
    /// Compresses what the put area holds.
    int_type overflow(int_type c = traits_type::eof()) override;

    /// \throws std::runtime_error for what is not bzip2, is damaged, or ends before its time. What was
    ///     decompressed of the same block is lost.
    int_type underflow() override;

    /// Compresses what was written, and synchronises the target.
    int sync() override;

private:
    struct Impl;

    int FlushPutBuffer();
    template<class Step>
    bool Try(Step step);

    std::streambuf* target_;
    std::unique_ptr<Impl> impl_; // null once closed
    std::unique_ptr<char[]> putBuffer_;
    std::unique_ptr<char[]> getBuffer_;
    bool good_ = true;
};

} // namespace Zan::Orv::Core::Service
