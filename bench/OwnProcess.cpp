// SPDX-License-Identifier: MIT
#include "OwnProcess.h"

#include "BenchSystem.h"

#include <optional>
#include <sstream>
#include <stdexcept>

namespace KestrinProductEditor::Bench {

RunFolder::RunFolder(const std::filesystem::path& parent, std::string_view program)
    : m_path(std::filesystem::absolute(parent) /
             ("kstnedit-" + std::string(program) + "-" + std::to_string(ProcessNumber())))
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
    const std::optional<std::string> output = OutputOfThisProgram(arguments);
    if (!output) {
        std::string step;
        for (const std::string& argument : arguments)
            step += " " + argument;
        throw std::runtime_error("the step" + step + " failed");
    }
    std::map<std::string, double> results;
    std::istringstream lines(*output);
    std::string name;
    for (double value = 0; lines >> name >> value;)
        results[name] = value;
    return results;
}

} // namespace KestrinProductEditor::Bench
