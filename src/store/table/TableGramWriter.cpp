// SPDX-License-Identifier: MIT
#include "store/table/TableGram.h"

#include "platform/Text.h"
#include "store/table/TableGramFormat.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <string_view>

namespace KestrinProductEditor::TableGram {

namespace {

using namespace Format;

/// Collects what is written, about a megabyte at a time.
class Output
{
public:
    explicit Output(IWriteStream& stream)
        : m_stream(stream), m_buffer(std::make_unique_for_overwrite<char[]>(kCapacity)), m_capacity(kCapacity)
    {
    }

    /// Room for `size` bytes behind what was written.
    [[nodiscard]] char* Room(std::size_t size)
    {
        if (m_capacity - m_size < size)
            PrvMakeRoom(size);
        return m_buffer.get() + m_size;
    }
    /// What was put into the room, up to `end`, is written.
    void Advance(const char* end) noexcept { m_size = static_cast<std::size_t>(end - m_buffer.get()); }

    void Write(const void* bytes, std::size_t size)
    {
        char* const room = Room(size);
        std::memcpy(room, bytes, size);
        Advance(room + size);
    }
    template<class Number>
    void WriteNumber(Number number)
    {
        Write(&number, sizeof number);
    }

    void Flush()
    {
        if (m_size != 0)
            m_stream.Write({m_buffer.get(), m_size});
        m_size = 0;
    }

private:
    static constexpr std::size_t kCapacity = std::size_t{1} << 20;

    void PrvMakeRoom(std::size_t size)
    {
        Flush();
        if (size > m_capacity) {
            m_buffer = std::make_unique_for_overwrite<char[]>(size);
            m_capacity = size;
        }
    }

    IWriteStream& m_stream;
    std::unique_ptr<char[]> m_buffer;
    std::size_t m_capacity;
    std::size_t m_size = 0;
};

/// The file's UTF-16 of a UTF-8 text. Requires: room for two bytes a byte. Returns its end.
[[nodiscard]] char* Utf8ToWide(std::string_view text, char* out) noexcept
{
    std::size_t at = 0;
    while (at != text.size()) {
        while (text.size() - at >= 8) { // eight characters at a time while they are ASCII
            const auto bytes = Load<std::uint64_t>(text.data() + at);
            if ((bytes & 0x8080808080808080) != 0)
                break;
            std::uint64_t low = bytes & 0xFFFFFFFF;
            std::uint64_t high = bytes >> 32;
            low = (low | (low << 16)) & 0x0000FFFF0000FFFF;
            high = (high | (high << 16)) & 0x0000FFFF0000FFFF;
            Store(out, (low | (low << 8)) & 0x00FF00FF00FF00FF);
            Store(out + 8, (high | (high << 8)) & 0x00FF00FF00FF00FF);
            at += 8;
            out += 16;
        }
        if (at == text.size())
            break;
        const auto byte = static_cast<unsigned char>(text[at]);
        char32_t codePoint = byte;
        if (byte < 0x80)
            ++at;
        else
            codePoint = NextCodePoint(text, at);
        if (codePoint >= 0x10000) {
            Store(out, static_cast<std::uint16_t>(0xD7C0 + (codePoint >> 10)));
            Store(out + 2, static_cast<std::uint16_t>(0xDC00 | (codePoint & 0x3FF)));
            out += 4;
        } else {
            Store(out, static_cast<std::uint16_t>(codePoint));
            out += 2;
        }
    }
    return out;
}

/// How a column is written.
struct Plan
{
    std::size_t column = 0;
    ColumnType type = ColumnType::Long;
    Type fileType = kInt32;
    std::uint32_t flags = 0;
    std::uint32_t maxLength = 0;
    Count count = Count::None;
    std::size_t textOrdinal = 0;
};

class Writer
{
public:
    Writer(const RowStore& rows, const RowOrder& order, const CodePage& codePage, IWriteStream& stream)
        : m_rows(rows), m_order(order), m_codePage(codePage), m_output(stream),
          m_texts(rows.TextColumnCount())
    {
    }

