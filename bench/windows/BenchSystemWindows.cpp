// SPDX-License-Identifier: MIT
#include "BenchSystem.h"

#include <windows.h>

#include <psapi.h>

#include <stdexcept>
#include <utility>

namespace KestrinProductEditor::Bench {

namespace {

class Handle
{
public:
    explicit Handle(HANDLE handle) : m_handle(handle) {}
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() { Close(); }

    [[nodiscard]] HANDLE Get() const { return m_handle; }
    [[nodiscard]] bool IsOpen() const { return m_handle != INVALID_HANDLE_VALUE; }
    void Close()
    {
        if (IsOpen())
            CloseHandle(std::exchange(m_handle, INVALID_HANDLE_VALUE));
    }

private:
    HANDLE m_handle;
};

[[nodiscard]] std::wstring OwnProgram()
{
    constexpr DWORD kLongestPath = 32'768;
    std::wstring path(kLongestPath, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), kLongestPath));
    return path;
}

/// As the program that is started reads it again. Requires: no quotation mark, which no path has.
[[nodiscard]] std::wstring Quoted(const std::wstring& word)
{
    const std::size_t last = word.find_last_not_of(L'\\');
    const std::size_t backslashes = word.size() - (last == std::wstring::npos ? 0 : last + 1);
    return L"\"" + word + std::wstring(backslashes, L'\\') + L"\"";
}

} // namespace

void UseConventionsOfLists()
{
    SetEnvironmentVariableW(L"KSTNEDIT_CODEPAGE", L"UTF-8");
}

std::uint32_t ProcessNumber()
{
    return GetCurrentProcessId();
}

double ResidentBytes()
{
    PROCESS_MEMORY_COUNTERS counters = {};
    if (!GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters))
        throw std::runtime_error("cannot ask for the memory of this process");
    return static_cast<double>(counters.WorkingSetSize);
}

void Settle(const std::filesystem::path& folder)
{
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        const Handle file(CreateFileW(entry.path().c_str(), GENERIC_WRITE,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                      OPEN_EXISTING, 0, nullptr));
        if (file.IsOpen())
            FlushFileBuffers(file.Get());
    }
}

std::optional<std::string> OutputOfThisProgram(const std::vector<std::string>& arguments)
{
    const std::wstring program = OwnProgram();
    std::wstring line = Quoted(program);
    for (const std::string& argument : arguments)
        line += L" " + Quoted(std::filesystem::path(argument).wstring());

    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    HANDLE ends[2] = {INVALID_HANDLE_VALUE, INVALID_HANDLE_VALUE};
    if (!CreatePipe(&ends[0], &ends[1], &inherited, 0))
        throw std::runtime_error("cannot make a pipe");
    const Handle reading(ends[0]);
    Handle writing(ends[1]);
    // The pipe ends when nobody but the program that is started could still write to it.
    SetHandleInformation(reading.Get(), HANDLE_FLAG_INHERIT, 0);

    STARTUPINFOW start = {};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
    start.hStdOutput = writing.Get();
    start.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    PROCESS_INFORMATION started = {};
    if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                        &started))
        throw std::runtime_error("cannot start a process");
    const Handle process(started.hProcess);
    const Handle thread(started.hThread);
    writing.Close();

    std::string output;
    char buffer[4096];
    for (DWORD got = 0; ReadFile(reading.Get(), buffer, sizeof buffer, &got, nullptr) && got > 0;)
        output.append(buffer, got);
    WaitForSingleObject(process.Get(), INFINITE);
    DWORD status = 1;
    GetExitCodeProcess(process.Get(), &status);
    if (status != 0)
        return std::nullopt;
    return output;
}

} // namespace KestrinProductEditor::Bench
