#pragma once

#include "orv/Export.h"
#include "orv/time/Time.h"
#include "orv/time/TimeString.h"

#include <map>
#include <set>

namespace Zan::Orv::Core::Service {

class ITimeStringResolver;

/// Groups times as text by the moments that they stand for, so that a caller can ask which of them fall at a moment and
/// which are in force at one. The moment of a text is taken once, when it is inserted.
///
/// One thread at a time while something is inserted; reading is as safe as the resolver is.
class ORV_API TimeStringOrderer
{
public:
    /// `resolver` is borrowed and must outlive this object.
    explicit TimeStringOrderer(ITimeStringResolver& resolver);
    /// \throws what `insert` does.
    TimeStringOrderer(ITimeStringResolver& resolver, std::set<TimeString> const& times);
    /// With the same resolver.
    TimeStringOrderer(TimeStringOrderer const&) = default;
    TimeStringOrderer& operator=(TimeStringOrderer const&) = delete;

    /// \throws what the resolver does. One text then changes nothing; of a set, those before it are in.
    void insert(TimeString const& time);
    void insert(std::set<TimeString> const& times);

    /// The texts exactly at a moment.
    std::set<TimeString> find(Time const& moment) const;
    /// The same at the moment of a text. \throws what the resolver does.
    std::set<TimeString> find(TimeString const& time) const;

    /// The texts of the latest moment that is not after the given one.
    std::set<TimeString> current(Time const& moment) const;
    /// The same at the moment of a text. \throws what the resolver does.
    std::set<TimeString> current(TimeString const& time) const;

    /// Removes all texts. The resolver stays.
    void clear();

private:
    std::map<Time, std::set<TimeString>> entries_;
    ITimeStringResolver& resolver_;
};

} // namespace Zan::Orv::Core::Service
