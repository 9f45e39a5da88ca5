// SPDX-License-Identifier: MIT
#include "server/windows/TypeLibrary.h"

#include "server/windows/ComError.h"

#include <mutex>

namespace KestrinProductEditor {

namespace {

using Microsoft::WRL::ComPtr;

std::mutex g_mutex;
// A plain pointer: when the process ends, the system's libraries may be gone before this one.
ITypeLib* g_library = nullptr;

[[nodiscard]] ComPtr<ITypeLib> Library()
{
    const std::lock_guard lock(g_mutex);
    // From the file itself: the component may be used without being registered.
    if (g_library == nullptr)
        ThrowIfSystemFailed(LoadTypeLibEx(ModulePath().c_str(), REGKIND_NONE, &g_library));
    return g_library;
}

} // namespace

std::wstring ModulePath()
{
    HMODULE module = nullptr;
    if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            reinterpret_cast<const wchar_t*>(&g_library), &module))
        ThrowIfSystemFailed(HRESULT_FROM_WIN32(GetLastError()));
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
        if (length == 0)
            ThrowIfSystemFailed(HRESULT_FROM_WIN32(GetLastError()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

ComPtr<ITypeInfo> TypeInfoOf(REFGUID identifier)
{
    ComPtr<ITypeInfo> info;
    ThrowIfSystemFailed(Library()->GetTypeInfoOfGuid(identifier, info.GetAddressOf()));
    return info;
}

void ForgetTypeLibrary() noexcept
{
    const std::lock_guard lock(g_mutex);
    if (g_library != nullptr)
        g_library->Release();
    g_library = nullptr;
}

} // namespace KestrinProductEditor
