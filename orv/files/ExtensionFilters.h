#pragma once

#include "orv/Export.h"
#include "orv/files/PathFilter.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

/// \file
/// The filters that ask for the extension of a name, without regard to case. What they were made from, they
/// give back in lower case.

namespace Zan::Orv::Core::Service {

/// True for each of a list of extensions. They are given with their dots: "dat" is the extension of no file,
/// and the empty text that of the files without one.
class ORV_API ExtensionFilter : public PathFilter
{
public:
    /// Of one, two or three extensions.
    static std::shared_ptr<PathFilter const> Create(std::string const& extension);
    static std::shared_ptr<PathFilter const> Create(std::string const& a, std::string const& b);
    static std::shared_ptr<PathFilter const> Create(std::string const& a, std::string const& b,
                                                    std::string const& c);
    /// Without extensions, nothing is accepted.
    static std::shared_ptr<PathFilter const> Create(std::vector<std::string> const& extensions);

    bool operator()(PathCacheEntry const& entry) const override;

    /// In lower case, in the order in which they were given.
    std::vector<std::string> GetExtensions() const { return extensions_; }

private:
    explicit ExtensionFilter(std::vector<std::string> const& extensions);

    std::vector<std::string> extensions_;
};

/// True for the extensions of one letter and a fixed count of digits: 'x' and 4 for ".x0001" and ".X1234",
/// but not for ".x123" or ".x12345".
class ORV_API NumberedExtensionFilter : public PathFilter
{
public:
    /// `alphaCharacter` may be of either case. Any count of digits is allowed.
    static std::shared_ptr<PathFilter const> Create(char alphaCharacter, std::size_t digitsCount);

    bool operator()(PathCacheEntry const& entry) const override;

    /// In lower case.
    char GetAlphaCharacter() const { return alphaCharacter_; }
    /// As it was given.
    std::size_t GetDigitsCount() const { return extensionLength_ - 2; }

private:
    NumberedExtensionFilter(char alphaCharacter, std::size_t digitsCount);

    char alphaCharacter_;
    std::size_t extensionLength_; // with the dot and the letter
};

/// True for the extensions of a fixed text and a fixed count of digits: "step" and 2 for ".Step01". The text
/// is given without a dot and may be empty.
class ORV_API NumberedStringExtensionFilter : public PathFilter
{
public:
    /// `prefix` may be of any case.
    static std::shared_ptr<PathFilter const> Create(std::string const& prefix, std::size_t digitsCount);

    bool operator()(PathCacheEntry const& entry) const override;

    /// In lower case.
    std::string GetPrefix() const { return prefix_; }
    /// As it was given.
    std::size_t GetDigitsCount() const { return extensionLength_ - prefix_.size() - 1; }

private:
    NumberedStringExtensionFilter(std::string const& prefix, std::size_t digitsCount);

    std::string prefix_;
    std::size_t extensionLength_; // with the dot and the prefix
};

} // namespace Zan::Orv::Core::Service
