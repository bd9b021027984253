#include "orv/time/TimeFormat.h"

#include "fuzz/Input.h"
#include "orv/foundation/Exception.h"
#include "orv/time/Time.h"

#include <sstream>
#include <stdexcept>

namespace Zan::Orv::Core::Service::Fuzz {

// Any format writes any time, and reads any text.
void Run(Input& input)
{
    TimeFormat const format(input.Text());
    Time time = Time::MinTime();
    time += input.Number<long long>() % (Time::MaxTime() - Time::MinTime());
    Succeeds<TimeException, std::out_of_range>([&] {
        std::stringstream stream;
        stream << format(time);
        Time read;
        stream >> format(read);
    });
    Succeeds<TimeException, std::out_of_range>([&] {
        std::istringstream stream(input.Rest());
        stream >> format(time);
    });
}

} // namespace Zan::Orv::Core::Service::Fuzz
