// SPDX-License-Identifier: GPL-3.0-or-later
#include "WindowsKeyboardHold.h"

#include "ExpectedFocus.h"
#include "LongestHold.h"

#include <QDeadlineTimer>
#include <QDebug>
#include <QGuiApplication>

#include <chrono>
#include <future>
#include <utility>
#include <vector>

namespace {

using namespace std::chrono_literals;

constexpr auto focusInterval = 1ms;      // between two checks of the focus
constexpr ULONG_PTR ownInput = 0x56534b; // marks the keys that a hold sends on

INPUT inputOf(const KBDLLHOOKSTRUCT &key)
{
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wScan = WORD(key.scanCode);
    if (key.vkCode == VK_PACKET) {
        input.ki.dwFlags |= KEYEVENTF_UNICODE; // its scan code is a character
    } else {
        input.ki.wVk = WORD(key.vkCode);
    }
    if (key.flags & LLKHF_EXTENDED) {
        input.ki.dwFlags |= KEYEVENTF_EXTENDEDKEY;
    }
    if (key.flags & LLKHF_UP) {
        input.ki.dwFlags |= KEYEVENTF_KEYUP;
    }
    input.ki.dwExtraInfo = ownInput;
    return input;
}

/// The keyboard hook. Create and destroy it in one thread, in which Windows also calls it.
class KeyFilter
{
public:
    /// Takes the virtual-key code of the hotkey, which is down.
    explicit KeyFilter(DWORD hotkey)
        : m_hotkey(hotkey)
    {
        current = this;
        m_hook =
            SetWindowsHookExW(WH_KEYBOARD_LL, &KeyFilter::filter, GetModuleHandleW(nullptr), 0);
        if (!m_hook) {
            qWarning() << "QHotkey: no hook for the keyboard, error" << GetLastError();
        }
    }

    /// Sends the keys on.
    ~KeyFilter()
    {
        // Before the hook goes, so that no later key overtakes them.
        std::vector<INPUT> keys = std::exchange(m_keys, {});
        if (!keys.empty()) {
            SendInput(UINT(keys.size()), keys.data(), sizeof(INPUT));
        }
        UnhookWindowsHookEx(m_hook);
        current = nullptr;
    }
    Q_DISABLE_COPY_MOVE(KeyFilter)

private:
    static LRESULT CALLBACK filter(int code, WPARAM message, LPARAM data)
    {
        const auto &key = *reinterpret_cast<const KBDLLHOOKSTRUCT *>(data);
        if (code == HC_ACTION && current && current->holds(key)) {
            current->m_keys.push_back(inputOf(key));
            return 1;
        }
        return CallNextHookEx(nullptr, code, message, data);
    }

    bool holds(const KBDLLHOOKSTRUCT &key)
    {
        const bool isRelease = key.flags & LLKHF_UP;
        // Let the hotkey's own key through: Windows recognises its repetitions, but would take one
        // that is sent on for a new press.
        if (key.vkCode == m_hotkey) {
            m_hotkey = isRelease ? 0 : m_hotkey;
            return false;
        }
        // The first releases are those of the modifiers of the hotkey.
        return key.dwExtraInfo != ownInput && (!isRelease || !m_keys.empty());
    }

    static inline KeyFilter *current = nullptr; // the hook has no pointer of its own

    HHOOK m_hook = nullptr;
    DWORD m_hotkey; ///< 0 when it is up
    std::vector<INPUT> m_keys;
};

/// Lets Windows call the hook of this thread, until the deadline or a message to end.
void runHook(const QDeadlineTimer &deadline)
{
    MSG message;
    do {
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (message.message == WM_QUIT) {
                return;
            }
        }
        MsgWaitForMultipleObjectsEx(0, nullptr, DWORD(deadline.remainingTime()), QS_ALLINPUT, 0);
    } while (!deadline.hasExpired());
}

bool isForeground()
{
    DWORD process = 0;
    GetWindowThreadProcessId(GetForegroundWindow(), &process);
    return process == GetCurrentProcessId();
}

} // namespace

WindowsKeyboardHold::WindowsKeyboardHold()
{
    m_timer.setInterval(focusInterval);
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &WindowsKeyboardHold::endWithFocus);
}

WindowsKeyboardHold::~WindowsKeyboardHold()
{
    end();
}

void WindowsKeyboardHold::begin(unsigned code)
{
    if (m_isHolding) {
        return;
    }
    end(); // of the hold before, which has expired
    m_isHolding = true;
    std::promise<DWORD> isReady;
    std::future<DWORD> thread = isReady.get_future();
    m_thread = std::thread([this, code, &isReady] {
        const KeyFilter filter(code); // makes the thread's queue of messages, too
        isReady.set_value(GetCurrentThreadId());
        runHook(QDeadlineTimer(longestHold, Qt::PreciseTimer));
        m_isHolding = false;
    });
    m_threadId = thread.get();
}

void WindowsKeyboardHold::endWithFocus()
{
    const bool hasFocus = isForeground() && QGuiApplication::focusWindow();
    if (m_isHolding && expectsFocus() && !hasFocus) {
        m_timer.start();
    } else {
        end();
    }
}

void WindowsKeyboardHold::end()
{
    m_timer.stop();
    if (m_thread.joinable()) {
        PostThreadMessageW(m_threadId, WM_QUIT, 0, 0);
        m_thread.join();
    }
}
