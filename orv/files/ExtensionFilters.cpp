#include "orv/files/ExtensionFilters.h"

#include "orv/files/PathCacheEntry.h"
#include "orv/foundation/Strings.h"

#include <algorithm>
#include <cctype>
#include <string_view>

namespace Zan::Orv::Core::Service {

namespace {

// True when `extension` has `length` characters: a dot, `prefix`, and digits. A length from a count of digits
// near the largest number has wrapped around, and may leave no room for the prefix.
bool HasForm(std::string_view extension, std::size_t length, std::string_view prefix)
{
    auto const isDigit = [](char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; };
    if (extension.size() != length || length <= prefix.size())
        return false;
    std::string_view const digits = extension.substr(1 + prefix.size());
    return extension.substr(1, prefix.size()) == prefix && std::all_of(digits.begin(), digits.end(), isDigit);
}

} // namespace

ExtensionFilter::ExtensionFilter(std::vector<std::string> const& extensions) : extensions_(extensions)
{
    std::for_each(extensions_.begin(), extensions_.end(), StringToLower);
}

std::shared_ptr<PathFilter const> ExtensionFilter::Create(std::string const& extension)
{
    return Create(std::vector{extension});
}

std::shared_ptr<PathFilter const> ExtensionFilter::Create(std::string const& a, std::string const& b)
{
    return Create(std::vector{a, b});
}

std::shared_ptr<PathFilter const> ExtensionFilter::Create(std::string const& a, std::string const& b,
                                                          std::string const& c)
{
    return Create(std::vector{a, b, c});
}

std::shared_ptr<PathFilter const> ExtensionFilter::Create(std::vector<std::string> const& extensions)
{
    return std::make_shared<ExtensionFilter>(ExtensionFilter(extensions));
}

bool ExtensionFilter::operator()(PathCacheEntry const& entry) const
{
    return std::find(extensions_.begin(), extensions_.end(), entry.GetLowercaseExtension()) !=
           extensions_.end();
}

NumberedExtensionFilter::NumberedExtensionFilter(char alphaCharacter, std::size_t digitsCount)
    : alphaCharacter_(static_cast<char>(std::tolower(static_cast<unsigned char>(alphaCharacter)))),
      extensionLength_(digitsCount + 2)
{}

std::shared_ptr<PathFilter const> NumberedExtensionFilter::Create(char alphaCharacter,
                                                                  std::size_t digitsCount)
{
    return std::make_shared<NumberedExtensionFilter>(NumberedExtensionFilter(alphaCharacter, digitsCount));
}

bool NumberedExtensionFilter::operator()(PathCacheEntry const& entry) const
{
    return HasForm(entry.GetLowercaseExtension(), extensionLength_, {&alphaCharacter_, 1});
}

NumberedStringExtensionFilter::NumberedStringExtensionFilter(std::string const& prefix,
                                                             std::size_t digitsCount)
    : prefix_(prefix), extensionLength_(digitsCount + 1 + prefix.size())
{
    StringToLower(prefix_);
}

std::shared_ptr<PathFilter const> NumberedStringExtensionFilter::Create(std::string const& prefix,
                                                                        std::size_t digitsCount)
{
    return std::make_shared<NumberedStringExtensionFilter>(
        NumberedStringExtensionFilter(prefix, digitsCount));
}

bool NumberedStringExtensionFilter::operator()(PathCacheEntry const& entry) const
{
    return HasForm(entry.GetLowercaseExtension(), extensionLength_, prefix_);
}

} // namespace Zan::Orv::Core::Service
