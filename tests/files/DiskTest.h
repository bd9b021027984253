#pragma once

#include "orv/files/FileCatalog.h"
#include "tests/support/ExpectThrow.h"
#include "tests/support/TemporaryDirectory.h"

#include <boost/filesystem.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace Zan::Orv::Core::Service::Tests {

namespace fs = boost::filesystem;

/// A test with a directory of its own.
class DiskTest : public testing::Test
{
protected:
    TemporaryDirectory const place;
};

inline std::string Content(std::string const& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

inline bool IsWritable(fs::path const& path)
{
    return (fs::status(path).permissions() & fs::owner_write) != 0;
}

inline void SetReadOnly(fs::path const& path)
{
    fs::permissions(path, fs::remove_perms | fs::owner_write | fs::group_write | fs::others_write);
}

/// A catalog with its innards.
template<class Catalog>
struct Opened : Catalog
{
    using Catalog::Catalog;
    using Catalog::GetFullPath;
    using Catalog::isValid_;
};

inline std::vector<std::string> NamesOf(IFileCatalog const& catalog)
{
    std::vector<std::string> names;
    for (PathCacheEntry const& entry : catalog.GetEntries())
        names.push_back(entry.GetFullFilename());
    return names;
}

} // namespace Zan::Orv::Core::Service::Tests
