#pragma once

#include "orv/Export.h"
#include "orv/datafiles/BinaryFileReader.h"

#include <cstddef>
#include <cstdio>
#include <cstring>

namespace Zan::Orv::Core::Service {

/// Reads a file of any size through two large blocks, the one in use and the one before: reading forward and
/// hopping between two regions both cost few calls of the host.
///
///     BufferedBinaryFileReader reader("case.res");
///     reader.seekg(1024);
///     double pressure = 0.0;
///     if (!BinaryFileIO::readFloat64(reader, pressure))
///         ...
///
/// The file may be written by others meanwhile. Its size is what it was at opening: what is appended later is
/// not seen, and where it was cut off reading fails. What is in a block is not read again.
///
/// No call but the constructor throws. `good` turns false for two reasons:
/// - Out of bounds: a read that would pass the end, or has a negative count, copies nothing and stays where
///   it is; a seek to a negative position, to the end or behind has the same effect. From then on no read
///   does anything, until a seek to a position inside the file.
/// - The host failed to seek or to read. A read across blocks may then have delivered its front, and the
///   position tells how much. A seek changes nothing about it. Reading may go on, from the two blocks or from
///   the file, and `good` is true again when a block could be loaded.
///
/// \warning A copy shares the file and the blocks with its source, and an assignment drops what the target
/// had without closing it. Destroy one of the two and use neither after that. Pass readers by reference.
///
/// One thread at a time.
class ORV_API BufferedBinaryFileReader : public BinaryFileReader
{
public:
    /// Opens a file by its name. A file that can not be opened, or has no positions to seek, as a pipe,
    /// leaves a reader that is not good.
    /// \throws std::bad_alloc
    explicit BufferedBinaryFileReader(char const* fileName);
    BufferedBinaryFileReader(BufferedBinaryFileReader const&) = default;
    BufferedBinaryFileReader& operator=(BufferedBinaryFileReader const&) = default;
    ~BufferedBinaryFileReader() override;

    /// Does not touch the file.
    void seekg(long long const& position) override;
    /// The position of the next read, also where a seek has led outside.
    long long tellg() const override { return position_; }

    /// All or nothing at the end of the file: see above.
    void read(char* buffer, int count) override
    {
        // Most reads are short and lie inside of the block. No block holds a byte behind the end of the file.
        if (count > 0 && !eofFlag_ && position_ >= current_.begin && count <= current_.end - position_)
        {
            std::memcpy(buffer, current_.data + (position_ - current_.begin),
                        static_cast<std::size_t>(count));
            position_ += count;
        }
        else
            readBlocks(buffer, count);
    }

    bool good() const override { return file_ != nullptr && !eofFlag_ && !errorFlag_; }

    /// By the position alone, whatever `good` is: a read that ends at the end is good and leaves `eof` true,
    /// one that was refused leaves it false. True without a file, and for a negative position.
    bool eof() const override { return file_ == nullptr || position_ < 0 || position_ >= fileSize_; }

private:
    // A block of the file in memory: its bytes from begin up to before end.
    struct Block
    {
        bool Holds(long long position) const { return position >= begin && position < end; }

        char* data = nullptr;
        long long begin = 0;
        long long end = 0;
    };

    void initBuffer();
    bool updateBuffer(long long const& position);
    void readBlocks(char* buffer, int count);

    std::FILE* file_ = nullptr;
    long long fileSize_ = 0;
    int bufferSize_ = 0x80000; // of each block, which begin at its multiples
    Block current_;
    Block other_;
    long long position_ = 0;
    long long filePosition_ = 0; // where the stream stands
    bool eofFlag_ = false;
    bool errorFlag_ = false;
};

} // namespace Zan::Orv::Core::Service
