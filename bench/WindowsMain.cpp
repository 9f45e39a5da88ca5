// SPDX-License-Identifier: MIT
#include "BenchHost.h"
#include "OwnProcess.h"
#include "Products.h"

#include <KestrinProductEditor/ProductEditorDlg.h>
#include <KestrinProductEditor/ProductLkpMgr.h>

#include <QApplication>
#include <QScrollBar>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iostream>
#include <stdexcept>

using namespace KestrinProductEditor;
using namespace KestrinProductEditor::Bench;

namespace {

constexpr std::string_view kUsage =
    "usage: kstnedit-window-bench [--rounds N] [--folder DIR] [--smoke] [PRODUCTS]\n"
    "  --rounds N     times that the editor is opened at each length of list (5)\n"
    "  --folder DIR   where the files lie while it runs (the system's temporary folder)\n"
    "  --smoke        one round over a short list: does everything, judges nothing\n"
    "  PRODUCTS       the length of the long list (1000000); the short one has 1000\n";

constexpr std::string_view kStepOption = "--step";
constexpr std::uint32_t kFewProducts = 1000;
constexpr double kFrameMicroseconds = 1e6 / 60;

using Measurements = std::map<std::string, double>;
using Samples = std::map<std::string, std::vector<double>>;

class Stopwatch
{
public:
    [[nodiscard]] double Microseconds() const
    {
        return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - m_begin).count();
    }

private:
    std::chrono::steady_clock::time_point m_begin = std::chrono::steady_clock::now();
};

/// The resident memory of this process, exact to the page.
double ResidentBytes()
{
    std::ifstream rollup("/proc/self/smaps_rollup");
    constexpr double kKibibyte = 1024;
    for (std::string word; rollup >> word;) {
        if (double kibibytes = 0; word == "Rss:" && rollup >> kibibytes)
            return kibibytes * kKibibyte;
    }
    throw std::runtime_error("cannot read /proc/self/smaps_rollup");
}

double Median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

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
    SetCatalogueFolder(folder);
    ImportPriceList(*ProductLkpMgr::Create(), list, count);
    std::filesystem::remove(list);
}

/// A store alone, and what the editor's first product makes it build.
Measurements OpenStore(std::uint32_t count)
{
    const Stopwatch watch;
    const auto store = ProductLkpMgr::Create();
    const double opened = watch.Microseconds();
    store->CancelUpdate(true);
    store->FindRow(static_cast<std::int32_t>(count / 2));
    return {{"open", opened}, {"resident", ResidentBytes()}};
}

/// Tells when the list of the editor was painted for the first time.
class FirstPaint final : public QObject
{
public:
    explicit FirstPaint(std::function<void(QTableView&)> then) : m_then(std::move(then))
    {
        QCoreApplication::instance()->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::Paint)
            return false;
        auto* const list = qobject_cast<QTableView*>(watched->parent());
        if (list == nullptr || watched != list->viewport() || list->objectName() != "flexGrid")
            return false;
        QCoreApplication::instance()->removeEventFilter(this);
        QTimer::singleShot(0, list, [this, list] { m_then(*list); });
        return false;
    }

private:
    std::function<void(QTableView&)> m_then;
};

/// The median time from an act to the last pixel that it changes.
double TimeOf(QTableView& list, int times, const std::function<void()>& act)
{
    std::vector<double> samples;
    for (int time = 0; time < times; ++time) {
        const Stopwatch watch;
        act();
        QApplication::processEvents();
        list.viewport()->repaint();
        samples.push_back(watch.Microseconds());
    }
    return Median(std::move(samples));
}

Measurements UseList(QTableView& list)
{
    constexpr int kManyTimes = 40;
    constexpr int kSomeTimes = 10;
    Measurements results;
    list.setFocus();
    results["page"] = TimeOf(list, kManyTimes, [&] {
        list.verticalScrollBar()->triggerAction(QAbstractSlider::SliderPageStepAdd);
    });
    results["step"] = TimeOf(list, kManyTimes, [&] { QTest::keyClick(&list, Qt::Key_Down); });
    results["select"] =
        TimeOf(list, kSomeTimes, [&] { QTest::keyClick(&list, Qt::Key_A, Qt::ControlModifier); });
    for (const QItemSelectionRange& range : list.selectionModel()->selection())
        results["selected"] += range.height();
    results["end"] = TimeOf(list, kSomeTimes, [&] {
        QTest::keyClick(&list, Qt::Key_Home);
        QTest::keyClick(&list, Qt::Key_End);
    });
    results["last"] = list.currentIndex().row() + 1;
    return results;
}

/// The editor from the call of Show to the first paint of its list, and its use.
[[noreturn]] void OpenEditor()
{
    int noArguments = 0;
    QApplication application(noArguments, nullptr);
    const auto editor = ProductEditorDlg::Create();
    const Stopwatch watch;
    const FirstPaint firstPaint([&](QTableView& list) {
        const double opened = watch.Microseconds();
        Measurements results = UseList(list);
        results["open"] = opened;
        results["resident"] = ResidentBytes();
        Answer(results);
    });
    editor->Show(Variant());
    throw std::runtime_error("the editor was closed before its list was painted");
}

