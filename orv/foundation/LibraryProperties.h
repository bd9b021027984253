#pragma once

#include "orv/Export.h"

/// \file
/// What this build of the library says of itself. All texts are constants that live as long as the library is
/// loaded. Nothing here fails; but for `UseLaxMatch`, everything is safe on any thread.

namespace Zan::Orv::Core::Service {

/// Always 0. The version is the property "FileVersion".
ORV_API int GetVersion();

/// When the library was built, in the form "Oct  7 2019 17:11:03". The hour is that of the machine, or UTC
/// where the build was given its time (`SOURCE_DATE_EPOCH`).
ORV_API char const* GetBuildTimestamp();

/// \{
/// The properties of the library file: pairs of texts such as "FileVersion", "5.2017.0.0".
///
///     for (int i = 0; i < getNumLibProperties(); ++i)
///     {
///         char const* key;
///         char const* value;
///         getLibProperty(i, key, value);
///         ...
///     }
///
/// An index out of range gives two empty texts.
ORV_API int getNumLibProperties();
ORV_API void getLibProperty(int index, char const*& key, char const*& value);
/// \}

/// A switch for the code above the library, on at the start. The library keeps it and never looks at it. Not
/// synchronised: to be used by one thread at a time.
ORV_API void UseLaxMatch(bool on);
ORV_API bool UseLaxMatch();

} // namespace Zan::Orv::Core::Service
