#include "orv/time/internal/TermReader.h"

#include "orv/foundation/Exception.h"
#include "orv/foundation/internal/Characters.h"

#include <cstdlib>
#include <locale>
#include <string_view>
#include <utility>

namespace Zan::Orv::Core::Service::Internal {

namespace {

constexpr std::pair<std::string_view, UnitRow> unitWords[] = {
    {"years", UnitRow::Years},
    {"year", UnitRow::Years},
    {"yrs", UnitRow::Years},
    {"yr", UnitRow::Years},
    {"y", UnitRow::Years},
    {"months", UnitRow::Months},
    {"month", UnitRow::Months},
    {"weeks", UnitRow::Weeks},
    {"week", UnitRow::Weeks},
    {"wks", UnitRow::Weeks},
    {"wk", UnitRow::Weeks},
    {"w", UnitRow::Weeks},
    {"days", UnitRow::Days},
    {"day", UnitRow::Days},
    {"d", UnitRow::Days},
    {"hours", UnitRow::Hours},
    {"hour", UnitRow::Hours},
    {"hrs", UnitRow::Hours},
    {"hr", UnitRow::Hours},
    {"h", UnitRow::Hours},
    // "m" is no unit: nobody knows whether it means months or minutes.
    {"minutes", UnitRow::Minutes},
    {"minute", UnitRow::Minutes},
    {"mins", UnitRow::Minutes},
    {"min", UnitRow::Minutes},
    {"seconds", UnitRow::Seconds},
    {"second", UnitRow::Seconds},
    {"secs", UnitRow::Seconds},
    {"sec", UnitRow::Seconds},
    {"s", UnitRow::Seconds},
    {"milliseconds", UnitRow::Milliseconds},
    {"millisecond", UnitRow::Milliseconds},
    {"ms", UnitRow::Milliseconds},
};

} // namespace

UnitRow LookupUnit(std::string const& unit)
{
    std::string lower = unit;
    std::locale const locale;
    std::use_facet<std::ctype<char>>(locale).tolower(lower.data(), lower.data() + lower.size());
    for (auto const& [word, row] : unitWords)
    {
        if (word == lower)
            return row;
    }
    throw TimeException("Invalid time offset unit: '" + unit + "'");
}

TermReader::TermReader(std::string const& text, std::size_t position) : text_(text), position_(position)
{
    std::size_t const last = text.find_last_of("\n\r");
    lineEnd_ = last == std::string::npos ? 0 : last + 1;
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

    std::size_t const unit = SkipBlanks(at);
    at = unit;
    while (at < text_.size() && IsLetter(text_[at]))
        ++at;
    if (at == unit || at < lineEnd_)
        return false;

    negative_ = negative;
    number_ = number;
    unit_ = unit;
    position_ = at;
    return true;
}

int TermReader::Number() const
{
    return std::atoi(text_.c_str() + number_); // stops at the unit or the blank before it
}

} // namespace Zan::Orv::Core::Service::Internal
