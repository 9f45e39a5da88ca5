// SPDX-License-Identifier: MIT
#include "automation/hostdouble/Doubles.h"

#include "automation/hostdouble/HostState.h"
#include "automation/support/ScriptObject.h"
#include "platform/Text.h"
#include "server/windows/ComText.h"

#include <KestrinProductEditor/AutomationError.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace KestrinProductEditor {

namespace {

using Microsoft::WRL::ComPtr;

/// Counts an object while it lives.
class LivingConfig
{
public:
    LivingConfig()
    {
        WithState([](HostState& state) { ++state.configObjects; });
    }
    LivingConfig(const LivingConfig&) = delete;
    LivingConfig& operator=(const LivingConfig&) = delete;
    ~LivingConfig()
    {
        WithState([](HostState& state) { --state.configObjects; });
    }
};

[[nodiscard]] ComVariant SettingOf(const std::u16string& key)
{
    return WithState([&](const HostState& state) {
        if (state.settingsFailure != 0)
            throw AutomationError(state.settingsFailure, u"CorvoConf.Config", u"configuration failed");
        const auto found = state.settings.find(key);
        return found != state.settings.end() ? ValueOfText(found->second) : ComVariant();
    });
}

[[nodiscard]] ComPtr<IDispatch> MakeConfig()
{
    std::u16string name = WithState([](const HostState& state) { return state.configMember; });
    const DISPID id = name == u"default" ? DISPID_VALUE : 1;
    const auto living = std::make_shared<LivingConfig>();
    return MakeScriptObject(
        {ScriptFunction(id, id == DISPID_VALUE ? std::u16string() : std::move(name), 1,
                        [living](ScriptArguments arguments) { return SettingOf(TextIn(arguments[0])); })});
}

struct PendingError
{
    std::int32_t number = kErrComponent;
    Bstr source;
    Bstr description;
};

/// Of the object that stands for an error; it alone knows.
[[nodiscard]] std::int32_t NumberIn(IErrorInfo& info)
{
    ComPtr<IDispatch> object;
    wchar_t name[] = L"Number";
    LPOLESTR names[] = {name};
    DISPID id = DISPID_UNKNOWN;
    DISPPARAMS none{};
    ComVariant number;
    if (FAILED(info.QueryInterface(IID_PPV_ARGS(object.GetAddressOf()))) ||
        FAILED(object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id)) ||
        FAILED(object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, &number,
                              nullptr, nullptr)))
        return kErrComponent;
    return LongIn(number);
}

[[nodiscard]] std::optional<PendingError> Pending()
{
    ComPtr<IErrorInfo> info;
    if (GetErrorInfo(0, info.GetAddressOf()) != S_OK)
        return std::nullopt;
    PendingError error;
    error.number = NumberIn(*info.Get());
    info->GetSource(error.source.Out());
    info->GetDescription(error.description.Out());
    // To read it was to take it away.
    SetErrorInfo(0, info.Get());
    return error;
}

[[nodiscard]] std::u16string Decimal(std::int32_t number)
{
    return ToUtf16(std::to_string(number));
}

/// One call of a member of the trace: writes `line` down, and raises what is ordered for the call.
void Take(const std::u16string& member, std::u16string_view line)
{
    WithState([&](HostState& state) {
        if (state.isRecording)
            (state.traces[GetCurrentThreadId()] += line) += u'\n';
        const auto failure = state.traceFailures.find(member);
        if (failure == state.traceFailures.end() || failure->second.callsBefore-- > 0)
            return;
        const std::int32_t number = failure->second.number;
        state.traceFailures.erase(failure);
        throw AutomationError(number, u"CorvoTWrp.Trace", u"trace failed");
    });
}

[[nodiscard]] ComVariant CopyOf(const VARIANT& value)
{
    ComVariant copy;
    VariantCopyInd(&copy, const_cast<VARIANT*>(&value));
    return copy;
}

[[nodiscard]] ComVariant TraceErrNumber()
{
    const std::optional<PendingError> pending = Pending();
    const std::shared_ptr<const ComVariant> ordered =
        WithState([](const HostState& state) { return state.errNumber; });
    // What was ordered is answered in its own kind.
    ComVariant answer =
        ordered ? CopyOf(*ordered)
                : ValueOfLong(pending ? pending->number : static_cast<std::int32_t>(kErrComponent));
    Take(u"TraceErrNumber", u"ErrNumber -> " + TextIn(answer));
    return answer;
}

void TraceError(std::u16string_view text)
{
    std::u16string line = u"Error none";
    if (const std::optional<PendingError> pending = Pending()) {
        line = u"Error " + Decimal(pending->number);
        (line += u'|') += TextOf(pending->source.Get());
        (line += u'|') += TextOf(pending->description.Get());
    }
    if (!text.empty())
        (line += u'|') += text;
    Take(u"TraceError", line);
}

