#pragma once

#include "orv/Export.h"

#include <iosfwd>
#include <set>
#include <string>

namespace Zan::Orv::Core::Service {

/// The process-wide set of named switches for diagnostics.
///
///     if (DebugFlags::IsSet("trace_solver"))
///         Log::LogIF("%d iterations", iterations);
///
/// Any word is a flag; case counts, and the library itself gives no flag a meaning. The first use of the
/// class takes the words of the environment variable `ORV_DEBUG_FLAGS`, which white space separates, as in
/// `ORV_DEBUG_FLAGS="trace_solver dump_matrix"`. A value of fewer than 16 characters sets no flag: put
/// blanks behind a single short one. Later changes of the variable have no effect.
///
/// Only the first use is synchronised. Set flags at the start: while other threads read, nobody may change
/// them.
class ORV_API DebugFlags
{
public:
    DebugFlags(DebugFlags const&) = delete;
    DebugFlags& operator=(DebugFlags const&) = delete;

    /// The set of the process, for the stream operators.
    static DebugFlags& GetInstance();

    /// \{
    /// Asks for, sets and resets one flag. Nothing happens to a flag that is so already.
    static bool IsSet(std::string const& flag);
    static void Set(std::string const& flag);
    static void Reset(std::string const& flag);
    /// \}

    /// Resets every flag, those from the environment too.
    static void ResetAll();

    /// Sets every word up to the end of the stream, in addition to what is set. The stream has failed then.
    friend ORV_API std::istream& operator>>(std::istream& stream, DebugFlags& flags);

    /// Writes the flags in the order of their bytes, a blank behind each.
    friend ORV_API std::ostream& operator<<(std::ostream& stream, DebugFlags const& flags);

private:
    DebugFlags();
    ~DebugFlags();

    std::set<std::string> flags_;
};

} // namespace Zan::Orv::Core::Service
