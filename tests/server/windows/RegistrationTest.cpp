// SPDX-License-Identifier: MIT
#include "server/windows/Registration.h"

#include "platform/Text.h"
#include "server/windows/IdentifierList.h"
#include "server/windows/RegistrationKeys.h"
#include "server/windows/RegistryChange.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <sddl.h>
#include <wrl/client.h>

#include <filesystem>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

constexpr wchar_t kPlace[] = L"Software\\KestrinProductEditor registration tests";
constexpr wchar_t kStore[] = L"CLSID\\{ADD17734-E348-4A43-8283-438D48DE63B9}";
constexpr wchar_t kStoreName[] = L"KestrinProductEditor.ProductLkpMgr";
constexpr wchar_t kStranger[] = L"{11111111-2222-3333-4444-555555555555}";

/// "key" for each key, "key [name] = text" for each value.
using Lines = std::set<std::wstring>;

[[nodiscard]] std::wstring Line(const std::wstring& key, const std::wstring& name, const std::wstring& text)
{
    return key + L" [" + name + L"] = " + text;
}

/// As a text, so that a failure tells the lines that differ.
[[nodiscard]] std::string Export(const Lines& lines)
{
    std::string text;
    for (const std::wstring& line : lines)
        text += ToUtf8(std::u16string(line.begin(), line.end())) + '\n';
    return text;
}

void Require(LSTATUS result, const char* what)
{
    if (result != ERROR_SUCCESS)
        throw std::runtime_error(std::string(what) + ": error " + std::to_string(result));
}

void AddTo(Lines& all, HKEY top, const std::wstring& key)
{
    RegistryKey place;
    Require(RegOpenKeyExW(top, key.c_str(), 0, KEY_READ, place.Out()), "a key");
    std::wstring name(300, L'\0');
    std::vector<BYTE> bytes(4000);
    for (DWORD index = 0;; ++index) {
        auto length = static_cast<DWORD>(name.size());
        auto size = static_cast<DWORD>(bytes.size());
        if (RegEnumValueW(place.Get(), index, name.data(), &length, nullptr, nullptr, bytes.data(), &size) !=
            ERROR_SUCCESS)
            break;
        const std::wstring text(reinterpret_cast<const wchar_t*>(bytes.data()), size / sizeof(wchar_t));
        all.insert(Line(key, name.substr(0, length), text.c_str()));
    }
    if (!key.empty())
        all.insert(key);
    for (DWORD index = 0;; ++index) {
        auto length = static_cast<DWORD>(name.size());
        if (RegEnumKeyExW(place.Get(), index, name.data(), &length, nullptr, nullptr, nullptr, nullptr) !=
            ERROR_SUCCESS)
            break;
        AddTo(all, top, (key.empty() ? key : key + L'\\') + name.substr(0, length));
    }
}

/// The machine's or the user's part of the registry, a key of the tests' own in its place.
class Part
{
public:
    Part(HKEY root, const wchar_t* name) : m_root(root)
    {
        const std::wstring path = std::wstring(kPlace) + L'\\' + name;
        Require(RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                                m_top.Out(), nullptr),
                "a part of the registry");
        Require(RegCreateKeyExW(m_top.Get(), L"Software\\Classes", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                                m_classes.Out(), nullptr),
                "its classes");
    }
    Part(const Part&) = delete;
    Part& operator=(const Part&) = delete;
    ~Part() { RegOverridePredefKey(m_root, nullptr); }

    void TakePlace() const { Require(RegOverridePredefKey(m_root, m_top.Get()), "the place of a part"); }
    [[nodiscard]] HKEY Classes() const { return m_classes.Get(); }
    [[nodiscard]] std::string Content() const
    {
        Lines all;
        AddTo(all, m_classes.Get(), L"");
        return Export(all);
    }
    void Set(const std::wstring& key, const std::wstring& name, const std::wstring& text) const
    {
        Require(RegSetKeyValueW(m_classes.Get(), key.c_str(), name.c_str(), REG_SZ, text.c_str(),
                                static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))),
                "a value");
    }
    void Clear() const { Require(RegDeleteTreeW(m_classes.Get(), nullptr), "the content of a part"); }
    [[nodiscard]] std::wstring PathOfStore() const
    {
        return RegistryText(m_classes.Get(), std::wstring(kStore) + L"\\InprocServer32", L"").value_or(L"");
    }

private:
    HKEY m_root;
    RegistryKey m_top;
    RegistryKey m_classes;
};

