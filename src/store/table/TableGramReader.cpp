// SPDX-License-Identifier: MIT
#include "store/table/TableGram.h"

#include "platform/Text.h"
#include "store/table/ReadWindow.h"
#include "store/table/TableGramFormat.h"
#include "store/table/TableGramTypes.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>
#include <span>
#include <string_view>

namespace KestrinProductEditor::TableGram {

namespace {

using namespace Format;

[[nodiscard]] std::string Hex(unsigned number)
{
    constexpr char kDigits[] = "0123456789ABCDEF";
    return {kDigits[(number >> 4) & 0xF], kDigits[number & 0xF]};
}

/// Maps of bits begin with the highest bit of their first byte.
[[nodiscard]] bool IsSet(const char* map, std::size_t bit) noexcept
{
    return (static_cast<unsigned>(map[bit / 8]) & (0x80U >> (bit % 8))) != 0;
}

/// The UTF-8 of UTF-16 in the file's byte order. Requires: room for three bytes a unit. Returns its end.
[[nodiscard]] char* WideToUtf8(const char* bytes, std::size_t units, char* out) noexcept
{
    const char* const end = bytes + 2 * units;
    while (bytes != end) {
        while (end - bytes >= 16) { // eight units at a time while they are ASCII
            auto low = Load<std::uint64_t>(bytes);
            auto high = Load<std::uint64_t>(bytes + 8);
            if (((low | high) & 0xFF80FF80FF80FF80) != 0)
                break;
            low = (low | (low >> 8)) & 0x0000FFFF0000FFFF;
            high = (high | (high >> 8)) & 0x0000FFFF0000FFFF;
            Store(out, static_cast<std::uint32_t>(low | (low >> 16)));
            Store(out + 4, static_cast<std::uint32_t>(high | (high >> 16)));
            bytes += 16;
            out += 8;
        }
        if (bytes == end)
            break;
        char32_t codePoint = Load<std::uint16_t>(bytes);
        bytes += 2;
        if (codePoint < 0x80) {
            *out++ = static_cast<char>(codePoint);
            continue;
        }
        if (codePoint < 0x800) {
            *out++ = static_cast<char>(0xC0 | (codePoint >> 6));
            *out++ = static_cast<char>(0x80 | (codePoint & 0x3F));
            continue;
        }
        if (codePoint >= 0xD800 && codePoint < 0xDC00 && bytes != end) {
            const char32_t second = Load<std::uint16_t>(bytes);
            if (second >= 0xDC00 && second < 0xE000) {
                bytes += 2;
                codePoint = 0x10000 + ((codePoint - 0xD800) << 10) + (second - 0xDC00);
                *out++ = static_cast<char>(0xF0 | (codePoint >> 18));
                *out++ = static_cast<char>(0x80 | ((codePoint >> 12) & 0x3F));
                *out++ = static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
                *out++ = static_cast<char>(0x80 | (codePoint & 0x3F));
                continue;
            }
        }
        *out++ = static_cast<char>(0xE0 | (codePoint >> 12));
        *out++ = static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
        *out++ = static_cast<char>(0x80 | (codePoint & 0x3F));
    }
    return out;
}

/// What is done with the values of one column of the file.
struct Step
{
    enum class Action : std::uint8_t
    {
        // values of one size
        Skip,
        Long,
        Money,
        Boolean,
        Whole,
        // text and bytes
        SkipText,
        NarrowText,
        WideText
    };

    [[nodiscard]] bool IsSkipped() const noexcept
    {
        return action == Action::Skip || action == Action::SkipText;
    }
    [[nodiscard]] bool IsText() const noexcept { return action >= Action::SkipText; }

    Action action = Action::Skip;
    Count count = Count::None;
    ColumnType target = ColumnType::Long;
    bool isNullable = false;
    std::uint16_t type = 0;
    std::uint32_t column = 0;   // of the table
    std::uint32_t size = 0;     // bytes of a value without a count
    std::uint64_t capacity = 0; // bytes
    std::uint64_t oddMask = 0;  // 1 where the number of bytes must be even
    std::uint32_t presenceBit = 0;
    std::size_t scratch = 0; // of wide text that becomes narrow or wide
};

/// Reads one file. What the file is made of is read from the head of the window, which is dropped part by
/// part. A row is read in one go: when the window ends inside it, the window is extended and the row begun
/// again.
class Reader
{
public:
    Reader(IReadStream& stream, const CodePage& codePage, RowStore& rows, Report& report)
        : m_window(stream), m_codePage(codePage), m_rows(rows), m_report(report),
          m_values(rows.Columns().size())
    {
    }

