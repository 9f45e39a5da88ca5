// SPDX-License-Identifier: MIT
#include <KestrinProductEditor/ProdLkpEditDlg.h>

#include "support/StoreFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace KestrinProductEditor {

namespace {

class ProdLkpEditDlgTest : public StoreFixture
{
};

} // namespace

TEST_F(ProdLkpEditDlgTest, TakesAnythingAndDoesNothing)
{
    const auto dialog = ProdLkpEditDlg::Create();
    m_trace->Forget();
    dialog->Show();
    for (const Variant& argument : {Variant(), Variant::Null(), Variant(true), Variant(std::int32_t{-1}),
                                    Variant(0.5), Variant(Currency::FromUnits(3)), Variant(u"text"),
                                    Variant::ArrayOf({}), Variant(VariantArray(2, 2)), Packed(1, "Anchor")})
        dialog->Show(argument);
    EXPECT_THAT(m_trace->Calls(), testing::IsEmpty());
    EXPECT_FALSE(CatalogueExists());
}

} // namespace KestrinProductEditor
