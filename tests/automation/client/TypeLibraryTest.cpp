// SPDX-License-Identifier: MIT
#include "automation/client/AutomationFixture.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

[[nodiscard]] std::string Utf8(BSTR text)
{
    std::string narrow;
    for (const char16_t unit : TextOf(text))
        narrow.push_back(static_cast<char>(unit));
    return narrow;
}

[[nodiscard]] std::string Text(REFGUID identifier)
{
    wchar_t text[64];
    const int length = StringFromGUID2(identifier, text, 64);
    return std::string(text, text + length - 1);
}

/// The parts of a library that this test compares.
class Library
{
public:
    Library()
    {
        const HMODULE module = GetModuleHandleW(L"kstnedit.dll");
        wchar_t path[MAX_PATH];
        EXPECT_NE(GetModuleFileNameW(module, path, MAX_PATH), 0u);
        EXPECT_EQ(LoadTypeLibEx(path, REGKIND_NONE, m_library.GetAddressOf()), S_OK);
    }

    [[nodiscard]] ITypeLib& Get() const { return *m_library.Get(); }

    [[nodiscard]] ComPtr<ITypeInfo> Info(UINT index) const
    {
        ComPtr<ITypeInfo> info;
        EXPECT_EQ(m_library->GetTypeInfo(index, info.GetAddressOf()), S_OK);
        return info;
    }

    [[nodiscard]] std::string NameAt(UINT index) const
    {
        Bstr name;
        EXPECT_EQ(m_library->GetDocumentation(static_cast<INT>(index), name.Out(), nullptr, nullptr, nullptr),
                  S_OK);
        return Utf8(name.Get());
    }

private:
    ComPtr<ITypeLib> m_library;
};

/// A description that is given back at the end of the scope.
class Attributes
{
public:
    explicit Attributes(ITypeInfo& info) : m_info(info) { EXPECT_EQ(info.GetTypeAttr(&m_attributes), S_OK); }
    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;
    ~Attributes() { m_info.ReleaseTypeAttr(m_attributes); }
    const TYPEATTR* operator->() const { return m_attributes; }

private:
    ITypeInfo& m_info;
    TYPEATTR* m_attributes = nullptr;
};

/// The name of a parameter's type as the tables of members give it; "&" marks a pointer.
[[nodiscard]] std::string TypeName(ITypeInfo& info, const TYPEDESC& type)
{
    switch (type.vt) {
    case VT_PTR:
        return TypeName(info, *type.lptdesc) + "&";
    case VT_USERDEFINED: {
        ComPtr<ITypeInfo> referred;
        Bstr name;
        EXPECT_EQ(info.GetRefTypeInfo(type.hreftype, referred.GetAddressOf()), S_OK);
        EXPECT_EQ(referred->GetDocumentation(MEMBERID_NIL, name.Out(), nullptr, nullptr, nullptr), S_OK);
        return Utf8(name.Get());
    }
    case VT_I4:
        return "Long";
    case VT_BOOL:
        return "Boolean";
    case VT_BSTR:
        return "String";
    case VT_VARIANT:
        return "Variant";
    case VT_HRESULT:
        return "status";
    default:
        return "type " + std::to_string(type.vt);
    }
}

/// "Pack(lRowID Long) Variant": what a caller sees of a slot.
[[nodiscard]] std::string Signature(ITypeInfo& info, const FUNCDESC& slot)
{
    BSTR names[8]{};
    UINT count = 0;
    EXPECT_EQ(info.GetNames(slot.memid, names, 8, &count), S_OK);
    std::string text = Utf8(names[0]) + "(";
    std::string result;
    for (int at = 0; at < slot.cParams; ++at) {
        const ELEMDESC& parameter = slot.lprgelemdescParam[at];
        const std::string type = TypeName(info, parameter.tdesc);
        if ((parameter.paramdesc.wParamFlags & PARAMFLAG_FRETVAL) != 0) {
            result = " " + type.substr(0, type.size() - 1);
            continue;
        }
        // The names are those of the other half of a property.
        const bool isValue = slot.invkind == INVOKE_PROPERTYPUT && at == slot.cParams - 1;
        text += (at == 0 ? "" : ", ") + (isValue ? "value" : Utf8(names[at + 1])) + " " + type;
    }
    for (UINT at = 0; at < count; ++at)
        SysFreeString(names[at]);
    return text + ")" + result;
}

/// identifiers.txt, by its lines.
[[nodiscard]] std::vector<std::string> ListedIdentifiers()
{
    std::ifstream file(KSTNEDIT_SOURCE_DIR "/src/server/windows/identifiers.txt");
    EXPECT_TRUE(file.is_open());
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
        if (line.ends_with('\r'))
            line.pop_back();
        if (!line.empty() && !line.starts_with('#'))
            lines.push_back(line);
    }
    return lines;
}

