#include "orv/serialization/StreamInputSerializer.h"

#include "orv/foundation/internal/NumberText.h"
#include "orv/serialization/internal/StreamBytes.h"
#include "orv/serialization/internal/StreamText.h"

#include <istream>

namespace Zan::Orv::Core::Service {

namespace {

// Undoes the writer's escapes in place. A backslash at the end is dropped, and before any other character it
// leaves that character.
void Unescape(std::string& text)
{
    std::size_t from = text.find('\\');
    if (from == std::string::npos)
        return;
    std::size_t to = from;
    for (; from < text.size(); ++from)
    {
        char c = text[from];
        if (c == '\\')
        {
            if (++from == text.size())
                break;
            c = text[from] == 'n' ? '\n' : text[from];
        }
        text[to++] = c;
    }
    text.resize(to);
}

} // namespace

StreamInputSerializer::StreamInputSerializer(std::istream& stream) : stream_(stream)
{}

StreamInputSerializer::~StreamInputSerializer() = default;

bool StreamInputSerializer::IsReading() const
{
    return true;
}

bool StreamInputSerializer::IsWriting() const
{
    return false;
}

bool StreamInputSerializer::IsExhausted() const
{
    return failed_;
}

std::size_t StreamInputSerializer::BytesAhead() const
{
    return Internal::BytesAhead(stream_);
}

template<class T>
void StreamInputSerializer::ReadLine(T& value)
{
    Internal::ReadInteger(stream_, value);
    // Before the rest of the line, whose end a last line may lack.
    failed_ = stream_.fail();
    Internal::SkipLine(stream_);
}

template<class Number, class T>
void StreamInputSerializer::ReadLineAs(T& value)
{
    // Small numbers, not characters. NOLINTNEXTLINE(bugprone-signed-char-misuse,cert-str34-c)
    auto number = static_cast<Number>(value);
    ReadLine(number);
    value = static_cast<T>(number);
}

template<class T>
void StreamInputSerializer::ReadNumber(T& value)
{
    failed_ = !std::getline(stream_, line_);
    if (!failed_)
        value = static_cast<T>(Internal::ReadIEEE(line_));
}

void StreamInputSerializer::Scalar(char const*, std::size_t, std::string& value)
{
    failed_ = !std::getline(stream_, line_);
    if (!failed_)
    {
        Unescape(line_);
        value = line_;
    }
}

void StreamInputSerializer::Scalar(char const*, std::size_t, double& value)
{
    ReadNumber(value);
}

void StreamInputSerializer::Scalar(char const*, std::size_t, float& value)
{
    ReadNumber(value);
}

void StreamInputSerializer::Scalar(char const*, std::size_t, unsigned long long& value)
{
    ReadLine(value);
}

void StreamInputSerializer::Scalar(char const*, std::size_t, long long& value)
{
    ReadLine(value);
}

void StreamInputSerializer::Scalar(char const*, std::size_t, unsigned int& value)
{
    ReadLine(value);
}

void StreamInputSerializer::Scalar(char const*, std::size_t, int& value)
{
    ReadLine(value);
}

void StreamInputSerializer::Scalar(char const*, std::size_t, unsigned short& value)
{
    ReadLine(value);
}

void StreamInputSerializer::Scalar(char const*, std::size_t, short& value)
{
    ReadLine(value);
}

void StreamInputSerializer::Scalar(char const*, std::size_t, unsigned char& value)
{
    ReadLineAs<unsigned int>(value);
}

void StreamInputSerializer::Scalar(char const*, std::size_t, signed char& value)
{
    ReadLineAs<int>(value);
}

void StreamInputSerializer::Scalar(char const*, std::size_t, bool& value)
{
    stream_.setf(std::ios::boolalpha);
    stream_ >> value;
    failed_ = stream_.fail();
    Internal::SkipLine(stream_);
}

void StreamInputSerializer::StartArray(char const*, std::size_t, std::size_t& count)
{
    unsigned long long number = 0;
    ReadLine(number);
    // A count that did not fit leaves the largest number behind.
    count = failed_ ? 0 : static_cast<std::size_t>(number);
}

void StreamInputSerializer::EndArray(char const*)
{}

void StreamInputSerializer::StartObject(char const*, std::size_t, std::string& className, int& id)
{
    Internal::ReadWord(stream_, className);
    ReadLine(id);
    if (className == "#")
        className.clear();
}

void StreamInputSerializer::EndObject(char const*)
{}

} // namespace Zan::Orv::Core::Service
