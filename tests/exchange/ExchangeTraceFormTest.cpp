// SPDX-License-Identifier: MIT
#include "support/ErrorOf.h"
#include "support/ExchangeFixture.h"
#include "support/WindowContexts.h"

#include <KestrinProductEditor/ProductExportDlg.h>
#include <KestrinProductEditor/ProductImportDlg.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>

namespace KestrinProductEditor {

namespace {

using testing::Contains;
using testing::IsEmpty;

constexpr std::int32_t kTraceFailure = 4711;

/// Makes each traced method of the two dialogs run.
class ExchangeTrace : public ExchangeFixture, public testing::WithParamInterface<WindowContext>
{
protected:
    [[nodiscard]] static bool IsOfExport()
    {
        const ErrorContext context = GetParam().context;
        return context == ErrorContext::ProductExportDlg_Show ||
               GetParam().text.find("frmProductExport") != std::string_view::npos;
    }

    /// A whole visit; the number of the error that the launcher ends with.
    [[nodiscard]] std::int32_t Visit()
    {
        m_trace->Forget();
        return ErrorNumberOf([&] { IsOfExport() ? VisitExport() : VisitImport(); });
    }

    /// The script of a visit that fails at its entry is not played; nothing may wait for it.
    [[nodiscard]] static bool IsOfLauncher() { return GetParam().text.ends_with("::Show"); }

private:
    void VisitImport()
    {
        const auto dialog = ProductImportDlg::Create();
        dialog->Init(m_store);
        if (IsOfLauncher() && m_isFailing) {
            dialog->Show();
            return;
        }
        m_user->AtNextForm([&] {
            BrowseTo("list.csv", "n\na\n");
            m_user->PickInCell(u"flexGrid", 1, 1, 1);
            if (GetParam().text.find("review") == std::string_view::npos) {
                m_user->WillAnswer(MessageAnswer::Ok);
                m_user->Click(u"cmdImport");
            } else if (m_isFailing) {
                m_user->WillAnswer(MessageAnswer::Ok);
                m_user->Click(u"cmdPreview");
            } else {
                m_user->AtNextForm([&] { m_user->Click(u"cmdClose"); });
                m_user->Click(u"cmdPreview");
            }
            if (!m_user->OpenForms().empty())
                m_user->Click(u"cmdCancel");
        });
        dialog->Show();
    }

    void VisitExport()
    {
        const auto dialog = ProductExportDlg::Create();
        dialog->Init(m_store);
        if (IsOfLauncher() && m_isFailing) {
            dialog->Show();
            return;
        }
        m_user->AtNextForm([&] {
            if (m_isFailing && GetParam().text.find("rowse") != std::string_view::npos) {
                m_user->Click(u"cmdBrowse");
            } else {
                BrowseTo(m_folder.File("out.csv"));
                m_user->Click(u"cmdExport");
            }
            if (!m_user->OpenForms().empty())
                m_user->Click(u"cmdCancel");
        });
        dialog->Show();
    }

protected:
    bool m_isFailing = false;
};

[[nodiscard]] std::string NameOf(const testing::TestParamInfo<WindowContext>& info)
{
    std::string name(info.param.text.substr(info.param.text.rfind('.') + 1));
    std::replace(name.begin(), name.end(), ':', '_');
    return std::to_string(info.index) + "_" + name;
}

} // namespace

TEST_P(ExchangeTrace, HearsOfEntryAndExit)
{
    EXPECT_EQ(Visit(), 0);
    const std::string text(GetParam().text);
    const auto& calls = m_trace->Calls();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "enter " + text), 1);
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "exit " + text), 1);
    EXPECT_THAT(m_trace->CallsLike("error "), IsEmpty());
}

TEST_P(ExchangeTrace, HearsOfAFailureOnceAndEndsAsItShould)
{
    const std::string entry = "enter " + std::string(GetParam().text);
    m_isFailing = true;
    m_trace->FailOn(entry, kTraceFailure);
    EXPECT_EQ(Visit(), IsOfLauncher() ? kTraceFailure : 0);
    m_trace->Heal();
    const auto& calls = m_trace->Calls();
    const auto at = std::find(calls.begin(), calls.end(), entry);
    ASSERT_NE(at, calls.end());
    ASSERT_GE(calls.end() - at, 3);
    EXPECT_EQ(at[1], "error 4711");
    EXPECT_EQ(at[2] == "number 4711", GetParam().ending == Ending::PassOn) << at[2];
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "exit " + std::string(GetParam().text)), 0);
    EXPECT_EQ(m_user->OpenForms().size(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Each, ExchangeTrace, testing::ValuesIn(kExchangeContexts), NameOf);

} // namespace KestrinProductEditor
