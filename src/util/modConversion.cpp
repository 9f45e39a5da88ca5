// SPDX-License-Identifier: MIT
#include "util/modConversion.h"

#include <KestrinProductEditor/AutomationError.h>

#include "platform/Text.h"
#include "util/NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>

namespace KestrinProductEditor::modConversion {

namespace {

using NumberText::GroupSize;
using NumberText::IsBlank;
using NumberText::ParsedNumber;

constexpr std::uint64_t kScale = Currency::kScale;
constexpr int kCurrencyDecimals = 4;
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
    return NumberText::Read(ToUtf8(text), UserLocale().Money());
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

bool TextToBoolean(std::u16string_view text)
{
    if (EqualsWithoutAsciiCase(text, u"true")) {
        return true;
    }
    if (EqualsWithoutAsciiCase(text, u"false")) {
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
    const std::optional<ParsedNumber> number = NumberText::Read(text, layout);
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
    const auto isOrdinary = [](char16_t unit) { return unit != u'n' && unit != u'$' && !IsBlank(unit); };
    for (std::size_t place = 0; place < pattern.size();) {
        const std::size_t begin = place++;
        if (pattern[begin] == u'n') {
            AppendNumber(magnitude / parts, magnitude % parts, decimals, layout, out);
        } else if (pattern[begin] == u'$') {
            AppendUtf8(layout.symbol, out);
        } else if (isOrdinary(pattern[begin])) {
            while (place < pattern.size() && isOrdinary(pattern[place])) {
                ++place;
            }
            AppendUtf8(pattern.substr(begin, place - begin), out);
        } else if (!layout.symbol.empty() || !IsBesideSymbol(pattern, begin)) {
            AppendUtf8(pattern.substr(begin, 1), out);
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
