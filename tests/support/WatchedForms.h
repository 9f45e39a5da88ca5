// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/Toolkit.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace KestrinProductEditor {

/// Another toolkit, with a look at its forms whenever they let themselves be painted in the middle of their
/// work: there they show what they have just been told, which a screen may be too slow for. It is in use
/// while it lives.
class WatchedForms final : public IToolkit
{
public:
    WatchedForms(IToolkit& below, std::function<void()> look) : m_below(below), m_look(std::move(look)) {}

    std::unique_ptr<IForm> CreateForm(std::u16string_view name) override
    {
        return std::make_unique<Watched>(m_below.CreateForm(name), m_look);
    }
    std::unique_ptr<IUserControl> CreateUserControl(std::u16string_view name) override
    {
        return m_below.CreateUserControl(name);
    }
    IMessageBox& Messages() override { return m_below.Messages(); }
    std::optional<std::u16string> ChooseFile(const FileDialog& dialog) override
    {
        return m_below.ChooseFile(dialog);
    }

private:
    class Watched final : public IForm
    {
    public:
        Watched(std::unique_ptr<IForm> below, const std::function<void()>& look)
            : m_below(std::move(below)), m_look(look)
        {
            m_below->CloseBox.Connect([this] { CloseBox.Raise(); });
            m_below->Escape.Connect([this] { Escape.Raise(); });
            m_below->FileDrop.Connect([this](std::u16string_view path) { FileDrop.Raise(path); });
        }

        ITextBox& TextBox(std::u16string_view name) override { return m_below->TextBox(name); }
        IButton& Button(std::u16string_view name) override { return m_below->Button(name); }
        ICheckBox& CheckBox(std::u16string_view name) override { return m_below->CheckBox(name); }
        ILabel& Label(std::u16string_view name) override { return m_below->Label(name); }
        IProgressBar& ProgressBar(std::u16string_view name) override { return m_below->ProgressBar(name); }
        IGrid& Grid(std::u16string_view name) override { return m_below->Grid(name); }
        IToolBar& ToolBar(std::u16string_view name) override { return m_below->ToolBar(name); }
        void SetCaption(std::u16string_view caption) override { m_below->SetCaption(caption); }
        std::u16string Caption() const override { return m_below->Caption(); }
        void SetFirstFocus(IControl& control) override { m_below->SetFirstFocus(control); }
        void SetDefaultButton(IButton& button) override { m_below->SetDefaultButton(button); }
        void ShowModal() override { m_below->ShowModal(); }
        void EndModal() override { m_below->EndModal(); }
        void SetBusy(bool bBusy) override { m_below->SetBusy(bBusy); }
        void KeepPainting() override
        {
            m_below->KeepPainting();
            m_look();
        }

    private:
        std::unique_ptr<IForm> m_below;
        const std::function<void()>& m_look;
    };

    IToolkit& m_below;
    std::function<void()> m_look;
    ScopedToolkit m_scope{*this};
};

} // namespace KestrinProductEditor