[[nodiscard]] ComPtr<IDispatch> MakeTrace()
{
    WithState([](HostState& state) { ++state.traceObjects; });
    return MakeScriptObject({
        ScriptGet(1, u"TraceErrNumber", &TraceErrNumber),
        ScriptSub(2, u"TraceError", 1, [](ScriptArguments arguments) { TraceError(TextIn(arguments[0])); }),
        // Nobody calls it; it stands between the others.
        ScriptSub(3, u"TraceText", 1,
                  [](ScriptArguments arguments) { Take(u"TraceText", u"Text " + TextIn(arguments[0])); }),
        ScriptSub(4, u"TraceEnter", 1,
                  [](ScriptArguments arguments) { Take(u"TraceEnter", u"Enter " + TextIn(arguments[0])); }),
        ScriptSub(5, u"TraceExit", 1,
                  [](ScriptArguments arguments) { Take(u"TraceExit", u"Exit " + TextIn(arguments[0])); }),
    });
}

template<class Field>
[[nodiscard]] ScriptMember ReadCount(DISPID id, std::u16string name, Field field)
{
    return ScriptGet(id, std::move(name), [field] {
        return ValueOfLong(WithState([&](const HostState& state) { return state.*field; }));
    });
}

[[nodiscard]] ScriptMember ReadSetting(DISPID id, const std::u16string& key)
{
    return ScriptGet(id, key, [key] {
        return ValueOfText(WithState([&](HostState& state) { return state.settings[key]; }));
    });
}

[[nodiscard]] ScriptMember WriteSetting(DISPID id, const std::u16string& key)
{
    return ScriptPut(id, key, [key](const VARIANT& value) {
        WithState([&](HostState& state) { state.settings[key] = TextIn(value); });
    });
}

[[nodiscard]] ComVariant TraceOfThread()
{
    std::u16string lines = WithState([](HostState& state) { return state.traces[GetCurrentThreadId()]; });
    if (!lines.empty())
        lines.pop_back();
    return ValueOfText(lines);
}

void FailTrace(ScriptArguments arguments)
{
    const std::u16string member = TextIn(arguments[0]);
    const HostState::OrderedFailure failure{LongIn(arguments[1]), LongIn(arguments[2])};
    WithState([&](HostState& state) {
        state.traceFailures.erase(member);
        if (failure.callsBefore >= 0)
            state.traceFailures.emplace(member, failure);
    });
}

void FailCreation(ScriptArguments arguments)
{
    WithState([&](HostState& state) { state.creationFailures[TextIn(arguments[0])] = LongIn(arguments[1]); });
}

void SetErrNumber(const VARIANT& value)
{
    WithState([&](HostState& state) {
        if (value.vt == VT_NULL)
            state.errNumber.reset();
        else
            state.errNumber = std::make_shared<const ComVariant>(CopyOf(value));
    });
}

[[nodiscard]] ComPtr<IDispatch> MakeControl()
{
    return MakeScriptObject({
        ReadSetting(1, u"InstallPath"),
        WriteSetting(1, u"InstallPath"),
        ReadSetting(2, u"DBSubdirName"),
        WriteSetting(2, u"DBSubdirName"),
        ScriptGet(3, u"Recording",
                  [] {
                      return ValueOfBoolean(
                          WithState([](const HostState& state) { return state.isRecording; }));
                  }),
        ScriptPut(3, u"Recording",
                  [](const VARIANT& value) {
                      WithState([&](HostState& state) { state.isRecording = BooleanIn(value); });
                  }),
        ScriptGet(4, u"Trace", &TraceOfThread),
        ScriptSub(5, u"ClearTrace", 0,
                  [](ScriptArguments) {
                      WithState([](HostState& state) { state.traces.erase(GetCurrentThreadId()); });
                  }),
        ScriptSub(6, u"FailTrace", 3, &FailTrace),
        ScriptPut(7, u"AnswerErrNumber", &SetErrNumber),
        ScriptSub(8, u"FailCreation", 2, &FailCreation),
        ScriptSub(9, u"FailConfig", 1,
                  [](ScriptArguments arguments) {
                      WithState([&](HostState& state) { state.settingsFailure = LongIn(arguments[0]); });
                  }),
        ScriptPut(10, u"ConfigMembers",
                  [](const VARIANT& value) {
                      WithState([&](HostState& state) { state.configMember = TextIn(value); });
                  }),
        ReadCount(11, u"TraceObjects", &HostState::traceObjects),
        ReadCount(12, u"ConfigObjects", &HostState::configObjects),
    });
}

} // namespace

const Double kDoubles[kDoubleCount] = {
    {{0x91D53555, 0xA770, 0x4528, {0xAB, 0x05, 0x6D, 0x2D, 0xB7, 0xA1, 0x62, 0xD5}},
     L"CorvoConf.Config",
     &MakeConfig},
    {{0x8C82620B, 0x90C2, 0x44B5, {0xAD, 0x6D, 0xD2, 0x9B, 0xEE, 0x18, 0xB4, 0x7D}},
     L"CorvoTWrp.Trace",
     &MakeTrace},
    {{0x6AAA24D7, 0x126D, 0x4034, {0x8E, 0x64, 0xA1, 0xFC, 0x0E, 0x19, 0xE4, 0x2D}},
     L"KstneditTests.Host",
     &MakeControl},
};

} // namespace KestrinProductEditor
