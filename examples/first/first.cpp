#include "orv/serialization/Serializer.h"
#include "orv/serialization/XMLInputSerializer.h"
#include "orv/serialization/XMLOutputSerializer.h"
#include "orv/time/TimeOffset.h"
#include "orv/time/TimePeriod.h"

#include <iostream>
#include <sstream>

using namespace Zan::Orv::Core::Service;

int main()
{
    TimePeriod warmUp(Time(2000, 1, 31, 0, 0, 0, 0), ParseTimeOffset("+1 month"));
    std::cout << warmUp << '\n'; // 2000-01-31 00:00:00.000/2000-02-29 00:00:00.000

    std::stringstream document;
    {
        XMLOutputSerializer xml(document, "run");
        Serializer(xml).Serialize(warmUp, "warm_up");
    }
    TimePeriod copy;
    XMLInputSerializer xml(document, "run");
    Serializer(xml).Serialize(copy, "warm_up");
    std::cout << (copy == warmUp ? "The same again.\n" : "Not the same.\n");
    return copy == warmUp ? 0 : 1;
}
