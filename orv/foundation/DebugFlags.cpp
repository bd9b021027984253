#include "orv/foundation/DebugFlags.h"

#include "orv/foundation/Environment.h"
#include "orv/foundation/internal/DebugWords.h"

#include <istream>
#include <ostream>

namespace Zan::Orv::Core::Service {

DebugFlags::DebugFlags() : flags_(Internal::DebugWordsOfEnvironment(GetEnvVariable("ORV_DEBUG_FLAGS")))
{}

DebugFlags::~DebugFlags() = default;

DebugFlags& DebugFlags::GetInstance()
{
    static DebugFlags instance;
    return instance;
}

bool DebugFlags::IsSet(std::string const& flag)
{
    return GetInstance().flags_.count(flag) != 0;
}

void DebugFlags::Set(std::string const& flag)
{
    GetInstance().flags_.insert(flag);
}

void DebugFlags::Reset(std::string const& flag)
{
    GetInstance().flags_.erase(flag);
}

void DebugFlags::ResetAll()
{
    GetInstance().flags_.clear();
}

std::istream& operator>>(std::istream& stream, DebugFlags& flags)
{
    Internal::ReadDebugWords(stream, flags.flags_);
    return stream;
}

std::ostream& operator<<(std::ostream& stream, DebugFlags const& flags)
{
    for (std::string const& flag : flags.flags_)
        stream << flag << ' ';
    return stream;
}

} // namespace Zan::Orv::Core::Service
