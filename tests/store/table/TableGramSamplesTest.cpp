// SPDX-License-Identifier: MIT
#include "store/table/TableGram.h"

#include "platform/Text.h"
#include "support/GramTable.h"
#include "support/PlainTableGramReader.h"
#include "support/RowsetXml.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>

namespace KestrinProductEditor {

namespace {

using namespace Testing;

struct Sample
{
    std::string name;
    std::string bytes;
    std::string xml;
};

std::string ContentOf(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

Sample OwnSample()
{
    GramBytes file(4);
    file.Column(u"ID", 3, 4, 0x14).Column(u"NAME", 0x81, 20, 0x24);
    file.Column(u"PRICE", 6, 8, 0x34).Column(u"SOLD", 11, 2, 0x34);
    file.U8(0x07).U8(0xFF).U32(2).U8(3).Raw("out").U64(0).U16(0).U8(0x0C);
    file.U8(0x07).U8(0xFF).U32(1).U8(4).Raw("\xC7\xD1\xB1\xDB").U64(12500).U16(0xFFFF);
    file.U8(0x0A).U8(0x20).U8(0x40).U64(static_cast<std::uint64_t>(-5));
    file.U8(0x07).U8(0x9F).U32(3).U8(0);
    file.U8(0x0D).U8(0xD0).U8(0x20).U32(4).U8(3).Raw("a&b").U16(0).U8(0x0F);
    std::string bytes = file.Bytes();
    bytes[0x45] = 3; // rows, the deleted one not counted
    return {"own", bytes, R"(<xml xmlns:z='#RowsetSchema'>
<s:Schema id='RowsetSchema'><s:ElementType name='row'>
  <s:AttributeType name='ID' rs:number='1'><s:datatype dt:type='int'/></s:AttributeType>
  <s:AttributeType name='NAME' rs:number='2'><s:datatype dt:type='string'/></s:AttributeType>
  <s:AttributeType name='PRICE' rs:number='3'><s:datatype dt:type='number'/></s:AttributeType>
  <s:AttributeType name='SOLD' rs:number='4'><s:datatype dt:type='boolean'/></s:AttributeType>
  <s:extends type='rs:rowbase'/>
</s:ElementType></s:Schema>
<rs:data>
  <rs:update><rs:original><z:row ID='1' NAME='&#xd55c;&#xae00;' PRICE='1.25' SOLD='True'/></rs:original>
    <z:row PRICE='-.0005' rs:forcenull='NAME'/></rs:update>
  <z:row ID='3' NAME=''/>
  <rs:insert><z:row ID='4' NAME='a&#x26;b' SOLD='False' rs:forcenull='PRICE'/></rs:insert>
  <rs:delete><z:row ID='2' NAME='out' PRICE='0' SOLD='False'/></rs:delete>
</rs:data></xml>)"};
}

/// A sample of our own, and the genuine ones where their folder stands beside the checkout.
std::vector<Sample> Samples()
{
    std::vector<Sample> samples = {OwnSample()};
    const auto folder = std::filesystem::path(KSTNEDIT_SOURCE_DIR) / ".." / "shared" / "adtg" / "samples";
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
        if (entry.path().extension() == ".adtg")
            samples.push_back({entry.path().stem().string(), ContentOf(entry.path()),
                               ContentOf(std::filesystem::path(entry.path()).replace_extension(".xml"))});
    }
    return samples;
}

std::vector<Column> ColumnsOf(const std::vector<TableGram::FileColumn>& fileColumns)
{
    std::vector<Column> columns;
    for (const TableGram::FileColumn& each : fileColumns) {
        const ColumnType type = each.type == 0x81   ? ColumnType::NarrowText
                                : each.type == 0x82 ? ColumnType::WideText
                                : each.type == 6    ? ColumnType::Currency
                                : each.type == 11   ? ColumnType::Boolean
                                                    : ColumnType::Long;
        columns.push_back({each.name, type,
                           static_cast<std::int32_t>(std::min<std::uint32_t>(
                               each.maxLength, std::numeric_limits<std::int32_t>::max()))});
    }
    return columns;
}

std::int64_t ScaledOf(const std::string& text)
{
    const std::size_t point = std::min(text.find('.'), text.size());
    std::string fraction = point < text.size() ? text.substr(point + 1) : "";
    fraction.resize(4, '0');
    return std::stoll(text.substr(0, point) + fraction);
}

Cell Expected(const XmlRow& row, const Column& column)
{
    const auto found = row.values.find(ToUtf8(column.name));
    const bool isNull = found == row.values.end();
    switch (column.type) {
    case ColumnType::Long:
        return isNull ? 0 : std::stoi(found->second);
    case ColumnType::Currency:
        return isNull ? 0 : ScaledOf(found->second);
    case ColumnType::Boolean:
        return !isNull && found->second == "True" ? 1 : 0;
    case ColumnType::NarrowText:
    case ColumnType::WideText:
        break;
    }
    return isNull ? "" : found->second;
}

std::uint64_t CountOf(const XmlTable& table, PlainState state)
{
    return static_cast<std::uint64_t>(std::count_if(table.rows.begin(), table.rows.end(),
                                                    [&](const XmlRow& row) { return row.state == state; }));
}

TEST(TableGramSamples, DecodeToTheValuesOfTheirXmlTwins)
{
    const std::shared_ptr<const CodePage> korean = CodePage::Named("cp949");
    for (const Sample& sample : Samples()) {
        SCOPED_TRACE(sample.name);
        const Reading look = ReadBytes(sample.bytes, {}, *korean); // nothing but the columns
        ASSERT_FALSE(look.fault) << look.fault->reason;
        const std::vector<Column> columns = ColumnsOf(look.report.columns);
        const Reading reading = ReadBytes(sample.bytes, columns, *korean);
        ASSERT_FALSE(reading.fault) << reading.fault->reason;

        const XmlTable twin = ReadRowsetXml(sample.xml);
        ASSERT_EQ(columns.size(), twin.columns.size());
        for (std::size_t i = 0; i < columns.size(); ++i)
            EXPECT_EQ(ToUtf8(columns[i].name), twin.columns[i]);
        std::vector<Cells> expected;
        for (const XmlRow& row : twin.rows) {
            if (row.state == PlainState::Deleted)
                continue;
            Cells cells;
            for (const Column& column : columns)
                cells.push_back(Expected(row, column));
            expected.push_back(std::move(cells));
        }
        EXPECT_EQ(reading.table->All(), expected);
        EXPECT_EQ(reading.report.originalRows, CountOf(twin, PlainState::Original));
        EXPECT_EQ(reading.report.changedRows, CountOf(twin, PlainState::Changed));
        EXPECT_EQ(reading.report.deletedRows, CountOf(twin, PlainState::Deleted));
        EXPECT_EQ(reading.report.insertedRows, CountOf(twin, PlainState::Inserted));
        EXPECT_EQ(reading.report.size, sample.bytes.size());
    }
}

TEST(TableGramSamples, ReadTheSameInThePlainReader)
{
    for (const Sample& sample : Samples()) {
        SCOPED_TRACE(sample.name);
        const PlainTable plain = ReadPlainTableGram(sample.bytes);
        const XmlTable twin = ReadRowsetXml(sample.xml);
        ASSERT_EQ(plain.rows.size(), twin.rows.size());
        EXPECT_EQ(plain.end, sample.bytes.size());
        const auto byIdentifier = [&](const PlainRow& row) { return PlainNumber(row.values.at(0).value()); };
        for (const PlainRow& row : plain.rows) {
            const auto match = std::find_if(twin.rows.begin(), twin.rows.end(), [&](const XmlRow& each) {
                return std::stoll(each.values.at("ID")) == byIdentifier(row);
            });
            ASSERT_NE(match, twin.rows.end());
            EXPECT_EQ(row.state, match->state);
            for (std::size_t i = 0; i < plain.columns.size(); ++i)
                EXPECT_EQ(row.values.at(i).has_value(), match->values.count(twin.columns[i]) == 1);
        }
    }
}

TEST(TableGramSamples, SurviveASaveOfOurs)
{
    const std::shared_ptr<const CodePage> korean = CodePage::Named("cp949");
    for (const Sample& sample : Samples()) {
        SCOPED_TRACE(sample.name);
        const std::vector<Column> columns = ColumnsOf(ReadBytes(sample.bytes, {}, *korean).report.columns);
        const Reading first = ReadBytes(sample.bytes, columns, *korean);
        ASSERT_FALSE(first.fault);
        const std::string saved = BytesOf(*first.table, *korean);
        const Reading second = ReadBytes(saved, columns, *korean);
        ASSERT_FALSE(second.fault) << second.fault->reason;
        EXPECT_EQ(second.table->All(), first.table->All());
        EXPECT_EQ(ReadPlainTableGram(saved).rows.size(), first.table->All().size());
        EXPECT_EQ(saved.substr(0, 0x10E), sample.bytes.substr(0, 0x10E));
    }
}

} // namespace

} // namespace KestrinProductEditor
