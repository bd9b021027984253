#include "orv/foundation/LibraryProperties.h"

#include <iterator>

// The name and the version come from the build.

namespace Zan::Orv::Core::Service {

namespace {

struct Property
{
    char const* key;
    char const* value;
};

constexpr Property properties[] = {{"CompanyName", "Zanwick"},
                                   {"FileVersion", ORV_FILE_VERSION},
                                   {"FileDescription", "Zanwick Simulation Support Library"},
                                   {"ProductVersion", "Main/0"},
                                   {"InternalName", ORV_LIBRARY_NAME},
                                   {"LegalCopyright", "Copyright (C) Zanwick"},
                                   {"OriginalFilename", ORV_LIBRARY_NAME}};

bool useLaxMatch = true;

} // namespace

int GetVersion()
{
    return 0;
}

int getNumLibProperties()
{
    return static_cast<int>(std::size(properties));
}

void getLibProperty(int index, char const*& key, char const*& value)
{
    bool const known = index >= 0 && index < getNumLibProperties();
    Property const property = known ? properties[index] : Property{"", ""};
    key = property.key;
    value = property.value;
}

void UseLaxMatch(bool on)
{
    useLaxMatch = on;
}

bool UseLaxMatch()
{
    return useLaxMatch;
}

} // namespace Zan::Orv::Core::Service
