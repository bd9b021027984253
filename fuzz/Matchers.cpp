#include "fuzz/Input.h"
#include "fuzz/TimeExpressions.h"

#include <algorithm>

namespace Zan::Orv::Core::Service::Fuzz {

// Each matcher against its expression, whose engine is slow: long texts are left to the other targets.
void Run(Input& input)
{
    std::string text = input.Rest();
    text.resize(std::min<std::size_t>(text.size(), 24));
    Require(CompareDate(text).agrees, "a date is what its expression matches");
    Require(CompareExpression(text).agrees, "a symbolic time is what its expression matches");
    Require(CompareTerms(text, true).agrees, "terms are what their expression matches");
    Require(CompareTerms(text, false).agrees, "terms without signs are what their expression matches");
}

} // namespace Zan::Orv::Core::Service::Fuzz
