// SPDX-License-Identifier: MIT
#include "kstnedit/Terminal.h"

#include "kstnedit/Failure.h"
#include "support/Environment.h"
#include "support/Locales.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <optional>
#include <ostream>
#include <string>
#include <unistd.h>

namespace KestrinProductEditor::CommandLine {
namespace {

/// Makes `descriptor` this process's standard output until the end of the scope.
class ScopedOutput
{
public:
    explicit ScopedOutput(int descriptor) : m_previous(dup(STDOUT_FILENO))
    {
        EXPECT_EQ(dup2(descriptor, STDOUT_FILENO), STDOUT_FILENO);
    }
    ScopedOutput(const ScopedOutput&) = delete;
    ScopedOutput& operator=(const ScopedOutput&) = delete;
    ~ScopedOutput()
    {
        dup2(m_previous, STDOUT_FILENO);
        close(m_previous);
    }

private:
    int m_previous;
};

TEST(StandardOutput, WritesEverythingInOrder)
{
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    {
        const ScopedOutput scope(ends[1]);
        const std::unique_ptr<std::streambuf> buffer = StandardOutput();
        std::ostream out(buffer.get());
        out << "first " << 2 << '\n' << std::flush << "last";
        out.flush();
    }
    close(ends[1]);
    std::string text(100, '\0');
    const ssize_t count = read(ends[0], text.data(), text.size());
    close(ends[0]);
    ASSERT_GT(count, 0);
    EXPECT_EQ(text.substr(0, static_cast<std::size_t>(count)), "first 2\nlast");
}

TEST(StandardOutput, TellsThatTheReaderIsGone)
{
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    close(ends[0]);
    PrepareStandardStreams();
    std::optional<OutputFailure::Cause> cause;
    {
        const ScopedOutput scope(ends[1]);
        const std::unique_ptr<std::streambuf> buffer = StandardOutput();
        try {
            for (int i = 0; i < 100'000; ++i)
                buffer->sputc('x');
        } catch (const OutputFailure& failure) {
            cause = failure.WhatCaused();
        }
    }
    close(ends[1]);
    std::signal(SIGPIPE, SIG_DFL);
    EXPECT_EQ(cause, OutputFailure::Cause::ReaderIsGone);
}

TEST(StandardOutput, TellsWhyItCannotWrite)
{
    const int file = open("/dev/null", O_RDONLY);
    ASSERT_GE(file, 0);
    std::optional<OutputFailure::Cause> cause;
    std::string message;
    {
        const ScopedOutput scope(file);
        const std::unique_ptr<std::streambuf> buffer = StandardOutput();
        buffer->sputc('x');
        try {
            buffer->pubsync();
        } catch (const OutputFailure& failure) {
            cause = failure.WhatCaused();
            message = failure.what();
        }
    }
    close(file);
    EXPECT_EQ(cause, OutputFailure::Cause::Other);
    EXPECT_EQ(message, "cannot write the output: Bad file descriptor");
}

TEST(MissingLocale, NamesTheOneThatTheSystemDoesNotHave)
{
    const ScopedVariable monetary("LC_MONETARY", std::nullopt);
    const ScopedVariable numeric("LC_NUMERIC", std::nullopt);
    const ScopedVariable language("LANG", std::nullopt);
    {
        const ScopedVariable all("LC_ALL", "en_US.UTF-8");
        EXPECT_EQ(MissingLocale(), std::nullopt);
    }
    {
        const ScopedVariable all("LC_ALL", "xx_XX.UTF-8");
        EXPECT_EQ(MissingLocale(), "xx_XX.UTF-8");
    }
    const ScopedVariable all("LC_ALL", std::nullopt);
    EXPECT_EQ(MissingLocale(), std::nullopt) << "nothing is named";
    const ScopedVariable numbers("LC_NUMERIC", "yy_YY");
    EXPECT_EQ(MissingLocale(), "yy_YY");
}

TEST(TerminalColumns, AreNoneForAPipe)
{
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    std::size_t columns = 1;
    {
        const ScopedOutput scope(ends[1]);
        columns = TerminalColumns(StandardStream::Output);
    }
    close(ends[0]);
    close(ends[1]);
    EXPECT_EQ(columns, 0U);
}

TEST(TerminalCodePage, IsThatOfTheLocaleWhateverFilesHave)
{
    const ScopedVariable codePage("KSTNEDIT_CODEPAGE", "windows-1252");
    struct Case
    {
        const char* locale;
        bool isUtf8;
    };
    for (const Case& each : {Case{"en_US.UTF-8", true}, Case{"C", true}, Case{"en_US.ISO-8859-1", false},
                             Case{"xx_XX.nothing", true}}) {
        const ScopedLocaleVariables locale(each.locale);
        EXPECT_EQ(TerminalCodePage()->IsUtf8(), each.isUtf8) << each.locale;
    }
}

TEST(UserDataFolder, FollowsTheEnvironment)
{
    struct Case
    {
        std::optional<std::string> data;
        std::optional<std::string> home;
        std::optional<std::u16string> folder;
    };
    const Case cases[] = {
        {"/d", "/h", u"/d"},
        {std::nullopt, "/h", u"/h/.local/share"},
        {"", "/h/", u"/h/.local/share"},
        {"relative", "/h", u"/h/.local/share"},
        {std::nullopt, "", std::nullopt},
        {std::nullopt, std::nullopt, std::nullopt},
    };
    for (const Case& each : cases) {
        const ScopedVariable data("XDG_DATA_HOME", each.data);
        const ScopedVariable home("HOME", each.home);
        EXPECT_EQ(UserDataFolder(), each.folder);
    }
}

} // namespace
} // namespace KestrinProductEditor::CommandLine
