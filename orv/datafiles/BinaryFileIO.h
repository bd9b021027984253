#pragma once

#include "orv/Export.h"

#include <iosfwd>

namespace Zan::Orv::Core::Service {

class BinaryFileReader;

/// Numbers in binary data files: 32-bit integers in two's complement and IEEE 754 floats of 32 and 64 bits,
/// each with its most significant byte first, and characters as they are. There is no framing: what follows
/// what is known to the caller.
///
///     int count = 0;
///     if (!BinaryFileIO::readInt32(reader, count))
///         throw std::runtime_error("No count.");
///
/// Reading tells whether the reader is good afterwards. When it is not, what arrived stands in `values` in
/// the order of the file. Writing tells whether the stream has no flag set afterwards. Open streams in binary
/// mode.
///
/// A negative count is refused, and so is one of more bytes than `int` counts, in reading. Safe on any thread; a reader
/// or a stream belongs to one at a time.
class ORV_API BinaryFileIO
{
public:
    BinaryFileIO() = delete;

    /// \{
    /// True when the reader is good afterwards. `count` is that of elements, and `values` has room for them.
    static bool readChars(BinaryFileReader& reader, char* values, int count);
    static bool readInt32(BinaryFileReader& reader, int& value);
    static bool readFloat32(BinaryFileReader& reader, float& value);
    static bool readFloat64(BinaryFileReader& reader, double& value);
    static bool readInt32s(BinaryFileReader& reader, int* values, int count);
    static bool readFloat32s(BinaryFileReader& reader, float* values, int count);
    static bool readFloat64s(BinaryFileReader& reader, double* values, int count);
    /// \}

    /// \{
    /// True when the stream has no flag set afterwards.
    static bool writeChars(std::ostream& out, char const* values, int count);
    static bool writeInt32(std::ostream& out, int value);
    static bool writeFloat32(std::ostream& out, float value);
    static bool writeFloat64(std::ostream& out, double value);
    /// \}

    /// \{
    /// \warning These reverse the bytes of the caller's array, and leave them so: afterwards it holds the
    /// order of the file and no numbers. Writing it again would write the wrong order.
    static bool writeInt32s(std::ostream& out, int* values, int count);
    static bool writeFloat32s(std::ostream& out, float* values, int count);
    static bool writeFloat64s(std::ostream& out, double* values, int count);
    /// \}
};

} // namespace Zan::Orv::Core::Service
