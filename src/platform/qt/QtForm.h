// SPDX-License-Identifier: MIT
#pragma once

#include "platform/qt/QtControlSet.h"
#include "platform/ui/Form.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QObject>
#include <QPushButton>
#include <QWidget>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

/// A form in a window of its own. The window's objectName is that of the layout.
class QtForm final : public QtSurface<IForm>
{
public:
    /// Error 5 for a name that no layout bears.
    explicit QtForm(std::u16string_view name);
    ~QtForm() override;

    /// The forms that are shown, the one in front last.
    [[nodiscard]] static const std::vector<QtForm*>& Shown();
    /// The window of the form in front; null when none is shown.
    [[nodiscard]] static QWidget* FrontWindow();

    void SetCaption(std::u16string_view caption) override;
    [[nodiscard]] std::u16string Caption() const override { return m_caption; }
    void SetFirstFocus(IControl& control) override;
    void SetDefaultButton(IButton& button) override;
    void ShowModal() override;
    void EndModal() override;
    void SetBusy(bool bBusy) override;
    void KeepPainting() override;

    [[nodiscard]] QWidget& Window() const;

protected:
    [[nodiscard]] QtControlSet& Controls() override { return *m_controls; }

private:
    class FormWindow;
    class BusyFilter;

    void PrvPlace(const QtForm* below);
    [[nodiscard]] bool PrvCanClickDefault() const;
    void PrvProcessEvents();

    std::unique_ptr<FormWindow> m_window;
    std::unique_ptr<QtControlSet> m_controls;
    std::unique_ptr<BusyFilter> m_busyFilter; ///< while the form is busy
    std::u16string m_caption;
    QPushButton* m_defaultButton = nullptr;
    QEventLoop* m_loop = nullptr; ///< while the form is shown
    bool m_isEnded = false;
    bool m_isProcessing = false;
    QElapsedTimer m_sinceFrame;
};

} // namespace KestrinProductEditor
