// SPDX-License-Identifier: MIT
#include "platform/win32/Win32Looks.h"

namespace KestrinProductEditor {

namespace {

// What a library's manifest is called; a program's own is in force anyhow.
constexpr WORD kManifest = 2;

class Context
{
public:
    Context() noexcept
    {
        ACTCTXW context = {};
        context.cbSize = sizeof context;
        context.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
        context.hModule = OwnModule();
        context.lpResourceName = MAKEINTRESOURCEW(kManifest);
        m_handle = CreateActCtxW(&context);
    }
    Context(const Context&) = delete;
    Context& operator=(const Context&) = delete;
    // A library that is unloaded takes its context along.
    ~Context()
    {
        if (m_handle != INVALID_HANDLE_VALUE)
            ReleaseActCtx(m_handle);
    }

    [[nodiscard]] HANDLE Handle() const { return m_handle; }

private:
    HANDLE m_handle;
};

} // namespace

HINSTANCE OwnModule() noexcept
{
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&OwnModule), &module);
    return module;
}

Win32Looks::Win32Looks() noexcept
{
    static const Context context;
    m_isActive = context.Handle() != INVALID_HANDLE_VALUE && ActivateActCtx(context.Handle(), &m_cookie) != 0;
}

Win32Looks::~Win32Looks()
{
    if (m_isActive)
        DeactivateActCtx(0, m_cookie);
}

} // namespace KestrinProductEditor
