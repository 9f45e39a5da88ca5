// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/Controls.h"
#include "platform/ui/Grid.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace KestrinProductEditor {

/// A surface with controls, which are found by the names that its layout gives them. A name that the layout
/// does not have, or that names another kind of control, is error 5: a fault of the program.
class IControlSet
{
public:
    IControlSet() = default;
    IControlSet(const IControlSet&) = delete;
    IControlSet& operator=(const IControlSet&) = delete;
    virtual ~IControlSet() = default;

    [[nodiscard]] virtual ITextBox& TextBox(std::u16string_view name) = 0;
    [[nodiscard]] virtual IButton& Button(std::u16string_view name) = 0;
    [[nodiscard]] virtual ICheckBox& CheckBox(std::u16string_view name) = 0;
    [[nodiscard]] virtual ILabel& Label(std::u16string_view name) = 0;
    [[nodiscard]] virtual IProgressBar& ProgressBar(std::u16string_view name) = 0;
    [[nodiscard]] virtual IGrid& Grid(std::u16string_view name) = 0;
    [[nodiscard]] virtual IToolBar& ToolBar(std::u16string_view name) = 0;
};

/// A window that is shown modally.
class IForm : public IControlSet
{
public:
    virtual void SetCaption(std::u16string_view caption) = 0;
    [[nodiscard]] virtual std::u16string Caption() const = 0;
    /// The control that has the focus when the form is shown, and takes it from one that is hidden.
    virtual void SetFirstFocus(IControl& control) = 0;
    /// Enter clicks it, wherever Enter means nothing else: it is a line break in a box of many lines, clicks
    /// the button that has the focus, and may be the key of a tool.
    virtual void SetDefaultButton(IButton& button) = 0;

    /// Shows the form in front of every other window of the component and returns when EndModal was called.
    /// It runs the host's event loop, or one of its own. A program that ends meanwhile raises CloseBox; when
    /// it insists, ShowModal returns although EndModal was not called.
    virtual void ShowModal() = 0;
    /// Hides the form; ShowModal returns when the running handler has. Before ShowModal it makes that return
    /// at once.
    virtual void EndModal() = 0;

    /// While busy all controls are disabled and the close box, Esc and every other act of the user does
    /// nothing, now and later. Afterwards each control is what was set for it. The focus stays where it is,
    /// and no event tells of any of this.
    virtual void SetBusy(bool bBusy) = 0;
    /// Paints what is due, for a form that is busy. Costs next to nothing when the last painting was less
    /// than a frame ago.
    virtual void KeepPainting() = 0;

    /// The user wants to close the window. Nothing closes by itself.
    Event<> CloseBox;
    /// Esc.
    Event<> Escape;
    /// A file was dropped on the window: its path.
    Event<std::u16string_view> FileDrop;
};

/// The place of a control in its surface, in twips from the edge where reading begins, and from the top.
struct ControlPlace
{
    float left = 0;
    float top = 0;
    float width = 0;
    float height = 0;
};

/// A surface that a host puts into a window of its own.
class IUserControl : public IControlSet
{
public:
    /// The size of the surface, in twips.
    [[nodiscard]] virtual float InnerWidth() const = 0;
    [[nodiscard]] virtual float InnerHeight() const = 0;
    [[nodiscard]] virtual ControlPlace Place(std::u16string_view control) const = 0;
    /// Error 5 for a negative width or height; the control stays then.
    virtual void Move(std::u16string_view control, const ControlPlace& place) = 0;
    /// The width of a text in the surface's font, in twips.
    [[nodiscard]] virtual float TextWidth(std::u16string_view text) const = 0;
    /// The toolkit's own object: a QWidget* with Qt, an HWND on Windows. It lives as long as the surface.
    [[nodiscard]] virtual void* NativeHandle() const = 0;

    Event<> Resize;
};

} // namespace KestrinProductEditor
