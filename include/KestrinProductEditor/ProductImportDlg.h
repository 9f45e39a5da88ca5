// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/AutomationObject.h>
#include <KestrinProductEditor/ProductLkpMgr.h>

#include <memory>

namespace KestrinProductEditor {

/// Shows the import dialog over a store of the host's.
class [[gnu::visibility("default")]] ProductImportDlg final : public AutomationObject
{
public:
    [[nodiscard]] static std::shared_ptr<ProductImportDlg> Create();

    ~ProductImportDlg() override;

    /// Keeps the store for the next Show.
    void Init(const std::shared_ptr<ProductLkpMgr>& objProductLkpMgr);

    /// Lets go of the store, shows the dialog over it and returns when it is closed: each Show needs an Init
    /// of its own. Error 445 in a component that was built without windows.
    void Show();

private:
    ProductImportDlg() = default;

    std::shared_ptr<ProductLkpMgr> m_objProductLkpMgr;
};

} // namespace KestrinProductEditor
