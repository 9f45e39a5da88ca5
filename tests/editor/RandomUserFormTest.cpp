// SPDX-License-Identifier: MIT
#include "support/EditorFixture.h"

#include "platform/Text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <map>
#include <optional>
#include <ostream>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace KestrinProductEditor {

namespace {

using NamedKey = IUser::NamedKey;
using Modifier = IUser::Modifier;

constexpr int kActs = 10'000;

struct ModelProduct
{
    std::string name = {};
    std::string partNum = {};
    std::int64_t units = 0;
    std::string note = {};

    bool operator==(const ModelProduct&) const = default;
};

void PrintTo(const ModelProduct& product, std::ostream* out)
{
    *out << '"' << product.name << "\" (" << product.partNum << ", " << product.units << ", " << product.note
         << ')';
}

/// What the catalogue holds, by row identifier, and what waits in the boxes. It knows nothing of cursors,
/// lists and events.
class CatalogueModel
{
public:
    void BeginSession()
    {
        m_products = m_saved;
        m_lastRowID = m_products.empty() ? 1 : std::max(0, m_products.rbegin()->first);
        m_isModified = false;
        m_draft.reset();
    }

    void New() { m_draft = Draft{-1, {}, false}; }
    void Edit(std::int32_t rowID) { m_draft = Draft{rowID, m_products.at(rowID), false}; }
    void EndEdit() { m_draft.reset(); }
    [[nodiscard]] bool IsEditing() const { return m_draft.has_value(); }
    [[nodiscard]] bool IsDraftModified() const { return m_draft && m_draft->isModified; }

    void TypeName(std::string text) { PrvChange().name = std::move(text); }
    void TypePartNum(std::string text) { PrvChange().partNum = std::move(text); }
    void TypeNote(std::string text) { PrvChange().note = std::move(text); }
    void TypePrice(const std::string& digits)
    {
        for (std::size_t length = 1; length <= digits.size(); ++length) {
            const std::int64_t units = std::stoll(digits.substr(0, length));
            if (units != m_draft->product.units)
                PrvChange().units = units;
        }
    }

    void SaveDraft()
    {
        if (!IsDraftModified())
            return;
        const std::int32_t rowID = m_draft->rowID < 0 ? ++m_lastRowID : m_draft->rowID;
        m_products[rowID] = m_draft->product;
        m_draft->isModified = false;
        m_isModified = true;
    }
    void Delete(std::int32_t rowID)
    {
        EXPECT_EQ(m_products.erase(rowID), 1U);
        m_isModified = true;
    }
    [[nodiscard]] bool IsModified() const { return m_isModified; }

    /// The session's end; products without a name stay behind.
    void Save()
    {
        m_saved = m_products;
        std::erase_if(m_saved, [](const auto& entry) { return entry.second.name.empty(); });
    }

    [[nodiscard]] static std::vector<std::pair<std::int32_t, ModelProduct>>
    InOrder(const std::map<std::int32_t, ModelProduct>& products)
    {
        std::vector<std::pair<std::int32_t, ModelProduct>> rows(products.begin(), products.end());
        std::stable_sort(rows.begin(), rows.end(), [](const auto& left, const auto& right) {
            return left.second.name < right.second.name;
        });
        return rows;
    }
    [[nodiscard]] auto Rows() const { return InOrder(m_products); }
    [[nodiscard]] auto SavedRows() const { return InOrder(m_saved); }

private:
    struct Draft
    {
        std::int32_t rowID;
        ModelProduct product;
        bool isModified;
    };

    [[nodiscard]] ModelProduct& PrvChange()
    {
        m_draft->isModified = true;
        return m_draft->product;
    }

    std::map<std::int32_t, ModelProduct> m_saved;
    std::map<std::int32_t, ModelProduct> m_products;
    std::optional<Draft> m_draft;
    std::int32_t m_lastRowID = 1;
    bool m_isModified = false;
};

[[nodiscard]] std::uint32_t Seed()
{
    if (const char* const given = std::getenv("KSTNEDIT_SEED"))
        return static_cast<std::uint32_t>(std::strtoul(given, nullptr, 10));
    return std::random_device{}();
}

class RandomUser : public EditorFixture
{
protected:
    void Work()
    {
        while (m_actsLeft > 0 && !HasFailure()) {
            m_model.BeginSession();
            Edit([&] { Session(); });
            CheckFile();
        }
    }

    std::mt19937 m_random;

private:
    [[nodiscard]] int Below(int end) { return std::uniform_int_distribution<int>(0, end - 1)(m_random); }
    [[nodiscard]] bool OneIn(int count) { return Below(count) == 0; }
    template<class Value>
    [[nodiscard]] Value OneOf(const std::vector<Value>& values)
    {
        return values[static_cast<std::size_t>(Below(static_cast<int>(values.size())))];
    }
    /// No two are alike, so that typing one is always a change and names have one order.
    [[nodiscard]] std::string FreshText()
    {
        return std::string(1, static_cast<char>('a' + Below(26))) + std::to_string(++m_texts);
    }

