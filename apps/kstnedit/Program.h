// SPDX-License-Identifier: MIT
#pragma once

#include "kstnedit/Console.h"

#include <string>
#include <vector>

namespace KestrinProductEditor::CommandLine {

/// The program `kstnedit`: one run of it, over any streams.
class Program
{
public:
    explicit Program(const ConsoleStreams& streams) : m_streams(streams) {}

    /// Runs with the arguments behind the program's name, each in the platform's own bytes. Returns the exit
    /// status (Failure.h). Throws nothing but what the message stream itself throws.
    [[nodiscard]] int Run(std::vector<std::string> arguments);

private:
    [[nodiscard]] int PrvRun(Console& console, std::vector<std::string> arguments);

    ConsoleStreams m_streams;
};

} // namespace KestrinProductEditor::CommandLine