    [[nodiscard]] std::optional<Fault> Run()
    {
        m_report = Report();
        if (PrvReadHeader() && PrvReadFront() && PrvReadColumns() && PrvPlan() && PrvReadRows())
            return std::nullopt;
        return m_fault;
    }

private:
    enum class Outcome
    {
        Done,
        More,  // the window ends before the row: m_needed, m_moreAt and m_moreReason say where
        Ended, // the end mark
        Broken // m_fault
    };
    enum class Fate
    {
        Value,
        Null,
        Keep
    };

    bool PrvFail(std::uint64_t offset, std::string reason)
    {
        m_fault = {offset, std::move(reason)};
        return false;
    }
    Outcome PrvBreak(const char* at, std::string reason)
    {
        PrvFail(m_window.OffsetOf(at), std::move(reason));
        return Outcome::Broken;
    }
    Outcome PrvMore(const char* at, std::uint64_t size) noexcept
    {
        m_moreAt = static_cast<std::uint64_t>(at - m_window.Begin());
        m_needed = m_moreAt + size;
        return Outcome::More;
    }

    [[nodiscard]] bool PrvReadHeader();
    [[nodiscard]] bool PrvReadFront();
    [[nodiscard]] bool PrvReadElement(std::span<const char>& body);
    [[nodiscard]] bool PrvReadColumns();
    [[nodiscard]] bool PrvReadColumn(std::span<const char> body, std::uint64_t bodyOffset);
    [[nodiscard]] bool PrvPlan();
    [[nodiscard]] bool PrvPlanColumn(std::size_t fileColumn, std::optional<std::size_t> column);
    [[nodiscard]] bool PrvReadRows();
    [[nodiscard]] Outcome PrvReadRow(const char*& at, const char* end);
    [[nodiscard]] Outcome PrvReadMappedValues(const char*& at, const char* end, Fate untouched);
    template<class FateOf>
    [[nodiscard]] Outcome PrvReadValues(const char*& rowAt, const char* end, FateOf fateOf);
    [[nodiscard]] Outcome PrvReadWhole(const Step& step, const char* at);
    [[nodiscard]] Outcome PrvRefuseText(const Step& step, const char* at, std::uint64_t size);
    [[nodiscard]] std::string_view PrvWide(const Step& step, std::string_view bytes);
    [[nodiscard]] std::string PrvNameOf(std::size_t fileColumn) const;
    [[nodiscard]] std::string PrvQuoted(const Step& step) const;

    ReadWindow m_window;
    const CodePage& m_codePage;
    RowStore& m_rows;
    Report& m_report;

    std::size_t m_totalColumns = 0;
    std::vector<std::uint64_t> m_typeOffsets; // where each column's type stands
    std::vector<Step> m_steps;
    std::size_t m_presenceBits = 0;
    std::vector<RowStore::Value> m_values; // of the row that is being read
    std::vector<std::string> m_scratch;    // two for each text column of the plan

