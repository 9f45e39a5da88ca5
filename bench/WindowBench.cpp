// SPDX-License-Identifier: MIT
#include "WindowBench.h"

#include "BenchHost.h"
#include "BenchSystem.h"
#include "OwnProcess.h"
#include "Products.h"
#include "Stopwatch.h"

#include <KestrinProductEditor/ProductLkpMgr.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace KestrinProductEditor::Bench {

namespace {

constexpr std::string_view kUsage =
    " [--rounds N] [--folder DIR] [--smoke] [PRODUCTS]\n"
    "  --rounds N     times that the editor is opened at each length of list (5)\n"
    "  --folder DIR   where the files lie while it runs (the system's temporary folder)\n"
    "  --smoke        one round over a short list: does everything, judges nothing\n"
    "  PRODUCTS       the length of the long list (1000000); the short one has 1000\n";

constexpr std::string_view kStepOption = "--step";
constexpr std::uint32_t kFewProducts = 1000;
constexpr double kFrameMicroseconds = 1e6 / 60;

using Measurements = std::map<std::string, double>;
using Samples = std::map<std::string, std::vector<double>>;

[[nodiscard]] double Median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// Steps, each in a process of its own

[[noreturn]] void Answer(const Measurements& results)
{
    for (const auto& [name, value] : results)
        std::printf("%s %.17g\n", name.c_str(), value);
    std::fflush(stdout);
    // Nothing is to be saved, and the end of a window is not what is measured.
    std::_Exit(0);
}

void Prepare(const std::filesystem::path& folder, std::uint32_t count)
{
    const std::filesystem::path list = folder / "list.csv";
    WritePriceList(list, count);
    ImportPriceList(*ProductLkpMgr::Create(), list, count);
    std::filesystem::remove(list);
}

/// A store alone, and what the editor's first product makes it build.
[[noreturn]] void OpenStore(std::uint32_t count)
{
    const Stopwatch watch;
    const auto store = ProductLkpMgr::Create();
    const double opened = watch.Microseconds();
    store->CancelUpdate(true);
    store->FindRow(static_cast<std::int32_t>(count / 2));
    Answer({{"open", opened}, {"resident", ResidentBytes()}});
}

[[nodiscard]] double MedianTimeOf(int times, const std::function<void()>& act)
{
    std::vector<double> samples;
    for (int time = 0; time < times; ++time) {
        const Stopwatch watch;
        act();
        samples.push_back(watch.Microseconds());
    }
    return Median(std::move(samples));
}

[[nodiscard]] Measurements UseList(IEditorList& list)
{
    constexpr int kManyTimes = 40;
    constexpr int kSomeTimes = 10;
    Measurements results;
    results["page"] = MedianTimeOf(kManyTimes, [&] { list.ScrollPage(); });
    results["step"] = MedianTimeOf(kManyTimes, [&] { list.StepDown(); });
    results["select"] = MedianTimeOf(kSomeTimes, [&] { list.SelectAll(); });
    results["selected"] = list.SelectedRows();
    results["end"] = MedianTimeOf(kSomeTimes, [&] { list.JumpToBothEnds(); });
    results["last"] = list.CurrentRow();
    return results;
}

void RunAsStep(const WindowBench& bench, const std::vector<std::string>& words)
{
    RegisterHost();
    const std::filesystem::path folder = words.at(2);
    const auto count = static_cast<std::uint32_t>(std::stoul(words.at(3)));
    SetCatalogueFolder(folder);
    if (words[1] == "prepare") {
        Prepare(folder, count);
    } else if (words[1] == "store") {
        OpenStore(count);
    } else {
        bench.showEditor(folder);
        throw std::runtime_error("the editor was closed before its list was painted");
    }
}

// The table

struct Line
{
    const char* work;
    double value;
    const char* unit;
    double bound;
};

void Print(const Line& line, bool bJudge)
{
    std::printf("%-52s %9.3f %-16s %6g  %s\n", line.work, line.value, line.unit, line.bound,
                !bJudge                    ? "-"
                : line.value <= line.bound ? "PASS"
                                           : "miss");
}

/// One length of list, and what was measured at it.
class Length
{
public:
    /// Prepares a catalogue in a folder of its own in `parent`.
    Length(std::uint32_t count, const std::filesystem::path& parent)
        : m_count(count), m_folder(parent / std::to_string(count))
    {
        std::filesystem::create_directory(m_folder);
        static_cast<void>(PrvRun("prepare"));
    }

    void Measure()
    {
        for (const auto& [name, value] : PrvRun("store"))
            m_store[name].push_back(value);
        for (const auto& [name, value] : PrvRun("editor"))
            m_editor[name].push_back(value);
        for (const char* const check : {"selected", "last"}) {
            if (m_editor.at(check).back() != m_count)
                throw std::runtime_error(std::string("the list did not reach every product: ") + check);
        }
    }