/// A key that may be read only meanwhile.
class ScopedDenial
{
public:
    ScopedDenial(HKEY classes, const std::wstring& key)
    {
        Require(RegCreateKeyExW(classes, key.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, m_key.Out(),
                                nullptr),
                "a key to deny");
        PrvAllow(L"D:P(A;;KR;;;WD)");
    }
    ScopedDenial(const ScopedDenial&) = delete;
    ScopedDenial& operator=(const ScopedDenial&) = delete;
    ~ScopedDenial() { PrvAllow(L"D:P(A;;KA;;;WD)"); }

private:
    void PrvAllow(const wchar_t* rights) const
    {
        PSECURITY_DESCRIPTOR descriptor = nullptr;
        ConvertStringSecurityDescriptorToSecurityDescriptorW(rights, SDDL_REVISION_1, &descriptor, nullptr);
        EXPECT_EQ(RegSetKeySecurity(m_key.Get(), DACL_SECURITY_INFORMATION, descriptor), ERROR_SUCCESS);
        LocalFree(descriptor);
    }

    RegistryKey m_key;
};

[[nodiscard]] std::wstring Library()
{
    return std::filesystem::path(KSTNEDIT_BINARY_DIR "/generated/kstnedit.tlb").wstring();
}

void Add(Lines& all, const std::wstring& key, const std::wstring& name, const std::wstring& text)
{
    for (std::size_t end = 0; end != std::wstring::npos;) {
        end = key.find(L'\\', end + 1);
        all.insert(key.substr(0, end));
    }
    all.insert(Line(key, name, text));
}

/// What is to stand in the registry, told by the list of identifiers.
[[nodiscard]] std::string Registration(const std::wstring& path)
{
    Lines all;
    std::wstring library;
    std::wstring libraryName;
    for (const auto& [kind, name, version, identifier, isCreatable] : ListedIdentifiers()) {
        if (kind == L"library") {
            libraryName = name;
            library = identifier;
            const std::wstring key = L"TypeLib\\" + library + L'\\' + version;
            Add(all, key, L"", L"The product catalogue of Salvo");
            Add(all, key + L"\\0\\win64", L"", path);
            Add(all, key + L"\\FLAGS", L"", L"0");
            Add(all, key + L"\\HELPDIR", L"", path.substr(0, path.find_last_of(L"\\/")));
        } else if (kind == L"class" && isCreatable) {
            const std::wstring key = L"CLSID\\" + identifier;
            const std::wstring programName = libraryName + L'.' + name;
            Add(all, key, L"", programName);
            Add(all, key + L"\\InprocServer32", L"", path);
            Add(all, key + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
            Add(all, key + L"\\ProgID", L"", programName);
            Add(all, key + L"\\Programmable", L"", L"");
            Add(all, key + L"\\TypeLib", L"", library);
            Add(all, key + L"\\Version", L"", L"1.0");
            Add(all, programName, L"", programName);
            Add(all, programName + L"\\CLSID", L"", identifier);
        } else if (kind == L"interface") {
            const std::wstring key = L"Interface\\" + identifier;
            Add(all, key, L"", name);
            Add(all, key + L"\\ProxyStubClsid32", L"", L"{00020424-0000-0000-C000-000000000046}");
            Add(all, key + L"\\TypeLib", L"", library);
            Add(all, key + L"\\TypeLib", L"Version", L"1.0");
        }
    }
    return Export(all);
}

class RegistrationTest : public testing::Test
{
protected:
    RegistrationTest()
    {
        m_machine.TakePlace();
        m_user.TakePlace();
    }

    /// The type library under another path.
    [[nodiscard]] std::wstring Copy(const std::filesystem::path& name) const
    {
        const std::filesystem::path path = m_folder.Path() / name;
        std::filesystem::create_directories(path.parent_path());
        std::filesystem::copy_file(Library(), path);
        return path.wstring();
    }

private:
    /// First made, last removed.
    struct Place
    {
        Place() { RegDeleteTreeW(HKEY_CURRENT_USER, kPlace); }
        Place(const Place&) = delete;
        Place& operator=(const Place&) = delete;
        ~Place() { RegDeleteTreeW(HKEY_CURRENT_USER, kPlace); }
    };

    Place m_place;
    TemporaryFolder m_folder;

protected:
    Part m_machine{HKEY_LOCAL_MACHINE, L"machine"};
    Part m_user{HKEY_CURRENT_USER, L"user"};
};

} // namespace

TEST_F(RegistrationTest, TellsTheMachineOfEveryIdentifierInTheList)
{
    ASSERT_EQ(RegisterServer(Library()), S_OK);
    EXPECT_EQ(m_machine.Content(), Registration(Library()));
    EXPECT_EQ(m_user.Content(), "");
}

TEST_F(RegistrationTest, TellsTheUserWhatMayNotBeToldToTheMachine)
{
    const ScopedDenial denial(m_machine.Classes(), L"");
    ASSERT_EQ(RegisterServer(Library()), S_OK);
    EXPECT_EQ(m_user.Content(), Registration(Library()));
    EXPECT_EQ(m_machine.Content(), "");
}

