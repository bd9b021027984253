#include "orv/serialization/BZip2Buf.h"

#include <bzlib.h>

#include <array>
#include <cstddef>
#include <stdexcept>
#include <utility>

namespace Zan::Orv::Core::Service {

namespace {

constexpr unsigned blockSize = 4096;

using Block = std::array<char, blockSize>;

class Compressor
{
public:
    Compressor(std::streambuf& target, int blockSize100k) : target_(target)
    {
        if (BZ2_bzCompressInit(&stream_, blockSize100k, 0, 0) != BZ_OK)
            throw std::runtime_error("BZip2: Failed to initialize compression system");
    }
    Compressor(Compressor const&) = delete;
    Compressor& operator=(Compressor const&) = delete;
    ~Compressor() { BZ2_bzCompressEnd(&stream_); }

    // False when the target refused bytes.
    bool Compress(char* data, unsigned size)
    {
        stream_.next_in = data;
        stream_.avail_in = size;
        while (stream_.avail_in != 0)
        {
            Offer();
            if (BZ2_bzCompress(&stream_, BZ_RUN) != BZ_RUN_OK)
                throw std::runtime_error("BZip2: Compress failed");
            if (!WriteBlock())
                return false;
        }
        return true;
    }

    // False when the target refused bytes: there is nothing left to do with the stream then.
    bool Finish()
    {
        int result = BZ_FINISH_OK;
        while (result == BZ_FINISH_OK)
        {
            Offer();
            result = BZ2_bzCompress(&stream_, BZ_FINISH);
            if (!WriteBlock())
                return false;
        }
        return result == BZ_STREAM_END;
    }

private:
    void Offer()
    {
        stream_.next_out = block_.data();
        stream_.avail_out = blockSize;
    }

    bool WriteBlock()
    {
        std::streamsize const size = blockSize - stream_.avail_out;
        return size == 0 || target_.sputn(block_.data(), size) == size;
    }

    std::streambuf& target_;
    bz_stream stream_{};
    Block block_;
};

class Decompressor
{
public:
    Decompressor(std::streambuf& source, bool small) : source_(source)
    {
        if (BZ2_bzDecompressInit(&stream_, 0, small ? 1 : 0) != BZ_OK)
            throw std::runtime_error("BZip2: Failed to initialize decompression system");
    }
    Decompressor(Decompressor const&) = delete;
    Decompressor& operator=(Decompressor const&) = delete;
    ~Decompressor() { BZ2_bzDecompressEnd(&stream_); }

    bool HasEnded() const { return result_ == BZ_STREAM_END; }

    // How many bytes came; fewer than `size` only at the stream's end.
    unsigned Decompress(char* to, unsigned size)
    {
        stream_.next_out = to;
        stream_.avail_out = size;
        while (stream_.avail_out != 0 && !HasEnded())
        {
            if (stream_.avail_in == 0)
                ReadBlock();
            unsigned const before = stream_.avail_out;
            // A decompressor that has failed once is not asked again.
            if (result_ == BZ_OK)
                result_ = BZ2_bzDecompress(&stream_);
            Check();
            bool const isStuck = stream_.avail_in == 0 && stream_.avail_out == before;
            if (isStuck && !HasEnded() && IsEndOfSource())
                throw std::runtime_error("BZip2: Unexpected end of input");
        }
        return size - stream_.avail_out;
    }

private:
    void ReadBlock()
    {
        stream_.next_in = block_.data();
        stream_.avail_in = static_cast<unsigned>(source_.sgetn(block_.data(), blockSize));
    }

    void Check() const
    {
        switch (result_)
        {
        case BZ_OK:
        case BZ_STREAM_END: return;
        case BZ_DATA_ERROR_MAGIC: throw std::runtime_error("BZip2: Not a bzip2 data stream");
        case BZ_DATA_ERROR: throw std::runtime_error("BZip2: Corrupt bzip2 data stream");
        default: throw std::runtime_error("BZip2: Decompress failed");
        }
    }

    bool IsEndOfSource() const
    {
        using Traits = std::streambuf::traits_type;
        return Traits::eq_int_type(source_.sgetc(), Traits::eof());
    }

    std::streambuf& source_;
    bz_stream stream_{};
    int result_ = BZ_OK; // of the last call
    Block block_;
};

} // namespace

// Both directions stand ready; only use tells which one is meant.
struct BZip2Buf::Impl
{
    Impl(std::streambuf& target, int blockSize100k, bool small)
        : compressor(target, blockSize100k), decompressor(target, small)
    {}

    Compressor compressor;
    Decompressor decompressor;
};

BZip2Buf::BZip2Buf(std::streambuf* target, int blockSize100k, bool small)
    : target_(target), impl_(std::make_unique<Impl>(*target, blockSize100k, small)),
      putBuffer_(std::make_unique<char[]>(blockSize)), getBuffer_(std::make_unique<char[]>(blockSize))
{
    setp(putBuffer_.get(), putBuffer_.get() + blockSize);
    char* const end = getBuffer_.get() + blockSize;
    setg(end, end, end);
}

BZip2Buf::~BZip2Buf()
{
    try
    {
        close();
    }
    catch (...)
    {
        // A target that throws must not end the program.
    }
}

void BZip2Buf::close()
{
    try
    {
        sync(); // NOLINT(clang-analyzer-optin.cplusplus.VirtualCall): in the destructor, this class's own
    }
    catch (...)
    {
        impl_.reset();
        throw;
    }
    if (auto const impl = std::move(impl_); impl != nullptr && !impl->decompressor.HasEnded())
        Try([&] { return impl->compressor.Finish(); });
}

// Takes a step that hands bytes to the target, and remembers its failure for those who come too late to hear of it.
template<class Step>
bool BZip2Buf::Try(Step step)
{
    bool const wasGood = std::exchange(good_, false); // and stays so when the step throws
    bool const success = step();
    good_ = wasGood && success;
    return success;
}

int BZip2Buf::FlushPutBuffer()
{
    if (impl_ == nullptr)
        return -1;
    auto const size = static_cast<unsigned>(pptr() - pbase());
    if (!Try([&] { return impl_->compressor.Compress(pbase(), size); }))
        return -1;
    setp(pbase(), epptr());
    return 0;
}

BZip2Buf::int_type BZip2Buf::overflow(int_type c)
{
    if (FlushPutBuffer() != 0 || traits_type::eq_int_type(c, traits_type::eof()))
        return traits_type::eof();
    sputc(traits_type::to_char_type(c));
    return c;
}

BZip2Buf::int_type BZip2Buf::underflow()
{
    if (impl_ != nullptr)
    {
        char* const begin = getBuffer_.get();
        setg(begin, begin, begin + impl_->decompressor.Decompress(begin, blockSize));
    }
    return gptr() == egptr() ? traits_type::eof() : traits_type::to_int_type(*gptr());
}

int BZip2Buf::sync()
{
    if (FlushPutBuffer() != 0)
        return -1;
    int result = -1;
    Try([&] { return (result = target_->pubsync()) != -1; });
    return result;
}

} // namespace Zan::Orv::Core::Service
