// SPDX-License-Identifier: GPL-3.0-or-later
//
// The part of reader.exe that runs inside the program under test. Under wine another process cannot
// walk the tree of a window: the program would wait for itself.

#include "reader.h"

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include <windows.h>

#include <ole2.h>
#include <uiautomationcore.h>
#include <winternl.h>

#ifdef __GNUC__
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
#endif
// The parts of UI Automation's interfaces that are called here. Not in an anonymous namespace: the
// compiler would warn that nothing implements them.
struct ValueProvider : IUnknown
{
    static constexpr IID id = {
        0xc7935180, 0x6fb3, 0x4201, {0xb1, 0x74, 0x7d, 0xf7, 0x3a, 0xdb, 0xf6, 0x4a}};
    virtual HRESULT WINAPI setValue(const wchar_t *) = 0;
    virtual HRESULT WINAPI value(BSTR *) = 0;
};

struct SelectionItemProvider : IUnknown
{
    static constexpr IID id = {
        0x2acad808, 0xb2d4, 0x452d, {0xa4, 0x07, 0x91, 0xff, 0x1a, 0xd1, 0x67, 0xb2}};
    virtual HRESULT WINAPI select() = 0;
    virtual HRESULT WINAPI addToSelection() = 0;
    virtual HRESULT WINAPI removeFromSelection() = 0;
    virtual HRESULT WINAPI isSelected(BOOL *) = 0;
};

struct ToggleProvider : IUnknown
{
    static constexpr IID id = {
        0x56d00bd0, 0xc4f4, 0x433c, {0xa8, 0x36, 0x1a, 0x52, 0xa5, 0x7e, 0x08, 0x92}};
    virtual HRESULT WINAPI toggle() = 0;
    virtual HRESULT WINAPI state(int *) = 0;
};
#ifdef __GNUC__
#pragma GCC diagnostic pop
#endif

namespace {

// UI Automation's values, which the compiler's headers lack.
constexpr LPARAM rootObject = -25;
constexpr int valuePattern = 10002;
constexpr int selectionItemPattern = 10010;
constexpr int togglePattern = 10015;
constexpr int controlType = 30003;
constexpr int nameProperty = 30005;
constexpr int hasFocusProperty = 30008;
constexpr int takesFocusProperty = 30009;
constexpr int isEnabledProperty = 30010;
constexpr int classNameProperty = 30012;

IRawElementProviderSimple *givenProvider = nullptr;

LRESULT WINAPI takeProvider(HWND, WPARAM, LPARAM, IRawElementProviderSimple *provider)
{
    givenProvider = provider;
    provider->AddRef();
    return 0;
}

/// Redirects the function by which a window returns its provider to takeProvider(), while it
/// exists.
class Diversion
{
public:
    explicit Diversion(void *function)
        : m_function(static_cast<unsigned char *>(function))
    {
        // mov r11, takeProvider; jmp r11
        unsigned char jump[length] = {0x49, 0xbb, 0, 0, 0, 0, 0, 0, 0, 0, 0x41, 0xff, 0xe3};
        const auto target = &takeProvider;
        std::memcpy(jump + 2, &target, sizeof target);
        std::memcpy(m_original, m_function, length);
        write(jump);
    }
    ~Diversion() { write(m_original); }
    Diversion(const Diversion &) = delete;
    Diversion &operator=(const Diversion &) = delete;

private:
    static constexpr size_t length = 13;

    void write(const unsigned char *code)
    {
        DWORD protection = 0;
        VirtualProtect(m_function, length, PAGE_EXECUTE_READWRITE, &protection);
        std::memcpy(m_function, code, length);
        VirtualProtect(m_function, length, protection, &protection);
        FlushInstructionCache(GetCurrentProcess(), m_function, length);
    }

    unsigned char *m_function;
    unsigned char m_original[length];
};

std::string quoted(const wchar_t *text)
{
    std::string utf8(
        size_t(WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr)), 0);
    WideCharToMultiByte(CP_UTF8, 0, text, -1, utf8.data(), int(utf8.size()), nullptr, nullptr);
    utf8.pop_back();
    std::string result = "\"";
    for (const char c : utf8) {
        if (c == '"' || c == '\\') {
            result += {'\\', c};
        } else if (static_cast<unsigned char>(c) < ' ') {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\u%04x", unsigned(c));
            result += escape;
        } else {
            result += c;
        }
    }
    return result + '"';
}

std::string rectangle(double x, double y, double width, double height)
{
    char text[100];
    std::snprintf(text, sizeof text, "[%.0f,%.0f,%.0f,%.0f]", x, y, width, height);
    return text;
}

