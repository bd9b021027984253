#include "orv/files/FilenameFilters.h"

#include "orv/files/ExtensionFilters.h"
#include "orv/files/PathCacheEntry.h"
#include "orv/foundation/Strings.h"

#include <boost/filesystem/path.hpp>

namespace Zan::Orv::Core::Service {

FilenameExactNoCaseFilter::FilenameExactNoCaseFilter(std::string const& filename) : filename_(filename)
{
    StringToLower(filename_);
}

std::shared_ptr<PathFilter const> FilenameExactNoCaseFilter::Create(std::string const& filename)
{
    return std::make_shared<FilenameExactNoCaseFilter>(FilenameExactNoCaseFilter(filename));
}

bool FilenameExactNoCaseFilter::operator()(PathCacheEntry const& entry) const
{
    return entry.GetLowercaseFilenameOnly() == filename_;
}

FilenameExtensionNoCaseFilter::FilenameExtensionNoCaseFilter(std::string const& filepath)
    : filepath_(filepath)
{
    boost::filesystem::path const path(filepath);
    filenameFilter_ = FilenameExactNoCaseFilter::Create(path.stem().string());
    extensionFilter_ = ExtensionFilter::Create(path.extension().string());
}

std::shared_ptr<PathFilter const> FilenameExtensionNoCaseFilter::Create(std::string const& filepath)
{
    return std::make_shared<FilenameExtensionNoCaseFilter>(FilenameExtensionNoCaseFilter(filepath));
}

bool FilenameExtensionNoCaseFilter::operator()(PathCacheEntry const& entry) const
{
    return (*filenameFilter_)(entry) && (*extensionFilter_)(entry);
}

} // namespace Zan::Orv::Core::Service
