#include "orv/serialization/BZip2Utility.h"

#include <bzlib.h>

namespace Zan::Orv::Core::Service {

namespace {

constexpr int defaultWorkFactor = 30;

bool IsWithin(int value, int low, int high)
{
    return low <= value && value <= high;
}

// bzip2 does not write to its input, although its type says so.
bz_stream MakeStream(char* dest, unsigned int destLen, char const* source, unsigned int sourceLen)
{
    bz_stream stream{};
    stream.next_in = const_cast<char*>(source);
    stream.avail_in = sourceLen;
    stream.next_out = dest;
    stream.avail_out = destLen;
    return stream;
}

} // namespace

int BZip2Utility::BuffToBuffCompress(char* dest, unsigned int* destLen, char const* source,
                                     unsigned int sourceLen, int blockSize100k, int verbosity, int workFactor)
{
    if (dest == nullptr || destLen == nullptr || source == nullptr || !IsWithin(blockSize100k, 1, 9) ||
        !IsWithin(verbosity, 0, 4) || !IsWithin(workFactor, 0, 250))
        return BZ_PARAM_ERROR;

    bz_stream stream = MakeStream(dest, *destLen, source, sourceLen);
    int result = BZ2_bzCompressInit(&stream, blockSize100k, verbosity,
                                    workFactor == 0 ? defaultWorkFactor : workFactor);
    if (result != BZ_OK)
        return result;

    result = BZ2_bzCompress(&stream, BZ_FINISH);
    BZ2_bzCompressEnd(&stream);
    if (result == BZ_FINISH_OK)
        return BZ_OUTBUFF_FULL;
    if (result != BZ_STREAM_END)
        return result;
    *destLen -= stream.avail_out;
    return BZ_OK;
}

int BZip2Utility::BuffToBuffDecompress(char* dest, unsigned int* destLen, char const* source,
                                       unsigned int sourceLen, int small, int verbosity)
{
    if (dest == nullptr || destLen == nullptr || source == nullptr || !IsWithin(small, 0, 1) ||
        !IsWithin(verbosity, 0, 4))
        return BZ_PARAM_ERROR;

    bz_stream stream = MakeStream(dest, *destLen, source, sourceLen);
    int result = BZ2_bzDecompressInit(&stream, verbosity, small);
    if (result != BZ_OK)
        return result;

    result = BZ2_bzDecompress(&stream);
    BZ2_bzDecompressEnd(&stream);
    if (result == BZ_OK)
        return stream.avail_out == 0 ? BZ_OUTBUFF_FULL : BZ_UNEXPECTED_EOF;
    if (result != BZ_STREAM_END)
        return result;
    *destLen -= stream.avail_out;
    return BZ_OK;
}

} // namespace Zan::Orv::Core::Service
