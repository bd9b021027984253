#include "orv/serialization/Factory.h"
#include "orv/time/Time.h"
#include "orv/time/TimeFormat.h"
#include "orv/time/TimeFrequency.h"
#include "orv/time/TimeOffset.h"
#include "orv/time/TimePeriod.h"
#include "orv/time/TimeString.h"

namespace Zan::Orv::Core::Service {

// The format without a text has a constructor for the factory alone.
class TimeFormatCreator
{
public:
    static ISerializable* Create() { return new TimeFormat; }
};

namespace {

template<class T>
ISerializable* Create()
{
    return new T;
}

// One place registers the room's classes, so that their order is this one and not the linker's. The names
// stand in stored documents.
struct Registration
{
    Registration()
    {
        Factory& factory = Factory::GetFactory();
        factory.Register("Zan::Orv::Core::Service::Time", Create<Time>, typeid(Time));
        factory.Register("Zan::Orv::Core::Service::TimeFormat", TimeFormatCreator::Create,
                         typeid(TimeFormat));
        factory.Register("Zan::Orv::Core::Service::TimeFrequency", Create<TimeFrequency>,
                         typeid(TimeFrequency));
        factory.Register("Zan::Orv::Core::Service::TimeOffset", Create<TimeOffset>, typeid(TimeOffset));
        factory.Register("Zan::Orv::Core::Service::TimePeriod", Create<TimePeriod>, typeid(TimePeriod));
        factory.Register("Zan::Orv::Core::Service::TimeString", Create<TimeString>, typeid(TimeString));
    }
};

Registration const registration;

} // namespace

} // namespace Zan::Orv::Core::Service
