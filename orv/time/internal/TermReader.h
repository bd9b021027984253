#pragma once

#include "orv/time/TimeOffset.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace Zan::Orv::Core::Service::Internal {

/// The unit words of offsets and frequencies.
enum class UnitRow
{
    Years,
    Months,
    Weeks,
    Days,
    Hours,
    Minutes,
    Seconds,
    Milliseconds
};

/// \throws TimeException "Invalid time offset unit: '...'", with the unit as it was written.
UnitRow LookupUnit(std::string_view unit);

/// Reads terms of an offset from a text, one after another, in one pass. The language is that of the
/// expressions
///
///     \s*([+-])\s*(\d+)\s*([A-Za-z]+)(.*)    with a sign
///     \s*(\d+)\s*([A-Za-z]+)(.*)             without one
///
/// matched against the whole of what is left, where `.` does not cross a line end.
class TermReader
{
public:
    explicit TermReader(std::string const& text);

    /// Reads the next term. False, and nothing read, when none stands there.
    bool Next(bool withSign);

    bool IsNegative() const { return negative_; }
    /// The number of the last term, as atoi reads it: out of the range of `int` the C library decides.
    int Number() const;
    std::string_view Unit() const { return std::string_view(text_).substr(unit_, position_ - unit_); }

private:
    std::size_t SkipBlanks(std::size_t at) const;

    std::string const& text_;
    std::size_t position_ = 0;
    std::size_t lineEnd_; // behind the last line end of the text: before that, no rest is without one
    std::size_t number_ = 0;
    std::size_t numberEnd_ = 0;
    std::size_t unit_ = 0;
    bool negative_ = false;
};

} // namespace Zan::Orv::Core::Service::Internal
