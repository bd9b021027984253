#include "orv/foundation/Strings.h"

#include "fuzz/Input.h"

#include <numeric>
#include <stdexcept>

namespace Zan::Orv::Core::Service::Fuzz {

namespace {

std::string Upper(std::string s)
{
    StringToUpper(s);
    return s;
}

} // namespace

void Run(Input& input)
{
    std::string const a = input.Text();
    std::string const b = input.Text();
    auto const width = input.Number<std::uint8_t>();
    bool const skipEmpty = input.Flag();
    std::string const text = input.Rest();

    Require(NoCaseStringEqual(a, b) == (Upper(a) == Upper(b)), "equality is that of the upper case");
    Require(NoCaseStringLess(a, b) == (Upper(a) < Upper(b)), "and so is the order");
    AllBlanks(text);
    AllDigits(text);

    std::string trimmed = text;
    StringTrimBlank(trimmed, true, true);
    Require(StringTrim(text).substr(0, trimmed.size()) == trimmed, "trimming takes blanks alone");

    std::vector<std::string> pieces;
    StringSplit(text, pieces, a, skipEmpty);
    StringSplit(text, width, pieces);
    if (width != 0)
        Require(std::accumulate(pieces.begin(), pieces.end(), std::string()) == text,
                "pieces make the whole");
    if (!a.empty())
    {
        std::string replaced = text;
        StringReplace(replaced, a, b);
        std::string expected = text;
        for (std::size_t at = 0; (at = expected.find(a, at)) != std::string::npos; at += b.size())
            expected.replace(at, a.size(), b);
        Require(replaced == expected, "each is replaced, and what is put there is not looked at");
    }
    for (int const count : {-1, 0, 1, 255})
    {
        std::string piece;
        StringLeft(text, piece, count);
        Succeeds<std::out_of_range>([&] { StringRight(text, piece, count); });
    }
}

} // namespace Zan::Orv::Core::Service::Fuzz
