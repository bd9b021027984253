#pragma once

#include "orv/serialization/ISerializerImpl.h"

#include <initializer_list>
#include <map>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace Zan::Orv::Core::Service::Tests {

/// A back end without a form, and the base of the two below.
class RecordingSerializer : public ISerializerImpl
{
public:
    bool IsReading() const override { return reading_; }
    bool IsWriting() const override { return !reading_; }

    void Scalar(char const* tag, std::size_t index, std::string& v) override
    {
        Pass("string", tag, index, v);
    }
    void Scalar(char const* tag, std::size_t index, double& v) override { Pass("double", tag, index, v); }
    void Scalar(char const* tag, std::size_t index, float& v) override { Pass("float", tag, index, v); }
    void Scalar(char const* tag, std::size_t index, unsigned long long& v) override
    {
        Pass("ulonglong", tag, index, v);
    }
    void Scalar(char const* tag, std::size_t index, long long& v) override
    {
        Pass("longlong", tag, index, v);
    }
    void Scalar(char const* tag, std::size_t index, unsigned int& v) override { Pass("uint", tag, index, v); }
    void Scalar(char const* tag, std::size_t index, int& v) override { Pass("int", tag, index, v); }
    void Scalar(char const* tag, std::size_t index, unsigned short& v) override
    {
        Pass("ushort", tag, index, v);
    }
    void Scalar(char const* tag, std::size_t index, short& v) override { Pass("short", tag, index, v); }
    void Scalar(char const* tag, std::size_t index, unsigned char& v) override
    {
        Pass("uchar", tag, index, v);
    }
    void Scalar(char const* tag, std::size_t index, signed char& v) override { Pass("schar", tag, index, v); }
    void Scalar(char const* tag, std::size_t index, bool& v) override { Pass("bool", tag, index, v); }

    void StartArray(char const* tag, std::size_t index, std::size_t& count) override
    {
        lines.push_back("array " + Open(tag, index) + ' ' + std::to_string(count));
        if (reading_)
            Read(values_.at(path_), count);
    }
    void EndArray(char const* tag) override { Close(tag); }
    void StartObject(char const* tag, std::size_t index, std::string& className, int& id) override
    {
        lines.push_back("object " + Open(tag, index) + " '" + className + "' " + std::to_string(id));
    }
    void EndObject(char const* tag) override { Close(tag); }

    std::vector<std::string> lines;

protected:
    RecordingSerializer() = default;
    explicit RecordingSerializer(std::map<std::string, std::string> values)
        : reading_(true), values_(std::move(values))
    {}

private:
    static std::string Place(char const* tag, std::size_t index)
    {
        return std::string(tag) + '[' + std::to_string(index) + ']';
    }
    std::string Open(char const* tag, std::size_t index)
    {
        outer_.push_back(path_);
        path_ += Place(tag, index) + '/';
        return Place(tag, index);
    }
    void Close(char const* tag)
    {
        path_ = outer_.back();
        outer_.pop_back();
        lines.push_back("end " + std::string(tag));
    }

    // Characters travel as numbers.
    template<class T>
    using Shown = std::conditional_t<sizeof(T) == 1 && !std::is_same_v<T, bool>, int, T>;

    static void Read(std::string const& text, std::string& value) { value = text; }
    template<class T>
    static void Read(std::string const& text, T& value)
    {
        Shown<T> shown{};
        std::istringstream(text) >> shown;
        value = static_cast<T>(shown);
    }
    template<class T>
    void Pass(char const* type, char const* tag, std::size_t index, T& value)
    {
        if (reading_)
            return Read(values_.at(path_ + Place(tag, index)), value);
        std::ostringstream text;
        text << type << ' ' << Place(tag, index) << " = " << static_cast<Shown<T> const&>(value);
        lines.push_back(text.str());
    }

    bool reading_ = false;
    std::map<std::string, std::string> values_;
    std::string path_;
    std::vector<std::string> outer_;
};

/// Keeps every call as a line: "string time[0] = 2000-01-01", "object begin[0] '' -1", "array item[0] 2",
/// "end begin".
class RecordingWriter : public RecordingSerializer
{
};

/// Plays values by their path, and counts of arrays by a path that ends in a slash. One that is missing
/// throws std::out_of_range.
///
///     PlayingReader reader{{"begin[0]/time[0]", "2000-01-01 00:00:00.000"}, {"list[0]/", "0"}};
class PlayingReader : public RecordingSerializer
{
public:
    PlayingReader(std::initializer_list<std::pair<std::string const, std::string>> values)
        : RecordingSerializer(std::map<std::string, std::string>(values))
    {}
};

} // namespace Zan::Orv::Core::Service::Tests
