// SPDX-License-Identifier: MIT
#pragma once

#include "kstnedit/Console.h"
#include "kstnedit/EmbeddedHost.h"

#include <string_view>

namespace CLI {
class App;
}

namespace KestrinProductEditor::CommandLine {

/// One command of the program. An object serves one run.
class Command
{
public:
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;
    virtual ~Command();

    [[nodiscard]] std::string_view Name() const noexcept { return m_name; }
    [[nodiscard]] std::string_view Description() const noexcept { return m_description; }
    /// Lines that a user could type.
    [[nodiscard]] std::string_view Example() const noexcept { return m_example; }

    /// Declares the arguments and options. `app` keeps references to this object.
    virtual void Declare(CLI::App& app) = 0;
    /// Does the work. Throws CommandFailure, UsageFailure and AutomationError.
    virtual void Execute(Console& console, EmbeddedHost& host) = 0;

protected:
    /// The texts live as long as the process.
    Command(std::string_view name, std::string_view description, std::string_view example)
        : m_name(name), m_description(description), m_example(example)
    {
    }

private:
    std::string_view m_name;
    std::string_view m_description;
    std::string_view m_example;
};

} // namespace KestrinProductEditor::CommandLine