    [[nodiscard]] std::int32_t RowIDAt(std::int32_t row)
    {
        return row < 1 ? -1 : std::stoi(ToUtf8(m_user->Grid(u"flexGrid").CellText(row, 3)));
    }
    [[nodiscard]] std::int32_t AnyRow()
    {
        return 1 + Below(std::max(1, m_user->Grid(u"flexGrid").Rows() - 1));
    }
    [[nodiscard]] bool HasRows() { return m_user->Grid(u"flexGrid").Rows() > 1; }

    void Session()
    {
        m_isOpen = true;
        Check();
        while (m_isOpen && !HasFailure()) {
            if (--m_actsLeft <= 0) {
                Leave();
                continue;
            }
            Act();
            if (m_isOpen)
                Check();
        }
        if (m_isOpen)
            m_spy.Editor().EndModal();
    }

    void Act()
    {
        if (OneIn(40))
            Leave();
        else if (m_model.IsEditing())
            ActInEditState();
        else
            ActInViewState();
    }

    void ActInViewState()
    {
        switch (Below(11)) {
        case 0:
        case 1:
            New();
            break;
        case 2:
        case 3:
            EditCurrent();
            break;
        case 4:
            if (HasRows()) {
                const std::int32_t row = AnyRow();
                const std::int32_t rowID = RowIDAt(row);
                m_user->DoubleClickRow(u"flexGrid", row);
                m_model.Edit(rowID);
            }
            break;
        case 5:
            DeleteCurrent();
            break;
        case 6:
            DeleteSelected();
            break;
        case 7:
            if (HasRows())
                m_user->ClickRow(u"flexGrid", AnyRow(), OneOf<Modifier>({Modifier::None, Modifier::Control}));
            break;
        case 8:
            m_user->TabTo(u"flexGrid");
            m_user->Press(OneOf<NamedKey>({NamedKey::Up, NamedKey::Down, NamedKey::Home, NamedKey::End,
                                           NamedKey::PageUp, NamedKey::PageDown}));
            break;
        case 9:
            m_user->TabTo(u"flexGrid");
            if (OneIn(6))
                m_user->PressControl('A');
            else
                m_user->Type(std::u16string(1, static_cast<char16_t>(u'a' + Below(26))));
            break;
        default:
            // Locked boxes take nothing.
            m_user->TabTo(
                OneOf<std::u16string>({u"txtProductName", u"txtPartNum", u"txtUnitPrice", u"txtNote"}));
            m_user->Type(u"1x");
            m_user->Press(OneOf<NamedKey>({NamedKey::Delete, NamedKey::Backspace, NamedKey::F2}));
            break;
        }
    }

