// SPDX-License-Identifier: MIT
#pragma once

#include "kstnedit/Program.h"

#include "platform/CodePage.h"
#include "support/Environment.h"
#include "support/StoreFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <optional>
#include <ostream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace KestrinProductEditor::CommandLine {

/// What a run of the program ended with.
struct Outcome
{
    int status = -1;
    std::string out;
    std::string err;

    friend void PrintTo(const Outcome& outcome, std::ostream* stream)
    {
        *stream << "{status " << outcome.status << "\nout: " << outcome.out << "\nerr: " << outcome.err
                << '}';
    }
};

/// Runs the program inside this process, over the catalogue of a temporary folder.
class ProgramFixture : public StoreFixture
{
protected:
    explicit ProgramFixture(const std::string& locale = "en_US.UTF-8") : StoreFixture(locale) {}

    /// A run with --catalogue before the arguments.
    [[nodiscard]] Outcome Run(std::vector<std::string> arguments) const
    {
        arguments.insert(arguments.begin(), {"--catalogue", m_database.string()});
        return RunBare(std::move(arguments));
    }

    /// A run with these arguments alone.
    [[nodiscard]] Outcome RunBare(std::vector<std::string> arguments) const
    {
        const ScopedTrace noTraceYet(nullptr);
        std::ostringstream out;
        std::ostringstream err;
        Program program({.out = out,
                         .err = err,
                         .outColumns = m_outColumns,
                         .errColumns = m_errColumns,
                         .codePage = CodePage::Named(m_terminal)});
        Outcome outcome;
        outcome.status = program.Run(std::move(arguments));
        outcome.out = out.str();
        outcome.err = err.str();
        return outcome;
    }

    [[nodiscard]] std::string PathOf(std::string_view name) const
    {
        return (m_folder.Path() / name).string();
    }

    /// Three products, in their order.
    void WriteSmallCatalogue() const
    {
        WriteCatalogue({{.rowID = 7,
                         .uniqueID = 70,
                         .status = 1,
                         .name = "Anvil",
                         .key = "K7",
                         .partNum = "AN-1",
                         .price = 12'345'000,
                         .note = "heavy",
                         .dirtySession = false,
                         .dirtySync = true},
                        {.rowID = 3, .name = "Bolt", .partNum = "BO-1", .price = 5'000},
                        {.rowID = 5, .name = "bolt cutter", .partNum = "BC-9", .price = 199'000}});
    }

    std::size_t m_outColumns = 0;
    std::size_t m_errColumns = 0;
    std::string m_terminal = "utf-8";

private:
    ScopedVariable m_noCatalogue{"KSTNEDIT_CATALOGUE", std::nullopt};
};

} // namespace KestrinProductEditor::CommandLine
