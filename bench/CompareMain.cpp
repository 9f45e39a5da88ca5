// SPDX-License-Identifier: MIT
#include "BenchHost.h"
#include "CompareSteps.h"
#include "CompareTable.h"
#include "OwnProcess.h"

#include <charconv>
#include <cstdio>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

using namespace KestrinProductEditor::Bench;

namespace {

constexpr std::string_view kUsage =
    "usage: compare [--rounds N] [--folder DIR] [PRODUCTS...]\n"
    "  --rounds N     times that each work is measured on each side (5)\n"
    "  --folder DIR   where the files lie while it runs (the system's temporary folder);\n"
    "                 it should be on a real disk, else saving costs nothing\n"
    "  PRODUCTS       lengths of the lists (10000 100000 1000000); the last two give the growth\n";

constexpr std::string_view kStepOption = "--step";

struct Options
{
    std::uint32_t rounds = 5;
    std::filesystem::path parentFolder = std::filesystem::temp_directory_path();
    std::vector<std::uint32_t> counts;
};

std::uint32_t NumberFrom(std::string_view text)
{
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number == 0)
        throw std::invalid_argument("'" + std::string(text) + "' is no number above 0");
    return number;
}

Options OptionsFrom(const std::vector<std::string_view>& words)
{
    Options options;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const bool hasValue = i + 1 < words.size();
        if (words[i] == "--rounds" && hasValue)
            options.rounds = NumberFrom(words[++i]);
        else if (words[i] == "--folder" && hasValue)
            options.parentFolder = words[++i];
        else
            options.counts.push_back(NumberFrom(words[i]));
    }
    if (options.counts.empty())
        options.counts = {10'000, 100'000, 1'000'000};
    return options;
}

Measurements RunInOwnProcess(std::string_view step, const StepContext& context)
{
    return KestrinProductEditor::Bench::RunInOwnProcess(
        {std::string(kStepOption), std::string(step), context.folder.string(), std::to_string(context.count)},
        context.folder);
}

int RunAsStep(const std::vector<std::string_view>& words)
{
    constexpr std::size_t kStepWords = 4;
    if (words.size() != kStepWords)
        throw std::invalid_argument("a step needs its name, its folder and the number of products");
    const StepContext context{words[2], NumberFrom(words[3])};
    RegisterHost();
    for (const auto& [name, value] : RunStep(words[1], context))
        std::printf("%s %.17g\n", name.c_str(), value);
    return 0;
}

void CompareAt(std::uint32_t count, const Options& options, const std::filesystem::path& folder,
               CompareTable& table)
{
    const StepContext context{folder / std::to_string(count), count};
    std::filesystem::create_directory(context.folder);
    std::cerr << count << " products: preparing" << std::flush;
    table.Take(count, RunInOwnProcess(kPrepareStep, context));
    for (std::uint32_t round = 1; round <= options.rounds; ++round) {
        std::cerr << ", round " << round << std::flush;
        for (const Step& step : MeasuringSteps())
            table.Take(count, RunInOwnProcess(step.name, context));
    }
    std::cerr << '\n';
    std::filesystem::remove_all(context.folder);
}

} // namespace

int main(int argc, char* argv[])
try {
    const std::vector<std::string_view> words(argv + 1, argv + argc);
    if (!words.empty() && words[0] == kStepOption)
        return RunAsStep(words);
    if (!words.empty() && words[0] == "--help") {
        std::cout << kUsage;
        return 0;
    }
    const Options options = OptionsFrom(words);
    const RunFolder folder(options.parentFolder, "compare");
    CompareTable table;
    for (const std::uint32_t count : options.counts)
        CompareAt(count, options, folder.Path(), table);
    table.Print(std::cout);
    return 0;
} catch (const std::invalid_argument& error) {
    std::cerr << "compare: " << error.what() << '\n' << kUsage;
    return 2;
} catch (const std::exception& error) {
    std::cerr << "\ncompare: " << error.what() << '\n';
    return 1;
}
