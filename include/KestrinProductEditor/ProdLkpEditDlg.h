// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/AutomationObject.h>
#include <KestrinProductEditor/Variant.h>

#include <memory>

namespace KestrinProductEditor {

/// The product lookup's edit launcher. It shows nothing.
class [[gnu::visibility("default")]] ProdLkpEditDlg final : public AutomationObject
{
public:
    [[nodiscard]] static std::shared_ptr<ProdLkpEditDlg> Create();

    ~ProdLkpEditDlg() override;

    /// Accepts any argument, or none, and returns at once.
    void Show(const Variant& vParams = Variant()) noexcept;

private:
    ProdLkpEditDlg() = default;
};

} // namespace KestrinProductEditor
