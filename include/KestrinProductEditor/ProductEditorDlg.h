// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/AutomationObject.h>
#include <KestrinProductEditor/Variant.h>

#include <memory>

namespace KestrinProductEditor {

class frmProductEditor;

/// Shows the product editor: the whole catalogue in a list, and one product at a time in the boxes beside it.
class [[gnu::visibility("default")]] ProductEditorDlg final : public AutomationObject
{
public:
    [[nodiscard]] static std::shared_ptr<ProductEditorDlg> Create();

    ~ProductEditorDlg() override;

    /// Shows the editor in front of the component's other windows and returns when the user has closed it.
    /// `vParams` is not used.
    ///
    /// The editor opens a store of its own, and its end writes the catalogue unless the user chose otherwise.
    /// A host's store that is alive meanwhile sees nothing of it, and the last store released wins the file;
    /// the same holds for a Show from inside (a trace, a receiver), which opens a second editor. A catalogue
    /// that cannot be opened is no error: the window says why, and closing it writes nothing.
    ///
    /// Error 445, with the reason in its description, where no window can be shown: the library of windows
    /// (Qt's, on Linux) is not installed, there is no display, or the thread is not the one that windows
    /// belong to.
    void Show(const Variant& vParams);

private:
    ProductEditorDlg() = default;

    std::shared_ptr<frmProductEditor> m_frmEditor;
};

} // namespace KestrinProductEditor
