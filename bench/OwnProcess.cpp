// SPDX-License-Identifier: MIT
#include "OwnProcess.h"

#include <fcntl.h>
#include <sstream>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace KestrinProductEditor::Bench {

namespace {

/// Brings what earlier steps wrote to the disk: a later sync would wait for it too.
void Settle(const std::filesystem::path& folder)
{
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    syncfs(descriptor);
    close(descriptor);
}

} // namespace

RunFolder::RunFolder(const std::filesystem::path& parent, std::string_view program)
    : m_path(std::filesystem::absolute(parent) /
             ("kstnedit-" + std::string(program) + "-" + std::to_string(getpid())))
{
    std::filesystem::create_directories(m_path);
}

RunFolder::~RunFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

std::map<std::string, double> RunInOwnProcess(const std::vector<std::string>& arguments,
                                              const std::filesystem::path& folder)
{
    Settle(folder);
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
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        std::string step;
        for (const std::string& argument : arguments)
            step += " " + argument;
        throw std::runtime_error("the step" + step + " failed");
    }
    std::map<std::string, double> results;
    std::istringstream lines(output);
    std::string name;
    for (double value = 0; lines >> name >> value;)
        results[name] = value;
    return results;
}

} // namespace KestrinProductEditor::Bench
