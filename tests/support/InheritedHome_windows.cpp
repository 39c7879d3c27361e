// SPDX-License-Identifier: GPL-3.0-or-later

#include <cstdlib>

#include <windows.h>

namespace {

/// Replaces the user's registry with the test's, which names the test's folders, in programs that a
/// test starts. Takes effect before main(); linking it is enough.
class InheritedHome
{
public:
    InheritedHome()
    {
        HKEY user = nullptr;
        const wchar_t *key = _wgetenv(L"VASKEL_TEST_REGISTRY_KEY");
        if (!key || RegOpenKeyExW(HKEY_CURRENT_USER, key, 0, KEY_ALL_ACCESS, &user) != ERROR_SUCCESS
            || RegOverridePredefKey(HKEY_CURRENT_USER, user) != ERROR_SUCCESS) {
            std::abort();
        }
        RegCloseKey(user);
    }
};

const InheritedHome inheritedHome;

} // namespace
