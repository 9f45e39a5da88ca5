// SPDX-License-Identifier: MIT
#include "server/windows/HostComponents.h"

#include "platform/HostServices.h"
#include "platform/Text.h"
#include "server/windows/ComError.h"
#include "server/windows/ComText.h"
#include "server/windows/ForeignObject.h"
#include "server/windows/PendingErrorInfo.h"

#include <KestrinProductEditor/HostComponents.h>

#include <windows.h>

#include <objbase.h>

#include <mutex>
#include <span>
#include <string>
#include <unordered_map>

namespace KestrinProductEditor {

namespace {

using Microsoft::WRL::ComPtr;

[[nodiscard]] ForeignObject CreateByName(std::string_view classID)
{
    const std::u16string name = ToUtf16(classID);
    CLSID identifier;
    ComPtr<IDispatch> object;
    SetErrorInfo(0, nullptr);
    HRESULT status = CLSIDFromProgID(reinterpret_cast<const wchar_t*>(name.c_str()), &identifier);
    if (SUCCEEDED(status))
        status = CoCreateInstance(identifier, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER,
                                  IID_PPV_ARGS(object.GetAddressOf()));
    try {
        ThrowIfFailed(status);
    } catch (const AutomationError& error) {
        if (error.Number() != kErrCannotCreateObject)
            throw;
        throw AutomationError(error.Number(), error.Source(), error.Description() + u": '" + name + u"'");
    }
    return ForeignObject(object.Get());
}

[[nodiscard]] DISPID MemberOf(const ForeignObject& object, std::u16string_view name)
{
    const std::optional<DISPID> member = object.Find(name);
    if (!member)
        ThrowIfFailed(DISP_E_UNKNOWNNAME);
    return *member;
}

/// The host's trace. Every method of the component calls it, so the members are looked up once, and a
/// context's text is made once.
class AutomationTrace final : public ITrace
{
public:
    AutomationTrace()
        : m_object(CreateByName(kTraceClassID)), m_errNumber(MemberOf(m_object, u"TraceErrNumber")),
          m_error(MemberOf(m_object, u"TraceError")), m_enter(MemberOf(m_object, u"TraceEnter")),
          m_exit(MemberOf(m_object, u"TraceExit"))
    {
    }

    std::int32_t TraceErrNumber() override
    {
        ComVariant answer = PrvCallAboutError(m_errNumber, {});
        // A status, bit by bit.
        if (answer.vt == VT_UI4 || answer.vt == VT_ERROR)
            return answer.lVal;
        ComVariant number;
        ThrowIfSystemFailed(VariantChangeType(&number, &answer, 0, VT_I4));
        return number.lVal;
    }
    void TraceError(std::u16string_view sText) override
    {
        const Bstr text(sText);
        VARIANT argument = PrvArgument(text);
        static_cast<void>(PrvCallAboutError(m_error, {&argument, 1}));
    }
    void TraceEnter(std::u16string_view sContext) override { PrvTell(m_enter, sContext); }
    void TraceExit(std::u16string_view sContext) override { PrvTell(m_exit, sContext); }

private:
    [[nodiscard]] static VARIANT PrvArgument(const Bstr& text)
    {
        VARIANT argument;
        argument.vt = VT_BSTR;
        argument.bstrVal = text.Get();
        return argument;
    }

    void PrvTell(DISPID member, std::u16string_view context)
    {
        VARIANT argument = PrvArgument(PrvTextOf(context));
        static_cast<void>(m_object.Call(member, {&argument, 1}));
    }

    /// A call in which the host may ask for the pending error.
    ComVariant PrvCallAboutError(DISPID member, std::span<VARIANT> arguments)
    {
        ComVariant result;
        HRESULT status = S_OK;
        {
            const PendingErrorScope pending;
            status = m_object.TryCall(member, DISPATCH_METHOD | DISPATCH_PROPERTYGET, arguments, result);
        }
        ThrowIfFailed(status);
        return result;
    }

    /// A context lives as long as the process, so its place in memory names it.
    const Bstr& PrvTextOf(std::u16string_view context)
    {
        const auto found = m_contexts.find(context.data());
        return found != m_contexts.end() ? found->second
                                         : m_contexts.emplace(context.data(), Bstr(context)).first->second;
    }

    ForeignObject m_object;
    DISPID m_errNumber;
    DISPID m_error;
    DISPID m_enter;
    DISPID m_exit;
    std::unordered_map<const char16_t*, Bstr> m_contexts;
};

/// The host's configuration, which answers with its default member, or with one of the names that hosts give
/// it.
class AutomationConfig final : public IConfig
{
public:
    AutomationConfig() : m_object(CreateByName(kConfigClassID)) {}

    Variant Value(std::u16string_view sKey) override
    {
        const Bstr key(sKey);
        VARIANT argument;
        argument.vt = VT_BSTR;
        argument.bstrVal = key.Get();
        ComVariant value;
        // What an earlier failure has left is not this one's.
        SetErrorInfo(0, nullptr);
        HRESULT status = m_object.TryCall(DISPID_VALUE, kRead, {&argument, 1}, value);
        for (const std::u16string_view name : {u"Value", u"GetValue", u"Item"}) {
            if (SUCCEEDED(status))
                break;
            if (const std::optional<DISPID> member = m_object.Find(name))
                status = m_object.TryCall(*member, kRead, {&argument, 1}, value);
        }
        ThrowIfFailed(status);
        return FromCom(value);
    }

private:
    static constexpr WORD kRead = DISPATCH_METHOD | DISPATCH_PROPERTYGET;

    ForeignObject m_object;
};

} // namespace

void BindHostComponents()
{
    static std::once_flag once;
    std::call_once(once, [] {
        RegisterHostComponent(kTraceClassID, [] { return std::make_shared<AutomationTrace>(); });
        RegisterHostComponent(kConfigClassID, [] { return std::make_shared<AutomationConfig>(); });
    });
}

} // namespace KestrinProductEditor
