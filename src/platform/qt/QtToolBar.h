// SPDX-License-Identifier: MIT
#pragma once

#include "platform/qt/QtControl.h"
#include "platform/qt/QtKeys.h"
#include "platform/qt/QtMnemonics.h"
#include "platform/qt/QtToolBarView.h"

#include <QAction>
#include <QMenu>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

/// The objectName of each menu's and item's QAction is the tool's id.
class QtToolBar final : public QtControl<IToolBar>
{
public:
    /// `hasFocus` tells whether the control with that name has the focus.
    QtToolBar(QtToolBarView& view, QtFocus& focus, QtMnemonics& mnemonics, QtKeys& keys,
              std::function<bool(std::u16string_view)> hasFocus);

    void SetTools(std::span<const Tool> tools) override;
    void SetToolEnabled(std::u16string_view id, bool bEnabled) override;
    [[nodiscard]] bool IsToolEnabled(std::u16string_view id) const override;

private:
    struct Entry
    {
        std::u16string_view id;
        std::u16string_view menu;
        std::u16string shown;
        bool isEnabled;
        QAction* action;
        QMenu* opens; ///< of a header
    };

    void PrvAddHeader(const Tool& tool);
    void PrvAddItem(const Tool& tool);
    void PrvBindKeys(const Tool& tool, QAction& action);
    void PrvMarkItems();
    void PrvShowEnabled();
    [[nodiscard]] std::size_t PrvFind(std::u16string_view id) const;

    QtToolBarView& m_view;
    QtFocus& m_focus;
    QtMnemonics& m_mnemonics;
    QtKeys& m_keys;
    std::function<bool(std::u16string_view)> m_hasFocus;
    std::vector<Entry> m_entries;
};

} // namespace KestrinProductEditor
