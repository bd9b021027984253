#include "orv/datafiles/BufferedBinaryFileReader.h"

#include "orv/platform/SharedFile.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>

namespace Zan::Orv::Core::Service {

namespace {

struct FileCloser
{
    void operator()(std::FILE* file) const { Platform::CloseSharedFile(file); }
};

using OpenFile = std::unique_ptr<std::FILE, FileCloser>;

// Leaves the stream at its start. Negative where there is nothing to seek.
long long FindSize(std::FILE* file)
{
    if (!Platform::SeekSharedFile(file, 0, true))
        return -1;
    long long const size = Platform::TellSharedFile(file);
    return Platform::SeekSharedFile(file, 0) ? size : -1;
}

} // namespace

BufferedBinaryFileReader::BufferedBinaryFileReader(char const* fileName)
{
    OpenFile file(fileName != nullptr ? Platform::OpenSharedFile(fileName) : nullptr);
    if (file == nullptr)
        return;
    long long const size = FindSize(file.get());
    if (size < 0)
        return;
    fileSize_ = size;
    initBuffer();
    file_ = file.release();
}

BufferedBinaryFileReader::~BufferedBinaryFileReader()
{
    delete[] current_.data;
    delete[] other_.data;
    if (file_ != nullptr)
        Platform::CloseSharedFile(file_);
}

// Both blocks together are no larger than the file, but for a byte.
void BufferedBinaryFileReader::initBuffer()
{
    long long const half = fileSize_ / 2 + fileSize_ % 2;
    bufferSize_ = static_cast<int>(std::min<long long>(bufferSize_, half));
    auto const size = static_cast<std::size_t>(bufferSize_);
    auto first = std::make_unique_for_overwrite<char[]>(size);
    other_.data = new char[size];
    current_.data = first.release();
}

void BufferedBinaryFileReader::seekg(long long const& position)
{
    position_ = position;
    eofFlag_ = eof();
}

void BufferedBinaryFileReader::readBlocks(char* buffer, int count)
{
    if (count < 0 || position_ > fileSize_ - count)
        eofFlag_ = true;
    while (count > 0 && updateBuffer(position_))
    {
        auto const taken = static_cast<int>(std::min<long long>(count, current_.end - position_));
        std::memcpy(buffer, current_.data + (position_ - current_.begin), static_cast<std::size_t>(taken));
        position_ += taken;
        buffer += taken;
        count -= taken;
    }
}

// Makes the block that holds `position` the current one. False when it can not be had.
bool BufferedBinaryFileReader::updateBuffer(long long const& position)
{
    if (file_ == nullptr || eofFlag_)
        return false;
    if (current_.Holds(position))
        return true;
    if (other_.Holds(position))
    {
        std::swap(current_, other_);
        return true;
    }

    long long const begin = position - position % bufferSize_;
    // After a failure nobody knows where the stream stands.
    if (begin != filePosition_ || errorFlag_)
    {
        errorFlag_ = !Platform::SeekSharedFile(file_, begin);
        if (errorFlag_)
            return false;
        filePosition_ = begin;
    }

    // What was current stays at hand, and the block before it makes room.
    std::swap(current_, other_);
    current_.begin = current_.end = 0;
    long long const size = std::min<long long>(bufferSize_, fileSize_ - begin);
    errorFlag_ = !Platform::ReadSharedFile(file_, current_.data, static_cast<std::size_t>(size));
    if (errorFlag_)
        return false;
    current_.begin = begin;
    current_.end = begin + size;
    filePosition_ = current_.end;
    return true;
}

} // namespace Zan::Orv::Core::Service
