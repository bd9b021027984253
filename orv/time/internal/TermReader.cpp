#include "orv/time/internal/TermReader.h"

#include "orv/foundation/Exception.h"
#include "orv/foundation/internal/Characters.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <locale>
#include <string_view>
#include <utility>

namespace Zan::Orv::Core::Service::Internal {

namespace {

// In the order of their first letters. "m" is no unit: nobody knows whether it means months or minutes.
constexpr std::pair<std::string_view, UnitRow> unitWords[] = {
    {"days", UnitRow::Days},
    {"day", UnitRow::Days},
    {"d", UnitRow::Days},
    {"hours", UnitRow::Hours},
    {"hour", UnitRow::Hours},
    {"hrs", UnitRow::Hours},
    {"hr", UnitRow::Hours},
    {"h", UnitRow::Hours},
    {"months", UnitRow::Months},
    {"month", UnitRow::Months},
    {"minutes", UnitRow::Minutes},
    {"minute", UnitRow::Minutes},
    {"mins", UnitRow::Minutes},
    {"min", UnitRow::Minutes},
    {"milliseconds", UnitRow::Milliseconds},
    {"millisecond", UnitRow::Milliseconds},
    {"ms", UnitRow::Milliseconds},
    {"seconds", UnitRow::Seconds},
    {"second", UnitRow::Seconds},
    {"secs", UnitRow::Seconds},
    {"sec", UnitRow::Seconds},
    {"s", UnitRow::Seconds},
    {"weeks", UnitRow::Weeks},
    {"week", UnitRow::Weeks},
    {"wks", UnitRow::Weeks},
    {"wk", UnitRow::Weeks},
    {"w", UnitRow::Weeks},
    {"years", UnitRow::Years},
    {"year", UnitRow::Years},
    {"yrs", UnitRow::Years},
    {"yr", UnitRow::Years},
    {"y", UnitRow::Years},
};

// The rows that begin with each byte: a unit is compared with a handful of words.
struct Rows
{
    std::uint8_t begin = 0;
    std::uint8_t end = 0;
};

constexpr std::array<Rows, 256> rowsOf = [] {
    std::array<Rows, 256> rows{};
    for (std::size_t row = 0; row < std::size(unitWords); ++row)
    {
        Rows& those = rows[static_cast<unsigned char>(unitWords[row].first.front())];
        if (those.end == 0)
            those.begin = static_cast<std::uint8_t>(row);
        those.end = static_cast<std::uint8_t>(row + 1);
    }
    return rows;
}();

bool FindUnit(std::string_view unit, UnitRow& row)
{
    if (unit.empty())
        return false;
    auto const [begin, end] = rowsOf[static_cast<unsigned char>(unit.front())];
    for (std::size_t i = begin; i < end; ++i)
    {
        if (unitWords[i].first == unit)
        {
            row = unitWords[i].second;
            return true;
        }
    }
    return false;
}

} // namespace

UnitRow LookupUnit(std::string_view unit)
{
    UnitRow row{};
    if (FindUnit(unit, row)) // as most people write it, and as it is in lower case in every locale
        return row;
    std::string lower(unit);
    std::locale const locale;
    std::use_facet<std::ctype<char>>(locale).tolower(lower.data(), lower.data() + lower.size());
    if (FindUnit(lower, row))
        return row;
    throw TimeException("Invalid time offset unit: '" + std::string(unit) + "'");
}

TermReader::TermReader(std::string const& text) : text_(text), lineEnd_(text.size())
{
    while (lineEnd_ != 0 && text[lineEnd_ - 1] != '\n' && text[lineEnd_ - 1] != '\r')
        --lineEnd_;
}

std::size_t TermReader::SkipBlanks(std::size_t at) const
{
    while (at < text_.size() && IsSpace(text_[at]))
        ++at;
    return at;
}

bool TermReader::Next(bool withSign)
{
    std::size_t at = SkipBlanks(position_);
    bool negative = false;
    if (withSign)
    {
        if (at == text_.size() || (text_[at] != '+' && text_[at] != '-'))
            return false;
        negative = text_[at] == '-';
        at = SkipBlanks(at + 1);
    }

    std::size_t const number = at;
    while (at < text_.size() && IsDigit(text_[at]))
        ++at;
    if (at == number)
        return false;

    std::size_t const numberEnd = at;
    std::size_t const unit = SkipBlanks(at);
    at = unit;
    while (at < text_.size() && IsLetter(text_[at]))
        ++at;
    if (at == unit || at < lineEnd_)
        return false;

    negative_ = negative;
    number_ = number;
    numberEnd_ = numberEnd;
    unit_ = unit;
    position_ = at;
    return true;
}

int TermReader::Number() const
{
    if (numberEnd_ - number_ > 9)
        // Stops at the unit or the blank before it. Digits stand there. NOLINTNEXTLINE(cert-err34-c)
        return std::atoi(text_.c_str() + number_);
    int number = 0;
    for (std::size_t at = number_; at != numberEnd_; ++at)
        number = number * 10 + (text_[at] - '0');
    return number;
}

} // namespace Zan::Orv::Core::Service::Internal
