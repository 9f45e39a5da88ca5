// SPDX-License-Identifier: MIT
#include "automation/client/AutomationFixture.h"

#include "server/windows/ComError.h"
#include "server/windows/ScriptReceiver.h"

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

[[nodiscard]] VARIANT LentText(const Bstr& text)
{
    VARIANT value{};
    value.bstrVal = text.Get();
    value.vt = VT_BSTR;
    return value;
}

[[nodiscard]] VARIANT Number(std::int32_t number)
{
    VARIANT value{};
    value.lVal = number;
    value.vt = VT_I4;
    return value;
}

template<class Type>
[[nodiscard]] VARIANT Reference(VARTYPE kind, Type& target)
{
    VARIANT value{};
    value.byref = &target;
    value.vt = static_cast<VARTYPE>(VT_BYREF | kind);
    return value;
}

[[nodiscard]] VARIANT Object(IDispatch* object)
{
    VARIANT value{};
    value.pdispVal = object;
    value.vt = VT_DISPATCH;
    return value;
}

[[nodiscard]] VARIANT Missing()
{
    VARIANT value{};
    value.scode = DISP_E_PARAMNOTFOUND;
    value.vt = VT_ERROR;
    return value;
}

} // namespace

class LateBound : public AutomationFixture
{
protected:
    /// A call of a member by its name, with the arguments as they are. The result is in Result() then.
    HRESULT Call(IDispatch* object, const wchar_t* member, std::vector<VARIANT> arguments,
                 WORD flags = DISPATCH_METHOD | DISPATCH_PROPERTYGET)
    {
        auto* name = const_cast<wchar_t*>(member);
        DISPID id = DISPID_UNKNOWN;
        if (const HRESULT status = object->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id);
            FAILED(status))
            return status;
        std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());
        DISPID named = DISPID_PROPERTYPUT;
        const bool isPut = (flags & DISPATCH_PROPERTYPUT) != 0;
        DISPPARAMS parameters{reversed.data(), isPut ? &named : nullptr, static_cast<UINT>(reversed.size()),
                              isPut ? 1u : 0u};
        m_result = ComVariant();
        m_exception = EXCEPINFO{};
        const HRESULT status = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters,
                                              isPut ? nullptr : &m_result, &m_exception, &m_badArgument);
        m_source = TextOf(m_exception.bstrSource);
        m_description = TextOf(m_exception.bstrDescription);
        SysFreeString(m_exception.bstrSource);
        SysFreeString(m_exception.bstrDescription);
        return status;
    }
    HRESULT CallStore(const wchar_t* member, std::vector<VARIANT> arguments = {})
    {
        return Call(m_store.Get(), member, std::move(arguments));
    }
    HRESULT PutInStore(const wchar_t* member, std::vector<VARIANT> arguments)
    {
        return Call(m_store.Get(), member, std::move(arguments), DISPATCH_PROPERTYPUT);
    }
    [[nodiscard]] Variant Result() const { return FromCom(m_result); }

    const ComPtr<_ProductLkpMgr> m_store = OpenStore();
    ComVariant m_result;
    EXCEPINFO m_exception{};
    std::u16string m_source;
    std::u16string m_description;
    UINT m_badArgument = 99;
};

TEST_F(LateBound, FindsMembersWhateverTheirLetterCase)
{
    EXPECT_EQ(CallStore(L"cOUNT"), S_OK);
    EXPECT_EQ(Result(), Variant(0));
    EXPECT_EQ(CallStore(L"NoSuchMember"), DISP_E_UNKNOWNNAME);
}

TEST_F(LateBound, ConvertsWhatScriptsSendForAPlainParameter)
{
    AddProducts(*m_store.Get(), {u"a", u"b", u"c"});
    const Bstr two(u"2");
    VARIANT inVariable = Number(2);
    SHORT small = 2;
    VARIANT byDouble{};
    byDouble.dblVal = 2.0;
    byDouble.vt = VT_R8;
    for (const VARIANT& index :
         {Number(2), LentText(two), Reference(VT_VARIANT, inVariable), Reference(VT_I2, small), byDouble}) {
        ASSERT_EQ(CallStore(L"MoveFirst"), S_OK);
        EXPECT_EQ(CallStore(L"GotoNthProduct", {index}), S_OK);
        EXPECT_EQ(CallStore(L"Fields", {Number(PF_Name)}), S_OK);
        EXPECT_EQ(Result(), Variant(u"c")) << index.vt;
    }
}

