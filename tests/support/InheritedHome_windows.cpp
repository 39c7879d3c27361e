// SPDX-License-Identifier: GPL-3.0-or-later

#include <cstdlib>

#include <windows.h>

namespace {

/// For what a test starts: the test's registry, which names its folders, in place of the user's. It
/// is in force before main() runs: linking it is enough.
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
