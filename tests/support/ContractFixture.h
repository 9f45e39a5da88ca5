// SPDX-License-Identifier: MIT
#pragma once

#include "support/ErrorOf.h"
#include "support/User.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace KestrinProductEditor {

/// A user in front of one form, and a list of what its controls told. The suites that derive from it hold for
/// every toolkit.
class ContractFixture : public testing::Test
{
protected:
    /// The form under test; a suite may begin with another layout.
    explicit ContractFixture(std::u16string_view layout = u"frmProductEditor")
        : m_user(MakeUser()), m_form(Toolkit().CreateForm(layout))
    {
    }

    [[nodiscard]] IUser& User() { return *m_user; }
    [[nodiscard]] IForm& Form() { return *m_form; }

    /// Shows the form, acts, and ends it.
    void Show(const std::function<void()>& acts)
    {
        m_user->AtNextForm([&] {
            acts();
            m_form->EndModal();
        });
        m_form->ShowModal();
    }

    /// From now on the control's focus is told as "name got" and "name lost".
    void HearFocus(IControl& control, const std::string& name)
    {
        control.GotFocus.Connect([this, name] { m_told.push_back(name + " got"); });
        control.LostFocus.Connect([this, name] { m_told.push_back(name + " lost"); });
    }
    void Tell(std::string what) { m_told.push_back(std::move(what)); }
    /// What was told since the last call.
    [[nodiscard]] std::vector<std::string> Told() { return std::exchange(m_told, {}); }

private:
    std::unique_ptr<IUser> m_user;
    std::unique_ptr<IForm> m_form;
    std::vector<std::string> m_told;
};

} // namespace KestrinProductEditor