    void Run()
    {
        for (std::size_t column = 0; column < m_rows.Columns().size(); ++column)
            m_plans.push_back(PrvPlan(column));
        PrvWriteFront();
        for (const Plan& plan : m_plans)
            PrvWriteColumn(plan);
        m_order.ForEach([&](RowNumber row) { PrvWriteRow(row); });
        m_output.WriteNumber(std::uint8_t{kEnd});
        m_output.Flush();
    }

private:
    // No code page that the system may have takes more for a byte of UTF-8, escape sequences among them.
    static constexpr std::size_t kMostBytesForByte = 4;

    [[nodiscard]] Plan PrvPlan(std::size_t column) const;
    [[nodiscard]] std::size_t PrvLongestNarrow(std::size_t column, std::size_t definedSize) const;
    [[nodiscard]] std::size_t PrvLongestWide(std::size_t column, std::size_t definedSize) const;
    void PrvWriteFront();
    void PrvWriteColumn(const Plan& plan);
    void PrvWriteRow(RowNumber row);
    void PrvWriteNarrow(Count count, std::string_view text);
    void PrvWriteWide(Count count, std::string_view text);
    static char* PrvWriteCount(Count count, std::size_t size, char* to) noexcept;

    const RowStore& m_rows;
    const RowOrder& m_order;
    const CodePage& m_codePage;
    Output m_output;
    std::vector<Plan> m_plans;
    std::vector<std::string_view> m_texts; // of the row that is being written
    std::string m_scratch;
};

Plan Writer::PrvPlan(std::size_t column) const
{
    const Column& definition = m_rows.Columns()[column];
    Plan plan;
    plan.column = column;
    plan.type = definition.type;
    plan.flags = kFlagWritable | (definition.identifiesRow ? kFlagRowIdentifier : 0U);
    const auto definedSize = static_cast<std::size_t>(std::max(definition.definedSize, 0));
    std::uint64_t capacity = 0;
    switch (definition.type) {
    case ColumnType::Long:
        plan.fileType = kInt32;
        plan.maxLength = 4;
        break;
    case ColumnType::Currency:
        plan.fileType = kCurrency;
        plan.maxLength = 8;
        break;
    case ColumnType::Boolean:
        plan.fileType = kBoolean;
        plan.maxLength = 2;
        break;
    case ColumnType::NarrowText:
        plan.fileType = kNarrowText;
        plan.maxLength = static_cast<std::uint32_t>(PrvLongestNarrow(column, definedSize));
        capacity = plan.maxLength;
        break;
    case ColumnType::WideText:
        plan.fileType = kWideText;
        plan.maxLength = static_cast<std::uint32_t>(PrvLongestWide(column, definedSize));
        capacity = std::uint64_t{plan.maxLength} * 2;
        break;
    }
    if (IsText(definition.type)) {
        plan.count = CountBefore(capacity, plan.flags);
        plan.textOrdinal = m_rows.TextOrdinal(column);
    } else {
        plan.flags |= kFlagFixedLength;
    }
    return plan;
}

/// The bytes of the longest value, at least `definedSize`. The values are only looked at when the bound that
/// the table knows does not answer it.
std::size_t Writer::PrvLongestNarrow(std::size_t column, std::size_t definedSize) const
{
    const std::size_t factor = m_codePage.IsUtf8() ? 1 : kMostBytesForByte;
    std::size_t longest = definedSize;
    if (m_rows.LongestText(column) * factor <= longest)
        return longest;
    std::string scratch;
    m_order.ForEach([&](RowNumber row) {
        const std::string_view text = m_rows.Text(row, column);
        if (text.size() * factor > longest)
            longest = std::max(longest, m_codePage.Encode(text, scratch).size());
    });
    return longest;
}

std::size_t Writer::PrvLongestWide(std::size_t column, std::size_t definedSize) const
{
    std::size_t longest = definedSize;
    if (m_rows.LongestText(column) <= longest)
        return longest;
    m_order.ForEach([&](RowNumber row) {
        const std::string_view text = m_rows.Text(row, column);
        if (text.size() > longest)
            longest = std::max(longest, Utf16Length(text));
    });
    return longest;
}

void Writer::PrvWriteFront()
{
    std::array<std::uint8_t, kFront.size()> front = kFront;
    const auto put = [&](std::size_t offset, auto number) {
        std::memcpy(&front[offset], &number, sizeof number);
    };
    put(kVisibleColumnsOffset, static_cast<std::uint16_t>(m_plans.size()));
    put(kTotalColumnsOffset, static_cast<std::uint16_t>(m_plans.size()));
    put(kRowCountOffset, static_cast<std::uint32_t>(m_order.Size()));
    m_output.Write(front.data(), front.size());
}

void Writer::PrvWriteColumn(const Plan& plan)
{
    const std::u16string& name = m_rows.Columns()[plan.column].name;
    m_output.WriteNumber(std::uint8_t{kColumnDescription});
    m_output.WriteNumber(static_cast<std::uint16_t>(kColumnDescriptionSize + 2 * name.size()));
    m_output.Write(kColumnPresence.data(), kColumnPresence.size());
    m_output.WriteNumber(static_cast<std::uint16_t>(plan.column + 1));
    m_output.WriteNumber(static_cast<std::uint16_t>(name.size()));
    m_output.Write(name.data(), 2 * name.size());
    m_output.WriteNumber(std::uint16_t{plan.fileType});
    m_output.WriteNumber(plan.maxLength);
    m_output.WriteNumber(std::uint32_t{0}); // precision
    m_output.WriteNumber(std::uint32_t{0}); // scale
    m_output.WriteNumber(plan.flags);
    m_output.WriteNumber(std::uint16_t{0}); // counts by itself: no
    m_output.WriteNumber(kTrueValue);       // visible: yes
}

void Writer::PrvWriteRow(RowNumber row)
{
    m_rows.Texts(row, m_texts.data());
    m_output.WriteNumber(std::uint8_t{kOriginalRow});
    for (const Plan& plan : m_plans) {
        switch (plan.type) {
        case ColumnType::Long:
            m_output.WriteNumber(m_rows.Long(row, plan.column));
            break;
        case ColumnType::Currency:
            m_output.WriteNumber(m_rows.Money(row, plan.column).Scaled());
            break;
        case ColumnType::Boolean:
            m_output.WriteNumber(m_rows.Boolean(row, plan.column) ? kTrueValue : std::uint16_t{0});
            break;
        case ColumnType::NarrowText:
            PrvWriteNarrow(plan.count, m_texts[plan.textOrdinal]);
            break;
        case ColumnType::WideText:
            PrvWriteWide(plan.count, m_texts[plan.textOrdinal]);
            break;
        }
    }
}

char* Writer::PrvWriteCount(Count count, std::size_t size, char* to) noexcept
{
    if (count == Count::OneByte) {
        *to = static_cast<char>(size);
        return to + 1;
    }
    Store(to, static_cast<std::uint32_t>(size));
    return to + 4;
}

void Writer::PrvWriteNarrow(Count count, std::string_view text)
{
    const std::string_view bytes = m_codePage.Encode(text, m_scratch);
    char* to = m_output.Room(4 + bytes.size());
    to = PrvWriteCount(count, bytes.size(), to);
    if (!bytes.empty())
        std::memcpy(to, bytes.data(), bytes.size());
    m_output.Advance(to + bytes.size());
}

void Writer::PrvWriteWide(Count count, std::string_view text)
{
    char* const to = m_output.Room(4 + 2 * text.size());
    char* const data = to + (count == Count::OneByte ? 1 : 4);
    char* const end = Utf8ToWide(text, data);
    PrvWriteCount(count, static_cast<std::size_t>(end - data), to);
    m_output.Advance(end);
}

} // namespace

void Write(const RowStore& rows, const RowOrder& order, const CodePage& codePage, IWriteStream& stream)
{
    Writer(rows, order, codePage, stream).Run();
}

} // namespace KestrinProductEditor::TableGram