/// The slots before the interface's own: of IUnknown and IDispatch.
constexpr int kInheritedSlots = 7;

/// "  8 Pack method 8" for each slot of an interface's own: place, name, kind and dispatch identifier.
[[nodiscard]] std::vector<std::string> SlotsOf(ITypeInfo& info)
{
    std::vector<std::string> lines;
    const Attributes type(info);
    for (UINT at = 0; at < type->cFuncs; ++at) {
        FUNCDESC* slot = nullptr;
        EXPECT_EQ(info.GetFuncDesc(at, &slot), S_OK);
        const int place = slot->oVft / static_cast<int>(sizeof(void*)) - kInheritedSlots + 1;
        if (place > 0) {
            const std::string signature = Signature(info, *slot);
            const char* const kind = slot->invkind == INVOKE_FUNC          ? "method"
                                     : slot->invkind == INVOKE_PROPERTYGET ? "get"
                                                                           : "put";
            lines.push_back("  " + std::to_string(place) + " " + signature.substr(0, signature.find('(')) +
                            " " + kind + " " + std::to_string(slot->memid));
        }
        info.ReleaseFuncDesc(slot);
    }
    return lines;
}

/// The same lines, as the library tells them: interfaces in the order of their classes.
[[nodiscard]] std::vector<std::string> IdentifiersOf(const Library& library)
{
    TLIBATTR* attributes = nullptr;
    EXPECT_EQ(library.Get().GetLibAttr(&attributes), S_OK);
    std::vector<std::string> enums;
    std::vector<std::string> classes;
    std::vector<std::string> names;
    std::map<std::string, std::vector<std::string>> interfaces;
    enums.push_back("library KestrinProductEditor " + std::to_string(attributes->wMajorVerNum) + "." +
                    std::to_string(attributes->wMinorVerNum) + " " + Text(attributes->guid));
    library.Get().ReleaseTLibAttr(attributes);
    for (UINT index = 0; index < library.Get().GetTypeInfoCount(); ++index) {
        const ComPtr<ITypeInfo> info = library.Info(index);
        const Attributes type(*info.Get());
        const std::string name = library.NameAt(index);
        const std::string line = name + " " + Text(type->guid);
        if (type->typekind == TKIND_ENUM) {
            enums.push_back("enum " + line);
        } else if (type->typekind == TKIND_COCLASS) {
            const bool isCreatable = (type->wTypeFlags & TYPEFLAG_FCANCREATE) != 0;
            classes.push_back("class " + line + (isCreatable ? " creatable" : " noncreatable"));
            names.push_back(name);
        } else {
            interfaces[name] = SlotsOf(*info.Get());
            interfaces[name].insert(interfaces[name].begin(), "interface " + line);
        }
    }
    std::vector<std::string> lines = enums;
    lines.insert(lines.end(), classes.begin(), classes.end());
    for (const std::string& name : names) {
        const std::vector<std::string>& slots = interfaces["_" + name];
        lines.insert(lines.end(), slots.begin(), slots.end());
    }
    return lines;
}

/// The signatures of an interface's own slots, in their order.
[[nodiscard]] std::vector<std::string> SignaturesOf(const Library& library, REFGUID interfaceID)
{
    ComPtr<ITypeInfo> dispatch;
    ComPtr<ITypeInfo> info;
    HREFTYPE slots = 0;
    EXPECT_EQ(library.Get().GetTypeInfoOfGuid(interfaceID, dispatch.GetAddressOf()), S_OK);
    // Of a dual interface the library shows the late-bound half first; the slots are behind it.
    EXPECT_EQ(dispatch->GetRefTypeOfImplType(static_cast<UINT>(-1), &slots), S_OK);
    EXPECT_EQ(dispatch->GetRefTypeInfo(slots, info.GetAddressOf()), S_OK);
    const Attributes type(*info.Get());
    EXPECT_EQ(type->typekind, TKIND_INTERFACE);
    EXPECT_NE(type->wTypeFlags & TYPEFLAG_FDUAL, 0);
    std::map<int, std::string> signatures;
    for (UINT at = 0; at < type->cFuncs; ++at) {
        FUNCDESC* slot = nullptr;
        EXPECT_EQ(info->GetFuncDesc(at, &slot), S_OK);
        signatures[slot->oVft] = Signature(*info.Get(), *slot);
        info->ReleaseFuncDesc(slot);
    }
    std::vector<std::string> inOrder;
    int expected = kInheritedSlots * static_cast<int>(sizeof(void*));
    for (const auto& [offset, signature] : signatures) {
        EXPECT_EQ(offset, expected) << signature;
        expected += static_cast<int>(sizeof(void*));
        inOrder.push_back(signature);
    }
    return inOrder;
}

} // namespace

