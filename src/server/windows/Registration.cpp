// SPDX-License-Identifier: MIT
#include "server/windows/Registration.h"

#include "server/windows/RegistrationKeys.h"
#include "server/windows/RegistryChange.h"

#include <wrl/client.h>

#include <algorithm>
#include <new>

namespace KestrinProductEditor {

namespace {

constexpr wchar_t kClasses[] = L"Software\\Classes";
constexpr REGSAM kReadAndWrite = KEY_READ | KEY_WRITE | DELETE;

[[nodiscard]] RegistrationKeys KeysOf(const std::wstring& modulePath)
{
    Microsoft::WRL::ComPtr<ITypeLib> library;
    // From the file itself, and without the registry, of which nothing is known here.
    const HRESULT status = LoadTypeLibEx(modulePath.c_str(), REGKIND_NONE, library.GetAddressOf());
    if (FAILED(status))
        throw RegistrationError{status};
    return RegistrationKeysOf(*library.Get(), modulePath);
}

/// No key when there is none.
[[nodiscard]] RegistryKey OpenClasses(HKEY root, REGSAM access)
{
    RegistryKey classes;
    const LSTATUS result = RegOpenKeyExW(root, kClasses, 0, access, classes.Out());
    if (result != ERROR_FILE_NOT_FOUND)
        RequireRegistry(result);
    return classes;
}

[[nodiscard]] RegistryKey MakeClasses(HKEY root)
{
    RegistryKey classes;
    RequireRegistry(
        RegCreateKeyExW(root, kClasses, 0, nullptr, 0, kReadAndWrite, nullptr, classes.Out(), nullptr));
    return classes;
}

[[nodiscard]] bool LeadsToOurClass(HKEY classes, const RegistrationKeys::ProgramName& name)
{
    return RegistryText(classes, name.key + L"\\CLSID", L"") == name.classID;
}

[[nodiscard]] bool IsThere(HKEY classes, const std::wstring& key)
{
    RegistryKey found;
    return RegOpenKeyExW(classes, key.c_str(), 0, KEY_READ, found.Out()) != ERROR_FILE_NOT_FOUND;
}

[[nodiscard]] bool Holds(HKEY root, const RegistrationKeys& keys)
{
    const RegistryKey classes = OpenClasses(root, KEY_READ);
    return classes.Get() != nullptr &&
           (std::ranges::any_of(keys.trees,
                                [&](const std::wstring& key) { return IsThere(classes.Get(), key); }) ||
            std::ranges::any_of(keys.names, [&](const RegistrationKeys::ProgramName& name) {
                return LeadsToOurClass(classes.Get(), name);
            }));
}

/// Whether a value of the component's is there and says something else.
[[nodiscard]] bool Contradicts(HKEY root, const RegistrationKeys& keys)
{
    const RegistryKey classes = OpenClasses(root, KEY_READ);
    return classes.Get() != nullptr &&
           std::ranges::any_of(keys.values, [&](const RegistrationKeys::Value& value) {
               return RegistryText(classes.Get(), value.key, value.name).value_or(value.text) != value.text;
           });
}

void Remove(HKEY root, const RegistrationKeys& keys)
{
    const RegistryKey classes = OpenClasses(root, kReadAndWrite);
    if (classes.Get() == nullptr)
        return;
    for (const RegistrationKeys::ProgramName& name : keys.names) {
        if (LeadsToOurClass(classes.Get(), name))
            RemoveRegistryTree(classes.Get(), name.key);
    }
    for (const std::wstring& key : keys.trees)
        RemoveRegistryTree(classes.Get(), key);
    for (const std::wstring& key : keys.parents)
        RemoveEmptyRegistryKey(classes.Get(), key);
}

void Write(RegistryChange& change, const RegistrationKeys& keys)
{
    for (const RegistrationKeys::Value& value : keys.values)
        change.SetText(value.key, value.name, value.text);
}

void RegisterForMachine(const RegistrationKeys& keys)
{
    const RegistryKey classes = MakeClasses(HKEY_LOCAL_MACHINE);
    RegistryChange change(classes.Get());
    Write(change, keys);
    if (Contradicts(HKEY_CURRENT_USER, keys))
        Remove(HKEY_CURRENT_USER, keys);
    change.Keep();
}

void RegisterForUser(const RegistrationKeys& keys)
{
    const RegistryKey classes = MakeClasses(HKEY_CURRENT_USER);
    RegistryChange change(classes.Get());
    Write(change, keys);
    change.Keep();
}

/// Nothing but a status gets out.
template<class Body>
[[nodiscard]] HRESULT StatusOf(Body&& body) noexcept
{
    try {
        body();
        return S_OK;
    } catch (const RegistrationError& error) {
        return error.status;
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_UNEXPECTED;
    }
}

} // namespace

HRESULT RegisterServer(const std::wstring& modulePath) noexcept
{
    return StatusOf([&] {
        const RegistrationKeys keys = KeysOf(modulePath);
        try {
            RegisterForMachine(keys);
        } catch (const RegistrationError& error) {
            if (error.status != E_ACCESSDENIED)
                throw;
            RegisterForUser(keys);
        }
    });
}

HRESULT UnregisterServer(const std::wstring& modulePath) noexcept
{
    return StatusOf([&] {
        const RegistrationKeys keys = KeysOf(modulePath);
        const bool isUsers = Holds(HKEY_CURRENT_USER, keys);
        if (isUsers)
            Remove(HKEY_CURRENT_USER, keys);
        if (!Holds(HKEY_LOCAL_MACHINE, keys))
            return;
        try {
            Remove(HKEY_LOCAL_MACHINE, keys);
        } catch (const RegistrationError& error) {
            if (!isUsers || error.status != E_ACCESSDENIED)
                throw;
        }
    });
}

} // namespace KestrinProductEditor
