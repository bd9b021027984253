#pragma once

#include "orv/Export.h"

#include <map>

namespace Zan::Orv::Core::Service {

class ColumnInterpreter;

/// The interpreters of a column file, by column number. It owns them.
///
///     ASCIIFileInterpreter interpreters;
///     interpreters.AddColumnInterpreter(2, new SurfaceMeasurement("Station 7"));
///
/// Reading it on several threads is safe while nobody adds to it.
///
/// \warning A copy has the same pointers as its source, and both delete them in the end: of two such objects
/// only one may be destroyed. An assignment drops what the target had without deleting it. Pass it by
/// reference.
class ORV_API ASCIIFileInterpreter
{
public:
    ASCIIFileInterpreter();
    ASCIIFileInterpreter(ASCIIFileInterpreter const&);
    ASCIIFileInterpreter& operator=(ASCIIFileInterpreter const&);
    ~ASCIIFileInterpreter();

    /// Takes `interpreter`, made with `new`, in the place of the column's earlier one, which is deleted. It
    /// may be null, and must not be held for another column.
    void AddColumnInterpreter(int columnNumber, ColumnInterpreter* interpreter);

    /// The interpreter of the column, or null. It stays owned by this object.
    ColumnInterpreter* GetInterpreter(int columnNumber) const;

private:
    std::map<int, ColumnInterpreter*> interpreters_;
};

} // namespace Zan::Orv::Core::Service
