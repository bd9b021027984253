#pragma once

#include "orv/Export.h"

#include <map>
#include <string>

namespace Zan::Orv::Core::Service {

/// Lets each distinct warning through to the log ten times, the tenth with a line that says that it was the
/// last. Distinct is what differs in its text, or was sent under another keyword.
///
///     MessageCapper::instance()->setCurrentKeyword(well.GetName());
///     MessageCapper::instance()->logW("The rate is negative and was set to zero.");
///
/// Keyword and text are counted as one text without a separator: "AB" and "C" is the same as "A" and "BC".
/// The number of counts grows with each distinct warning until `reset`.
///
/// Nothing is synchronised. Use it on one thread at a time; a warning goes to the log of the calling thread,
/// and counts also while that log is off.
class ORV_API MessageCapper
{
public:
    /// The one capper of the process. It is made at the first call, with an empty keyword, and lives until
    /// the process ends.
    static MessageCapper* instance();

    /// A copy has a keyword and counts of its own from then on. Destroying it ends what `instance` returned
    /// as well; its next call makes a new one.
    MessageCapper(MessageCapper const& other);
    MessageCapper& operator=(MessageCapper const& other);
    ~MessageCapper();

    /// Sends a warning, unless it has been sent ten times. Exceptions of the log's handlers reach the caller;
    /// the warning has been counted then.
    void logW(std::string const& message);

    /// Counts go on under each keyword where they stopped.
    void setCurrentKeyword(std::string const& keyword);

    /// Forgets all counts. The keyword stays.
    void reset();

private:
    MessageCapper();

    static constexpr unsigned int maxMessages_ = 10;
    static MessageCapper* instance_;

    std::string currentKeyword_;
    std::map<std::string, unsigned int> counts_; // how many more times each may be sent
};

} // namespace Zan::Orv::Core::Service
