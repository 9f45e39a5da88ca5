// SPDX-License-Identifier: MIT
#include "kstnedit/Program.h"

#include "kstnedit/CommandTable.h"
#include "kstnedit/EmbeddedHost.h"
#include "kstnedit/Failure.h"
#include "platform/Files.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <ios>
#include <new>
#include <utility>

namespace KestrinProductEditor::CommandLine {

namespace {

constexpr const char* kDescription =
    "Keeps a catalogue of products: lists, finds, edits, imports and exports them.";
constexpr const char* kFooter =
    "Run 'kstnedit COMMAND --help' for the options of a command and an example.\n\n"
    "Example:\n  kstnedit import price-list.csv\n  kstnedit find hammer";

/// "--name=" as two arguments: the parser takes an empty value for a missing one.
std::vector<std::string> WithEmptyValues(std::vector<std::string> arguments)
{
    std::vector<std::string> result;
    bool optionsEnded = false;
    for (std::string& argument : arguments) {
        optionsEnded = optionsEnded || argument == "--";
        if (!optionsEnded && argument.starts_with("--") && argument.find('=') == argument.size() - 1) {
            argument.pop_back();
            result.push_back(std::move(argument));
            result.emplace_back();
        } else {
            result.push_back(std::move(argument));
        }
    }
    return result;
}

/// Ends the trace whatever becomes of the command.
class TraceEnd
{
public:
    TraceEnd(Console& console, EmbeddedHost& host) : m_console(console), m_host(host) {}
    TraceEnd(const TraceEnd&) = delete;
    TraceEnd& operator=(const TraceEnd&) = delete;
    ~TraceEnd()
    {
        if (!m_host.Trace().Close())
            m_console.Say("the trace is not complete: its file could not be written to the end");
    }

private:
    Console& m_console;
    EmbeddedHost& m_host;
};

// Whoever runs the command again because its output failed would change the catalogue twice.
void SayThatItWasSaved(Console& console, const EmbeddedHost& host)
{
    if (host.WasSaved())
        console.Say("the catalogue was changed, although the output could not be written");
}

} // namespace

int Program::Run(std::vector<std::string> arguments)
{
    Console console(m_streams);
    try {
        return PrvRun(console, std::move(arguments));
    } catch (const OutputFailure& failure) {
        if (failure.WhatCaused() != OutputFailure::Cause::ReaderIsGone)
            console.Say(failure.what());
    } catch (const std::ios_base::failure&) {
        console.Say("cannot write the output");
    } catch (const UsageFailure& failure) {
        console.Say(failure.what());
        return kMisused;
    } catch (const CommandFailure& failure) {
        console.Say(failure.what());
    } catch (const AutomationError& error) {
        console.Say(TextOfFailure({}, error.Number(), error.what()));
    } catch (const std::bad_alloc&) {
        console.Say(TextOfFailure({}, kErrOutOfMemory, "out of memory"));
    } catch (const std::exception& error) {
        console.Say(error.what());
    }
    return kFailed;
}

int Program::PrvRun(Console& console, std::vector<std::string> arguments)
{
    CLI::App app(kDescription, "kstnedit");
    app.footer(kFooter);
    app.set_version_flag("--version", "kstnedit " KSTNEDIT_VERSION, "Print the version");
    app.set_help_flag("-h,--help", "Print this help");
    app.require_subcommand(1);

    std::string folder;
    std::string traceFile;
    CLI::Option* const folderOption =
        app.add_option("--catalogue", folder,
                       "The folder that holds the catalogue (corvprd2.cpd); without it your own, in "
                       "your data folder")
            ->type_name("DIR")
            ->envname("KSTNEDIT_CATALOGUE");
    CLI::Option* const traceOption =
        app.add_option("--trace", traceFile, "Append each step of the component to this file")
            ->type_name("FILE");

    const std::vector<std::unique_ptr<Command>> commands = MakeCommands();
    for (const std::unique_ptr<Command>& command : commands) {
        CLI::App& subcommand =
            *app.add_subcommand(std::string(command->Name()), std::string(command->Description()));
        subcommand.footer("Example:\n" + std::string(command->Example()));
        subcommand.fallthrough();
        command->Declare(subcommand);
    }

    try {
        std::vector<std::string> reversed = WithEmptyValues(std::move(arguments));
        std::reverse(reversed.begin(), reversed.end());
        app.parse(std::move(reversed));
    } catch (const CLI::CallForHelp&) {
        console.Write(app.help());
        console.FlushOutput();
        return kSucceeded;
    } catch (const CLI::CallForVersion& version) {
        console.WriteLine(version.what());
        console.FlushOutput();
        return kSucceeded;
    } catch (const CLI::ParseError& error) {
        const std::vector<CLI::App*> chosen = app.get_subcommands();
        const std::vector<std::string> unknown = app.remaining();
        if (chosen.empty() && !unknown.empty() && !unknown[0].starts_with('-'))
            console.Say("there is no command " + console.Quoted(unknown[0]));
        else if (chosen.empty() && unknown.empty() && dynamic_cast<const CLI::RequiredError*>(&error))
            console.Say("no command is given");
        else
            console.Say(console.ArgumentText(error.what()));
        console.SayMore("Run 'kstnedit" + (chosen.empty() ? std::string() : " " + chosen[0]->get_name()) +
                        " --help' for help.");
        return kMisused;
    }

    HostOptions options;
    if (folderOption->count() != 0) {
        if (folder.empty())
            throw UsageFailure("--catalogue names no folder");
        options.catalogueFolder = PathFromNative(folder);
    }
    if (traceOption->count() != 0)
        options.traceFile = traceFile;
    EmbeddedHost host(options);
    const TraceEnd traceEnd(console, host);
    const std::string chosenName = app.get_subcommands().front()->get_name();
    const auto command =
        std::find_if(commands.begin(), commands.end(),
                     [&](const std::unique_ptr<Command>& each) { return each->Name() == chosenName; });
    try {
        (*command)->Execute(console, host);
        console.FlushOutput();
    } catch (const std::ios_base::failure&) {
        SayThatItWasSaved(console, host);
        throw;
    } catch (const OutputFailure&) {
        SayThatItWasSaved(console, host);
        throw;
    }
    return kSucceeded;
}

} // namespace KestrinProductEditor::CommandLine
