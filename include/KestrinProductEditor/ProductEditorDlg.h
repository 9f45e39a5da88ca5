// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/AutomationObject.h>
#include <KestrinProductEditor/Variant.h>

#include <memory>

namespace KestrinProductEditor {

/// Shows the product editor.
class [[gnu::visibility("default")]] ProductEditorDlg final : public AutomationObject
{
public:
    [[nodiscard]] static std::shared_ptr<ProductEditorDlg> Create();

    ~ProductEditorDlg() override;

    /// Shows the editor over a store of its own and returns when it is closed. Error 445 in a component that
    /// was built without windows.
    void Show(const Variant& vParams);

private:
    ProductEditorDlg() = default;
};

} // namespace KestrinProductEditor
