#pragma once

#include "orv/Export.h"
#include "orv/serialization/ISerializable.h"

#include <cstddef>
#include <string>

namespace Zan::Orv::Core::Service {

class Time;

/// A point in time that is written down as text and bound late: a date in any form that `ParseTime` reads, or the name
/// of a symbol, with offsets behind it. The text is kept as it came; the empty text means "not defined".
/// A plain value, which can be a key of unordered containers.
class ORV_API TimeString : public ISerializable
{
public:
    TimeString() = default;
    /// The text is kept as it is, and not tested.
    TimeString(std::string const& text) : text_(text) {}
    /// The standard text of `time`.
    TimeString(Time const& time);
    TimeString(TimeString const&) = default;
    TimeString(TimeString&&) = default;
    TimeString& operator=(TimeString const&) = default;
    TimeString& operator=(TimeString&&) = default;
    ~TimeString() override = default;

    /// The text as it came.
    std::string const& GetString() const { return text_; }
    /// False for the empty text alone.
    bool IsDefined() const { return !text_.empty(); }

    /// By the text and not by the moment: an order for containers.
    bool operator==(TimeString const& other) const { return text_ == other.text_; }
    bool operator!=(TimeString const& other) const { return text_ != other.text_; }
    bool operator<(TimeString const& other) const { return text_ < other.text_; }

    /// The text as the string "time_string".
    void Serialize(Serializer& serializer) override;

private:
    std::string text_;
};

} // namespace Zan::Orv::Core::Service

/// For unordered containers. By the text, as equality is.
template<>
struct ORV_API std::hash<Zan::Orv::Core::Service::TimeString>
{
    std::size_t operator()(Zan::Orv::Core::Service::TimeString const& time) const;
};
