#pragma once

#include "orv/Export.h"

namespace Zan::Orv::Core::Service {

/// bzip2 from memory to memory, in one call, for callers that know how large the result can be. A stream
/// buffer for data of any size is `BZip2Buf`.
///
/// Nothing throws: results are the codes of `<bzlib.h>`, with `BZ_OK` for success. `*destLen` is the capacity
/// of `dest` on entry and on success the size of the result; on failure it stays, and what `dest` holds is
/// not defined. Parameters out of range and null pointers are `BZ_PARAM_ERROR`, a `dest` that is too small is
/// `BZ_OUTBUFF_FULL`. The buffers must not overlap. Any thread, at any time.
class ORV_API BZip2Utility
{
public:
    /// Compresses `sourceLen` bytes into one bzip2 stream.
    ///
    /// - `blockSize100k`: bzip2's block size, from 1 to 9, in units of 100,000 bytes
    /// - `verbosity`: from 0, which is silent, to 4: what bzip2 tells on the standard error stream
    /// - `workFactor`: from 0 to 250: how soon repetitive data goes to the slower method; 0 stands for 30
    static int BuffToBuffCompress(char* dest, unsigned int* destLen, char const* source,
                                  unsigned int sourceLen, int blockSize100k, int verbosity, int workFactor);

    /// Reads one bzip2 stream; what follows it is ignored. One that ends too early is `BZ_UNEXPECTED_EOF`.
    ///
    /// - `small`: 1 for less memory at half the speed, or 0
    /// - `verbosity`: as in compressing
    static int BuffToBuffDecompress(char* dest, unsigned int* destLen, char const* source,
                                    unsigned int sourceLen, int small, int verbosity);
};

} // namespace Zan::Orv::Core::Service
