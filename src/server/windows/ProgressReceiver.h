// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/IProcessProgress.h>

#include <kstnedit.h>

#include <wrl/client.h>

namespace KestrinProductEditor {

/// A receiver of a client's, as the store knows receivers.
class ProgressReceiver final : public IProcessProgress
{
public:
    explicit ProgressReceiver(_IProcessProgress* receiver) : m_receiver(receiver) {}
    ~ProgressReceiver() override;

    void Progress(const Variant& vParams) override;

private:
    Microsoft::WRL::ComPtr<_IProcessProgress> m_receiver;
};

} // namespace KestrinProductEditor
