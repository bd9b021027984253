#include "fuzz/Input.h"
#include "orv/files/Directory.h"
#include "orv/files/FileName.h"
#include "orv/files/PathCacheEntry.h"
#include "orv/foundation/Exception.h"
#include "orv/foundation/Strings.h"

#include <boost/filesystem/path.hpp>

namespace Zan::Orv::Core::Service::Fuzz {

// What is done to paths as texts.
void Run(Input& input)
{
    std::string const other = input.Text();
    bool const convert = input.Flag();
    std::string const text = input.Rest();

    Directory directory;
    directory.Set(text, convert);
    Directory again;
    again.Set(directory.Name(), false);
    Directory const base(other);
    Directory relative;
    if (directory.RelativePathFrom(base, relative))
        Require(directory.IsSet() && base.IsSet(), "only what is set has something in common");
    directory.IsDescendantOf(base);
    Require(!directory.IsSet() || !directory.IsDescendantOf(directory), "nothing descends from itself");
    directory.LeafName();
    directory.Parent();
    Succeeds<DirectoryException>([&] { Directory(directory).MakeComplete(base); });
    Succeeds<DirectoryException>([&] { Directory(directory).Append(other); });

    FileName name;
    name.Set(text, convert);
    Require(name.GetFileName().size() <= text.size(), "a file's name is a part of its path");
    name.GetFullName();
    name.SetFileName(other);
    name.SetExtension(other);
    Require(name == FileName(name), "a copy is equal");

    PathCacheEntry const entry(text);
    Require(entry.GetLowercaseFilenameOnly().size() + entry.GetLowercaseExtension().size() ==
                entry.GetFullFilename().size(),
            "name and extension make the whole name");
    boost::filesystem::path const parsed(text);
    std::string extension = parsed.extension().string();
    StringToLower(extension);
    Require(entry.GetFullFilename() == parsed.filename().string() &&
                entry.GetLowercaseExtension() == extension,
            "the pieces are those of the path library");
}

} // namespace Zan::Orv::Core::Service::Fuzz
