// SPDX-License-Identifier: MIT
#include "server/windows/ScriptReceiver.h"

#include <utility>

namespace KestrinProductEditor {

using Microsoft::WRL::ComPtr;

HRESULT ScriptReceiver::ReceiverOf(IUnknown* object, _IProcessProgress** receiver) noexcept
{
    if (SUCCEEDED(object->QueryInterface(__uuidof(_IProcessProgress), reinterpret_cast<void**>(receiver))))
        return S_OK;
    ComPtr<IDispatch> dispatch;
    if (FAILED(object->QueryInterface(IID_PPV_ARGS(dispatch.GetAddressOf()))))
        return DISP_E_TYPEMISMATCH;
    try {
        ForeignObject script(dispatch.Get());
        const std::optional<DISPID> progress = script.Find(u"Progress");
        if (!progress)
            return DISP_E_TYPEMISMATCH;
        *receiver = new ScriptReceiver(std::move(script), *progress);
        return S_OK;
    } catch (...) {
        return StatusOf(ErrorInFlight().Number());
    }
}

ScriptReceiver::ScriptReceiver(ForeignObject object, DISPID progress)
    : DualObject(CLSID_IProcessProgress), m_object(std::move(object)), m_progress(progress)
{
}

HRESULT ScriptReceiver::Progress(VARIANT vParams)
{
    // Lent to the script, which takes a copy of what it keeps.
    return Do([&] { static_cast<void>(m_object.Call(m_progress, {&vParams, 1})); });
}

} // namespace KestrinProductEditor
