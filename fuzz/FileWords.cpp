#include "fuzz/Input.h"
#include "orv/files/FileUtils.h"

#include <cmath>
#include <cstdlib>

namespace Zan::Orv::Core::Service::Fuzz {

namespace {

using Words = std::vector<std::string>;

Words WordsOf(std::string text)
{
    Words words;
    FileUtils::GetWords(text, words);
    return words;
}

bool IsNumber(std::string const& word)
{
    return word.find_first_not_of("0123456789.+-Ee") == std::string::npos;
}

// Word by word, with the C library's numbers.
bool PlainCompare(Words const& a, Words const& b)
{
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i)
    {
        if (a[i] == b[i])
            continue;
        if (!IsNumber(a[i]) || !IsNumber(b[i]))
            return false;
        double const p = std::atof(a[i].c_str());
        double const q = std::atof(b[i].c_str());
        if (std::fabs(p - q) > std::fabs(p / 1e12))
            return false;
    }
    return true;
}

} // namespace

void Run(Input& input)
{
    std::string a = input.Text();
    std::string b = input.Rest();
    Require(FileUtils::FloatTolerantCompare(a, b) == PlainCompare(WordsOf(a), WordsOf(b)),
            "lines are equal when their words are");
}

} // namespace Zan::Orv::Core::Service::Fuzz
