#include "orv/files/CombinedFilters.h"

#include <algorithm>

namespace Zan::Orv::Core::Service {

// Only the classes themselves reach their constructors, so the factories make an object and move it to where
// the pointer's count stands as well.

template<int Answer>
std::shared_ptr<PathFilter const>& BasicFilter<Answer>::Instance()
{
    static std::shared_ptr<PathFilter const> instance = std::make_shared<BasicFilter>(BasicFilter());
    return instance;
}

template<int Answer>
bool BasicFilter<Answer>::operator()(PathCacheEntry const&) const
{
    return Answer != 0;
}

template class BasicFilter<0>;
template class BasicFilter<1>;

NotFilter::NotFilter(std::shared_ptr<PathFilter const> const& filter) : filter_(filter)
{}

std::shared_ptr<PathFilter const> NotFilter::Create(std::shared_ptr<PathFilter const> const& filter)
{
    return std::make_shared<NotFilter>(NotFilter(filter));
}

bool NotFilter::operator()(PathCacheEntry const& entry) const
{
    return !(*filter_)(entry);
}

AndFilter::AndFilter(std::vector<std::shared_ptr<PathFilter const>> const& filters) : filters_(filters)
{}

std::shared_ptr<PathFilter const> AndFilter::Create(std::shared_ptr<PathFilter const> const& a,
                                                    std::shared_ptr<PathFilter const> const& b)
{
    return Create({a, b});
}

std::shared_ptr<PathFilter const>
AndFilter::Create(std::vector<std::shared_ptr<PathFilter const>> const& filters)
{
    return std::make_shared<AndFilter>(AndFilter(filters));
}

bool AndFilter::operator()(PathCacheEntry const& entry) const
{
    return std::all_of(filters_.begin(), filters_.end(),
                       [&](auto const& filter) { return (*filter)(entry); });
}

OrFilter::OrFilter(std::vector<std::shared_ptr<PathFilter const>> const& filters) : filters_(filters)
{}

std::shared_ptr<PathFilter const> OrFilter::Create(std::shared_ptr<PathFilter const> const& a,
                                                   std::shared_ptr<PathFilter const> const& b)
{
    return Create({a, b});
}

std::shared_ptr<PathFilter const> OrFilter::Create(std::shared_ptr<PathFilter const> const& a,
                                                   std::shared_ptr<PathFilter const> const& b,
                                                   std::shared_ptr<PathFilter const> const& c)
{
    return Create({a, b, c});
}

std::shared_ptr<PathFilter const>
OrFilter::Create(std::vector<std::shared_ptr<PathFilter const>> const& filters)
{
    return std::make_shared<OrFilter>(OrFilter(filters));
}

bool OrFilter::operator()(PathCacheEntry const& entry) const
{
    return std::any_of(filters_.begin(), filters_.end(),
                       [&](auto const& filter) { return (*filter)(entry); });
}

} // namespace Zan::Orv::Core::Service