class TypeLibrary : public AutomationFixture
{
protected:
    const ComPtr<_ProductLkpMgr> m_store = OpenStore(); // which loads the component
    const Library m_library;
};

TEST_F(TypeLibrary, HasTheIdentifiersThatAreListed)
{
    const std::vector<std::string> listed = ListedIdentifiers();
    const std::vector<std::string> actual = IdentifiersOf(m_library);
    for (std::size_t line = 0; line < std::min(listed.size(), actual.size()); ++line)
        EXPECT_EQ(actual[line], listed[line]);
    EXPECT_EQ(actual.size(), listed.size());
}

TEST_F(TypeLibrary, HoldsTheClassesInTheirOrder)
{
    std::vector<std::string> classes;
    for (UINT index = 0; index < m_library.Get().GetTypeInfoCount(); ++index) {
        TYPEKIND kind = TKIND_MAX;
        EXPECT_EQ(m_library.Get().GetTypeInfoType(index, &kind), S_OK);
        if (kind == TKIND_COCLASS)
            classes.push_back(m_library.NameAt(index));
    }
    EXPECT_EQ(classes, (std::vector<std::string>{"ProdLkpEditDlg", "ProductLkpMgr", "ProductEditorDlg",
                                                 "IPNotifyCallback", "ProductImportDlg", "IProcessProgress",
                                                 "ProductExportDlg"}));
}

TEST_F(TypeLibrary, GivesEachClassItsDefaultInterface)
{
    for (UINT index = 0; index < m_library.Get().GetTypeInfoCount(); ++index) {
        const ComPtr<ITypeInfo> info = m_library.Info(index);
        if (Attributes(*info.Get())->typekind != TKIND_COCLASS)
            continue;
        HREFTYPE reference = 0;
        ComPtr<ITypeInfo> byDefault;
        Bstr name;
        INT flags = 0;
        ASSERT_EQ(info->GetImplTypeFlags(0, &flags), S_OK);
        EXPECT_EQ(flags & IMPLTYPEFLAG_FDEFAULT, IMPLTYPEFLAG_FDEFAULT);
        ASSERT_EQ(info->GetRefTypeOfImplType(0, &reference), S_OK);
        ASSERT_EQ(info->GetRefTypeInfo(reference, byDefault.GetAddressOf()), S_OK);
        ASSERT_EQ(byDefault->GetDocumentation(MEMBERID_NIL, name.Out(), nullptr, nullptr, nullptr), S_OK);
        EXPECT_EQ(Utf8(name.Get()), "_" + m_library.NameAt(index));
    }
}

TEST_F(TypeLibrary, HoldsBothEnumerations)
{
    std::map<std::string, LONG> values;
    for (UINT index = 0; index < m_library.Get().GetTypeInfoCount(); ++index) {
        const ComPtr<ITypeInfo> info = m_library.Info(index);
        const Attributes type(*info.Get());
        if (type->typekind != TKIND_ENUM)
            continue;
        for (UINT at = 0; at < type->cVars; ++at) {
            VARDESC* variable = nullptr;
            Bstr name;
            ASSERT_EQ(info->GetVarDesc(at, &variable), S_OK);
            EXPECT_EQ(info->GetDocumentation(variable->memid, name.Out(), nullptr, nullptr, nullptr), S_OK);
            values[Utf8(name.Get())] = variable->lpvarValue->lVal;
            info->ReleaseVarDesc(variable);
        }
    }
    EXPECT_EQ(values, (std::map<std::string, LONG>{
                          {"PF_RowID", 0},
                          {"PF_UniqueID", 1},
                          {"PF_Status", 2},
                          {"PF_Name", 3},
                          {"PF_Key", 4},
                          {"PF_PartNum", 5},
                          {"PF_UnitPrice", 6},
                          {"PF_Note", 7},
                          {"PF_DirtySession", 8},
                          {"PF_DirtySync", 9},
                          {"PFS_Name", 255},
                          {"PFS_Key", 255},
                          {"PFS_PartNum", 255},
                          {"PFS_Note", 4095},
                      }));
}

