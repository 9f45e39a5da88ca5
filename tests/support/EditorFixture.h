// SPDX-License-Identifier: MIT
#pragma once

#include "fake/MemorySettings.h"
#include "support/StoreFixture.h"
#include "support/User.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

/// A toolkit that is another one, and keeps the editor within reach: for what a user cannot see, and for what
/// happens to it without a user.
class FormSpy final : public IToolkit
{
public:
    explicit FormSpy(IToolkit& below) : m_below(below) {}

    [[nodiscard]] std::unique_ptr<IForm> CreateForm(std::u16string_view name) override;
    [[nodiscard]] std::unique_ptr<IUserControl> CreateUserControl(std::u16string_view name) override;
    [[nodiscard]] IMessageBox& Messages() override { return m_below.Messages(); }
    [[nodiscard]] std::optional<std::u16string> ChooseFile(const FileDialog& dialog) override;

    /// The editor that was made last. Requires: it lives.
    [[nodiscard]] IForm& Editor() const { return *m_editor; }

private:
    IToolkit& m_below;
    IForm* m_editor = nullptr;
};

/// A user in front of the product editor.
class EditorFixture : public StoreFixture
{
protected:
    explicit EditorFixture(const std::string& locale = "en_US.UTF-8");
    ~EditorFixture() override;

    /// Anchor 2 ("A-1", 12.5, "Rust-proof"), Bolt 3 ("B-2", 7), Clamp 4 ("C-3", 1,234.5).
    [[nodiscard]] static std::vector<ProductRow> ThreeProducts();

    /// Opens the editor, acts, and expects that the acts have closed it.
    void Edit(const std::function<void()>& acts);

    /// Goes to a box with the Tab key and types in place of what it holds.
    void Fill(std::u16string_view box, std::u16string_view text);
    void FillPrice(std::u16string_view text);

    [[nodiscard]] std::string Shown(std::u16string_view control) const;
    [[nodiscard]] std::vector<std::string> NamesShown() const;
    [[nodiscard]] std::vector<std::string> SavedNames() const;
    [[nodiscard]] std::int32_t CurrentRow() const;
    [[nodiscard]] bool IsInEditState() const;
    /// Fails unless everything that tells the two states apart says the same.
    void ExpectViewState() const;
    void ExpectEditState() const;
    [[nodiscard]] ITextBox& Box(std::u16string_view name) const { return m_spy.Editor().TextBox(name); }

    static const IUser::Message kAskSaveProduct;
    static const IUser::Message kAskSaveList;
    static const IUser::Message kAskDelete;
    static const IUser::Message kAskDeleteSelected;
    static const IUser::Message kSelectFirst;
    static const IUser::Message kExportFailed;

    MemorySettings m_settings;
    std::unique_ptr<IUser> m_user = MakeUser();
    FormSpy m_spy{m_user->Screen()};

private:
    void PrvExpectState(bool bEditing) const;

    ScopedSettings m_scopedSettings{m_settings};
    ScopedToolkit m_scopedToolkit{m_spy};
};

} // namespace KestrinProductEditor
