#include "orv/events/MessageCapper.h"

#include "orv/events/Log.h"

#include <utility>

namespace Zan::Orv::Core::Service {

MessageCapper* MessageCapper::instance_ = nullptr;

MessageCapper::MessageCapper() = default;
MessageCapper::MessageCapper(MessageCapper const&) = default;
MessageCapper& MessageCapper::operator=(MessageCapper const&) = default;

MessageCapper::~MessageCapper()
{
    // The pointer goes first: the one that it stands for comes through here as well.
    MessageCapper* const last = std::exchange(instance_, nullptr);
    if (last != this)
        delete last;
}

MessageCapper* MessageCapper::instance()
{
    if (instance_ == nullptr)
        instance_ = new MessageCapper;
    return instance_;
}

void MessageCapper::logW(std::string const& message)
{
    unsigned int& count = counts_.try_emplace(currentKeyword_ + message, maxMessages_).first->second;
    if (count == 0)
        return;
    // Counted before it is sent: a handler may throw, or come back here.
    bool const isLast = --count == 0;
    if (isLast)
        Log::SendLogMessage(
            (message + "\nPrint limit reached, no more messages like this will be displayed.").c_str(),
            MessageSeverity::Warning);
    else
        Log::SendLogMessage(message.c_str(), MessageSeverity::Warning);
}

void MessageCapper::setCurrentKeyword(std::string const& keyword)
{
    currentKeyword_ = keyword;
}

void MessageCapper::reset()
{
    counts_.clear();
}

} // namespace Zan::Orv::Core::Service