    [[nodiscard]] std::uint32_t Count() const { return m_count; }
    [[nodiscard]] double OfStore(const char* name) const { return Median(m_store.at(name)); }
    [[nodiscard]] double OfEditor(const char* name) const { return Median(m_editor.at(name)); }

private:
    [[nodiscard]] Measurements PrvRun(const char* step) const
    {
        return RunInOwnProcess({std::string(kStepOption), step, m_folder.string(), std::to_string(m_count)},
                               m_folder);
    }

    std::uint32_t m_count;
    std::filesystem::path m_folder;
    Samples m_store;
    Samples m_editor;
};

void PrintTable(const Length& few, const Length& many, double mostOpenings, bool bJudge)
{
    std::printf("%-52s %9s %-16s %6s\n", "work", "measured", "in", "must");
    Print(
        {"opening the editor", many.OfEditor("open") / many.OfStore("open"), "store openings", mostOpenings},
        bJudge);
    const std::pair<const char*, const char*> works[] = {{"page", "a page of scrolling"},
                                                         {"step", "a step to the next row"},
                                                         {"select", "select all"},
                                                         {"end", "a jump to the beginning and to the end"}};
    for (const auto& [name, work] : works)
        Print({work, (many.OfEditor(name) - few.OfEditor(name)) / kFrameMicroseconds, "frames more", 1},
              bJudge);
    const auto beside = [](const Length& length) {
        return length.OfEditor("resident") - length.OfStore("resident");
    };
    Print({"memory of the window beside the store, a product",
           (beside(many) - beside(few)) / (many.Count() - few.Count()), "bytes more", 32},
          bJudge);
    for (const Length* const length : {&few, &many})
        std::printf("%u products: store %.1f ms, editor %.1f ms, page %.2f ms, step %.2f ms, select %.2f ms, "
                    "end %.2f ms\n",
                    length->Count(), length->OfStore("open") / 1e3, length->OfEditor("open") / 1e3,
                    length->OfEditor("page") / 1e3, length->OfEditor("step") / 1e3,
                    length->OfEditor("select") / 1e3, length->OfEditor("end") / 1e3);
}

// The options

struct Options
{
    std::uint32_t rounds = 5;
    std::uint32_t few = kFewProducts;
    std::uint32_t many = 1'000'000;
    bool judges = true;
    bool asksForHelp = false;
    std::filesystem::path parent = std::filesystem::temp_directory_path();
};

[[nodiscard]] std::uint32_t NumberFrom(const std::string& text)
{
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number == 0)
        throw std::invalid_argument("'" + text + "' is no number above 0");
    return number;
}

[[nodiscard]] Options OptionsFrom(const std::vector<std::string>& words)
{
    Options options;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const bool hasValue = i + 1 < words.size();
        if (words[i] == "--help") {
            options.asksForHelp = true;
            return options;
        }
        if (words[i] == "--rounds" && hasValue) {
            options.rounds = NumberFrom(words[++i]);
        } else if (words[i] == "--folder" && hasValue) {
            options.parent = words[++i];
        } else if (words[i] == "--smoke") {
            options.rounds = 1;
            options.few = 100;
            options.many = kFewProducts;
            options.judges = false;
        } else {
            options.many = NumberFrom(words[i]);
        }
    }
    if (options.many <= options.few)
        throw std::invalid_argument("the long list must have more than " + std::to_string(options.few) +
                                    " products");
    return options;
}

} // namespace

void AnswerForEditor(double opened, IEditorList& list) noexcept
{
    // Whoever calls is in the middle of an event, and what the toolkit does with an exception is its own
    // matter.
    try {
        Measurements results = UseList(list);
        results["open"] = opened;
        results["resident"] = ResidentBytes();
        Answer(results);
    } catch (const std::exception& error) {
        std::cerr << "using the list failed: " << error.what() << '\n';
        std::_Exit(1);
    }
}

int RunWindowBench(const WindowBench& bench, int argc, char* argv[])
try {
    const std::vector<std::string> words(argv + 1, argv + argc);
    if (!words.empty() && words[0] == kStepOption) {
        RunAsStep(bench, words);
        return 0;
    }
    const Options options = OptionsFrom(words);
    if (options.asksForHelp) {
        std::cout << "usage: " << bench.program << kUsage;
        return 0;
    }
    const RunFolder folder(options.parent, "window-bench");
    std::cerr << options.few << " and " << options.many << " products: preparing" << std::flush;
    Length few(options.few, folder.Path());
    Length many(options.many, folder.Path());
    for (std::uint32_t round = 1; round <= options.rounds; ++round) {
        std::cerr << ", round " << round << std::flush;
        // By turns: what else the machine does meanwhile meets both.
        few.Measure();
        many.Measure();
    }
    std::cerr << '\n';
    PrintTable(few, many, bench.mostOpenings, options.judges);
    return 0;
} catch (const std::invalid_argument& error) {
    std::cerr << bench.program << ": " << error.what() << "\nusage: " << bench.program << kUsage;
    return 2;
} catch (const std::exception& error) {
    std::cerr << '\n' << bench.program << ": " << error.what() << '\n';
    return 1;
}

} // namespace KestrinProductEditor::Bench
