// SPDX-License-Identifier: MIT
#include "server/windows/IdentifierList.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <objbase.h>

#include <stdexcept>
#include <string>

namespace KestrinProductEditor {

namespace {

constexpr wchar_t kTypeLibraryMarshaller[] = L"{00020424-0000-0000-C000-000000000046}";

[[nodiscard]] GUID Guid(const std::wstring& text)
{
    GUID guid{};
    EXPECT_EQ(IIDFromString(text.c_str(), &guid), S_OK);
    return guid;
}

[[nodiscard]] bool IsIn(ULONG section, const GUID& guid)
{
    ACTCTX_SECTION_KEYED_DATA found{};
    found.cbSize = sizeof(found);
    return FindActCtxSectionGuid(0, nullptr, section, &guid, &found) != 0;
}

/// Empty when the class has none.
[[nodiscard]] std::wstring ProgramNameOf(const GUID& guid)
{
    wchar_t* text = nullptr;
    if (FAILED(ProgIDFromCLSID(guid, &text)))
        return {};
    const std::wstring name = text;
    CoTaskMemFree(text);
    return name;
}

[[nodiscard]] std::string Narrow(const std::wstring& text)
{
    return {text.begin(), text.end()};
}

/// The component is known to this thread through its manifest alone.
class ManifestTest : public testing::Test
{
protected:
    ManifestTest()
    {
        ACTCTXA context{};
        context.cbSize = sizeof(context);
        context.lpSource = KSTNEDIT_BINARY_DIR "/bin/KestrinProductEditor.manifest";
        m_context = CreateActCtxA(&context);
        if (m_context == INVALID_HANDLE_VALUE)
            throw std::runtime_error("the manifest is refused: error " + std::to_string(GetLastError()));
        EXPECT_TRUE(ActivateActCtx(m_context, &m_cookie));
        EXPECT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    }
    ~ManifestTest() override
    {
        CoUninitialize();
        DeactivateActCtx(0, m_cookie);
        ReleaseActCtx(m_context);
    }

private:
    HANDLE m_context = INVALID_HANDLE_VALUE;
    ULONG_PTR m_cookie = 0;
};

} // namespace

TEST_F(ManifestTest, NamesTheLibraryWithExactlyTheCreatableClasses)
{
    std::wstring library;
    for (const ListedIdentifier& entry : ListedIdentifiers()) {
        SCOPED_TRACE(Narrow(entry.name));
        if (entry.kind == L"library") {
            library = entry.name;
            EXPECT_TRUE(
                IsIn(ACTIVATION_CONTEXT_SECTION_COM_TYPE_LIBRARY_REDIRECTION, Guid(entry.identifier)));
        } else if (entry.kind == L"class") {
            EXPECT_EQ(IsIn(ACTIVATION_CONTEXT_SECTION_COM_SERVER_REDIRECTION, Guid(entry.identifier)),
                      entry.isCreatable);
            EXPECT_EQ(ProgramNameOf(Guid(entry.identifier)),
                      entry.isCreatable ? library + L'.' + entry.name : std::wstring());
        }
    }
}

TEST_F(ManifestTest, LetsTheSystemMarshalEveryInterface)
{
    for (const ListedIdentifier& entry : ListedIdentifiers()) {
        if (entry.kind != L"interface")
            continue;
        SCOPED_TRACE(Narrow(entry.name));
        CLSID marshaller{};
        EXPECT_EQ(CoGetPSClsid(Guid(entry.identifier), &marshaller), S_OK);
        EXPECT_EQ(marshaller, Guid(kTypeLibraryMarshaller));
    }
}

} // namespace KestrinProductEditor
