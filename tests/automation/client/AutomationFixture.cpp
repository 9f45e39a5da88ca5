// SPDX-License-Identifier: MIT
#include "automation/client/AutomationFixture.h"

#include "server/windows/ComError.h"

#include <objbase.h>

#include <filesystem>
#include <stdexcept>

namespace KestrinProductEditor {

namespace {

[[nodiscard]] ComPtr<IDispatch> HostControl()
{
    ComPtr<IDispatch> control;
    if (FAILED(CreateByName(L"KstneditTests.Host", IID_PPV_ARGS(control.GetAddressOf()))))
        throw std::runtime_error("hostdouble.dll is not registered");
    return control;
}

} // namespace

Apartment::Apartment()
{
    if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)))
        throw std::runtime_error("no apartment");
}

Apartment::~Apartment()
{
    CoUninitialize();
}

HRESULT CreateByName(const wchar_t* className, REFIID interfaceID, void** object)
{
    *object = nullptr;
    CLSID classID;
    const HRESULT status = CLSIDFromProgID(className, &classID);
    return FAILED(status) ? status
                          : CoCreateInstance(classID, nullptr, CLSCTX_INPROC_SERVER, interfaceID, object);
}

Variant LateObject::Call(std::u16string_view member, std::vector<Variant> arguments) const
{
    const std::optional<DISPID> id = m_object.Find(member);
    if (!id)
        ThrowIfFailed(DISP_E_UNKNOWNNAME);
    std::vector<ComVariant> owned;
    std::vector<VARIANT> lent;
    for (const Variant& argument : arguments)
        lent.push_back(owned.emplace_back(argument));
    ComVariant result;
    ThrowIfFailed(m_object.TryCall(*id, DISPATCH_METHOD | DISPATCH_PROPERTYGET, lent, result));
    return FromCom(result);
}

void LateObject::Put(std::u16string_view property, const Variant& value) const
{
    const std::optional<DISPID> id = m_object.Find(property);
    if (!id)
        ThrowIfFailed(DISP_E_UNKNOWNNAME);
    ComVariant argument(value);
    DISPID named = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{&argument, &named, 1, 1};
    ThrowIfFailed(m_dispatch->Invoke(*id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT, &parameters,
                                     nullptr, nullptr, nullptr));
}

LeftError TakeLeftError()
{
    ComPtr<IErrorInfo> info;
    LeftError left;
    if (GetErrorInfo(0, info.GetAddressOf()) != S_OK)
        return left;
    Bstr source;
    Bstr description;
    info->GetSource(source.Out());
    info->GetDescription(description.Out());
    return {std::u16string(TextOf(source.Get())), std::u16string(TextOf(description.Get()))};
}

AutomationFixture::AutomationFixture() : m_host(HostControl().Get())
{
    std::filesystem::create_directory(m_folder.Path() / "Data");
    Host().Put(u"InstallPath", m_folder.Path().u16string());
    Host().Put(u"DBSubdirName", u"Data");
}

AutomationFixture::~AutomationFixture()
{
    for (const std::u16string_view member : {u"TraceErrNumber", u"TraceError", u"TraceEnter", u"TraceExit"})
        Host().Call(u"FailTrace", {member, -1, 0});
    for (const std::u16string_view name : {u"CorvoTWrp.Trace", u"CorvoConf.Config"})
        Host().Call(u"FailCreation", {name, 0});
    Host().Call(u"FailConfig", {0});
    Host().Put(u"ConfigMembers", u"default");
    Host().Put(u"AnswerErrNumber", Variant::Null());
    Host().Put(u"Recording", false);
}

ComPtr<_ProductLkpMgr> AutomationFixture::OpenStore()
{
    ComPtr<_ProductLkpMgr> store = Create<_ProductLkpMgr>(kStore);
    if (store != nullptr) {
        EXPECT_EQ(store->put_CancelUpdate(VARIANT_TRUE), S_OK);
    }
    return store;
}

std::vector<LONG> AutomationFixture::AddProducts(_ProductLkpMgr& store,
                                                 const std::vector<std::u16string>& names)
{
    std::vector<LONG> identifiers;
    for (const std::u16string& name : names) {
        LONG identifier = -1;
        EXPECT_EQ(store.AddNew(ComVariant(Packed(name)), &identifier), S_OK);
        identifiers.push_back(identifier);
    }
    return identifiers;
}

Variant AutomationFixture::Packed(std::u16string_view name, std::int64_t scaledPrice)
{
    return Variant::ArrayWith(0, name, u"", u"", Currency::FromScaled(scaledPrice), u"");
}

} // namespace KestrinProductEditor
