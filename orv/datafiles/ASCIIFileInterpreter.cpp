#include "orv/datafiles/ASCIIFileInterpreter.h"

#include "orv/datafiles/ColumnInterpreter.h"

#include <memory>

namespace Zan::Orv::Core::Service {

ASCIIFileInterpreter::ASCIIFileInterpreter() = default;
ASCIIFileInterpreter::ASCIIFileInterpreter(ASCIIFileInterpreter const&) = default;
ASCIIFileInterpreter& ASCIIFileInterpreter::operator=(ASCIIFileInterpreter const&) = default;

ASCIIFileInterpreter::~ASCIIFileInterpreter()
{
    for (auto const& entry : interpreters_)
        delete entry.second;
}

void ASCIIFileInterpreter::AddColumnInterpreter(int columnNumber, ColumnInterpreter* interpreter)
{
    std::unique_ptr<ColumnInterpreter> owner(
        interpreter); // it is ours, also when there is no memory for an entry
    ColumnInterpreter*& entry = interpreters_[columnNumber];
    if (entry != interpreter)
        delete entry;
    entry = owner.release();
}

ColumnInterpreter* ASCIIFileInterpreter::GetInterpreter(int columnNumber) const
{
    auto const found = interpreters_.find(columnNumber);
    return found != interpreters_.end() ? found->second : nullptr;
}

} // namespace Zan::Orv::Core::Service