    void ActInEditState()
    {
        switch (Below(12)) {
        case 0:
        case 1:
        case 2:
            Type(u"txtProductName", &CatalogueModel::TypeName);
            break;
        case 3:
            Type(u"txtPartNum", &CatalogueModel::TypePartNum);
            break;
        case 4:
            Type(u"txtNote", &CatalogueModel::TypeNote);
            break;
        case 5:
        case 6: {
            const std::string digits = std::to_string(1 + Below(OneIn(2) ? 12 : 100'000));
            FillPrice(ToUtf16(digits));
            m_model.TypePrice(digits);
            break;
        }
        case 7:
        case 8:
            if (OneIn(2))
                m_user->Click(u"cmdSaveEdit");
            else
                m_user->PressControl('S');
            m_model.SaveDraft();
            m_model.EndEdit();
            break;
        case 9:
            LeaveDraft([&] {
                if (OneIn(2))
                    m_user->Click(u"cmdCancelEdit");
                else
                    m_user->Press(NamedKey::Escape);
            });
            break;
        case 10:
            if (HasRows()) {
                const std::int32_t row = AnyRow();
                LeaveDraft([&] { m_user->ClickRow(u"flexGrid", row); });
            } else {
                LeaveDraft([&] { m_user->TabTo(u"flexGrid"); });
            }
            break;
        default:
            // What is disabled does nothing.
            m_user->PressControl(OneOf<char>({'N', 'I', 'E'}));
            m_user->TabTo(OneOf<std::u16string>({u"txtUnitPrice", u"txtPartNum"}));
            break;
        }
    }

    void New()
    {
        switch (Below(3)) {
        case 0:
            m_user->Click(u"cmdNew");
            break;
        case 1:
            m_user->PressControl('N');
            break;
        default:
            m_user->ChooseTool(u"ID_NewProduct");
            break;
        }
        m_model.New();
    }

    void EditCurrent()
    {
        const std::int32_t rowID = RowIDAt(CurrentRow());
        switch (Below(4)) {
        case 0:
            m_user->TabTo(u"flexGrid");
            m_user->Press(OneOf<NamedKey>({NamedKey::F2, NamedKey::Enter}));
            break;
        case 1:
            m_user->ClickTool(u"ID_EditProduct");
            break;
        default:
            m_user->DoubleClick(
                OneOf<std::u16string>({u"txtProductName", u"txtPartNum", u"txtUnitPrice", u"txtNote"}));
            break;
        }
        if (rowID >= 0)
            m_model.Edit(rowID);
    }

    void Type(std::u16string_view box, void (CatalogueModel::*type)(std::string))
    {
        const std::string text = FreshText();
        Fill(box, ToUtf16(text));
        (m_model.*type)(text);
    }

    void LeaveDraft(const std::function<void()>& act)
    {
        bool isSaved = false;
        if (m_model.IsDraftModified()) {
            isSaved = OneIn(2);
            if (isSaved)
                m_user->WillAnswer(MessageAnswer::Yes);
            else if (OneIn(2))
                m_user->WillAnswer(MessageAnswer::No);
            else
                m_user->WillEscape();
        }
        act();
        if (isSaved)
            m_model.SaveDraft();
        m_model.EndEdit();
    }

    void DeleteCurrent()
    {
        const std::int32_t rowID = RowIDAt(CurrentRow());
        const MessageAnswer answer =
            rowID < 0 ? MessageAnswer::Ok
                      : OneOf<MessageAnswer>({MessageAnswer::Yes, MessageAnswer::No, MessageAnswer::Cancel});
        m_user->WillAnswer(answer);
        m_user->Click(u"cmdDelete");
        if (answer == MessageAnswer::Yes)
            m_model.Delete(rowID);
    }

    void DeleteSelected()
    {
        std::vector<std::int32_t> rowIDs;
        for (std::int32_t i = 0; i < m_user->Grid(u"flexGrid").SelectedRowCount(); ++i)
            rowIDs.push_back(RowIDAt(m_user->Grid(u"flexGrid").SelectedRow(i)));
        // Whole lists go seldom, or nothing would ever grow.
        const bool isYes = rowIDs.size() < 4 || OneIn(5);
        if (!rowIDs.empty())
            m_user->WillAnswer(isYes ? MessageAnswer::Yes : MessageAnswer::No);
        if (OneIn(2)) {
            m_user->ChooseTool(u"ID_Delete");
        } else {
            m_user->TabTo(u"flexGrid");
            m_user->Press(NamedKey::Delete);
        }
        if (isYes) {
            for (const std::int32_t rowID : rowIDs)
                m_model.Delete(rowID);
        }
    }

    void Leave()
    {
        m_model.SaveDraft();
        m_model.EndEdit();
        switch (Below(5)) {
        case 0:
            m_user->Click(u"cmdSaveClose");
            m_model.Save();
            m_isOpen = false;
            return;
        case 1:
            m_spy.Editor().EndModal();
            m_model.Save();
            m_isOpen = false;
            return;
        default:
            break;
        }
        MessageAnswer answer = MessageAnswer::Yes;
        if (m_model.IsModified()) {
            answer = OneOf<MessageAnswer>(
                {MessageAnswer::Yes, MessageAnswer::Yes, MessageAnswer::No, MessageAnswer::Cancel});
            m_user->WillAnswer(answer);
        }
        if (OneIn(2))
            m_user->Click(u"cmdCancel");
        else
            m_user->CloseWindow();
        if (answer == MessageAnswer::Yes)
            m_model.Save();
        m_isOpen = answer == MessageAnswer::Cancel;
    }

    /// What the window shows, against the model.
    void Check()
    {
        const auto rows = m_model.Rows();
        ASSERT_EQ(Shown(u"lblProductView"), "Product List (Count:" + std::to_string(rows.size()) + ")");
        ASSERT_EQ(m_user->Grid(u"flexGrid").Rows(), static_cast<std::int32_t>(rows.size()) + 1);
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const auto row = static_cast<std::int32_t>(i) + 1;
            ASSERT_EQ(RowIDAt(row), rows[i].first) << "row " << row;
            ASSERT_EQ(ToUtf8(m_user->CellShown(u"flexGrid", row, 0)), rows[i].second.name) << "row " << row;
        }
        ASSERT_EQ(IsInEditState(), m_model.IsEditing());
        if (m_model.IsEditing())
            return;
        const std::int32_t current = CurrentRow();
        const std::string name = current < 1 ? "" : rows[static_cast<std::size_t>(current) - 1].second.name;
        ASSERT_EQ(Shown(u"lblProductDetails"), name);
        ASSERT_EQ(Shown(u"txtProductName"), name);
    }

    void CheckFile()
    {
        std::vector<std::pair<std::int32_t, ModelProduct>> saved;
        for (const ProductRow& row : SavedRows())
            saved.emplace_back(row.rowID, ModelProduct{row.name, row.partNum, row.price / 10'000, row.note});
        ASSERT_EQ(saved, m_model.SavedRows());
    }

    CatalogueModel m_model;
    int m_actsLeft = kActs;
    int m_texts = 0;
    bool m_isOpen = false;
};

} // namespace

TEST_F(RandomUser, LosesNoProductInTenThousandActs)
{
    const std::uint32_t seed = Seed();
    std::cout << "seed " << seed << " (KSTNEDIT_SEED)\n";
    SCOPED_TRACE("KSTNEDIT_SEED=" + std::to_string(seed));
    m_random.seed(seed);
    Work();
}

} // namespace KestrinProductEditor
