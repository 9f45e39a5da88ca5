// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/Toolkit.h"

#include <KestrinProductEditor/AutomationError.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace KestrinProductEditor {

/// A user control whose surface fails where a test tells it to.
class FailingUserControl final : public IUserControl
{
public:
    explicit FailingUserControl(std::unique_ptr<IUserControl> below) : m_below(std::move(below))
    {
        m_below->Resize.Connect([this] { Resize.Raise(); });
    }

    /// The `call`-th call from now on (1 is the next) fails with error 5; the calls after it do not.
    void FailAtCall(std::size_t call)
    {
        m_calls = 0;
        m_failingCall = call;
    }
    /// The calls since FailAtCall.
    [[nodiscard]] std::size_t Calls() const noexcept { return m_calls; }
    [[nodiscard]] IUserControl& Below() noexcept { return *m_below; }

    ITextBox& TextBox(std::u16string_view name) override { return PrvTake().TextBox(name); }
    IButton& Button(std::u16string_view name) override { return PrvTake().Button(name); }
    ICheckBox& CheckBox(std::u16string_view name) override { return PrvTake().CheckBox(name); }
    ILabel& Label(std::u16string_view name) override { return PrvTake().Label(name); }
    IProgressBar& ProgressBar(std::u16string_view name) override { return PrvTake().ProgressBar(name); }
    IGrid& Grid(std::u16string_view name) override { return PrvTake().Grid(name); }
    IToolBar& ToolBar(std::u16string_view name) override { return PrvTake().ToolBar(name); }
    float InnerWidth() const override { return PrvTake().InnerWidth(); }
    float InnerHeight() const override { return PrvTake().InnerHeight(); }
    ControlPlace Place(std::u16string_view control) const override { return PrvTake().Place(control); }
    void Move(std::u16string_view control, const ControlPlace& place) override
    {
        PrvTake().Move(control, place);
    }
    float TextWidth(std::u16string_view text) const override { return PrvTake().TextWidth(text); }
    void* NativeHandle() const override { return m_below->NativeHandle(); }

private:
    [[nodiscard]] IUserControl& PrvTake() const
    {
        if (++m_calls == m_failingCall)
            throw AutomationError(kErrInvalidProcedureCall);
        return *m_below;
    }

    std::unique_ptr<IUserControl> m_below;
    mutable std::size_t m_calls = 0;
    std::size_t m_failingCall = 0;
};

/// Another toolkit, with a look at the user controls that are made of it. It is in use while it lives.
class CapturingToolkit final : public IToolkit
{
public:
    explicit CapturingToolkit(IToolkit& below) : m_below(below) {}

    /// The user control that was made last. Requires: one was, and it lives.
    [[nodiscard]] FailingUserControl& Last() const { return *m_last; }
    /// What is asked of it directly, by the test and on its user's behalf.
    [[nodiscard]] IUserControl& Surface() const { return m_last->Below(); }

    std::unique_ptr<IForm> CreateForm(std::u16string_view name) override { return m_below.CreateForm(name); }
    std::unique_ptr<IUserControl> CreateUserControl(std::u16string_view name) override
    {
        auto control = std::make_unique<FailingUserControl>(m_below.CreateUserControl(name));
        m_last = control.get();
        return control;
    }
    IMessageBox& Messages() override { return m_below.Messages(); }
    std::optional<std::u16string> ChooseFile(const FileDialog& dialog) override
    {
        return m_below.ChooseFile(dialog);
    }

private:
    IToolkit& m_below;
    FailingUserControl* m_last = nullptr;
    ScopedToolkit m_scope{*this};
};

/// A toolkit where there are no windows: every surface is error 445.
class NoWindows final : public IToolkit
{
public:
    std::unique_ptr<IForm> CreateForm(std::u16string_view /*name*/) override { PrvRefuse(); }
    std::unique_ptr<IUserControl> CreateUserControl(std::u16string_view /*name*/) override { PrvRefuse(); }
    IMessageBox& Messages() override { PrvRefuse(); }
    std::optional<std::u16string> ChooseFile(const FileDialog& /*dialog*/) override { PrvRefuse(); }

private:
    [[noreturn]] static void PrvRefuse() { throw AutomationError(kErrActionNotSupported); }

    ScopedToolkit m_scope{*this};
};

} // namespace KestrinProductEditor
