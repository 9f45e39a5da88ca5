// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/IProcessProgress.h>
#include <KestrinProductEditor/ProductLkpMgr.h>

#include "platform/ui/Form.h"

#include <cmath>
#include <cstdint>
#include <memory>
#include <utility>

namespace KestrinProductEditor {

/// While an import or export of `store` runs: `receiver` hears of its progress, and its form is busy. Both
/// end with the scope, however the work ended, and the bar is hidden.
class ExchangeGuard
{
public:
    ExchangeGuard(ProductLkpMgr& store, std::shared_ptr<IProcessProgress> receiver, IForm& form,
                  IProgressBar& bar)
        : m_store(store), m_form(form), m_bar(bar)
    {
        m_form.SetBusy(true);
        m_store.SetNotifyCallback(std::move(receiver));
    }
    ExchangeGuard(const ExchangeGuard&) = delete;
    ExchangeGuard& operator=(const ExchangeGuard&) = delete;
    ~ExchangeGuard()
    {
        m_store.ClearNotifyCallback();
        m_bar.SetVisible(false);
        m_form.SetBusy(false);
    }

private:
    ProductLkpMgr& m_store;
    IForm& m_form;
    IProgressBar& m_bar;
};

/// Shows how far it has come, from 0 to 1; a hidden bar appears. Returns the percent, rounded to a whole one:
/// in fractions 29 / 100 * 100 is a little less than 29.
inline std::int32_t ShowProgress(IProgressBar& bar, double fraction)
{
    constexpr std::int32_t kWhole = 100;
    if (!bar.IsVisible())
        bar.SetVisible(true);
    const double percent = fraction * kWhole;
    const std::int32_t value = percent >= kWhole ? kWhole
                               : percent > 0     ? static_cast<std::int32_t>(std::lrint(percent))
                                                 : 0;
    bar.SetValue(value);
    return value;
}

} // namespace KestrinProductEditor