TEST_F(TypeLibrary, HoldsTheMembersOfTheStoreInTheirOrder)
{
    EXPECT_EQ(SignaturesOf(m_library, __uuidof(_ProductLkpMgr)),
              (std::vector<std::string>{
                  "CancelUpdate(value Boolean)",
                  "CancelUpdate() Boolean",
                  "GotoNthProduct(lIdx Long)",
                  "GetFindMatchesByPartNum(sPartNum String, bAll Boolean) Variant",
                  "GetFindMatchesByName(sName String, bAll Boolean) Variant",
                  "PartialFindByName(sName String) Boolean",
                  "Update(vProductInfo Variant)",
                  "Pack(lRowID Long) Variant",
                  "BinaryProductExport(sTargetPath String)",
                  "PrvCSVSetRowFields(vColumns Variant&, vRevMap Variant&, bError Boolean&)",
                  "SetNotifyCallback(objIProgress _IProcessProgress&)",
                  "ClearNotifyCallback()",
                  "CSVProductExport(vParams Variant)",
                  "CSVProductImport(vParams Variant) Variant",
                  "BinaryProductImport(sPath String)",
                  "SessionIsDirty() Boolean",
                  "SetDirtySyncFlags(bDirty Boolean)",
                  "SetDirtySessionFlags(bDirty Boolean)",
                  "Count() Long",
                  "Fields(lIdx CorvoProductFields) Variant",
                  "Fields(lIdx CorvoProductFields, value Variant)",
                  "AddNew(vProdInfo Variant) Long",
                  "Delete(lRowID Long)",
                  "DeleteAll()",
                  "BOF() Boolean",
                  "EOF() Boolean",
                  "MoveLast()",
                  "MoveFirst()",
                  "FindRowBySyncID(lRowSyncID Long)",
                  "CurrentRecordIdx() Long",
                  "FindRow(lRowID Long)",
                  "MoveNext()",
                  "MovePrevious()",
              }));
}

TEST_F(TypeLibrary, HoldsTheMembersOfTheOtherInterfacesInTheirOrder)
{
    using Lines = std::vector<std::string>;
    EXPECT_EQ(SignaturesOf(m_library, __uuidof(_ProdLkpEditDlg)), Lines{"Show(vParams Variant)"});
    EXPECT_EQ(SignaturesOf(m_library, __uuidof(_ProductEditorDlg)), Lines{"Show(vParams Variant)"});
    EXPECT_EQ(SignaturesOf(m_library, __uuidof(_IPNotifyCallback)),
              (Lines{"NotifyProductAdd()", "NotifyProductDelete()", "NotifyProductUpdate()"}));
    EXPECT_EQ(SignaturesOf(m_library, __uuidof(_ProductImportDlg)),
              (Lines{"Init(objProductLkpMgr _ProductLkpMgr&&)", "Show()"}));
    EXPECT_EQ(SignaturesOf(m_library, __uuidof(_IProcessProgress)), Lines{"Progress(vParams Variant)"});
    EXPECT_EQ(SignaturesOf(m_library, __uuidof(_ProductExportDlg)),
              (Lines{"Init(objProductLkpMgr _ProductLkpMgr&&)", "Show()"}));
}

TEST_F(TypeLibrary, AnswersEveryMemberThatItTellsOf)
{
    ComPtr<ITypeInfo> info;
    ASSERT_EQ(m_store->GetTypeInfo(0, 0, info.GetAddressOf()), S_OK);
    const Attributes type(*info.Get());
    for (UINT at = 0; at < type->cFuncs; ++at) {
        FUNCDESC* slot = nullptr;
        ASSERT_EQ(info->GetFuncDesc(at, &slot), S_OK);
        if (slot->oVft >= kInheritedSlots * static_cast<int>(sizeof(void*))) {
            // So many arguments has none of them: a member that is there says so.
            VARIANT arguments[9]{};
            DISPPARAMS parameters{arguments, nullptr, 9, 0};
            EXPECT_EQ(m_store->Invoke(slot->memid, IID_NULL, 0, static_cast<WORD>(slot->invkind), &parameters,
                                      nullptr, nullptr, nullptr),
                      DISP_E_BADPARAMCOUNT)
                << slot->memid << " kind " << slot->invkind;
        }
        info->ReleaseFuncDesc(slot);
    }
}

TEST_F(TypeLibrary, NamesTheClassOfAnObject)
{
    ComPtr<IProvideClassInfo> provider;
    ComPtr<ITypeInfo> info;
    Bstr name;
    ASSERT_EQ(m_store.As(&provider), S_OK);
    ASSERT_EQ(provider->GetClassInfo(info.GetAddressOf()), S_OK);
    ASSERT_EQ(info->GetDocumentation(MEMBERID_NIL, name.Out(), nullptr, nullptr, nullptr), S_OK);
    EXPECT_EQ(Utf8(name.Get()), "ProductLkpMgr");
}

} // namespace KestrinProductEditor
