// SPDX-License-Identifier: MIT
#pragma once

#include "fake/ScriptedControls.h"
#include "platform/ui/Toolkit.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

class ScriptedForm;

/// Who acts while the toolkit waits for its user.
class IScriptedAudience
{
public:
    virtual ~IScriptedAudience() = default;
    virtual void FormShown(ScriptedForm& form) = 0;
    [[nodiscard]] virtual MessageAnswer MessageShown(const IUser::Message& message) = 0;
    [[nodiscard]] virtual std::optional<std::u16string> FileAsked(const FileDialog& dialog) = 0;
};

/// The accessors of a surface.
template<class Interface>
class ScriptedSurface : public Interface
{
public:
    ScriptedSurface(std::u16string_view layout, ScriptedControls::Surface surface)
        : m_controls(layout, surface)
    {
    }

    [[nodiscard]] ITextBox& TextBox(std::u16string_view name) override
    {
        return m_controls.Get<ITextBox>(name);
    }
    [[nodiscard]] IButton& Button(std::u16string_view name) override { return m_controls.Get<IButton>(name); }
    [[nodiscard]] ICheckBox& CheckBox(std::u16string_view name) override
    {
        return m_controls.Get<ICheckBox>(name);
    }
    [[nodiscard]] ILabel& Label(std::u16string_view name) override { return m_controls.Get<ILabel>(name); }
    [[nodiscard]] IProgressBar& ProgressBar(std::u16string_view name) override
    {
        return m_controls.Get<IProgressBar>(name);
    }
    [[nodiscard]] IGrid& Grid(std::u16string_view name) override { return m_controls.Get<IGrid>(name); }
    [[nodiscard]] IToolBar& ToolBar(std::u16string_view name) override
    {
        return m_controls.Get<IToolBar>(name);
    }

    [[nodiscard]] ScriptedControls& Controls() { return m_controls; }
    [[nodiscard]] const ScriptedControls& Controls() const { return m_controls; }

private:
    ScriptedControls m_controls;
};

class ScriptedToolkit;

class ScriptedForm final : public ScriptedSurface<IForm>
{
public:
    ScriptedForm(ScriptedToolkit& toolkit, std::u16string_view layout);

    void SetCaption(std::u16string_view caption) override { m_caption = caption; }
    [[nodiscard]] std::u16string Caption() const override { return m_caption; }
    void SetFirstFocus(IControl& control) override { Controls().SetFirst(control); }
    void SetDefaultButton(IButton& button) override { m_defaultButton = &button; }
    void ShowModal() override;
    void EndModal() override { m_hasEnded = true; }
    void SetBusy(bool bBusy) override { Controls().SetBusy(bBusy); }
    void KeepPainting() override {}

    /// Shown, and not ended yet.
    [[nodiscard]] bool IsOpen() const { return m_isShown && !m_hasEnded; }
    [[nodiscard]] IButton* DefaultButton() const { return m_defaultButton; }

private:
    ScriptedToolkit& m_toolkit;
    std::u16string m_caption;
    IButton* m_defaultButton = nullptr;
    bool m_isShown = false;
    bool m_hasEnded = false;
};

class ScriptedUserControl final : public ScriptedSurface<IUserControl>
{
public:
    ScriptedUserControl(ScriptedToolkit& toolkit, std::u16string_view layout);
    ~ScriptedUserControl() override;

    [[nodiscard]] float InnerWidth() const override { return m_width; }
    [[nodiscard]] float InnerHeight() const override { return m_height; }
    [[nodiscard]] ControlPlace Place(std::u16string_view control) const override;
    void Move(std::u16string_view control, const ControlPlace& place) override;
    /// 120 twips a character.
    [[nodiscard]] float TextWidth(std::u16string_view text) const override;
    [[nodiscard]] void* NativeHandle() const override;

    /// As a host does that lays out its window. Raises Resize when the size is another.
    void SetInnerSize(float width, float height);

private:
    ScriptedToolkit& m_toolkit;
    float m_width = 4800;
    float m_height = 3600;
};

/// Windows that nobody sees. It keeps the events' contract (Controls.h, Grid.h, Form.h) without any native
/// toolkit; whoever sits before it acts when it waits.
class ScriptedToolkit final : public IToolkit, private IMessageBox
{
public:
    /// `audience` must outlive it.
    explicit ScriptedToolkit(IScriptedAudience& audience) : m_audience(audience) {}

    [[nodiscard]] std::unique_ptr<IForm> CreateForm(std::u16string_view name) override;
    [[nodiscard]] std::unique_ptr<IUserControl> CreateUserControl(std::u16string_view name) override;
    [[nodiscard]] IMessageBox& Messages() override { return *this; }
    [[nodiscard]] std::optional<std::u16string> ChooseFile(const FileDialog& dialog) override;

    /// The forms that are shown, the one in front last.
    [[nodiscard]] const std::vector<ScriptedForm*>& Forms() const { return m_forms; }
    /// The user controls that live, the newest last.
    [[nodiscard]] const std::vector<ScriptedUserControl*>& UserControls() const { return m_userControls; }

private:
    friend class ScriptedForm;
    friend class ScriptedUserControl;

    MessageAnswer Show(std::u16string_view text, std::int32_t style, std::u16string_view title) override;

    IScriptedAudience& m_audience;
    std::vector<ScriptedForm*> m_forms;
    std::vector<ScriptedUserControl*> m_userControls;
};

} // namespace KestrinProductEditor
