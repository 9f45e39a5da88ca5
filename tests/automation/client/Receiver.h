// SPDX-License-Identifier: MIT
#pragma once

#include "server/windows/DualObject.h"
#include "server/windows/OwnedObject.h"
#include "server/windows/ScriptReceiver.h"

#include <functional>
#include <utility>

namespace KestrinProductEditor {

/// A receiver of a client's own.
class Receiver final : public DualObject<_IProcessProgress>
{
public:
    explicit Receiver(std::function<HRESULT(const Variant&)> body)
        : DualObject(CLSID_IProcessProgress), m_body(std::move(body))
    {
    }
    HRESULT STDMETHODCALLTYPE Progress(VARIANT vParams) override { return m_body(FromCom(vParams)); }

private:
    std::function<HRESULT(const Variant&)> m_body;
};

[[nodiscard]] inline Microsoft::WRL::ComPtr<_IProcessProgress>
MakeReceiver(std::function<HRESULT(const Variant&)> body)
{
    return Owned<_IProcessProgress>(new Receiver(std::move(body)));
}

} // namespace KestrinProductEditor