std::string property(IRawElementProviderSimple *element, int property)
{
    VARIANT value;
    VariantInit(&value);
    element->GetPropertyValue(property, &value);
    std::string result = "null";
    if (value.vt == VT_BSTR) {
        result = quoted(value.bstrVal ? value.bstrVal : L"");
    } else if (value.vt == VT_I4) {
        result = std::to_string(value.lVal);
    } else if (value.vt == VT_BOOL) {
        result = value.boolVal ? "true" : "false";
    }
    VariantClear(&value);
    return result;
}

// A value of the element's pattern; "null" if it does not have the pattern.
template <typename Pattern, typename Read>
std::string told(IRawElementProviderSimple *element, int pattern, Read read)
{
    IUnknown *unknown = nullptr;
    if (element->GetPatternProvider(pattern, &unknown) != S_OK || !unknown) {
        return "null";
    }
    Pattern *provider = nullptr;
    std::string result = "null";
    if (unknown->QueryInterface(Pattern::id, reinterpret_cast<void **>(&provider)) == S_OK) {
        result = read(provider);
        provider->Release();
    }
    unknown->Release();
    return result;
}

std::string valueOf(IRawElementProviderSimple *element)
{
    return told<ValueProvider>(element, valuePattern, [](ValueProvider *provider) {
        BSTR text = nullptr;
        provider->value(&text);
        std::string result = quoted(text ? text : L"");
        SysFreeString(text);
        return result;
    });
}

std::string isSelected(IRawElementProviderSimple *element)
{
    return told<SelectionItemProvider>(element, selectionItemPattern,
                                       [](SelectionItemProvider *provider) {
                                           BOOL selected = FALSE;
                                           provider->isSelected(&selected);
                                           return std::string(selected ? "true" : "false");
                                       });
}

std::string isChecked(IRawElementProviderSimple *element)
{
    return told<ToggleProvider>(element, togglePattern, [](ToggleProvider *provider) {
        int state = 0;
        provider->state(&state);
        return std::string(state == 1 ? "true" : "false");
    });
}

IRawElementProviderFragment *next(IRawElementProviderFragment *from, NavigateDirection direction)
{
    IRawElementProviderFragment *found = nullptr;
    return from->Navigate(direction, &found) == S_OK ? found : nullptr;
}

std::string read(IRawElementProviderFragment *fragment)
{
    IRawElementProviderSimple *element = nullptr;
    fragment->QueryInterface(__uuidof(IRawElementProviderSimple),
                             reinterpret_cast<void **>(&element));
    UiaRect place{};
    fragment->get_BoundingRectangle(&place);
    std::string result =
        "{\"type\":" + property(element, controlType) + ",\"name\":"
        + property(element, nameProperty) + ",\"class\":" + property(element, classNameProperty)
        + ",\"focused\":" + property(element, hasFocusProperty)
        + ",\"takesFocus\":" + property(element, takesFocusProperty)
        + ",\"enabled\":" + property(element, isEnabledProperty) + ",\"value\":" + valueOf(element)
        + ",\"selected\":" + isSelected(element) + ",\"checked\":" + isChecked(element)
        + ",\"rect\":" + rectangle(place.left, place.top, place.width, place.height)
        + ",\"children\":[";
    element->Release();
    IRawElementProviderFragment *child = next(fragment, NavigateDirection_FirstChild);
    while (child) {
        result += read(child);
        IRawElementProviderFragment *sibling = next(child, NavigateDirection_NextSibling);
        child->Release();
        child = sibling;
        result += child ? "," : "";
    }
    return result + "]}";
}

std::string read(HWND window)
{
    HMODULE library = LoadLibraryW(L"uiautomationcore.dll");
    {
        const Diversion diversion(
            reinterpret_cast<void *>(GetProcAddress(library, "UiaReturnRawElementProvider")));
        SendMessageW(window, WM_GETOBJECT, 0, rootObject);
    }
    FreeLibrary(library);
    IRawElementProviderFragment *root = nullptr;
    std::string result = "null";
    if (givenProvider
        && givenProvider->QueryInterface(__uuidof(IRawElementProviderFragment),
                                         reinterpret_cast<void **>(&root))
               == S_OK) {
        result = read(root);
        root->Release();
    }
    if (givenProvider) {
        givenProvider->Release();
        givenProvider = nullptr;
    }
    return result;
}

