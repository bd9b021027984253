#pragma once

#include "orv/Export.h"

namespace Zan::Orv::Core::Service {

/// A source of bytes with random access, such as a binary data file. `BufferedBinaryFileReader` is the one
/// over a file; `BinaryFileIO` reads numbers from any.
///
/// Nothing is reported by itself: ask `good` after reading. One thread at a time.
class ORV_API BinaryFileReader
{
public:
    BinaryFileReader() = default;
    BinaryFileReader(BinaryFileReader const&) = default;
    BinaryFileReader& operator=(BinaryFileReader const&) = default;
    virtual ~BinaryFileReader() = default;

    /// \{
    /// The position of the next read, in bytes from the start.
    virtual void seekg(long long const& position) = 0;
    virtual long long tellg() const = 0;
    /// \}

    /// Copies the next `count` bytes to `buffer` and moves the position behind them.
    virtual void read(char* buffer, int count) = 0;

    /// False after a failure.
    virtual bool good() const = 0;
    /// True when the position is at the end or behind it.
    virtual bool eof() const = 0;
};

} // namespace Zan::Orv::Core::Service
