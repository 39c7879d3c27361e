// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <glib-object.h>

#include <memory>

namespace platform {

/// A deleter that calls GLib's function for the type.
template <auto function> struct GlibRelease
{
    template <typename Type> void operator()(Type *pointer) const { function(pointer); }
};

template <typename Type> using ObjectPointer = std::unique_ptr<Type, GlibRelease<g_object_unref>>;
using KeyFilePointer = std::unique_ptr<GKeyFile, GlibRelease<g_key_file_unref>>;
using TextPointer = std::unique_ptr<char, GlibRelease<g_free>>;
using TextListPointer = std::unique_ptr<char *, GlibRelease<g_strfreev>>;

} // namespace platform
