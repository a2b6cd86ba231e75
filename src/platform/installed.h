#pragma once
// The slot behind each gateway: the implementation the program or a test
// installed, else the default, made on first use. Installing nullptr brings the
// default back.

#include <memory>

namespace platform {

template <class T> std::unique_ptr<T>& installedSlot()
{
    static std::unique_ptr<T> impl;
    return impl;
}

template <class T> void install(std::unique_ptr<T> impl)
{
    installedSlot<T>() = std::move(impl);
}

// The installed T, or makeDefault()'s when none is.
template <class T, class MakeDefault> T& installedOr(MakeDefault makeDefault)
{
    auto& impl = installedSlot<T>();
    if (!impl) {
        impl = makeDefault();
    }
    return *impl;
}

} // namespace platform
