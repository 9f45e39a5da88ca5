// SPDX-License-Identifier: MIT
#include "store/table/TableGram.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

using namespace KestrinProductEditor;

namespace {

class Input final : public IReadStream
{
public:
    explicit Input(std::string_view bytes) : m_bytes(bytes) {}
    [[nodiscard]] std::uint64_t Size() const override { return m_bytes.size(); }
    [[nodiscard]] std::size_t Read(char* buffer, std::size_t size) override
    {
        const std::size_t count = std::min(size, m_bytes.size());
        if (count != 0)
            std::memcpy(buffer, m_bytes.data(), count);
        m_bytes.remove_prefix(count);
        return count;
    }

private:
    std::string_view m_bytes;
};

class Output final : public IWriteStream
{
public:
    void Write(std::string_view bytes) override { m_bytes += bytes; }
    void Close() override {}
    [[nodiscard]] const std::string& Bytes() const noexcept { return m_bytes; }

private:
    std::string m_bytes;
};

std::vector<Column> CatalogueColumns()
{
    return {{u"RowID", ColumnType::Long, 4, true},     {u"UniqueID", ColumnType::Long, 4},
            {u"Status", ColumnType::Long, 4},          {u"Name", ColumnType::NarrowText, 255},
            {u"Key", ColumnType::NarrowText, 255},     {u"PartNum", ColumnType::NarrowText, 255},
            {u"UnitPrice", ColumnType::Currency, 8},   {u"Note", ColumnType::WideText, 4095},
            {u"DirtySession", ColumnType::Boolean, 2}, {u"DirtySync", ColumnType::Boolean, 2}};
}

void Require(bool isTrue, const char* what)
{
    if (isTrue)
        return;
    std::fprintf(stderr, "not so: %s\n", what);
    std::abort();
}

bool AreEqual(const RowStore& left, const RowStore& right, RowNumber row, std::size_t column)
{
    switch (left.Columns()[column].type) {
    case ColumnType::Long:
        return left.Long(row, column) == right.Long(row, column);
    case ColumnType::Currency:
        return left.Money(row, column) == right.Money(row, column);
    case ColumnType::Boolean:
        return left.Boolean(row, column) == right.Boolean(row, column);
    case ColumnType::NarrowText:
    case ColumnType::WideText:
        break;
    }
    return left.Text(row, column) == right.Text(row, column);
}

} // namespace

/// Any bytes are refused at a place inside them, or are a catalogue that reads the same after it was saved.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const std::shared_ptr<const CodePage> codePage = CodePage::Named("utf-8");
    Input input({reinterpret_cast<const char*>(data), size});
    RowStore first(CatalogueColumns());
    TableGram::Report report;
    if (const auto fault = TableGram::Read(input, *codePage, first, report)) {
        Require(fault->offset <= size, "the fault lies inside the file");
        return 0;
    }
    Require(report.size == size, "every byte is counted");

    RowOrder order(first);
    for (RowNumber row = 0; row < first.RowCount(); ++row)
        order.Append(row);
    Output output;
    TableGram::Write(first, order, *codePage, output);

    Input again(output.Bytes());
    RowStore second(CatalogueColumns());
    Require(!TableGram::Read(again, *codePage, second, report), "what was saved is read");
    Require(first.RowCount() == second.RowCount(), "as many rows are read as were saved");
    for (RowNumber row = 0; row < first.RowCount(); ++row) {
        for (std::size_t column = 0; column < first.Columns().size(); ++column)
            Require(AreEqual(first, second, row, column), "a value is read as it was saved");
    }
    return 0;
}
