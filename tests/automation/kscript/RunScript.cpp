// SPDX-License-Identifier: MIT
#include "automation/kscript/RunScript.h"

#include "automation/kscript/Globals.h"
#include "automation/support/ScriptObject.h"
#include "platform/Text.h"
#include "server/windows/ComText.h"

#include <KestrinProductEditor/AutomationError.h>

#include <activscp.h>

#include <atomic>
#include <cstdint>
#include <utility>

namespace KestrinProductEditor {

namespace {

using Microsoft::WRL::ComPtr;

/// What a failed call tells, with its texts.
class Failure : public EXCEPINFO
{
public:
    Failure() noexcept : EXCEPINFO{} {}
    Failure(const Failure&) = delete;
    Failure& operator=(const Failure&) = delete;
    ~Failure()
    {
        SysFreeString(bstrSource);
        SysFreeString(bstrDescription);
        SysFreeString(bstrHelpFile);
    }

    /// As scripts see it: 13 for 800A000D.
    [[nodiscard]] std::int32_t Number() const noexcept
    {
        constexpr std::uint32_t kFacilityMask = 0xFFFF0000;
        constexpr std::uint32_t kControlFacility = 0x800A0000;
        if (wCode != 0)
            return wCode;
        const auto bits = static_cast<std::uint32_t>(scode);
        return (bits & kFacilityMask) == kControlFacility ? static_cast<std::int32_t>(bits & ~kFacilityMask)
                                                          : scode;
    }
};

[[nodiscard]] std::u16string Decimal(std::int64_t number)
{
    return ToUtf16(std::to_string(number));
}

/// What the engine asks its host for and tells it.
class ScriptSite final : public IActiveScriptSite
{
public:
    static constexpr const wchar_t* kGlobals = L"kscript";

    ScriptSite(std::u16string file, IDispatch* globals) : m_file(std::move(file)), m_globals(globals) {}
    ScriptSite(const ScriptSite&) = delete;
    ScriptSite& operator=(const ScriptSite&) = delete;

    /// The latest error that a piece of the script did not catch; its caller may have.
    [[nodiscard]] const std::u16string& LatestError() const noexcept { return m_latestError; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceID, void** object) override
    {
        if (object == nullptr)
            return E_POINTER;
        *object = nullptr;
        if (interfaceID != IID_IUnknown && interfaceID != __uuidof(IActiveScriptSite))
            return E_NOINTERFACE;
        *object = static_cast<IActiveScriptSite*>(this);
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override
    {
        const ULONG left = --m_references;
        if (left == 0)
            delete this;
        return left;
    }

    HRESULT STDMETHODCALLTYPE GetLCID(LCID*) override { return E_NOTIMPL; } // the user's
    HRESULT STDMETHODCALLTYPE GetItemInfo(LPCOLESTR, DWORD wanted, IUnknown** item, ITypeInfo** info) override
    {
        if (info != nullptr)
            *info = nullptr;
        if ((wanted & SCRIPTINFO_IUNKNOWN) == 0)
            return TYPE_E_ELEMENTNOTFOUND;
        if (item == nullptr)
            return E_POINTER;
        return m_globals.CopyTo(IID_PPV_ARGS(item));
    }
    HRESULT STDMETHODCALLTYPE GetDocVersionString(BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnStateChange(SCRIPTSTATE) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnScriptError(IActiveScriptError* error) override
    {
        try {
            m_latestError = PrvTextOf(*error);
        } catch (...) {
            return E_OUTOFMEMORY;
        }
        // Not settled here: who called that piece, an object that the script uses perhaps, is to hear of it.
        return S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE OnEnterScript() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnLeaveScript() override { return S_OK; }

private:
    virtual ~ScriptSite() = default;

    [[nodiscard]] std::u16string PrvTextOf(IActiveScriptError& error) const
    {
        Failure failure;
        error.GetExceptionInfo(&failure);
        if (failure.pfnDeferredFillIn != nullptr)
            failure.pfnDeferredFillIn(&failure);
        DWORD context = 0;
        ULONG line = 0; // the first is 0
        LONG column = 0;
        error.GetSourcePosition(&context, &line, &column);
        return m_file + u'(' + Decimal(std::int64_t{line} + 1) + u"): " + Decimal(failure.Number()) + u": " +
               std::u16string(TextOf(failure.bstrSource)) + u": " +
               std::u16string(TextOf(failure.bstrDescription));
    }

    const std::u16string m_file;
    const ComPtr<IDispatch> m_globals;
    std::u16string m_latestError;
    std::atomic<ULONG> m_references = 1;
};

/// Closes the engine, which otherwise would keep its site and all objects of the script.
class ScopedEngine
{
public:
    explicit ScopedEngine(const wchar_t* name)
    {
        CLSID identifier;
        HRESULT status = CLSIDFromProgID(name, &identifier);
        if (SUCCEEDED(status))
            status = CoCreateInstance(identifier, nullptr, CLSCTX_INPROC_SERVER,
                                      IID_PPV_ARGS(m_engine.GetAddressOf()));
        if (FAILED(status))
            throw AutomationError(kErrCannotCreateObject);
    }
    ScopedEngine(const ScopedEngine&) = delete;
    ScopedEngine& operator=(const ScopedEngine&) = delete;
    ~ScopedEngine() { m_engine->Close(); }

    [[nodiscard]] HRESULT Run(IActiveScriptSite* site, const std::u16string& text) const
    {
        ComPtr<IActiveScriptParse> parser;
        Failure failure;
        HRESULT status = m_engine.As(&parser);
        if (SUCCEEDED(status))
            status = parser->InitNew();
        if (SUCCEEDED(status))
            status = m_engine->SetScriptSite(site);
        if (SUCCEEDED(status))
            status = m_engine->AddNamedItem(ScriptSite::kGlobals, SCRIPTITEM_GLOBALMEMBERS);
        // Connected before, the script runs at once and its end is the call's.
        if (SUCCEEDED(status))
            status = m_engine->SetScriptState(SCRIPTSTATE_CONNECTED);
        if (SUCCEEDED(status))
            status = parser->ParseScriptText(reinterpret_cast<const wchar_t*>(text.c_str()), nullptr, nullptr,
                                             nullptr, 0, 0, 0, nullptr, &failure);
        return status;
    }

private:
    ComPtr<IActiveScript> m_engine;
};

} // namespace

ScriptEnd RunScript(const wchar_t* engineName, const std::u16string& file, const std::u16string& text,
                    IDispatch* globals)
{
    const ComPtr<ScriptSite> site = Owned(new ScriptSite(file, globals));
    HRESULT status = S_OK;
    {
        const ScopedEngine engine(engineName);
        status = engine.Run(site.Get(), text);
    }
    if (SUCCEEDED(status))
        return ScriptEnd::Well;
    if (site->LatestError().empty())
        throw AutomationError(status);
    PrintLine(site->LatestError());
    return ScriptEnd::InError;
}

} // namespace KestrinProductEditor