TEST_F(LateBound, AnswersAWrongKindWithTypeMismatchAndItsPlace)
{
    const Bstr word(u"word");
    VARIANT null{};
    null.vt = VT_NULL;
    EXPECT_EQ(CallStore(L"GotoNthProduct", {LentText(word)}), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(m_badArgument, 0u);
    EXPECT_EQ(CallStore(L"GotoNthProduct", {null}), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(CallStore(L"GetFindMatchesByName", {null, Number(1)}), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(m_badArgument, 1u);
    EXPECT_EQ(CallStore(L"GotoNthProduct", {Missing()}), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(CallStore(L"SetNotifyCallback", {Number(5)}), DISP_E_TYPEMISMATCH);
    VARIANT huge{};
    huge.dblVal = 1e10;
    huge.vt = VT_R8;
    EXPECT_EQ(CallStore(L"GotoNthProduct", {huge}), DISP_E_OVERFLOW);
}

TEST_F(LateBound, AnswersAWrongCountForEveryKindOfMember)
{
    EXPECT_EQ(CallStore(L"GotoNthProduct"), DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(CallStore(L"GotoNthProduct", {Number(1), Number(2)}), DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(CallStore(L"Count", {Number(1)}), DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(CallStore(L"Fields"), DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(PutInStore(L"Fields", {Number(1)}), DISP_E_BADPARAMCOUNT);
    const auto editor = Create<IDispatch>(L"KestrinProductEditor.ProductEditorDlg");
    EXPECT_EQ(Call(editor.Get(), L"Show", {}), DISP_E_BADPARAMCOUNT);
}

TEST_F(LateBound, ShowsTheLookupsEditorWithAnyArgumentOrNone)
{
    const auto launcher = Create<IDispatch>(L"KestrinProductEditor.ProdLkpEditDlg");
    EXPECT_EQ(Call(launcher.Get(), L"Show", {}), S_OK);
    EXPECT_EQ(Call(launcher.Get(), L"Show", {Number(1)}), S_OK);
    EXPECT_EQ(Call(launcher.Get(), L"Show", {Missing()}), S_OK);
    EXPECT_EQ(Call(launcher.Get(), L"Show", {Object(nullptr)}), S_OK);
    EXPECT_EQ(Call(launcher.Get(), L"Show", {Object(launcher.Get())}), S_OK);
    EXPECT_EQ(Call(launcher.Get(), L"Show", {Number(1), Number(2)}), DISP_E_BADPARAMCOUNT);
}

TEST_F(LateBound, ReadsAndWritesPropertiesWithAnIndex)
{
    AddProducts(*m_store.Get(), {u"Lamp"});
    const Bstr note(u"new");
    EXPECT_EQ(PutInStore(L"Fields", {Number(PF_Note), LentText(note)}), S_OK);
    EXPECT_EQ(Call(m_store.Get(), L"Fields", {Number(PF_Note)}, DISPATCH_PROPERTYGET), S_OK);
    EXPECT_EQ(Result(), Variant(u"new"));
    EXPECT_EQ(PutInStore(L"CancelUpdate", {Number(0)}), S_OK);
    EXPECT_EQ(CallStore(L"CancelUpdate"), S_OK);
    EXPECT_EQ(Result(), Variant(false));
    EXPECT_EQ(PutInStore(L"CancelUpdate", {Number(1)}), S_OK);
    EXPECT_EQ(PutInStore(L"Count", {Number(1)}), DISP_E_MEMBERNOTFOUND);
}

TEST_F(LateBound, TakesArgumentsByTheirNames)
{
    AddProducts(*m_store.Get(), {u"Lamp"});
    wchar_t member[] = L"GetFindMatchesByName";
    wchar_t all[] = L"bAll";
    wchar_t name[] = L"sName";
    wchar_t* names[] = {member, all, name};
    DISPID ids[3];
    ASSERT_EQ(m_store->GetIDsOfNames(IID_NULL, names, 3, LOCALE_USER_DEFAULT, ids), S_OK);
    const Bstr prefix(u"la");
    VARIANT values[] = {Number(0), LentText(prefix)};
    DISPPARAMS parameters{values, &ids[1], 2, 2};
    ASSERT_EQ(m_store->Invoke(ids[0], IID_NULL, 0, DISPATCH_METHOD, &parameters, &m_result, nullptr, nullptr),
              S_OK);
    EXPECT_TRUE(Result().IsArray());
}

TEST_F(LateBound, WritesToEveryKindOfReference)
{
    VARIANT columns = ComVariant(Variant::ArrayWith(u"Lamp")).Detach();
    VARIANT map = ComVariant(Variant::ArrayWith(0, -1, -1, -1)).Detach();
    VARIANT bad{};
    const auto call = [&](VARIANT& reverseMap, const VARIANT& error) {
        return CallStore(L"PrvCSVSetRowFields",
                         {Reference(VT_VARIANT, columns), Reference(VT_VARIANT, reverseMap), error});
    };
    VARIANT_BOOL flag = VARIANT_TRUE;
    EXPECT_EQ(call(map, Reference(VT_BOOL, flag)), S_OK);
    EXPECT_EQ(flag, VARIANT_FALSE);
    EXPECT_EQ(call(bad, Reference(VT_BOOL, flag)), S_OK);
    EXPECT_EQ(flag, VARIANT_TRUE);

    VARIANT variable{}; // which a script has declared and never set
    EXPECT_EQ(call(bad, Reference(VT_VARIANT, variable)), S_OK);
    EXPECT_EQ(variable.vt, VT_BOOL);
    EXPECT_EQ(variable.boolVal, VARIANT_TRUE);

    LONG number = 0;
    EXPECT_EQ(call(bad, Reference(VT_I4, number)), S_OK);
    EXPECT_EQ(number, -1);
    SHORT small = 5;
    EXPECT_EQ(call(map, Reference(VT_I2, small)), S_OK);
    EXPECT_EQ(small, 0);
    double real = 7;
    EXPECT_EQ(call(bad, Reference(VT_R8, real)), S_OK);
    EXPECT_EQ(real, -1.0);
    BSTR text = SysAllocString(L"False");
    EXPECT_EQ(call(bad, Reference(VT_BSTR, text)), S_OK);
    EXPECT_EQ(TextOf(text), u"True");
    SysFreeString(text);
    // By value there is nowhere to write to.
    EXPECT_EQ(call(bad, Number(0)), S_OK);

    // Arrays by value, and arrays by a reference of their own, are read the same.
    SAFEARRAY* array = columns.parray;
    LONG before = 0;
    ASSERT_EQ(m_store->get_Count(&before), S_OK);
    EXPECT_EQ(CallStore(L"PrvCSVSetRowFields", {columns, map, Reference(VT_BOOL, flag)}), S_OK);
    EXPECT_EQ(CallStore(L"PrvCSVSetRowFields",
                        {Reference(VT_ARRAY | VT_VARIANT, array), map, Reference(VT_BOOL, flag)}),
              S_OK);
    EXPECT_EQ(array, columns.parray);
    LONG after = 0;
    ASSERT_EQ(m_store->get_Count(&after), S_OK);
    EXPECT_EQ(after, before + 2);
    VariantClear(&columns);
    VariantClear(&map);
}

TEST_F(LateBound, InitialisesALauncherWithWhateverHoldsAStore)
{
    const auto launcher = Create<IDispatch>(L"KestrinProductEditor.ProductImportDlg");
    VARIANT variable = Object(m_store.Get());
    IDispatch* plain = m_store.Get();
    VARIANT nothing = Object(nullptr);
    VARIANT empty{};
    EXPECT_EQ(Call(launcher.Get(), L"Init", {Reference(VT_VARIANT, variable)}), S_OK);
    EXPECT_EQ(Call(launcher.Get(), L"Init", {Reference(VT_DISPATCH, plain)}), S_OK);
    EXPECT_EQ(Call(launcher.Get(), L"Init", {variable}), S_OK);
    EXPECT_EQ(Call(launcher.Get(), L"Init", {nothing}), S_OK);
    EXPECT_EQ(Call(launcher.Get(), L"Init", {Reference(VT_VARIANT, empty)}), S_OK);
    EXPECT_EQ(variable.pdispVal, m_store.Get());
    EXPECT_EQ(Call(launcher.Get(), L"Init", {Object(launcher.Get())}), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(Call(launcher.Get(), L"Init", {Number(1)}), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(Call(launcher.Get(), L"Init", {}), DISP_E_BADPARAMCOUNT);
}

TEST_F(LateBound, FollowsReferencesToReferences)
{
    VARIANT columns = ComVariant(Variant::ArrayWith(u"Lamp")).Detach();
    VARIANT map{};
    VARIANT middle{};
    const auto call = [&](const VARIANT& error) {
        VARIANT toColumns = Reference(VT_VARIANT, columns);
        return CallStore(L"PrvCSVSetRowFields",
                         {Reference(VT_VARIANT, toColumns), Reference(VT_VARIANT, map), error});
    };
    VARIANT variable{};
    middle = Reference(VT_VARIANT, variable);
    EXPECT_EQ(call(Reference(VT_VARIANT, middle)), S_OK);
    EXPECT_EQ(variable.vt, VT_BOOL);
    EXPECT_EQ(variable.boolVal, VARIANT_TRUE);
    EXPECT_EQ(middle.vt, VT_BYREF | VT_VARIANT);

    VARIANT_BOOL flag = VARIANT_FALSE;
    middle = Reference(VT_BOOL, flag);
    EXPECT_EQ(call(Reference(VT_VARIANT, middle)), S_OK);
    EXPECT_EQ(flag, VARIANT_TRUE);

    DECIMAL decimal{};
    EXPECT_EQ(call(Reference(VT_DECIMAL, decimal)), S_OK);
    LONG number = 0;
    EXPECT_EQ(VarI4FromDec(&decimal, &number), S_OK);
    EXPECT_NE(number, 0);

    const auto launcher = Create<IDispatch>(L"KestrinProductEditor.ProductImportDlg");
    VARIANT store = Object(m_store.Get());
    middle = Reference(VT_VARIANT, store);
    EXPECT_EQ(Call(launcher.Get(), L"Init", {Reference(VT_VARIANT, middle)}), S_OK);

    VARIANT endless{};
    endless = Reference(VT_VARIANT, endless);
    EXPECT_EQ(call(endless), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(CallStore(L"GotoNthProduct", {endless}), DISP_E_TYPEMISMATCH);
    VariantClear(&columns);
}

TEST_F(LateBound, RefusesReferencesToNowhere)
{
    for (const VARTYPE kind : {VT_VARIANT, VT_BOOL, VT_I4, VT_BSTR, VT_DISPATCH}) {
        VARIANT nowhere{};
        nowhere.vt = static_cast<VARTYPE>(VT_BYREF | kind);
        EXPECT_EQ(CallStore(L"GotoNthProduct", {nowhere}), DISP_E_TYPEMISMATCH) << kind;
        EXPECT_EQ(CallStore(L"PrvCSVSetRowFields", {nowhere, nowhere, nowhere}), DISP_E_TYPEMISMATCH) << kind;
        EXPECT_EQ(CallStore(L"BinaryProductExport", {nowhere}), DISP_E_TYPEMISMATCH) << kind;
        EXPECT_EQ(CallStore(L"AddNew", {nowhere}), DISP_E_EXCEPTION) << kind;
        EXPECT_EQ(m_exception.scode, StatusOf(kErrTypeMismatch)) << kind;
    }
}

TEST_F(LateBound, RefusesListsOfArgumentsThatCannotBe)
{
    VARIANT argument = Number(0);
    DISPID names[] = {77, 0};
    const DISPPARAMS lists[] = {
        {&argument, names, 1, 2},
        {nullptr, nullptr, 1, 0},
        {&argument, nullptr, 1, 1},
    };
    for (DISPPARAMS list : lists)
        EXPECT_EQ(m_store->Invoke(3, IID_NULL, 0, DISPATCH_METHOD, &list, nullptr, nullptr, nullptr),
                  E_INVALIDARG);
}

TEST_F(LateBound, TellsNumberSourceAndDescriptionOfAnError)
{
    EXPECT_EQ(CallStore(L"Pack", {Number(99)}), DISP_E_EXCEPTION);
    EXPECT_EQ(m_exception.scode, kErrComponent);
    EXPECT_EQ(m_source, u"KestrinProductEditor.ProductLkpMgr::Pack");
    EXPECT_EQ(m_description, u"Product not found");
    EXPECT_EQ(CallStore(L"Fields", {Number(77)}), DISP_E_EXCEPTION);
    EXPECT_EQ(m_exception.scode, StatusOf(kErrNoCurrentRecord));
}

TEST_F(LateBound, GivesNoResultToACallerThatWantsNone)
{
    VARIANT argument = Number(AddProducts(*m_store.Get(), {u"Lamp"}).front());
    DISPPARAMS parameters{&argument, nullptr, 1, 0};
    EXPECT_EQ(m_store->Invoke(8, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr), S_OK);
    EXPECT_EQ(m_store->Invoke(8, IID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr),
              E_INVALIDARG);
}

} // namespace KestrinProductEditor
