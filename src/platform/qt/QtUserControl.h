// SPDX-License-Identifier: MIT
#pragma once

#include "platform/qt/QtControlSet.h"
#include "platform/ui/Form.h"

#include <QPointer>
#include <QString>
#include <QWidget>

#include <map>
#include <memory>

namespace KestrinProductEditor {

/// A surface within a widget that the host puts into its window. The host may delete that widget: the surface
/// leaves it before, so that controls that are still held stay valid. After that no control is found (error
/// 5), sizes are 0 and the handle is null.
class QtUserControl final : public QtSurface<IUserControl>
{
public:
    /// Error 5 for a name that no layout bears.
    explicit QtUserControl(std::u16string_view name);
    ~QtUserControl() override;

    [[nodiscard]] float InnerWidth() const override;
    [[nodiscard]] float InnerHeight() const override;
    [[nodiscard]] ControlPlace Place(std::u16string_view control) const override;
    void Move(std::u16string_view control, const ControlPlace& place) override;
    [[nodiscard]] float TextWidth(std::u16string_view text) const override;
    [[nodiscard]] void* NativeHandle() const override;

protected:
    [[nodiscard]] QtControlSet& Controls() override;

private:
    class Surface;
    class Shell;

    /// What a control was moved to, for as long as it stands there.
    struct Moved
    {
        QRect geometry;
        ControlPlace place;
    };

    [[nodiscard]] QWidget& PrvFind(std::u16string_view control) const;
    void PrvFollowFont();

    std::unique_ptr<Surface> m_surface;
    QPointer<Shell> m_shell;
    std::unique_ptr<QtControlSet> m_controls;
    std::map<QString, Moved> m_moved;
};

} // namespace KestrinProductEditor