TEST_F(RegistrationTest, HoldsAPathOutsideTheCodePage)
{
    const std::wstring path = Copy(L"\u4ea7\u54c1 \u0416\\\u20ac.dll");
    ASSERT_EQ(RegisterServer(path), S_OK);
    EXPECT_EQ(m_machine.Content(), Registration(path));
}

TEST_F(RegistrationTest, HoldsAVeryLongPath)
{
    Microsoft::WRL::ComPtr<ITypeLib> library;
    ASSERT_EQ(LoadTypeLibEx(Library().c_str(), REGKIND_NONE, library.GetAddressOf()), S_OK);
    const std::wstring path =
        L"\\\\?\\C:\\" + std::wstring(900, L'a') + L'\\' + std::wstring(900, L'b') + L".dll";
    RegistryChange change(m_machine.Classes());
    for (const RegistrationKeys::Value& value : RegistrationKeysOf(*library.Get(), path).values)
        change.SetText(value.key, value.name, value.text);
    EXPECT_EQ(m_machine.Content(), Registration(path));
}

TEST_F(RegistrationTest, IsTheSameTheSecondTime)
{
    ASSERT_EQ(RegisterServer(Library()), S_OK);
    EXPECT_EQ(RegisterServer(Library()), S_OK);
    EXPECT_EQ(m_machine.Content(), Registration(Library()));
}

TEST_F(RegistrationTest, RepairsWhatIsWrongOrMissing)
{
    ASSERT_EQ(RegisterServer(Library()), S_OK);
    m_machine.Set(std::wstring(kStore) + L"\\InprocServer32", L"ThreadingModel", L"Both");
    RemoveRegistryTree(m_machine.Classes(), std::wstring(kStoreName) + L"\\CLSID");
    RemoveRegistryTree(m_machine.Classes(), L"Interface");
    EXPECT_EQ(RegisterServer(Library()), S_OK);
    EXPECT_EQ(m_machine.Content(), Registration(Library()));
}

TEST_F(RegistrationTest, MovesWithTheComponent)
{
    const std::wstring path = Copy(L"moved.dll");
    ASSERT_EQ(RegisterServer(Library()), S_OK);
    EXPECT_EQ(RegisterServer(path), S_OK);
    EXPECT_EQ(m_machine.Content(), Registration(path));
}

TEST_F(RegistrationTest, RefusesAFileWithoutATypeLibrary)
{
    EXPECT_TRUE(FAILED(RegisterServer(Copy(L"there.dll") + L".absent")));
    EXPECT_TRUE(FAILED(UnregisterServer(L"C:\\absent.dll")));
    EXPECT_EQ(m_machine.Content(), "");
    EXPECT_EQ(m_user.Content(), "");
}

TEST_F(RegistrationTest, TakesBackWhatItWroteBeforeAFailure)
{
    for (const wchar_t* key : {L"TypeLib\\{6C99FA01-5BE5-4945-82F5-C6ADD8AF491E}\\1.0", kStore, kStoreName,
                               L"Interface\\{09CEF833-03A3-448A-AA08-0F4A075DC9F6}\\TypeLib"}) {
        SCOPED_TRACE(std::filesystem::path(key).string());
        {
            const ScopedDenial machine(m_machine.Classes(), key);
            const ScopedDenial user(m_user.Classes(), key);
            const std::string before = m_machine.Content();
            EXPECT_EQ(RegisterServer(Library()), E_ACCESSDENIED);
            EXPECT_EQ(m_machine.Content(), before);
            EXPECT_EQ(m_user.Content(), before);
        }
        for (const Part* part : {&m_machine, &m_user})
            part->Clear();
    }
}

TEST_F(RegistrationTest, KeepsTheFormerRegistrationWhenANewOneFails)
{
    ASSERT_EQ(RegisterServer(Library()), S_OK);
    RemoveRegistryTree(m_machine.Classes(), kStoreName);
    m_machine.Set(kStore, L"AppID", kStranger);
    const std::string before = m_machine.Content();
    const std::wstring path = Copy(L"moved.dll");
    const std::wstring last = L"Interface\\{09CEF833-03A3-448A-AA08-0F4A075DC9F6}\\TypeLib";
    const ScopedDenial machine(m_machine.Classes(), last);
    const ScopedDenial user(m_user.Classes(), L"");
    EXPECT_EQ(RegisterServer(path), E_ACCESSDENIED);
    EXPECT_EQ(m_machine.Content(), before);
    EXPECT_EQ(m_user.Content(), "");
}

