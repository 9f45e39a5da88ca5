// SPDX-License-Identifier: MIT
#include "util/modConversion.h"

#include <KestrinProductEditor/AutomationError.h>

#include "platform/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>

namespace KestrinProductEditor::modConversion {

namespace {

constexpr std::uint64_t kScale = Currency::kScale;
constexpr int kCurrencyDecimals = 4;

// What a text says as a number, exact as far as any rounding needs it.
struct ParsedNumber
{
    bool isNegative = false;
    bool isTooLarge = false; // the whole part has more digits than any amount; `whole` says nothing
    std::uint64_t whole = 0;
    std::uint64_t fraction = 0; // ten-thousandths
    unsigned fifthDecimal = 0;
    bool hasMoreDecimals = false; // a digit other than 0 behind the fifth decimal
};

bool IsDigit(char byte)
{
    return byte >= '0' && byte <= '9';
}

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

// The size of the group number `index`, counted from the decimal sign; 0 where the digits go on ungrouped.
std::size_t GroupSize(const MoneyLayout& layout, std::size_t index)
{
    if (layout.grouping.empty() || (index >= layout.grouping.size() && layout.lastGroupEnds)) {
        return 0;
    }
    const int size = layout.grouping[std::min(index, layout.grouping.size() - 1)];
    return size > 0 ? static_cast<std::size_t>(size) : 0;
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
        std::uint64_t weight = kScale / 10;
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

// The signed number of that magnitude, or nothing when 64 bits do not hold it. Two's complement reaches one
// further below zero than above.
std::optional<std::int64_t> Signed(std::uint64_t magnitude, bool isNegative)
{
    constexpr auto kLargest = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    if (magnitude > kLargest + (isNegative ? 1 : 0)) {
        return std::nullopt;
    }
    return static_cast<std::int64_t>(isNegative ? 0 - magnitude : magnitude);
}

std::uint64_t Magnitude(Currency amount)
{
    const auto bits = static_cast<std::uint64_t>(amount.Scaled());
    return amount.Scaled() < 0 ? 0 - bits : bits;
}

ParsedNumber NumberOf(Currency amount)
{
    ParsedNumber number;
    number.isNegative = amount.Scaled() < 0;
    number.whole = Magnitude(amount) / kScale;
    number.fraction = Magnitude(amount) % kScale;
    return number;
}

std::uint64_t PowerOfTen(int exponent)
{
    std::uint64_t power = 1;
    for (; exponent > 0; --exponent) {
        power *= 10;
    }
    return power;
}

// A separator goes behind the digit with the number `index`, counted from the decimal sign, where bit `index`
// is set. Twenty digits are more than any amount has.
std::uint32_t GroupEnds(const MoneyLayout& layout, std::size_t digits)
{
    std::uint32_t ends = 0;
    if (layout.thousandSeparator.empty()) {
        return ends;
    }
    std::size_t end = 0;
    for (std::size_t group = 0;; ++group) {
        const std::size_t size = GroupSize(layout, group);
        end += size;
        if (size == 0 || end >= digits) {
            return ends;
        }
        ends |= std::uint32_t{1} << end;
    }
}

void AppendNumber(std::uint64_t whole, std::uint64_t fraction, int decimals, const MoneyLayout& layout,
                  std::string& out)
{
    std::array<char, 20> buffer;
    const char* const end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), whole).ptr;
    auto digits = static_cast<std::size_t>(end - buffer.data());
    const std::uint32_t groupEnds = GroupEnds(layout, digits);
    for (const char* digit = buffer.data(); digit != end; ++digit, --digits) {
        if ((groupEnds >> digits & 1U) != 0) {
            AppendUtf8(layout.thousandSeparator, out);
        }
        out += *digit;
    }
    if (decimals == 0) {
        return;
    }
    AppendUtf8(layout.decimalSeparator, out);
    for (std::uint64_t weight = PowerOfTen(std::min(decimals, kCurrencyDecimals) - 1); weight != 0;
         weight /= 10) {
        out += static_cast<char>('0' + fraction / weight % 10);
    }
    out.append(static_cast<std::size_t>(std::max(decimals - kCurrencyDecimals, 0)), '0');
}

bool IsBesideSymbol(std::u16string_view pattern, std::size_t place)
{
    return (place > 0 && pattern[place - 1] == u'$') ||
           (place + 1 < pattern.size() && pattern[place + 1] == u'$');
}

std::optional<ParsedNumber> NumberOfText(std::u16string_view text)
{
    return NumberReader(ToUtf8(text), UserLocale().Money()).Read();
}

std::int32_t RoundedToLong(const ParsedNumber& number)
{
    constexpr std::uint64_t kHalf = kScale / 2;
    const bool hasRest = number.fifthDecimal != 0 || number.hasMoreDecimals;
    const bool isAboveHalf = number.fraction > kHalf || (number.fraction == kHalf && hasRest);
    const bool isHalf = number.fraction == kHalf && !hasRest;
    const bool goesUp = isAboveHalf || (isHalf && number.whole % 2 != 0);
    const std::uint64_t magnitude = number.whole + (goesUp ? 1 : 0);
    const std::optional<std::int64_t> rounded = Signed(magnitude, number.isNegative);
    if (number.isTooLarge || !rounded || *rounded < std::numeric_limits<std::int32_t>::min() ||
        *rounded > std::numeric_limits<std::int32_t>::max()) {
        throw AutomationError(kErrOverflow);
    }
    return static_cast<std::int32_t>(*rounded);
}

// Halves to even, whatever rounding mode the host has set.
double RoundedToEven(double value)
{
    const double below = std::floor(value);
    const double rest = value - below;
    if (rest < 0.5) {
        return below;
    }
    return rest > 0.5 || std::fmod(below, 2.0) != 0.0 ? below + 1.0 : below;
}

// `value` as a whole number between `least` and `bound`, the latter excluded; error 6 for any other and for
// NaN.
double RoundedWithin(double value, double least, double bound)
{
    const double rounded = RoundedToEven(value);
    if (!(rounded >= least && rounded < bound)) {
        throw AutomationError(kErrOverflow);
    }
    return rounded;
}

[[noreturn]] void ThrowTypeMismatch()
{
    throw AutomationError(kErrTypeMismatch);
}

bool EqualsWithoutCase(std::u16string_view text, std::u16string_view lowerCase)
{
    const auto isSame = [](char16_t left, char16_t right) {
        return (left >= u'A' && left <= u'Z' ? left + (u'a' - u'A') : left) == right;
    };
    return std::equal(text.begin(), text.end(), lowerCase.begin(), lowerCase.end(), isSame);
}

bool TextToBoolean(std::u16string_view text)
{
    if (EqualsWithoutCase(text, u"true")) {
        return true;
    }
    if (EqualsWithoutCase(text, u"false")) {
        return false;
    }
    const std::optional<ParsedNumber> number = NumberOfText(text);
    if (!number) {
        ThrowTypeMismatch();
    }
    return number->isTooLarge || number->whole != 0 || number->fraction != 0 || number->fifthDecimal != 0 ||
           number->hasMoreDecimals;
}

std::u16string WithLocaleDecimal(std::string_view plain)
{
    std::u16string text;
    for (const char character : plain) {
        if (character == '.') {
            text += UserLocale().Item(LocaleItem::DecimalSeparator).value_or(u".");
        } else {
            text += static_cast<char16_t>(character);
        }
    }
    return text;
}

std::string PlainText(double value)
{
    constexpr int kSignificantDigits = 15;
    std::array<char, 32> buffer;
    // Adding 0 takes the sign from a negative zero.
    const std::to_chars_result result =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value + 0.0, std::chars_format::general,
                      kSignificantDigits);
    std::string text(buffer.data(), result.ptr);
    if (std::isfinite(value)) {
        std::replace(text.begin(), text.end(), 'e', 'E');
    }
    return text;
}

} // namespace

