// SPDX-License-Identifier: MIT
#include "server/windows/PendingErrorInfo.h"

#include "platform/LivingObjects.h"
#include "server/windows/ComError.h"
#include "server/windows/ComText.h"

#include <KestrinProductEditor/HostComponents.h>

#include <array>
#include <atomic>
#include <string_view>

namespace KestrinProductEditor {

namespace {

constexpr std::array<const wchar_t*, 3> kMembers{L"Number", L"Source", L"Description"};

class PendingErrorInfo final : public IErrorInfo, public IDispatch
{
public:
    // NOLINTNEXTLINE(bugprone-throw-keyword-missing): it keeps the error
    explicit PendingErrorInfo(const AutomationError& error) : m_error(error) {}
    PendingErrorInfo(const PendingErrorInfo&) = delete;
    PendingErrorInfo& operator=(const PendingErrorInfo&) = delete;
    virtual ~PendingErrorInfo() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceID, void** object) override
    {
        if (object == nullptr)
            return E_POINTER;
        *object = nullptr;
        if (interfaceID == IID_IUnknown || interfaceID == IID_IErrorInfo)
            *object = static_cast<IErrorInfo*>(this);
        else if (interfaceID == IID_IDispatch)
            *object = static_cast<IDispatch*>(this);
        else
            return E_NOINTERFACE;
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

    HRESULT STDMETHODCALLTYPE GetGUID(GUID* identifier) override
    {
        *identifier = GUID_NULL;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetSource(BSTR* source) override { return PrvGive(m_error.Source(), source); }
    HRESULT STDMETHODCALLTYPE GetDescription(BSTR* description) override
    {
        return PrvGive(m_error.Description(), description);
    }
    HRESULT STDMETHODCALLTYPE GetHelpFile(BSTR* file) override { return PrvGive({}, file); }
    HRESULT STDMETHODCALLTYPE GetHelpContext(DWORD* context) override
    {
        *context = 0;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override
    {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return DISP_E_BADINDEX; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override
    {
        for (std::size_t at = 0; count == 1 && at < kMembers.size(); ++at) {
            if (CompareStringOrdinal(names[0], -1, kMembers[at], -1, TRUE) == CSTR_EQUAL) {
                ids[0] = static_cast<DISPID>(at + 1);
                return S_OK;
            }
        }
        for (UINT at = 0; at < count; ++at)
            ids[at] = DISPID_UNKNOWN;
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO*, UINT*) override
    {
        if ((flags & (DISPATCH_PROPERTYGET | DISPATCH_METHOD)) == 0 || id < DISPID_VALUE ||
            id > static_cast<DISPID>(kMembers.size()))
            return DISP_E_MEMBERNOTFOUND;
        if (parameters->cArgs != 0)
            return DISP_E_BADPARAMCOUNT;
        if (result == nullptr)
            return S_OK;
        VariantInit(result);
        if (id <= 1) { // the number is the default member
            result->lVal = m_error.Number();
            result->vt = VT_I4;
            return S_OK;
        }
        const HRESULT status = id == 2 ? GetSource(&result->bstrVal) : GetDescription(&result->bstrVal);
        if (SUCCEEDED(status))
            result->vt = VT_BSTR;
        return status;
    }

private:
    [[nodiscard]] static HRESULT PrvGive(std::u16string_view text, BSTR* out) noexcept
    {
        *out =
            SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text.data()), static_cast<UINT>(text.size()));
        return *out == nullptr ? E_OUTOFMEMORY : S_OK;
    }

    const LivingObject m_living;
    const AutomationError m_error;
    std::atomic<ULONG> m_references = 1;
};

} // namespace

PendingErrorScope::PendingErrorScope()
{
    const AutomationError* const pending = PendingError();
    IErrorInfo* const info = pending == nullptr ? nullptr : new PendingErrorInfo(*pending);
    SetErrorInfo(0, info);
    if (info != nullptr)
        info->Release();
}

PendingErrorScope::~PendingErrorScope()
{
    SetErrorInfo(0, nullptr);
}

} // namespace KestrinProductEditor
