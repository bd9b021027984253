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

bool FindUnit(std::string_view unit, UnitRow& row)
{
    for (auto const& [word, wordRow] : unitWords)
    {
        // The length and the first letter are looked at before the words are compared: most rows end here.
        if (word.size() == unit.size() && word.front() == unit.front() && word == unit)
        {
            row = wordRow;
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
        return std::atoi(text_.c_str() + number_); // stops at the unit or the blank before it
    int number = 0;
    for (std::size_t at = number_; at != numberEnd_; ++at)
        number = number * 10 + (text_[at] - '0');
    return number;
}

} // namespace Zan::Orv::Core::Service::Internal
