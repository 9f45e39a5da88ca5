// SPDX-License-Identifier: MIT
#include "views/FlexDataSrc.h"

#include "support/CapturingToolkit.h"
#include "support/StoreFixture.h"
#include "support/User.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace KestrinProductEditor {

namespace {

/// The adaptor, with a note of the record that was asked for last.
class AskedSource final : public IVSFlexDataSource
{
public:
    explicit AskedSource(const std::shared_ptr<ProductLkpMgr>& store) { m_source.SetDataSource(store); }

    [[nodiscard]] std::int32_t LastAsked() const { return m_lastAsked; }

    std::int32_t GetFieldCount() override { return m_source.GetFieldCount(); }
    std::int32_t GetRecordCount() override { return m_source.GetRecordCount(); }
    std::u16string GetFieldName(std::int32_t Field) override { return m_source.GetFieldName(Field); }
    std::u16string GetData(std::int32_t Field, std::int32_t Record) override
    {
        m_lastAsked = Record;
        return m_source.GetData(Field, Record);
    }
    void SetData(std::int32_t Field, std::int32_t Record, std::u16string_view newData) override
    {
        m_source.SetData(Field, Record, newData);
    }

private:
    FlexDataSrc m_source;
    std::int32_t m_lastAsked = -1;
};

class FlexDataSrcForm : public StoreFixture
{
protected:
    std::unique_ptr<IUser> m_user = MakeUser();
};

} // namespace

TEST_F(FlexDataSrcForm, LeavesTheRowCurrentThatItsGridAskedForLast)
{
    WriteCatalogue(
        {{.rowID = 2, .name = "Anchor"}, {.rowID = 3, .name = "Bolt"}, {.rowID = 4, .name = "Clamp"}});
    const std::shared_ptr<ProductLkpMgr> store = Open();
    store->CancelUpdate(true);
    const auto source = std::make_shared<AskedSource>(store);
    const std::unique_ptr<IUserControl> list = Toolkit().CreateUserControl(u"ProductLkpView");
    IGrid& grid = list->Grid(u"flexGrid");
    grid.SetRows(1);
    grid.SetFixedRows(1);
    grid.SetFixedCols(0);
    grid.SetDataSource(source, nullptr);
    const auto expectTheLastAskedIsCurrent = [&] {
        ASSERT_GE(source->LastAsked(), 0);
        EXPECT_EQ(store->CurrentRecordIdx(), source->LastAsked() + 1);
    };
    for (const std::int32_t row : {2, 1, 3}) {
        m_user->ResizeUserControl(*list, 3000, 3000);
        EXPECT_NE(m_user->CellShown(u"flexGrid", row, 0), u"");
        EXPECT_EQ(source->LastAsked(), row - 1);
        expectTheLastAskedIsCurrent();
        // A screen paints now, and asks for what it shows.
        grid.Refresh();
        m_user->ResizeUserControl(*list, 4000, 2000);
        expectTheLastAskedIsCurrent();
    }
}

} // namespace KestrinProductEditor
