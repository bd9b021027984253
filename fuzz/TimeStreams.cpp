#include "fuzz/Input.h"
#include "orv/foundation/DebugFlags.h"
#include "orv/foundation/Exception.h"
#include "orv/foundation/Numerics.h"
#include "orv/time/Time.h"
#include "orv/time/TimeFrequency.h"
#include "orv/time/TimeOffset.h"
#include "orv/time/TimePeriod.h"

#include <sstream>
#include <stdexcept>

namespace Zan::Orv::Core::Service::Fuzz {

namespace {

template<class T>
bool HasReadableText(T const&)
{
    return true;
}

// As its header tells.
bool HasReadableText(TimeFrequency const& frequency)
{
    return frequency.GetFrequencyUnit() != TimeFrequency::FrequencyUnit::Milliseconds ||
           frequency.GetValue() >= 0 || frequency.GetValue() < -9;
}

// What is read from a text is written as a text that reads as the same.
template<class T>
void Read(std::string const& text, T value)
{
    std::istringstream stream(text);
    bool const isRead = Succeeds<TimeException, std::out_of_range>([&] { stream >> value; });
    if (!isRead || !stream || !HasReadableText(value))
        return;
    std::stringstream again;
    again << value;
    T copy = value;
    again >> copy;
    Require(again && copy == value, "a value's text is that value's");
}

} // namespace

void Run(Input& input)
{
    std::string const text = input.Rest();
    Read(text, Time());
    Read(text, TimeOffset(0, 0, 0, 0, 0, 0, 0));
    Read(text, TimeFrequency(1, TimeFrequency::FrequencyUnit::Days));
    Read(text, TimePeriod());
    Succeeds<std::runtime_error, std::exception>([&] {
        double const number = IEEEFromString(text);
        Require(!IsFinite(number) || IEEEFromString(IEEEToString(number)) == number,
                "a number's text is that number's");
    });
    std::istringstream words(text);
    words >> DebugFlags::GetInstance();
    DebugFlags::ResetAll();
}

} // namespace Zan::Orv::Core::Service::Fuzz
