// SPDX-License-Identifier: MIT
#include "automation/kscript/Globals.h"

#include "automation/support/ScriptObject.h"
#include "platform/Text.h"
#include "server/windows/ComText.h"

#include <KestrinProductEditor/AutomationError.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace KestrinProductEditor {

namespace {

[[nodiscard]] AutomationError FileError(std::int32_t number, std::u16string_view what,
                                        std::u16string_view path)
{
    return AutomationError(number, u"kscript", std::u16string(what) + u" '" + std::u16string(path) + u"'");
}

[[nodiscard]] std::string ReadBytes(std::u16string_view path)
{
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    std::string bytes(std::istreambuf_iterator<char>(file), {});
    if (!file)
        throw FileError(kErrFileNotFound, u"cannot read", path);
    return bytes;
}

void WriteTextFile(std::u16string_view path, std::u16string_view text)
{
    std::ofstream file(std::filesystem::path(path), std::ios::binary);
    file << ToUtf8(text) << std::flush;
    if (!file)
        throw FileError(kErrPathFileAccess, u"cannot write", path);
}

[[nodiscard]] std::u16string HexOf(std::string_view bytes)
{
    constexpr std::u16string_view kDigits = u"0123456789ABCDEF";
    std::u16string digits;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        digits += kDigits[value >> 4];
        digits += kDigits[value & 0xF];
    }
    return digits;
}

[[nodiscard]] bool IsExactNumber(VARTYPE type) noexcept
{
    switch (type) {
    case VT_I1:
    case VT_I2:
    case VT_I4:
    case VT_I8:
    case VT_INT:
    case VT_UI1:
    case VT_UI2:
    case VT_UI4:
    case VT_UI8:
    case VT_UINT:
    case VT_CY:
    case VT_DECIMAL:
        return true;
    default:
        return false;
    }
}

[[nodiscard]] bool IsNumber(VARTYPE type) noexcept
{
    return type == VT_R4 || type == VT_R8 || IsExactNumber(type);
}

[[nodiscard]] bool AreEqualNumbers(const VARIANT& left, const VARIANT& right)
{
    if (!IsExactNumber(left.vt) || !IsExactNumber(right.vt))
        return Converted(left, VT_R8).dblVal == Converted(right, VT_R8).dblVal;
    ComVariant leftNumber = Converted(left, VT_DECIMAL);
    ComVariant rightNumber = Converted(right, VT_DECIMAL);
    return VarDecCmp(&leftNumber.decVal, &rightNumber.decVal) == static_cast<HRESULT>(VARCMP_EQ);
}

[[nodiscard]] bool IsSameObject(IUnknown* left, IUnknown* right)
{
    if (left == nullptr || right == nullptr)
        return left == right;
    Microsoft::WRL::ComPtr<IUnknown> leftIdentity;
    Microsoft::WRL::ComPtr<IUnknown> rightIdentity;
    left->QueryInterface(IID_PPV_ARGS(leftIdentity.GetAddressOf()));
    right->QueryInterface(IID_PPV_ARGS(rightIdentity.GetAddressOf()));
    return leftIdentity.Get() == rightIdentity.Get();
}

[[nodiscard]] bool AreEqual(const VARIANT& left, const VARIANT& right)
{
    if (IsNumber(left.vt) && IsNumber(right.vt))
        return AreEqualNumbers(left, right);
    if (left.vt != right.vt)
        return false;
    switch (left.vt) {
    case VT_EMPTY:
    case VT_NULL:
        return true;
    case VT_BOOL:
        return left.boolVal == right.boolVal;
    case VT_BSTR:
        return TextOf(left.bstrVal) == TextOf(right.bstrVal);
    case VT_DATE:
        return left.date == right.date;
    case VT_ERROR:
        return left.scode == right.scode;
    case VT_DISPATCH:
    case VT_UNKNOWN:
        return IsSameObject(left.punkVal, right.punkVal);
    default:
        return false;
    }
}

/// For messages, so that a text and a number of the same look differ.
[[nodiscard]] std::u16string Described(const VARIANT& value)
{
    if (value.vt == VT_EMPTY)
        return u"Empty";
    if (value.vt == VT_NULL)
        return u"Null";
    if (value.vt == VT_BSTR)
        return u'"' + TextIn(value) + u'"';
    if (IsNumber(value.vt) || value.vt == VT_BOOL || value.vt == VT_DATE)
        return TextIn(value);
    return u"a value of type " + ToUtf16(std::to_string(value.vt));
}

void Count(ScriptRun& run, bool isMet, const std::u16string& failure)
{
    ++run.checks;
    if (isMet)
        return;
    ++run.failures;
    PrintLine(run.file + u": FAILED: " + failure);
}

void Echo(ScriptArguments arguments)
{
    std::u16string line;
    for (const ComVariant& argument : arguments) {
        if (!line.empty())
            line += u' ';
        line += argument.vt == VT_BSTR ? TextIn(argument) : Described(argument);
    }
    PrintLine(line);
}

void Check(ScriptRun& run, ScriptArguments arguments)
{
    Count(run, arguments[0].vt == VT_BOOL && arguments[0].boolVal != VARIANT_FALSE, TextIn(arguments[1]));
}

void Equal(ScriptRun& run, ScriptArguments arguments)
{
    const VARIANT& expected = arguments[0];
    const VARIANT& actual = arguments[1];
    Count(run, AreEqual(expected, actual),
          TextIn(arguments[2]) + u": expected " + Described(expected) + u", is " + Described(actual));
}

[[nodiscard]] std::u16string_view Argument(const ScriptRun& run, std::int32_t position)
{
    const bool isThere = position >= 1 && std::cmp_less_equal(position, run.arguments.size());
    return isThere ? std::u16string_view(run.arguments[static_cast<std::size_t>(position - 1)])
                   : std::u16string_view();
}

} // namespace

void PrintLine(std::u16string_view text)
{
    const std::string line = ToUtf8(text) + '\n';
    std::fwrite(line.data(), 1, line.size(), stdout);
    // What was found out must be seen even if the script ends the process.
    std::fflush(stdout);
}

std::u16string ReadTextFile(std::u16string_view path)
{
    const std::string bytes = ReadBytes(path);
    if (!IsValidUtf8(bytes))
        throw FileError(kErrInvalidFileFormat, u"not UTF-8:", path);
    return ToUtf16(bytes);
}

Microsoft::WRL::ComPtr<IDispatch> MakeGlobals(ScriptRun& run)
{
    return MakeScriptObject({
        ScriptSub(1, u"Echo", 0, kAnyNumber, &Echo),
        ScriptSub(2, u"Check", 2, [&run](ScriptArguments arguments) { Check(run, arguments); }),
        ScriptSub(3, u"Equal", 3, [&run](ScriptArguments arguments) { Equal(run, arguments); }),
        ScriptFunction(
            4, u"Arg", 1,
            [&run](ScriptArguments arguments) { return ValueOfText(Argument(run, LongIn(arguments[0]))); }),
        ScriptFunction(
            5, u"ReadText", 1,
            [](ScriptArguments arguments) { return ValueOfText(ReadTextFile(TextIn(arguments[0]))); }),
        ScriptSub(
            6, u"WriteText", 2,
            [](ScriptArguments arguments) { WriteTextFile(TextIn(arguments[0]), TextIn(arguments[1])); }),
        ScriptFunction(
            7, u"ReadHex", 1,
            [](ScriptArguments arguments) { return ValueOfText(HexOf(ReadBytes(TextIn(arguments[0])))); }),
    });
}

} // namespace KestrinProductEditor