CurrencyResult CurrencyFromText(std::string_view text, const MoneyLayout& layout)
{
    const std::optional<ParsedNumber> number = NumberReader(text, layout).Read();
    if (!number) {
        return {Currency(), ConversionError::TypeMismatch};
    }
    if (number->isTooLarge) {
        return {Currency(), ConversionError::Overflow};
    }
    const std::uint64_t magnitude =
        number->whole * kScale + number->fraction + (number->fifthDecimal >= 5 ? 1 : 0);
    const std::optional<std::int64_t> scaled = Signed(magnitude, number->isNegative);
    if (!scaled) {
        return {Currency(), ConversionError::Overflow};
    }
    return {Currency::FromScaled(*scaled), ConversionError::None};
}

std::string FormatCurrency(Currency amount, std::int32_t decimals, const MoneyLayout& layout)
{
    std::string text;
    AppendFormatCurrency(amount, decimals, layout, text);
    return text;
}

void AppendFormatCurrency(Currency amount, std::int32_t decimals, const MoneyLayout& layout, std::string& out)
{
    constexpr std::int32_t kMostDecimals = 9;
    decimals = std::clamp(decimals, 0, kMostDecimals);
    const int shown = std::min(decimals, kCurrencyDecimals);
    const std::uint64_t dropped = PowerOfTen(kCurrencyDecimals - shown);
    const std::uint64_t magnitude = (Magnitude(amount) + dropped / 2) / dropped;
    const std::uint64_t parts = PowerOfTen(shown);

    // An amount that is rounded to zero has no sign.
    const bool isNegative = amount.Scaled() < 0 && magnitude != 0;
    const std::u16string_view pattern = isNegative ? layout.negative : layout.positive;
    for (std::size_t place = 0; place < pattern.size();) {
        const std::size_t characterPlace = place;
        const char32_t character = CodePointAt(pattern, place);
        if (character == U'n') {
            AppendNumber(magnitude / parts, magnitude % parts, decimals, layout, out);
        } else if (character == U'$') {
            AppendUtf8(layout.symbol, out);
        } else if (!layout.symbol.empty() || !IsBlank(character) ||
                   !IsBesideSymbol(pattern, characterPlace)) {
            AppendCodePoint(character, out);
        }
    }
}

