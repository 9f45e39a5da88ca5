// SPDX-License-Identifier: MIT
#include "BenchSystem.h"

#include "BenchHost.h"

#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace KestrinProductEditor::Bench {

void UseConventionsOfLists()
{
    setenv("LC_ALL", kLocale, 1);
    unsetenv("KSTNEDIT_CODEPAGE");
}

std::uint32_t ProcessNumber()
{
    return static_cast<std::uint32_t>(getpid());
}

double ResidentBytes()
{
    // Not /proc/self/statm, which lags behind.
    std::ifstream rollup("/proc/self/smaps_rollup");
    constexpr double kKibibyte = 1024;
    for (std::string word; rollup >> word;) {
        if (double kibibytes = 0; word == "Rss:" && rollup >> kibibytes)
            return kibibytes * kKibibyte;
    }
    throw std::runtime_error("cannot read /proc/self/smaps_rollup");
}

void Settle(const std::filesystem::path& folder)
{
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    syncfs(descriptor);
    close(descriptor);
}

std::optional<std::string> OutputOfThisProgram(const std::vector<std::string>& arguments)
{
    std::vector<std::string> words = {"/proc/self/exe"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    int ends[2] = {-1, -1};
    if (pipe(ends) != 0)
        throw std::runtime_error("cannot make a pipe");
    const pid_t child = fork();
    if (child < 0)
        throw std::runtime_error("cannot start a process");
    if (child == 0) {
        dup2(ends[1], STDOUT_FILENO);
        close(ends[0]);
        close(ends[1]);
        execv(pointers[0], pointers.data());
        _exit(127);
    }
    close(ends[1]);
    std::string output;
    char buffer[4096];
    for (ssize_t got = 0; (got = read(ends[0], buffer, sizeof buffer)) > 0;)
        output.append(buffer, static_cast<std::size_t>(got));
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        return std::nullopt;
    return output;
}

} // namespace KestrinProductEditor::Bench