int RunAsStep(const std::vector<std::string>& words)
{
    RegisterHost();
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    setenv("QT_LOGGING_RULES", "*=false", 1);
    const std::filesystem::path folder = words.at(2);
    const auto count = static_cast<std::uint32_t>(std::stoul(words.at(3)));
    setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
    SetCatalogueFolder(folder);
    if (words[1] == "editor")
        OpenEditor();
    if (words[1] == "prepare")
        Prepare(folder, count);
    else
        Answer(OpenStore(count));
    return 0;
}

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

/// What one length of list was measured at.
struct Measured
{
    std::uint32_t count;
    Samples store;
    Samples editor;
};

Measured MeasureAt(std::uint32_t count, std::uint32_t rounds, const std::filesystem::path& parent)
{
    const std::filesystem::path folder = parent / std::to_string(count);
    std::filesystem::create_directory(folder);
    const auto run = [&](const char* step) {
        return RunInOwnProcess({std::string(kStepOption), step, folder.string(), std::to_string(count)},
                               folder);
    };
    std::cerr << count << " products: preparing" << std::flush;
    static_cast<void>(run("prepare"));
    Measured measured{count, {}, {}};
    for (std::uint32_t round = 1; round <= rounds; ++round) {
        std::cerr << ", round " << round << std::flush;
        for (const auto& [name, value] : run("store"))
            measured.store[name].push_back(value);
        for (const auto& [name, value] : run("editor"))
            measured.editor[name].push_back(value);
    }
    std::cerr << '\n';
    for (const char* const check : {"selected", "last"}) {
        if (measured.editor.at(check).front() != count)
            throw std::runtime_error(std::string("the list did not reach every product: ") + check);
    }
    return measured;
}

void PrintTable(const Measured& few, const Measured& many, bool bJudge)
{
    std::printf("%-52s %9s %-16s %6s\n", "work", "measured", "in", "must");
    const auto median = [](const Samples& samples, const char* name) { return Median(samples.at(name)); };
    Print({"opening the editor", median(many.editor, "open") / median(many.store, "open"), "store openings",
           1.2},
          bJudge);
    const std::pair<const char*, const char*> works[] = {{"page", "a page of scrolling"},
                                                         {"step", "a step to the next row"},
                                                         {"select", "select all"},
                                                         {"end", "a jump to the beginning and to the end"}};
    for (const auto& [name, work] : works)
        Print({work, (median(many.editor, name) - median(few.editor, name)) / kFrameMicroseconds,
               "frames more", 1},
              bJudge);
    const auto beside = [&](const Measured& measured) {
        return median(measured.editor, "resident") - median(measured.store, "resident");
    };
    Print({"memory of the window beside the store, a product",
           (beside(many) - beside(few)) / (many.count - few.count), "bytes more", 32},
          bJudge);
    for (const Measured* const measured : {&few, &many})
        std::printf("%u products: store %.1f ms, editor %.1f ms, page %.2f ms, step %.2f ms, select %.2f ms, "
                    "end %.2f ms\n",
                    measured->count, median(measured->store, "open") / 1e3,
                    median(measured->editor, "open") / 1e3, median(measured->editor, "page") / 1e3,
                    median(measured->editor, "step") / 1e3, median(measured->editor, "select") / 1e3,
                    median(measured->editor, "end") / 1e3);
}

std::uint32_t NumberFrom(const std::string& text)
{
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number == 0)
        throw std::invalid_argument("'" + text + "' is no number above 0");
    return number;
}

} // namespace

int main(int argc, char* argv[])
try {
    const std::vector<std::string> words(argv + 1, argv + argc);
    if (!words.empty() && words[0] == kStepOption)
        return RunAsStep(words);
    std::uint32_t rounds = 5;
    std::uint32_t few = kFewProducts;
    std::uint32_t many = 1'000'000;
    bool bJudge = true;
    std::filesystem::path parent = std::filesystem::temp_directory_path();
    for (std::size_t i = 0; i < words.size(); ++i) {
        const bool hasValue = i + 1 < words.size();
        if (words[i] == "--help") {
            std::cout << kUsage;
            return 0;
        }
        if (words[i] == "--rounds" && hasValue) {
            rounds = NumberFrom(words[++i]);
        } else if (words[i] == "--folder" && hasValue) {
            parent = words[++i];
        } else if (words[i] == "--smoke") {
            rounds = 1;
            few = 100;
            many = kFewProducts;
            bJudge = false;
        } else {
            many = NumberFrom(words[i]);
        }
    }
    if (many <= few)
        throw std::invalid_argument("the long list must have more than " + std::to_string(few) + " products");
    const RunFolder folder(parent, "window-bench");
    const Measured atFew = MeasureAt(few, rounds, folder.Path());
    PrintTable(atFew, MeasureAt(many, rounds, folder.Path()), bJudge);
    return 0;
} catch (const std::invalid_argument& error) {
    std::cerr << "kstnedit-window-bench: " << error.what() << '\n' << kUsage;
    return 2;
} catch (const std::exception& error) {
    std::cerr << "\nkstnedit-window-bench: " << error.what() << '\n';
    return 1;
}
