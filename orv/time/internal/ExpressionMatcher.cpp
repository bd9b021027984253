#include "orv/time/internal/ExpressionMatcher.h"

#include "orv/foundation/internal/Characters.h"

#include <algorithm>
#include <cstddef>

namespace Zan::Orv::Core::Service::Internal {

namespace {

template<class Class>
std::size_t Skip(std::string_view text, std::size_t at, Class isOfClass)
{
    while (at < text.size() && isOfClass(text[at]))
        ++at;
    return at;
}

// Where the term ends that begins with the sign at `sign`, with the blanks behind it; 0 when none does.
std::size_t EndOfTerm(std::string_view text, std::size_t sign)
{
    std::size_t const number = Skip(text, sign + 1, IsSpace);
    std::size_t const numberEnd = Skip(text, number, IsDigit);
    std::size_t const unit = Skip(text, numberEnd, IsSpace);
    std::size_t const unitEnd = Skip(text, unit, IsLetter);
    return number == numberEnd || unit == unitEnd ? 0 : Skip(text, unitEnd, IsSpace);
}

} // namespace

bool MatchExpression(std::string_view text, std::string_view& base, std::string_view& offsets)
{
    // Terms are read from the last sign backwards for as long as each ends where the one behind it begins. No term is
    // looked at beyond the next sign, so that every character is looked at once or twice.
    std::size_t run = text.size();
    while (run != 0)
    {
        std::size_t behindSign = run;
        while (behindSign != 0 && text[behindSign - 1] != '+' && text[behindSign - 1] != '-')
            --behindSign;
        if (behindSign == 0 || EndOfTerm(text, behindSign - 1) != run)
            break;
        run = behindSign - 1;
    }
    offsets = text.substr(run);

    std::size_t const begin = Skip(text.substr(0, run), 0, IsSpace);
    std::size_t end = run;
    while (end > begin && IsSpace(text[end - 1]))
        --end;
    base = text.substr(begin, end - begin);
    return std::none_of(base.begin(), base.end(), [](char c) { return c == '\n' || c == '\r'; });
}

bool IsSymbol(std::string_view text)
{
    if (text.empty() || !(IsLetter(text[0]) || text[0] == '_'))
        return false;
    return Skip(text, 1, [](int c) { return IsLetter(c) || IsDigit(c) || c == '_'; }) == text.size();
}

} // namespace Zan::Orv::Core::Service::Internal