BOOL CALLBACK readVisible(HWND window, LPARAM parameter)
{
    if (!IsWindowVisible(window)) {
        return TRUE;
    }
    auto &result = *reinterpret_cast<std::string *>(parameter);
    wchar_t className[256];
    wchar_t title[256];
    GetClassNameW(window, className, 256);
    GetWindowTextW(window, title, 256);
    RECT place{};
    GetWindowRect(window, &place);
    result += result.empty() ? "" : ",";
    result += "{\"class\":" + quoted(className) + ",\"title\":" + quoted(title)
              + ",\"active\":" + (GetForegroundWindow() == window ? "true" : "false")
              + ",\"focus\":" + (GetFocus() == window ? "true" : "false") + ",\"rect\":"
              + rectangle(place.left, place.top, place.right - place.left, place.bottom - place.top)
              + ",\"root\":" + read(window) + "}";
    return TRUE;
}

std::string readWindows()
{
    std::string windows;
    EnumThreadWindows(GetCurrentThreadId(), readVisible, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

// Wine implements neither GetProcessHandleCount() nor GetGuiResources() and returns 0, but it lists
// all handles of all processes.
unsigned long countHandles()
{
    DWORD count = 0;
    GetProcessHandleCount(GetCurrentProcess(), &count);
    if (count) {
        return count;
    }
    std::vector<unsigned char> memory(16 << 20);
    ULONG needed = 0;
    if (NtQuerySystemInformation(SYSTEM_INFORMATION_CLASS(16), memory.data(), ULONG(memory.size()),
                                 &needed)) {
        return 0;
    }
    struct Entry
    {
        USHORT process;
        USHORT unused[3];
        void *object;
        ULONG access;
    };
    ULONG all = 0;
    std::memcpy(&all, memory.data(), sizeof all);
    for (ULONG i = 0; i < all; ++i) {
        Entry entry;
        std::memcpy(&entry, memory.data() + sizeof(void *) + i * sizeof entry, sizeof entry);
        count += entry.process == GetCurrentProcessId();
    }
    return count;
}

// The table of all GDI objects is in the memory of each process.
unsigned long countGdiObjects()
{
    if (const DWORD count = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS)) {
        return count;
    }
    struct Entry
    {
        void *object;
        USHORT process;
        USHORT count;
        USHORT generation;
        UCHAR type;
        UCHAR flags;
        void *user;
    };
    constexpr size_t tableOffset = 0xf8; // in the process environment block
    constexpr size_t entries = 0x4000;
    PROCESS_BASIC_INFORMATION process{};
    NtQueryInformationProcess(GetCurrentProcess(), ProcessBasicInformation, &process,
                              sizeof process, nullptr);
    const auto *block = reinterpret_cast<const char *>(process.PebBaseAddress);
    const void *address = nullptr;
    std::memcpy(&address, block + tableOffset, sizeof address);
    const auto *table = static_cast<const Entry *>(address);
    unsigned long count = 0;
    for (size_t i = 0; table && i < entries; ++i) {
        count += table[i].type != 0;
    }
    return count;
}

// Tries every possible handle of a user object.
unsigned long countUserObjects()
{
    if (const DWORD count = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS)) {
        return count;
    }
    unsigned long count = 0;
    for (uintptr_t number = 1; number < 0xffff; ++number) {
        void *handle = reinterpret_cast<void *>(number);
        DWORD owner = 0;
        ICONINFO icon{};
        if (GetWindowThreadProcessId(static_cast<HWND>(handle), &owner)) {
            count += owner == GetCurrentProcessId();
        } else if (IsMenu(static_cast<HMENU>(handle))) {
            ++count;
        } else if (GetIconInfo(static_cast<HICON>(handle), &icon)) {
            DeleteObject(icon.hbmColor);
            DeleteObject(icon.hbmMask);
            ++count;
        }
    }
    return count;
}

std::string readCounts()
{
    std::string result = "{\"handles\":";
    result += std::to_string(countHandles()) + ",\"gdi\":" + std::to_string(countGdiObjects());
    result += ",\"user\":" + std::to_string(countUserObjects()) + "}";
    return result;
}

void answer(WPARAM question)
{
    HANDLE mapping = OpenFileMappingW(FILE_MAP_WRITE, FALSE, reader::mappingName);
    void *view = MapViewOfFile(mapping, FILE_MAP_WRITE, 0, 0, reader::mappingSize);
    if (view) {
        const std::string text = question == reader::Counts ? readCounts() : readWindows();
        if (text.size() < reader::mappingSize) {
            std::memcpy(view, text.c_str(), text.size() + 1);
        }
        UnmapViewOfFile(view);
    }
    CloseHandle(mapping);
}

} // namespace

extern "C" __declspec(dllexport) LRESULT CALLBACK readerHook(int code, WPARAM wParam, LPARAM lParam)
{
    static const UINT question = RegisterWindowMessageW(reader::messageName);
    const auto *message = reinterpret_cast<const CWPSTRUCT *>(lParam);
    if (code == HC_ACTION && message->message == question) {
        answer(message->wParam);
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}
