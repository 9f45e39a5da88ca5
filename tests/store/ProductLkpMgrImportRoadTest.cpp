// SPDX-License-Identifier: MIT
#include "platform/Text.h"
#include "support/StoreFixture.h"
#include "util/modUtil.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

/// The import of a file against the plain road: each line split by itself, and its columns given to the
/// store.
class StoreImportRoads : public StoreFixture
{
protected:
    /// A number from 0 up to, and without, `end`.
    [[nodiscard]] std::size_t Below(std::size_t end) { return m_random() % end; }

    template<class Item, std::size_t size>
    [[nodiscard]] const Item& OneOf(const Item (&items)[size])
    {
        return items[Below(size)];
    }

    [[nodiscard]] std::string Piece()
    {
        static const std::string pieces[] = {"a",
                                             "Bolt",
                                             " ",
                                             "\"",
                                             "\"\"",
                                             ",",
                                             "~",
                                             ";",
                                             "'",
                                             "\t",
                                             "",
                                             "\u00e9",
                                             "\u6f22\u5b57",
                                             "\U0001F529",
                                             "\u00a0",
                                             "\\",
                                             "%",
                                             std::string(1, '\0'),
                                             "x y",
                                             "\"a,b\"",
                                             "0",
                                             "-",
                                             std::string(63, 'q'),
                                             "\"" + std::string(64, ',')};
        return OneOf(pieces);
    }

    [[nodiscard]] std::string Text()
    {
        std::string text;
        for (std::size_t pieces = Below(8); pieces > 0; --pieces)
            text += Piece();
        // Around the limits of the columns, with a character of two units at the cut.
        static const std::size_t lengths[] = {253, 254, 255, 256, 4093, 4094, 4095, 4096};
        if (Below(12) == 0)
            text += std::string(OneOf(lengths), 'n') + "\U0001F529" + Piece();
        return text;
    }

    [[nodiscard]] std::string Price()
    {
        static const std::string prices[] = {"0",
                                             "1",
                                             "$1.50",
                                             "\"$1,234.50\"",
                                             "1,5",
                                             "-5",
                                             "(7.25)",
                                             "abc",
                                             "",
                                             " 3 ",
                                             "4294967295.99",
                                             "4294967296",
                                             "1e3",
                                             "1.23456",
                                             "1.2.3",
                                             "$",
                                             "\u00a07",
                                             "12\"34\"",
                                             "\uff11",
                                             "$ -3",
                                             "9223372036854775807",
                                             "922337203685477.5807",
                                             "922337203685477.5808",
                                             "1,234,567.891",
                                             "12,34",
                                             ".5",
                                             "5.",
                                             "."};
        return OneOf(prices);
    }

    [[nodiscard]] std::string Line()
    {
        if (Below(15) == 0)
            return {};
        std::string line;
        for (std::size_t column = 0, columns = 1 + Below(6); column < columns; ++column) {
            if (column > 0)
                line += ',';
            line += Below(3) == 0 ? Price() : Text();
        }
        return line;
    }

    [[nodiscard]] std::vector<std::int32_t> Map()
    {
        std::vector<std::int32_t> map;
        for (int field = 0; field < 4; ++field)
            map.push_back(static_cast<std::int32_t>(Below(6)) - 1);
        return map;
    }

    void RunOnce()
    {
        std::vector<std::string> lines(Below(40));
        for (std::string& line : lines)
            line = Line();
        const std::vector<std::int32_t> map = Map();
        static const char* const lineEnds[] = {"\r\n", "\n", "\r"};
        const std::string lineEnd = OneOf(lineEnds);
        std::string file;
        for (const std::string& line : lines)
            file += line + lineEnd;
        const std::size_t failingCall = Below(4) == 0 ? 1 + Below(40) : 0;

        const auto imported = Open();
        imported->CancelUpdate(true);
        m_folder.Write("in.csv", file);
        ImportResult plain;
        const auto added = Open();
        added->CancelUpdate(true);
        m_trace->Forget();
        m_trace->FailAtCall(failingCall, 4711);
        Variant vMap = Variant::ArrayOf(std::vector<Variant>(map.begin(), map.end()));
        for (const std::string& line : lines) {
            bool isError = false;
            Variant columns = modUtil::SplitQuoted(ToUtf16(line), u",", isError);
            ASSERT_FALSE(isError);
            added->PrvCSVSetRowFields(columns, vMap, isError);
            ++(isError ? plain.rejected : plain.imported);
        }
        m_trace->Heal();
        const std::vector<std::string> plainCalls = m_trace->Calls();

        m_trace->Forget();
        // A trace that fails behind the last line would fail the import, not a line.
        if (failingCall <= plainCalls.size())
            m_trace->FailAtCall(failingCall, 4711);
        const ImportResult result =
            ImportResultOf(imported->CSVProductImport(ImportParams(m_folder.File("in.csv"), map, 0, 1)));
        m_trace->Heal();
        std::vector<std::string> importCalls = m_trace->Calls();
        constexpr std::size_t kCallsBehindTheLastLine = 6;
        ASSERT_GE(importCalls.size(), kCallsBehindTheLastLine);
        importCalls.resize(importCalls.size() - kCallsBehindTheLastLine);

        EXPECT_EQ(result, plain);
        EXPECT_EQ(importCalls, plainCalls);
        EXPECT_EQ(RowsOf(*imported), RowsOf(*added));
    }

    std::mt19937 m_random;
};

} // namespace

TEST_F(StoreImportRoads, GiveTheSameRowsCountsAndTraceCalls)
{
    const std::uint32_t seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    m_random.seed(seed);
    std::filesystem::remove(m_database / "corvprd2.cpd");
    for (int run = 0; run < 150 && !HasFailure(); ++run)
        RunOnce();
}

} // namespace KestrinProductEditor
