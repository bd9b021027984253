#pragma once

#include "orv/Export.h"
#include "orv/files/PathFilter.h"

#include <memory>
#include <vector>

/// \file
/// The filters that ask no name: constants, and what combines other filters. Nothing is simplified: what is
/// created is what stands in the tree.

namespace Zan::Orv::Core::Service {

/// Always the same answer: `BasicFilter<0>` accepts nothing, `BasicFilter<1>` everything.
template<int Answer>
class BasicFilter : public PathFilter
{
public:
    /// The one filter of its class, made at the first call. Not to be assigned to.
    static std::shared_ptr<PathFilter const>& Instance();

    bool operator()(PathCacheEntry const& entry) const override;

private:
    BasicFilter() = default;
};

extern template class ORV_API BasicFilter<0>;
extern template class ORV_API BasicFilter<1>;

/// True where the other filter is false.
class ORV_API NotFilter : public PathFilter
{
public:
    /// The filter that is to be contradicted.
    static std::shared_ptr<PathFilter const> Create(std::shared_ptr<PathFilter const> const& filter);

    bool operator()(PathCacheEntry const& entry) const override;

private:
    explicit NotFilter(std::shared_ptr<PathFilter const> const& filter);

    std::shared_ptr<PathFilter const> filter_;
};

/// True when all filters are, and so without any. They are asked in order, up to the first that is false.
class ORV_API AndFilter : public PathFilter
{
public:
    /// Of two filters, or of any number.
    static std::shared_ptr<PathFilter const> Create(std::shared_ptr<PathFilter const> const& a,
                                                    std::shared_ptr<PathFilter const> const& b);
    static std::shared_ptr<PathFilter const>
    Create(std::vector<std::shared_ptr<PathFilter const>> const& filters);

    bool operator()(PathCacheEntry const& entry) const override;

private:
    explicit AndFilter(std::vector<std::shared_ptr<PathFilter const>> const& filters);

    std::vector<std::shared_ptr<PathFilter const>> filters_;
};

/// True when one of the filters is, and so never without any. They are asked in order, up to the first that
/// is true.
class ORV_API OrFilter : public PathFilter
{
public:
    /// Of two or three filters, or of any number.
    static std::shared_ptr<PathFilter const> Create(std::shared_ptr<PathFilter const> const& a,
                                                    std::shared_ptr<PathFilter const> const& b);
    static std::shared_ptr<PathFilter const> Create(std::shared_ptr<PathFilter const> const& a,
                                                    std::shared_ptr<PathFilter const> const& b,
                                                    std::shared_ptr<PathFilter const> const& c);
    static std::shared_ptr<PathFilter const>
    Create(std::vector<std::shared_ptr<PathFilter const>> const& filters);

    bool operator()(PathCacheEntry const& entry) const override;

private:
    explicit OrFilter(std::vector<std::shared_ptr<PathFilter const>> const& filters);

    std::vector<std::shared_ptr<PathFilter const>> filters_;
};

} // namespace Zan::Orv::Core::Service