std::u16string FormatCurrencyText(Currency amount, std::int32_t decimals, std::u16string_view currencySymbol,
                                  bool showSymbol)
{
    const bool isWhole = amount.Scaled() % Currency::kScale == 0;
    std::u16string text = ToUtf16(FormatCurrency(amount, isWhole ? 0 : decimals, UserLocale().Money()));
    if (showSymbol || currencySymbol.empty()) {
        return text;
    }
    for (std::size_t at = text.find(currencySymbol); at != std::u16string::npos;
         at = text.find(currencySymbol, at)) {
        text.erase(at, currencySymbol.size());
    }
    return text;
}

Currency ParseCurrencyText(std::u16string_view text, std::u16string_view decimalSep)
{
    std::u16string kept;
    for (const char16_t character : text) {
        if ((character >= u'0' && character <= u'9') || decimalSep == std::u16string_view(&character, 1)) {
            kept += character;
        }
    }
    return CurrencyFromText(ToUtf8(kept), UserLocale().Money()).value;
}

std::string PlainText(Currency amount)
{
    const ParsedNumber number = NumberOf(amount);
    std::string text = number.isNegative ? "-" : "";
    text += std::to_string(number.whole);
    if (number.fraction != 0) {
        // The leading 1 keeps the fraction's zeros in place.
        std::string fraction = std::to_string(kScale + number.fraction);
        fraction.erase(fraction.find_last_not_of('0') + 1);
        text += '.';
        text.append(fraction, 1);
    }
    return text;
}

std::int32_t ToLong(const Variant& value)
{
    switch (value.GetKind()) {
    case Variant::Kind::Empty:
        return 0;
    case Variant::Kind::Boolean:
        return value.Boolean() ? -1 : 0;
    case Variant::Kind::Long:
        return value.Long();
    case Variant::Kind::Double:
        return static_cast<std::int32_t>(RoundedWithin(value.Double(), -2147483648.0, 2147483648.0));
    case Variant::Kind::Currency:
        return RoundedToLong(NumberOf(value.Currency()));
    case Variant::Kind::String:
        if (const std::optional<ParsedNumber> number = NumberOfText(value.String())) {
            return RoundedToLong(*number);
        }
        break;
    case Variant::Kind::Null:
    case Variant::Kind::Array:
        break;
    }
    ThrowTypeMismatch();
}

Currency ToCurrency(const Variant& value)
{
    constexpr double kBound = 9223372036854775808.0;
    switch (value.GetKind()) {
    case Variant::Kind::Empty:
        return Currency();
    case Variant::Kind::Boolean:
        return Currency::FromUnits(value.Boolean() ? -1 : 0);
    case Variant::Kind::Long:
        return Currency::FromUnits(value.Long());
    case Variant::Kind::Double:
        return Currency::FromScaled(
            static_cast<std::int64_t>(RoundedWithin(value.Double() * 10000.0, -kBound, kBound)));
    case Variant::Kind::Currency:
        return value.Currency();
    case Variant::Kind::String: {
        const CurrencyResult result = CurrencyFromText(ToUtf8(value.String()), UserLocale().Money());
        if (result.error == ConversionError::Overflow) {
            throw AutomationError(kErrOverflow);
        }
        if (result.error == ConversionError::None) {
            return result.value;
        }
        break;
    }
    case Variant::Kind::Null:
    case Variant::Kind::Array:
        break;
    }
    ThrowTypeMismatch();
}

bool ToBoolean(const Variant& value)
{
    switch (value.GetKind()) {
    case Variant::Kind::Empty:
        return false;
    case Variant::Kind::Boolean:
        return value.Boolean();
    case Variant::Kind::Long:
        return value.Long() != 0;
    case Variant::Kind::Double:
        return value.Double() != 0.0;
    case Variant::Kind::Currency:
        return value.Currency() != Currency();
    case Variant::Kind::String:
        return TextToBoolean(value.String());
    case Variant::Kind::Null:
    case Variant::Kind::Array:
        break;
    }
    ThrowTypeMismatch();
}

std::u16string ToText(const Variant& value)
{
    switch (value.GetKind()) {
    case Variant::Kind::Empty:
        return u"";
    case Variant::Kind::Boolean:
        return value.Boolean() ? u"True" : u"False";
    case Variant::Kind::Long:
        return WithLocaleDecimal(std::to_string(value.Long()));
    case Variant::Kind::Double:
        return WithLocaleDecimal(PlainText(value.Double()));
    case Variant::Kind::Currency:
        return WithLocaleDecimal(PlainText(value.Currency()));
    case Variant::Kind::String:
        return value.String();
    case Variant::Kind::Null:
    case Variant::Kind::Array:
        break;
    }
    ThrowTypeMismatch();
}

} // namespace KestrinProductEditor::modConversion