TEST_F(RegistrationTest, RemovesAUsersThatWouldComeBeforeTheMachines)
{
    {
        const ScopedDenial denial(m_machine.Classes(), L"");
        ASSERT_EQ(RegisterServer(Copy(L"old.dll")), S_OK);
    }
    m_user.Set(L"Stranger.Class", L"", L"a stranger's");
    EXPECT_EQ(RegisterServer(Library()), S_OK);
    EXPECT_EQ(m_machine.PathOfStore(), Library());
    EXPECT_EQ(m_user.Content(), "Stranger.Class\nStranger.Class [] = a stranger's\n");
}

TEST_F(RegistrationTest, LeavesAUsersThatSaysTheSame)
{
    {
        const ScopedDenial denial(m_machine.Classes(), L"");
        ASSERT_EQ(RegisterServer(Library()), S_OK);
    }
    EXPECT_EQ(RegisterServer(Library()), S_OK);
    EXPECT_EQ(m_machine.Content(), Registration(Library()));
    EXPECT_EQ(m_user.Content(), Registration(Library()));
}

TEST_F(RegistrationTest, GoesWithoutATrace)
{
    m_machine.Set(std::wstring(L"CLSID\\") + kStranger, L"", L"a stranger's class");
    m_machine.Set(std::wstring(L"Interface\\") + kStranger, L"", L"a stranger's interface");
    m_machine.Set(L"TypeLib\\{6C99FA01-5BE5-4945-82F5-C6ADD8AF491E}\\2.0", L"", L"another version");
    m_machine.Set(L"KestrinProductEditor.Stranger", L"", L"a stranger's name");
    const std::string before = m_machine.Content();
    ASSERT_EQ(RegisterServer(Library()), S_OK);
    EXPECT_EQ(UnregisterServer(Library()), S_OK);
    EXPECT_EQ(m_machine.Content(), before);
}

TEST_F(RegistrationTest, LeavesNoEmptyKeysBehind)
{
    ASSERT_EQ(RegisterServer(Library()), S_OK);
    EXPECT_EQ(UnregisterServer(Library()), S_OK);
    EXPECT_EQ(m_machine.Content(), "");
}

TEST_F(RegistrationTest, GoesFromMachineAndUserWhereverTheyLead)
{
    {
        const ScopedDenial denial(m_machine.Classes(), L"");
        ASSERT_EQ(RegisterServer(Library()), S_OK);
    }
    ASSERT_EQ(RegisterServer(Library()), S_OK);
    EXPECT_EQ(UnregisterServer(Copy(L"elsewhere.dll")), S_OK);
    EXPECT_EQ(m_machine.Content(), "");
    EXPECT_EQ(m_user.Content(), "");
}

TEST_F(RegistrationTest, IsRemovedWhereThereIsNone)
{
    EXPECT_EQ(UnregisterServer(Library()), S_OK);
    EXPECT_EQ(m_machine.Content(), "");
    RemoveRegistryTree(HKEY_LOCAL_MACHINE, L"Software");
    RemoveRegistryTree(HKEY_CURRENT_USER, L"Software");
    EXPECT_EQ(UnregisterServer(Library()), S_OK);
}

TEST_F(RegistrationTest, IsRemovedAfterSomeoneTookPartOfItAway)
{
    ASSERT_EQ(RegisterServer(Library()), S_OK);
    RemoveRegistryTree(m_machine.Classes(), L"TypeLib");
    RemoveRegistryTree(m_machine.Classes(), L"CLSID");
    EXPECT_EQ(UnregisterServer(Library()), S_OK);
    EXPECT_EQ(m_machine.Content(), "");
}

TEST_F(RegistrationTest, LeavesAClassNameThatLeadsToAnothersClass)
{
    ASSERT_EQ(RegisterServer(Library()), S_OK);
    m_machine.Set(std::wstring(kStoreName) + L"\\CLSID", L"", kStranger);
    EXPECT_EQ(UnregisterServer(Library()), S_OK);
    Lines left;
    Add(left, kStoreName, L"", kStoreName);
    Add(left, std::wstring(kStoreName) + L"\\CLSID", L"", kStranger);
    EXPECT_EQ(m_machine.Content(), Export(left));
}

TEST_F(RegistrationTest, OfTheMachineStaysWhereOnlyTheUsersMayGo)
{
    ASSERT_EQ(RegisterServer(Library()), S_OK);
    const ScopedDenial denial(m_machine.Classes(), L"");
    ASSERT_EQ(RegisterServer(Library()), S_OK);
    EXPECT_EQ(UnregisterServer(Library()), S_OK);
    EXPECT_EQ(m_user.Content(), "");
    EXPECT_EQ(m_machine.Content(), Registration(Library()));
    EXPECT_EQ(UnregisterServer(Library()), E_ACCESSDENIED);
    EXPECT_EQ(m_machine.Content(), Registration(Library()));
}

} // namespace KestrinProductEditor
