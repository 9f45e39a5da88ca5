// SPDX-License-Identifier: MIT
#include "util/NumberText.h"

#include <KestrinProductEditor/Currency.h>

#include "platform/Text.h"

#include <algorithm>
#include <string>

namespace KestrinProductEditor::NumberText {

namespace {

bool IsDigit(char byte)
{
    return byte >= '0' && byte <= '9';
}

enum class SignClass
{
    Other,
    Blank,
    Apostrophe
};

// Keyboards and files rarely know which blank or which apostrophe a locale means, so each stands for its
// class.
SignClass ClassOf(std::u16string_view sign)
{
    if (sign.size() != 1) {
        return SignClass::Other;
    }
    if (IsBlank(sign.front())) {
        return SignClass::Blank;
    }
    return sign.front() == u'\'' || sign.front() == u'\u2019' ? SignClass::Apostrophe : SignClass::Other;
}

bool AreAlike(std::u16string_view left, std::u16string_view right)
{
    const SignClass leftClass = ClassOf(left);
    return left == right || (leftClass != SignClass::Other && leftClass == ClassOf(right));
}

char32_t CodePointAt(std::string_view text, std::size_t& at)
{
    const auto byte = static_cast<unsigned char>(text[at]);
    if (byte < 0x80) {
        ++at;
        return byte;
    }
    return NextCodePoint(text, at);
}

char32_t CodePointAt(std::u16string_view text, std::size_t& at)
{
    const char32_t unit = text[at++];
    if (unit >= 0xD800 && unit <= 0xDBFF && at < text.size() && text[at] >= 0xDC00 && text[at] <= 0xDFFF) {
        return 0x10000 + ((unit - 0xD800) << 10) + (char32_t{text[at++]} - 0xDC00);
    }
    return unit;
}

// The number of bytes that `sign` takes at `at`; 0 when something else stands there.
std::size_t LengthOf(std::u16string_view sign, std::string_view text, std::size_t at)
{
    std::size_t end = at;
    for (std::size_t signAt = 0; signAt < sign.size();) {
        if (end == text.size() || CodePointAt(text, end) != CodePointAt(sign, signAt)) {
            return 0;
        }
    }
    return end - at;
}

std::size_t LengthOfAlike(std::u16string_view separator, std::string_view text, std::size_t at)
{
    const SignClass separatorClass = ClassOf(separator);
    if (separatorClass == SignClass::Other) {
        return LengthOf(separator, text, at);
    }
    if (at == text.size()) {
        return 0;
    }
    std::size_t end = at;
    const char32_t character = CodePointAt(text, end);
    const bool isAlike =
        separatorClass == SignClass::Blank
            ? character == U' ' || character == U'\u00A0' || character == U'\u2009' || character == U'\u202F'
            : character == U'\'' || character == U'\u2019';
    return isAlike ? end - at : 0;
}

std::u16string_view WithoutOuterBlanks(std::u16string_view text)
{
    while (!text.empty() && IsBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && IsBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

// What a pattern writes beside symbol, number, blanks and parentheses; empty for "($n)".
std::u16string_view SignOfPattern(std::u16string_view pattern)
{
    const auto isOther = [](char16_t unit) {
        return unit != u'$' && unit != u'n' && unit != u'(' && unit != u')' && !IsBlank(unit);
    };
    const auto begin = std::find_if(pattern.begin(), pattern.end(), isOther);
    const auto end = std::find_if_not(begin, pattern.end(), isOther);
    return {begin, end};
}

class NumberReader
{
public:
    NumberReader(std::string_view text, const MoneyLayout& layout)
        : m_text(text), m_layout(layout), m_symbol(WithoutOuterBlanks(layout.symbol))
    {
    }

    // Nothing when the text is no number.
    [[nodiscard]] std::optional<ParsedNumber> Read()
    {
        PrvSkipBlanks();
        const bool hasParenthesis = PrvTake('(');
        PrvSkipSymbolAndSign();
        if (!PrvReadWhole() || !PrvReadDecimals()) {
            return std::nullopt;
        }
        PrvSkipSymbolAndSign();
        if (hasParenthesis) {
            if (!PrvTake(')') || m_hasSign) {
                return std::nullopt;
            }
            m_number.isNegative = true;
            PrvSkipBlanks();
        }
        if (m_at != m_text.size()) {
            return std::nullopt;
        }
        return m_number;
    }

private:
    // A text that groups by one kind of separator is held to it.
    enum class Groups
    {
        None,
        Monetary,
        Number
    };

    [[nodiscard]] bool PrvIsDigitAt(std::size_t at) const
    {
        return at < m_text.size() && IsDigit(m_text[at]);
    }

    bool PrvTake(char byte)
    {
        if (m_at == m_text.size() || m_text[m_at] != byte) {
            return false;
        }
        ++m_at;
        return true;
    }

    void PrvSkipBlanks()
    {
        while (m_at < m_text.size()) {
            std::size_t end = m_at;
            if (!IsBlank(CodePointAt(m_text, end))) {
                return;
            }
            m_at = end;
        }
    }

    // At most one of each in the whole text, in either order, on either side of the number.
    void PrvSkipSymbolAndSign()
    {
        PrvSkipBlanks();
        while (m_at < m_text.size() && (PrvTakeSymbol() || PrvTakeSign())) {
            PrvSkipBlanks();
        }
    }

    bool PrvTakeSymbol()
    {
        const std::size_t length = m_hasSymbol ? 0 : LengthOf(m_symbol, m_text, m_at);
        m_at += length;
        m_hasSymbol = m_hasSymbol || length != 0;
        return length != 0;
    }

    bool PrvTakeSign()
    {
        if (m_hasSign || PrvIsDigitAt(m_at)) {
            return false;
        }
        std::size_t length = LengthOf(SignOfPattern(m_layout.negative), m_text, m_at);
        bool isNegative = length != 0;
        if (length == 0) {
            std::size_t end = m_at;
            const char32_t character = CodePointAt(m_text, end);
            isNegative = character == U'-' || character == U'\u2212';
            if (!isNegative && character != U'+') {
                return false;
            }
            length = end - m_at;
        }
        m_at += length;
        m_hasSign = true;
        m_number.isNegative = isNegative;
        return true;
    }

    void PrvAddWholeDigit(char digit)
    {
        constexpr std::uint64_t kLeastOfFifteenDigits = 100'000'000'000'000;
        if (m_number.whole >= kLeastOfFifteenDigits) {
            m_number.isTooLarge = true;
            return;
        }
        m_number.whole = m_number.whole * 10 + static_cast<std::uint64_t>(digit - '0');
    }

    bool PrvReadWhole()
    {
        const std::size_t begin = m_at;
        std::size_t separators = 0;
        Groups groups = Groups::None;
        for (;;) {
            if (PrvIsDigitAt(m_at)) {
                PrvAddWholeDigit(m_text[m_at]);
                ++m_at;
                ++m_digits;
                continue;
            }
            // A blank that no digit follows is no separator but the gap before the symbol.
            const std::size_t length =
                m_digits == 0 || m_at == m_text.size() ? 0 : PrvSeparatorLength(groups);
            if (length == 0 || !PrvIsDigitAt(m_at + length)) {
                break;
            }
            m_at += length;
            ++separators;
        }
        return separators == 0 || PrvGroupsFit(m_text.substr(begin, m_at - begin), separators);
    }

    // The length of the group separator at the current place, 0 when none is there.
    std::size_t PrvSeparatorLength(Groups& groups) const
    {
        const std::u16string_view monetary = m_layout.thousandSeparator;
        if (groups != Groups::Number && !AreAlike(monetary, m_layout.decimalSeparator)) {
            if (const std::size_t length = LengthOfAlike(monetary, m_text, m_at); length != 0) {
                groups = Groups::Monetary;
                return length;
            }
        }
        const std::u16string_view number = m_layout.numberThousandSeparator;
        if (groups != Groups::Monetary && !AreAlike(number, m_layout.decimalSeparator) &&
            !AreAlike(number, m_layout.numberDecimalSeparator)) {
            if (const std::size_t length = LengthOfAlike(number, m_text, m_at); length != 0) {
                groups = Groups::Number;
                return length;
            }
        }
        return 0;
    }

    // `whole` holds digits and separators, each separator between two digits.
    [[nodiscard]] bool PrvGroupsFit(std::string_view whole, std::size_t separators) const
    {
        std::size_t grouped = 0;
        for (std::size_t group = 0; group < separators; ++group) {
            const std::size_t size = GroupSize(m_layout, group);
            if (size == 0) {
                return false;
            }
            grouped += size;
        }
        const std::size_t headLimit = GroupSize(m_layout, separators);
        if (grouped >= m_digits || (headLimit != 0 && m_digits - grouped > headLimit)) {
            return false;
        }

        std::size_t group = separators;
        std::size_t missing = m_digits - grouped;
        for (std::size_t at = 0; at < whole.size(); ++at) {
            if (IsDigit(whole[at])) {
                if (missing == 0) {
                    return false;
                }
                --missing;
            } else if (IsDigit(whole[at - 1])) {
                if (missing != 0) {
                    return false;
                }
                --group;
                missing = GroupSize(m_layout, group);
            }
        }
        return missing == 0;
    }

    // False when the text has no digit at all.
    bool PrvReadDecimals()
    {
        if (m_at < m_text.size()) {
            m_at += PrvDecimalSignLength();
        }
        std::uint64_t weight = std::uint64_t{Currency::kScale} / 10;
        for (; m_hasDecimalSign && PrvIsDigitAt(m_at); ++m_at, ++m_digits) {
            const auto digit = static_cast<unsigned>(m_text[m_at] - '0');
            if (weight != 0) {
                m_number.fraction += digit * weight;
                weight /= 10;
            } else if (!m_hasFifthDecimal) {
                m_number.fifthDecimal = digit;
                m_hasFifthDecimal = true;
            } else {
                m_number.hasMoreDecimals = m_number.hasMoreDecimals || digit != 0;
            }
        }
        return m_digits != 0;
    }

    std::size_t PrvDecimalSignLength()
    {
        std::size_t length = LengthOf(m_layout.decimalSeparator, m_text, m_at);
        if (length == 0 && !AreAlike(m_layout.numberDecimalSeparator, m_layout.thousandSeparator)) {
            length = LengthOf(m_layout.numberDecimalSeparator, m_text, m_at);
        }
        m_hasDecimalSign = length != 0;
        return length;
    }

    std::string_view m_text;
    const MoneyLayout& m_layout;
    std::u16string_view m_symbol;
    std::size_t m_at = 0;
    std::size_t m_digits = 0;
    bool m_hasSymbol = false;
    bool m_hasSign = false;
    bool m_hasDecimalSign = false;
    bool m_hasFifthDecimal = false;
    ParsedNumber m_number;
};

} // namespace

bool IsBlank(char32_t character)
{
    switch (character) {
    case U' ':
    case U'\t':
    case U'\u00A0':
    case U'\u2007':
    case U'\u2009':
    case U'\u202F':
        return true;
    default:
        return false;
    }
}

std::optional<ParsedNumber> Read(std::string_view text, const MoneyLayout& layout)
{
    return NumberReader(text, layout).Read();
}

std::size_t GroupSize(const MoneyLayout& layout, std::size_t index)
{
    if (layout.grouping.empty() || (index >= layout.grouping.size() && layout.lastGroupEnds)) {
        return 0;
    }
    const int size = layout.grouping[std::min(index, layout.grouping.size() - 1)];
    return size > 0 ? static_cast<std::size_t>(size) : 0;
}

} // namespace KestrinProductEditor::NumberText
