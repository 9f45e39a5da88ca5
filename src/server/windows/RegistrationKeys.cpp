// SPDX-License-Identifier: MIT
#include "server/windows/RegistrationKeys.h"

#include "server/windows/ComText.h"
#include "server/windows/RegistryChange.h"

#include <wrl/client.h>

#include <array>
#include <memory>

namespace KestrinProductEditor {

namespace {

using Microsoft::WRL::ComPtr;

// The system's marshaller for what a type library describes.
constexpr wchar_t kTypeLibraryMarshaller[] = L"{00020424-0000-0000-C000-000000000046}";

void Require(HRESULT status)
{
    if (FAILED(status))
        throw RegistrationError{status};
}

[[nodiscard]] std::wstring TextOf(REFGUID identifier)
{
    std::array<wchar_t, 39> text{};
    StringFromGUID2(identifier, text.data(), static_cast<int>(text.size()));
    return text.data();
}

[[nodiscard]] std::wstring TextOf(const Bstr& text)
{
    return text.Get() == nullptr ? std::wstring() : std::wstring(text.Get(), SysStringLen(text.Get()));
}

/// What the library says of itself.
struct Library
{
    explicit Library(ITypeLib& library)
    {
        TLIBATTR* attributes = nullptr;
        Require(library.GetLibAttr(&attributes));
        identifier = TextOf(attributes->guid);
        // Written as the system reads it: hexadecimal.
        std::array<wchar_t, 16> digits{};
        static_cast<void>(swprintf(digits.data(), digits.size(), L"%x.%x",
                                   static_cast<unsigned>(attributes->wMajorVerNum),
                                   static_cast<unsigned>(attributes->wMinorVerNum)));
        version = digits.data();
        locale = std::to_wstring(attributes->lcid);
        // That it lies on a disk is told of the loaded library, not of the registered one.
        flags = std::to_wstring(attributes->wLibFlags & ~unsigned{LIBFLAG_FHASDISKIMAGE});
        library.ReleaseTLibAttr(attributes);
        Bstr nameText;
        Bstr descriptionText;
        Require(
            library.GetDocumentation(MEMBERID_NIL, nameText.Out(), descriptionText.Out(), nullptr, nullptr));
        name = TextOf(nameText);
        description = TextOf(descriptionText);
    }

    std::wstring identifier;
    std::wstring version;
    std::wstring locale;
    std::wstring flags;
    std::wstring name;
    std::wstring description;
};

void AddLibrary(RegistrationKeys& keys, const Library& library, const std::wstring& modulePath)
{
    const std::wstring allVersions = L"TypeLib\\" + library.identifier;
    const std::wstring key = allVersions + L'\\' + library.version;
    keys.values.push_back({key, L"", library.description});
    keys.values.push_back({key + L'\\' + library.locale + L"\\win64", L"", modulePath});
    keys.values.push_back({key + L"\\FLAGS", L"", library.flags});
    keys.values.push_back({key + L"\\HELPDIR", L"", modulePath.substr(0, modulePath.find_last_of(L"\\/"))});
    keys.trees.push_back(key);
    keys.parents.push_back(allVersions);
}

void AddClass(RegistrationKeys& keys, const Library& library, const std::wstring& modulePath,
              const std::wstring& identifier, const std::wstring& name)
{
    const std::wstring programName = library.name + L'.' + name;
    const std::wstring key = L"CLSID\\" + identifier;
    keys.values.push_back({key, L"", programName});
    keys.values.push_back({key + L"\\InprocServer32", L"", modulePath});
    keys.values.push_back({key + L"\\InprocServer32", L"ThreadingModel", L"Apartment"});
    keys.values.push_back({key + L"\\ProgID", L"", programName});
    keys.values.push_back({key + L"\\Programmable", L"", L""});
    keys.values.push_back({key + L"\\TypeLib", L"", library.identifier});
    keys.values.push_back({key + L"\\Version", L"", library.version});
    keys.trees.push_back(key);
    keys.values.push_back({programName, L"", programName});
    keys.values.push_back({programName + L"\\CLSID", L"", identifier});
    keys.names.push_back({programName, identifier});
}

void AddInterface(RegistrationKeys& keys, const Library& library, const std::wstring& identifier,
                  const std::wstring& name)
{
    const std::wstring key = L"Interface\\" + identifier;
    keys.values.push_back({key, L"", name});
    keys.values.push_back({key + L"\\ProxyStubClsid32", L"", kTypeLibraryMarshaller});
    keys.values.push_back({key + L"\\TypeLib", L"", library.identifier});
    keys.values.push_back({key + L"\\TypeLib", L"Version", library.version});
    keys.trees.push_back(key);
}

} // namespace

RegistrationKeys RegistrationKeysOf(ITypeLib& library, const std::wstring& modulePath)
{
    const Library attributes(library);
    RegistrationKeys keys;
    AddLibrary(keys, attributes, modulePath);
    const UINT count = library.GetTypeInfoCount();
    for (UINT index = 0; index < count; ++index) {
        ComPtr<ITypeInfo> type;
        Require(library.GetTypeInfo(index, type.GetAddressOf()));
        Bstr nameText;
        Require(library.GetDocumentation(static_cast<INT>(index), nameText.Out(), nullptr, nullptr, nullptr));
        TYPEATTR* attribute = nullptr;
        Require(type->GetTypeAttr(&attribute));
        const std::wstring identifier = TextOf(attribute->guid);
        const bool isClass =
            attribute->typekind == TKIND_COCLASS && (attribute->wTypeFlags & TYPEFLAG_FCANCREATE) != 0;
        const bool isInterface =
            attribute->typekind == TKIND_DISPATCH && (attribute->wTypeFlags & TYPEFLAG_FDUAL) != 0;
        type->ReleaseTypeAttr(attribute);
        const std::wstring name = TextOf(nameText);
        if (isClass)
            AddClass(keys, attributes, modulePath, identifier, name);
        else if (isInterface)
            AddInterface(keys, attributes, identifier, name);
    }
    keys.parents.insert(keys.parents.end(), {L"TypeLib", L"CLSID", L"Interface"});
    return keys;
}

} // namespace KestrinProductEditor