    Fault m_fault;
    std::uint64_t m_needed = 0;
    std::uint64_t m_moreAt = 0;
};

bool Reader::PrvReadHeader()
{
    if (!m_window.Extend(1))
        return PrvFail(0, "the file is empty");
    const bool isWhole = m_window.Extend(kHeaderSize);
    const char* const bytes = m_window.Begin();
    const auto available = static_cast<std::size_t>(m_window.End() - bytes);
    for (std::size_t i = 0; i < std::min(available, kMagicSize); ++i) {
        if (static_cast<std::uint8_t>(bytes[i]) != kFront[i])
            return PrvFail(i, "this is no catalogue file: it does not begin as one");
    }
    if (!isWhole)
        return PrvFail(available, "the file ends inside its header");
    if (bytes[5] != 0 || bytes[6] != 0)
        return PrvFail(bytes[5] != 0 ? 5 : 6, "the version of the file form is not known");
    if (bytes[7] != 0)
        return PrvFail(7, "the byte order of the file is not known");
    if (bytes[8] != 0)
        return PrvFail(8, "the form of narrow text in the file is not known");
    m_window.Drop(bytes + kHeaderSize);
    return true;
}

/// The body of the element at the window's begin, which stays there. It is valid until the window changes.
bool Reader::PrvReadElement(std::span<const char>& body)
{
    const std::uint64_t offset = m_window.OffsetOf(m_window.Begin());
    if (!m_window.Extend(3))
        return PrvFail(offset, "the file ends before its rows");
    const std::size_t size = Load<std::uint16_t>(m_window.Begin() + 1);
    if (!m_window.Extend(3 + size))
        return PrvFail(offset + 1,
                       "a part of " + std::to_string(size) + " bytes runs past the end of the file");
    body = {m_window.Begin() + 3, size};
    return true;
}

bool Reader::PrvReadFront()
{
    struct Part
    {
        Token token;
        const char* name;
    };
    constexpr Part kParts[] = {{kHandlerOptions, "the handler options"},
                               {kResultDescription, "the description of the table"},
                               {kContext, "the context of the table"}};
    for (const Part& part : kParts) {
        const std::uint64_t offset = m_window.OffsetOf(m_window.Begin());
        if (!m_window.Extend(1))
            return PrvFail(offset, "the file ends before its rows");
        const auto token = static_cast<std::uint8_t>(*m_window.Begin());
        if (token != part.token)
            return PrvFail(offset, "token " + Hex(token) + " stands where " + part.name + " should begin (" +
                                       Hex(part.token) + ")");
        std::span<const char> body;
        if (!PrvReadElement(body))
            return false;
        if (part.token == kResultDescription) {
            if (body.size() < kResultFixedSize)
                return PrvFail(offset + 1, "the description of the table is too short");
            m_totalColumns = Load<std::uint16_t>(body.data() + kResultTotalColumns);
            if (m_totalColumns == 0)
                return PrvFail(m_window.OffsetOf(body.data() + kResultTotalColumns),
                               "the table has no columns");
        }
        m_window.Drop(body.data() + body.size());
    }
    return true;
}

bool Reader::PrvReadColumns()
{
    for (;;) {
        const std::uint64_t offset = m_window.OffsetOf(m_window.Begin());
        if (!m_window.Extend(1))
            break;
        const auto token = static_cast<std::uint8_t>(*m_window.Begin());
        const bool isColumn = token == kColumnDescription;
        if (!isColumn && !(token == kTableDescription && m_report.columns.empty()))
            break;
        if (isColumn && m_report.columns.size() == m_totalColumns)
            return PrvFail(offset, "the file describes more columns than the " +
                                       std::to_string(m_totalColumns) + " that it announces");
        std::span<const char> body;
        if (!PrvReadElement(body) || (isColumn && !PrvReadColumn(body, offset + 3)))
            return false;
        m_window.Drop(body.data() + body.size());
    }
    if (m_report.columns.size() < m_totalColumns)
        return PrvFail(m_window.OffsetOf(m_window.Begin()),
                       "the file announces " + std::to_string(m_totalColumns) + " columns and describes " +
                           std::to_string(m_report.columns.size()));
    return true;
}

bool Reader::PrvReadColumn(std::span<const char> body, std::uint64_t bodyOffset)
{
    std::size_t at = 0;
    const auto has = [&](std::size_t size) { return body.size() - at >= size; };
    const auto tooShort = [&] {
        return PrvFail(bodyOffset + at, "the description of a column is too short");
    };
    const auto byteAt = [&](std::size_t i) { return std::uint32_t{static_cast<std::uint8_t>(body[i])}; };

    if (!has(5))
        return tooShort();
    const std::uint32_t presence = (byteAt(0) << 16) | (byteAt(1) << 8) | byteAt(2);
    at = 5; // the ordinal is the column's place among the descriptions, whatever it says

    FileColumn column;
    const auto readName = [&](std::u16string* name) {
        if (!has(2))
            return false;
        const std::size_t units = Load<std::uint16_t>(body.data() + at);
        at += 2;
        if (!has(2 * units))
            return false;
        if (name != nullptr && units != 0) {
            name->resize(units);
            std::memcpy(name->data(), body.data() + at, 2 * units);
        }
        at += 2 * units;
        return true;
    };
    const auto skip = [&](std::size_t size) {
        if (!has(size))
            return false;
        at += size;
        return true;
    };
    if (((presence & kHasName) != 0 && !readName(&column.name)) ||
        ((presence & kHasBaseTableOrdinal) != 0 && !skip(2)) ||
        ((presence & kHasBaseColumnOrdinal) != 0 && !skip(2)) ||
        ((presence & kHasBaseColumnName) != 0 && !readName(nullptr)) || !has(18))
        return tooShort();

    const char* const fields = body.data() + at;
    column.type = Load<std::uint16_t>(fields);
    column.maxLength = Load<std::uint32_t>(fields + 2);
    column.flags = Load<std::uint32_t>(fields + 14); // behind precision and scale
    m_typeOffsets.push_back(bodyOffset + at);
    m_report.columns.push_back(std::move(column));
    return true;
}

std::string Reader::PrvNameOf(std::size_t fileColumn) const
{
    return "column '" + ToUtf8(m_report.columns[fileColumn].name) + "'";
}

std::string Reader::PrvQuoted(const Step& step) const
{
    return PrvNameOf(static_cast<std::size_t>(&step - m_steps.data()));
}

bool Reader::PrvPlan()
{
    const std::vector<Column>& columns = m_rows.Columns();
    std::vector<std::optional<std::size_t>> targets(m_report.columns.size());
    for (std::size_t column = 0; column < columns.size(); ++column) {
        const auto found =
            std::find_if(m_report.columns.begin(), m_report.columns.end(), [&](const FileColumn& each) {
                return EqualsWithoutAsciiCase(each.name, columns[column].name);
            });
        if (found == m_report.columns.end())
            return PrvFail(m_window.OffsetOf(m_window.Begin()),
                           "the column '" + ToUtf8(columns[column].name) + "' is missing");
        targets[static_cast<std::size_t>(found - m_report.columns.begin())] = column;
    }
    m_steps.reserve(targets.size());
    for (std::size_t i = 0; i < targets.size(); ++i) {
        if (!PrvPlanColumn(i, targets[i]))
            return false;
    }
    return true;
}

bool Reader::PrvPlanColumn(std::size_t fileColumn, std::optional<std::size_t> column)
{
    const FileColumn& source = m_report.columns[fileColumn];
    const std::uint64_t typeOffset = m_typeOffsets[fileColumn];
    const std::uint64_t lengthOffset = typeOffset + 2;
    const std::uint64_t flagsOffset = typeOffset + 14;

    if (source.type == kChapter)
        return PrvFail(typeOffset, PrvNameOf(fileColumn) + " holds tables; only a flat table can be read");
    if ((source.flags & kFlagChapter) != 0)
        return PrvFail(flagsOffset, PrvNameOf(fileColumn) + " holds tables; only a flat table can be read");
    const TypeFacts* const facts = FactsOf(source.type);
    if (facts == nullptr)
        return PrvFail(typeOffset,
                       PrvNameOf(fileColumn) + " has the unknown type " + std::to_string(source.type));

    Step step;
    step.type = source.type;
    const bool isText = source.type == kNarrowText || IsWide(source.type);
    if (isText || source.type == kBytes) {
        step.capacity = std::uint64_t{source.maxLength} * (IsWide(source.type) ? 2 : 1);
        step.count = CountBefore(step.capacity, source.flags);
        step.size = static_cast<std::uint32_t>(step.capacity); // without a count it is at most 255
        if (source.maxLength == kUnboundedLength)
            step.capacity = std::numeric_limits<std::uint64_t>::max();
        step.action = Step::Action::SkipText;
        step.oddMask = IsWide(source.type) ? 1 : 0;
    } else {
        step.size = source.maxLength;
        if (source.maxLength == kUnboundedLength || (facts->size != 0 && source.maxLength != facts->size))
            return PrvFail(lengthOffset, PrvNameOf(fileColumn) + " says that a value (" + facts->name +
                                             ") has " + std::to_string(source.maxLength) + " bytes");
    }
    if ((source.flags & (kFlagNullable | kFlagMayBeNull)) != 0) {
        step.isNullable = true;
        step.presenceBit = static_cast<std::uint32_t>(m_presenceBits++);
    }

    if (column) {
        step.column = static_cast<std::uint32_t>(*column);
        step.target = m_rows.Columns()[*column].type;
        if (!CanHold(step.target, source.type))
            return PrvFail(typeOffset, PrvNameOf(fileColumn) + " is of the kind '" + facts->name +
                                           "', which cannot hold " + KindOf(step.target));
        if (isText) {
            step.action = IsWide(source.type) ? Step::Action::WideText : Step::Action::NarrowText;
            step.scratch = m_scratch.size();
            m_scratch.resize(m_scratch.size() + 2);
        } else if (step.target == ColumnType::Long && source.type == kInt32) {
            step.action = Step::Action::Long;
        } else if (step.target == ColumnType::Currency && source.type == kCurrency) {
            step.action = Step::Action::Money;
        } else if (step.target == ColumnType::Boolean && source.type == kBoolean) {
            step.action = Step::Action::Boolean;
        } else {
            step.action = Step::Action::Whole;
        }
    }
    m_steps.push_back(step);
    return true;
}

bool Reader::PrvReadRows()
{
    for (;;) {
        const char* at = m_window.Begin();
        switch (PrvReadRow(at, m_window.End())) {
        case Outcome::Done:
            m_window.Drop(at);
            break;
        case Outcome::More:
            if (!m_window.Extend(m_needed)) {
                const std::uint64_t offset = m_window.OffsetOf(m_window.Begin()) + m_moreAt;
                return PrvFail(offset, m_moreAt == 0 ? "the file ends without its end mark"
                                                     : "the file ends in the middle of a row");
            }
            break;
        case Outcome::Ended:
            m_window.Drop(at);
            m_report.size = m_window.OffsetOf(at);
            // A damaged mark in front of a row looks like the end: what follows may be the rest of the table.
            if (m_window.Extend(1))
                return PrvFail(m_report.size, "more bytes follow the end mark");
            return true;
        case Outcome::Broken:
            return false;
        }
    }
}

Reader::Outcome Reader::PrvReadRow(const char*& at, const char* end)
{
    if (at == end)
        return PrvMore(at, 1);
    const char* const begin = at;
    const auto token = static_cast<std::uint8_t>(*at++);
    switch (token) {
    case kOriginalRow: {
        Outcome outcome = Outcome::Done;
        if (m_presenceBits == 0) {
            outcome = PrvReadValues(at, end, [](std::size_t) { return Fate::Value; });
        } else {
            const std::size_t mapSize = (m_presenceBits + 7) / 8;
            if (static_cast<std::size_t>(end - at) < mapSize)
                return PrvMore(at, mapSize);
            const char* const map = at;
            at += mapSize;
            outcome = PrvReadValues(at, end, [&](std::size_t i) {
                const Step& step = m_steps[i];
                const bool isThere = !step.isNullable || IsSet(map, step.presenceBit);
                return isThere ? Fate::Value : Fate::Null;
            });
        }
        if (outcome != Outcome::Done)
            return outcome;
        if (at == end) // a change or a deletion may follow
            return PrvMore(at, 1);
        if (static_cast<std::uint8_t>(*at) == kDelete) {
            ++at;
            ++m_report.deletedRows;
            return Outcome::Done;
        }
        if (static_cast<std::uint8_t>(*at) == kChange) {
            ++at;
            outcome = PrvReadMappedValues(at, end, Fate::Keep);
            if (outcome != Outcome::Done)
                return outcome;
            ++m_report.changedRows;
        } else {
            ++m_report.originalRows;
        }
        break;
    }
    case kInsertedRow: {
        const Outcome outcome = PrvReadMappedValues(at, end, Fate::Null);
        if (outcome != Outcome::Done)
            return outcome;
        ++m_report.insertedRows;
        break;
    }
    case kEnd:
        return Outcome::Ended;
    case kChange:
    case kDelete:
        return PrvBreak(begin, "a change or deletion (token " + Hex(token) + ") does not follow its row");
    case kChildRow80:
    case kChildRow87:
    case kChildRow8A:
    case kChildRow8C:
    case kChildRow8D:
        return PrvBreak(begin,
                        "a row of a child table (token " + Hex(token) + "); only a flat table can be read");
    default:
        return PrvBreak(begin, "token " + Hex(token) + " stands where a row should begin");
    }
    m_rows.Append(m_values);
    return Outcome::Done;
}

/// Values behind two maps of all columns: which have a value, which are null.
Reader::Outcome Reader::PrvReadMappedValues(const char*& at, const char* end, Fate untouched)
{
    const std::size_t mapSize = (m_steps.size() + 7) / 8;
    if (static_cast<std::size_t>(end - at) < 2 * mapSize)
        return PrvMore(at, 2 * mapSize);
    const char* const values = at;
    const char* const nulls = at + mapSize;
    at += 2 * mapSize;
    return PrvReadValues(at, end, [=](std::size_t i) {
        if (IsSet(nulls, i))
            return Fate::Null;
        return IsSet(values, i) ? Fate::Value : untouched;
    });
}

template<class FateOf>
Reader::Outcome Reader::PrvReadValues(const char*& rowAt, const char* end, FateOf fateOf)
{
    const char* at = rowAt; // in a register: this is the loop that a large catalogue spends its time in
    const std::span<const Step> steps = m_steps;
    RowStore::Value* const values = m_values.data();
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const Step& step = steps[i];
        const Fate fate = fateOf(i);
        if (fate != Fate::Value) {
            if (fate == Fate::Null && !step.IsSkipped())
                values[step.column] = {};
            continue;
        }

        const auto left = static_cast<std::uint64_t>(end - at);
        if (!step.IsText()) {
            if (left < step.size)
                return PrvMore(at, step.size);
            switch (step.action) {
            case Step::Action::Long:
                values[step.column].number = Load<std::int32_t>(at);
                break;
            case Step::Action::Money:
                values[step.column].number = Load<std::int64_t>(at);
                break;
            case Step::Action::Boolean:
                values[step.column].number = Load<std::uint16_t>(at) != 0 ? 1 : 0;
                break;
            case Step::Action::Whole:
                if (PrvReadWhole(step, at) != Outcome::Done)
                    return Outcome::Broken;
                break;
            default:
                break;
            }
            at += step.size;
            continue;
        }

        std::uint64_t size = step.size;
        std::size_t countSize = 0;
        if (step.count == Count::OneByte) {
            if (left < 1)
                return PrvMore(at, 1);
            size = static_cast<std::uint8_t>(*at);
            countSize = 1;
        } else if (step.count == Count::FourBytes) {
            if (left < 4)
                return PrvMore(at, 4);
            size = Load<std::uint32_t>(at);
            countSize = 4;
        }
        if (size > step.capacity || (size & step.oddMask) != 0)
            return PrvRefuseText(step, at, size);
        if (left - countSize < size)
            return PrvMore(at, countSize + size);
        const std::string_view bytes(at + countSize, static_cast<std::size_t>(size));
        if (step.action == Step::Action::NarrowText)
            values[step.column].text = m_codePage.Decode(bytes, m_scratch[step.scratch]);
        else if (step.action == Step::Action::WideText)
            values[step.column].text = PrvWide(step, bytes);
        at = bytes.data() + bytes.size();
    }
    rowAt = at;
    return Outcome::Done;
}

Reader::Outcome Reader::PrvRefuseText(const Step& step, const char* at, std::uint64_t size)
{
    if (size > step.capacity)
        return PrvBreak(at, "a value of " + std::to_string(size) + " bytes in " + PrvQuoted(step) +
                                ", which has room for " + std::to_string(step.capacity));
    return PrvBreak(at,
                    "wide text of " + std::to_string(size) + " bytes, an odd number, in " + PrvQuoted(step));
}

Reader::Outcome Reader::PrvReadWhole(const Step& step, const char* at)
{
    const std::optional<std::int64_t> number = LoadWhole(step.type, at);
    std::int64_t& value = m_values[step.column].number;
    if (step.target == ColumnType::Boolean) {
        value = !number || *number != 0 ? 1 : 0;
        return Outcome::Done;
    }
    constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max() / Currency::kScale;
    constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min() / Currency::kScale;
    const bool isMoney = step.target == ColumnType::Currency;
    const std::int64_t least = isMoney ? kLeast : std::numeric_limits<std::int32_t>::min();
    const std::int64_t most = isMoney ? kMost : std::numeric_limits<std::int32_t>::max();
    if (!number || *number < least || *number > most)
        return PrvBreak(at, "the number " +
                                (number ? std::to_string(*number) : std::to_string(Load<std::uint64_t>(at))) +
                                " in " + PrvQuoted(step) + " is outside the range of " + KindOf(step.target));
    value = isMoney ? *number * Currency::kScale : *number;
    return Outcome::Done;
}

std::string_view Reader::PrvWide(const Step& step, std::string_view bytes)
{
    std::string& scratch = m_scratch[step.scratch];
    const std::size_t units = bytes.size() / 2;
    if (scratch.size() < 3 * units)
        scratch.resize(3 * units);
    const char* const end = WideToUtf8(bytes.data(), units, scratch.data());
    const std::string_view text(scratch.data(), static_cast<std::size_t>(end - scratch.data()));
    // A narrow column shows what it will hold when it is saved again.
    return step.target == ColumnType::NarrowText ? m_codePage.RoundTrip(text, m_scratch[step.scratch + 1])
                                                 : text;
}

} // namespace

std::optional<Fault> Read(IReadStream& stream, const CodePage& codePage, RowStore& rows, Report& report)
{
    return Reader(stream, codePage, rows, report).Run();
}

} // namespace KestrinProductEditor::TableGram
