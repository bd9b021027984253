#pragma once

#include <gtest/gtest.h>

#include <exception>
#include <string>
#include <typeinfo>

namespace Zan::Orv::Core::Service::Tests {

/// Passes when `action` throws an exception of the type `E`, or one derived from it, with exactly the text `what`.
template<class E, class Action>
::testing::AssertionResult Throws(Action&& action, std::string const& what)
{
    try
    {
        action();
    }
    catch (std::exception const& e)
    {
        if (dynamic_cast<E const*>(&e) != nullptr && e.what() == what)
            return ::testing::AssertionSuccess();
        return ::testing::AssertionFailure()
               << "threw " << typeid(e).name() << " with \"" << e.what() << "\" instead of \"" << what << '"';
    }
    return ::testing::AssertionFailure() << "did not throw";
}

} // namespace Zan::Orv::Core::Service::Tests
