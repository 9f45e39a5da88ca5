// SPDX-License-Identifier: MIT
#include "kstnedit/Program.h"
#include "kstnedit/Terminal.h"

#include <iostream>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

int main(int argc, char** argv)
{
    using namespace KestrinProductEditor::CommandLine;
    PrepareStandardStreams();
    const std::unique_ptr<std::streambuf> buffer = StandardOutput();
    std::ostream out(buffer.get());
    Program program({.out = out,
                     .err = std::cerr,
                     .outColumns = TerminalColumns(StandardStream::Output),
                     .errColumns = TerminalColumns(StandardStream::Error),
                     .codePage = TerminalCodePage()});
    if (const std::optional<std::string> missing = MissingLocale())
        std::cerr
            << "kstnedit: the locale '" << *missing
            << "' is not installed: prices are read and written as 1,234.50. Install it, or set LC_ALL to "
               "one that 'locale -a' shows.\n";
    return program.Run(std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc));
}
