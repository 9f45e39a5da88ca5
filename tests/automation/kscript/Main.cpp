// SPDX-License-Identifier: MIT
#include "automation/kscript/Globals.h"
#include "automation/kscript/RunScript.h"
#include "platform/Text.h"
#include "platform/windows/WideText.h"

#include <KestrinProductEditor/AutomationError.h>

#include <windows.h>

#include <objbase.h>

#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>
#include <string_view>

using namespace KestrinProductEditor;

namespace {

enum ExitStatus
{
    kPassed = 0,
    kCheckFailed = 1,
    kScriptError = 2,
    kCannotBegin = 3,
    kNothingChecked = 4,
};

class ScopedApartment
{
public:
    ScopedApartment() noexcept { static_cast<void>(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)); }
    ScopedApartment(const ScopedApartment&) = delete;
    ScopedApartment& operator=(const ScopedApartment&) = delete;
    ~ScopedApartment() { CoUninitialize(); }
};

/// Classes that the manifest names are found by it until the end of the scope. No manifest, no difference.
class ScopedManifest
{
public:
    explicit ScopedManifest(const std::filesystem::path& file)
    {
        if (file.empty())
            return;
        const std::wstring path = std::filesystem::absolute(file).wstring();
        ACTCTXW context{};
        context.cbSize = sizeof(context);
        context.lpSource = path.c_str();
        m_context = CreateActCtxW(&context);
        if (m_context == INVALID_HANDLE_VALUE)
            throw AutomationError(kErrInvalidFileFormat, u"kscript", u"cannot use '" + FromWide(path) + u"'");
        ActivateActCtx(m_context, &m_cookie);
    }
    ScopedManifest(const ScopedManifest&) = delete;
    ScopedManifest& operator=(const ScopedManifest&) = delete;
    ~ScopedManifest()
    {
        if (m_context == INVALID_HANDLE_VALUE)
            return;
        DeactivateActCtx(0, m_cookie);
        ReleaseActCtx(m_context);
    }

private:
    HANDLE m_context = INVALID_HANDLE_VALUE;
    ULONG_PTR m_cookie = 0;
};

struct Options
{
    std::filesystem::path manifest;
    const wchar_t* engine = nullptr; // null: the arguments make no sense
    ScriptRun run;
};

[[nodiscard]] Options OptionsIn(int count, wchar_t** arguments)
{
    Options options;
    int at = 1;
    if (count > 2 && std::wstring_view(arguments[1]) == L"--manifest") {
        options.manifest = arguments[2];
        at = 3;
    }
    if (at >= count)
        return options;
    const std::filesystem::path script(arguments[at]);
    if (script.extension() == L".vbs")
        options.engine = L"VBScript";
    else if (script.extension() == L".js")
        options.engine = L"JScript";
    options.run.file = FromWide(arguments[at]);
    for (++at; at < count; ++at)
        options.run.arguments.push_back(FromWide(arguments[at]));
    return options;
}

[[nodiscard]] ExitStatus Run(Options& options)
{
    std::u16string text = ReadTextFile(options.run.file);
    if (text.starts_with(u'\uFEFF'))
        text.erase(0, 1);

    const ScopedApartment apartment;
    const ScopedManifest manifest(options.manifest);
    ScriptRun& run = options.run;
    const ScriptEnd end = RunScript(options.engine, run.file, text, MakeGlobals(run).Get());
    PrintLine(run.file + u": " + ToUtf16(std::to_string(run.checks)) + u" checks, " +
              ToUtf16(std::to_string(run.failures)) + u" failed");
    if (end == ScriptEnd::InError)
        return kScriptError;
    if (run.failures > 0)
        return kCheckFailed;
    return run.checks > 0 ? kPassed : kNothingChecked;
}

} // namespace

int wmain(int count, wchar_t** arguments)
{
    try {
        Options options = OptionsIn(count, arguments);
        if (options.engine == nullptr) {
            std::fputs("usage: kscript [--manifest FILE] SCRIPT.vbs|SCRIPT.js [ARGUMENT...]\n", stderr);
            return kCannotBegin;
        }
        return Run(options);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "kscript: %s\n", error.what());
        return kCannotBegin;
    }
}
